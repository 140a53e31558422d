#include <UT/UT_StringHolder.h>

#include <cstring>

int64 UT_StringRef::length() const { return static_cast<int64>(std::strlen(buffer())); }

bool UT_StringRef::startsWith(const char* prefix) const
{
    return prefix && std::strncmp(buffer(), prefix, std::strlen(prefix)) == 0;
}

bool UT_StringRef::operator==(const char* text) const { return std::strcmp(buffer(), text ? text : "") == 0; }

bool UT_StringRef::operator<(const UT_StringRef& other) const
{
    return std::strcmp(buffer(), other.buffer()) < 0;
}

UT_StringHolder::UT_StringHolder(const char* text)
{
    if (text)
        hold(text);
}

UT_StringHolder::UT_StringHolder(const std::string& text) { hold(text); }

UT_StringHolder::UT_StringHolder(const UT_String& text) { hold(text.toStdString()); }

UT_StringHolder::UT_StringHolder(const UT_StringRef& text) { hold(text.toStdString()); }

void UT_StringHolder::hold(const std::string& text)
{
    m_held = std::make_shared<const std::string>(text);
    m_text = m_held->c_str();
}
