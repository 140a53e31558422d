#pragma once
#include <UT/UT_String.h>

#include <functional>
#include <memory>
#include <string>

/// A borrowed text. Whoever made it keeps the characters alive.
class UT_StringRef
{
public:
    UT_StringRef(const char* text = 0) : m_text(text) {}
    UT_StringRef(const UT_String& text) : m_text(text.buffer()) {}
    UT_StringRef(const std::string& text) : m_text(text.c_str()) {}

    /// Never null.
    const char* buffer() const { return m_text ? m_text : ""; }
    const char* c_str() const { return buffer(); }
    operator const char*() const { return buffer(); }
    int64 length() const;
    bool isstring() const { return m_text && *m_text; }
    std::string toStdString() const { return std::string(buffer()); }
    bool startsWith(const char* prefix) const;

    bool operator==(const char* text) const;
    bool operator==(const UT_StringRef& other) const { return *this == other.buffer(); }
    bool operator!=(const char* text) const { return !(*this == text); }
    bool operator!=(const UT_StringRef& other) const { return !(*this == other.buffer()); }
    bool operator<(const UT_StringRef& other) const;

protected:
    const char* m_text;
};

/// A text of its own that never changes; copies share it.
class UT_StringHolder : public UT_StringRef
{
public:
    UT_StringHolder() {}
    UT_StringHolder(const char* text);
    UT_StringHolder(const std::string& text);
    UT_StringHolder(const UT_String& text);
    UT_StringHolder(const UT_StringRef& text);

private:
    void hold(const std::string& text);

    std::shared_ptr<const std::string> m_held;
};

namespace std
{
template <>
struct hash<UT_StringHolder>
{
    size_t operator()(const UT_StringHolder& text) const { return hash<string>()(text.toStdString()); }
};
} // namespace std
