#pragma once
#include <UT/UT_String.h>

#include <string>

/// A growing text buffer. Numbers are printed the same under every locale.
class UT_WorkBuffer
{
public:
    UT_WorkBuffer() {}
    explicit UT_WorkBuffer(const char* text) : m_text(text ? text : "") {}

    /// Each returns the number of characters written.
    int sprintf(const char* format, ...) __attribute__((format(printf, 2, 3)));

    void append(const char* text);
    void append(const char* text, exint length)
    {
        if (text && length > 0)
            m_text.append(text, static_cast<std::size_t>(length));
    }
    void append(char character);
    void append(const UT_WorkBuffer& other);
    void clear() { m_text.clear(); }

    /// Never null.
    const char* buffer() const { return m_text.c_str(); }
    operator const char*() const { return m_text.c_str(); }
    exint length() const { return static_cast<exint>(m_text.size()); }
    bool isstring() const { return !m_text.empty(); }

private:
    std::string m_text;
};
