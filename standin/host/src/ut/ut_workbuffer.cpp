#include <UT/UT_WorkBuffer.h>

#include "ut/ut_format.h"

#include <cstdio>
#include <locale.h>

namespace
{
/// Makes the C locale that of the calling thread, for as long as this lives.
class ClassicLocale
{
public:
    ClassicLocale()
    {
        static const locale_t classic = ::newlocale(LC_ALL_MASK, "C", nullptr);
        m_previous = ::uselocale(classic);
    }
    ~ClassicLocale() { ::uselocale(m_previous); }

private:
    locale_t m_previous;
};
} // namespace

std::string UTformatText(const char* format, std::va_list arguments)
{
    const ClassicLocale classic;
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length <= 0)
        return std::string();
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(&text[0], text.size() + 1, format, arguments);
    return text;
}

int UT_WorkBuffer::sprintf(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    m_text = UTformatText(format, arguments);
    va_end(arguments);
    return static_cast<int>(m_text.size());
}

void UT_WorkBuffer::append(const char* text)
{
    if (text)
        m_text += text;
}

void UT_WorkBuffer::append(char character) { m_text += character; }

void UT_WorkBuffer::append(const UT_WorkBuffer& other) { m_text += std::string(other.m_text); }
