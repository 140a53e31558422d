#include <UT/UT_String.h>

#include <CH/CH_Expression.h>
#include <UT/UT_StringHolder.h>

#include "ut/ut_format.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace
{
const char* copyOf(const char* text, int length = -1)
{
    if (!text)
        return nullptr;
    return length < 0 ? ::strdup(text) : ::strndup(text, static_cast<std::size_t>(length));
}

const char* skipBlanks(const char* text)
{
    while (*text == ' ' || *text == '\t' || *text == '\n' || *text == '\r')
        ++text;
    return text;
}

bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

/// Length in bytes of the UTF-8 character at `text`; 0 when what stands there is none.
int utf8Length(const char* text)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    if (bytes[0] < 0x80)
        return 1;
    const int length = bytes[0] >= 0xF0 ? 4 : bytes[0] >= 0xE0 ? 3 : 2;
    if (bytes[0] < 0xC2 || bytes[0] > 0xF4)
        return 0;
    for (int i = 1; i < length; ++i)
        if (!isContinuation(bytes[i]))
            return 0;
    const bool overlong = (bytes[0] == 0xE0 && bytes[1] < 0xA0) || (bytes[0] == 0xF0 && bytes[1] < 0x90);
    const bool surrogate = bytes[0] == 0xED && bytes[1] >= 0xA0;
    const bool tooBig = bytes[0] == 0xF4 && bytes[1] >= 0x90;
    return overlong || surrogate || tooBig ? 0 : length;
}

std::string escapedByte(char character)
{
    switch (character)
    {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    static const char digits[] = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(character);
    return std::string("\\x") + digits[byte >> 4] + digits[byte & 15];
}

bool isControl(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

std::string quoted(const char* text, char delimiter)
{
    std::string result(1, delimiter);
    while (*text)
    {
        const int length = utf8Length(text);
        if (*text == delimiter || *text == '\\')
            result += std::string("\\") + *text;
        else if (length == 0 || isControl(*text))
            result += escapedByte(*text);
        else
            result.append(text, static_cast<std::size_t>(std::max(length, 1)));
        text += std::max(length, 1);
    }
    return result + delimiter;
}
} // namespace

UT_String::UT_String(const char* text, bool deepCopy, int length)
    : m_text(deepCopy || length >= 0 ? copyOf(text, length) : text),
      m_hard(text && (deepCopy || length >= 0)),
      m_alwaysDeep(false)
{
}

UT_String::UT_String(UT_AlwaysDeepType, const char* text)
    : m_text(copyOf(text)), m_hard(text != nullptr), m_alwaysDeep(true)
{
}

UT_String::UT_String(const std::string& text)
    : m_text(copyOf(text.c_str())), m_hard(true), m_alwaysDeep(false)
{
}

UT_String::UT_String(const UT_StringRef& text)
    : m_text(copyOf(text.buffer())), m_hard(true), m_alwaysDeep(true)
{
}

UT_String::UT_String(const UT_String& other)
    : m_text(other.m_hard ? copyOf(other.m_text) : other.m_text), m_hard(other.m_hard), m_alwaysDeep(false)
{
}

UT_String::~UT_String() { release(); }

void UT_String::release()
{
    if (m_hard)
        ::free(const_cast<char*>(m_text));
    m_text = nullptr;
    m_hard = false;
}

UT_String& UT_String::operator=(const UT_String& other)
{
    if (this == &other)
        return *this;
    if (other.m_hard || m_alwaysDeep)
        harden(other.m_text);
    else
        *this = other.m_text;
    return *this;
}

UT_String& UT_String::operator=(const char* text)
{
    if (m_alwaysDeep)
    {
        harden(text);
        return *this;
    }
    if (text == m_text)
        return *this;
    release();
    m_text = text;
    return *this;
}

UT_String& UT_String::operator=(const std::string& text)
{
    harden(text.c_str());
    return *this;
}

UT_String& UT_String::operator=(const UT_StringRef& text)
{
    harden(text.buffer());
    return *this;
}

void UT_String::harden() { hardenIfNeeded(); }

void UT_String::harden(const char* text, int length)
{
    // Copied first: the text may be part of the present one.
    const char* copy = copyOf(text, length);
    release();
    m_text = copy;
    m_hard = copy != nullptr;
}

void UT_String::hardenIfNeeded()
{
    if (!m_hard)
        harden(m_text);
}

unsigned UT_String::length() const { return m_text ? static_cast<unsigned>(std::strlen(m_text)) : 0; }

int UT_String::toInt() const
{
    const char* start = skipBlanks(nonNullBuffer());
    int value = 0;
    std::from_chars(start + (*start == '+'), start + std::strlen(start), value);
    return value;
}

int UT_String::sprintf(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = UTformatText(format, arguments);
    va_end(arguments);
    harden(text.c_str());
    return static_cast<int>(text.size());
}

bool UT_String::startsWith(const char* prefix) const
{
    return prefix && std::strncmp(nonNullBuffer(), prefix, std::strlen(prefix)) == 0;
}

bool UT_String::endsWith(const char* suffix) const
{
    if (!suffix)
        return false;
    const std::size_t size = std::strlen(suffix);
    return length() >= size && std::strcmp(nonNullBuffer() + length() - size, suffix) == 0;
}

void UT_String::append(const char* text)
{
    if (text)
        harden((toStdString() + text).c_str());
}

void UT_String::clear() { release(); }

bool UT_String::operator==(const char* text) const
{
    if (!m_text || !text)
        return m_text == text;
    return std::strcmp(m_text, text) == 0;
}

bool UT_String::operator<(const UT_String& other) const
{
    return std::strcmp(nonNullBuffer(), other.nonNullBuffer()) < 0;
}

UT_String UT_String::makeSmartQuotedString(char defaultDelimiter, bool) const
{
    const char* text = nonNullBuffer();
    const bool single = std::strchr(text, '\'') != nullptr;
    const bool twofold = std::strchr(text, '"') != nullptr;
    const char delimiter = single == twofold ? defaultDelimiter : single ? '"' : '\'';
    // Always escaped: a raw newline or a broken character would end the literal before its time.
    return UT_String(ALWAYS_DEEP, quoted(text, delimiter).c_str());
}
