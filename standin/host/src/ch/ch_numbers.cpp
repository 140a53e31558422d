#include <CH/CH_Expression.h>

#include <charconv>
#include <cmath>
#include <cstring>

namespace
{
const char* skipBlanks(const char* at, const char* end)
{
    while (at != end && (*at == ' ' || *at == '\t' || *at == '\n' || *at == '\r'))
        ++at;
    return at;
}

/// Reads the number at the start of [begin, end). Returns the place behind it, `begin` when there is no number.
const char* readLeadingNumber(const char* begin, const char* end, fpreal& value)
{
    const char* at = skipBlanks(begin, end);
    if (end - at > 1 && *at == '+' && at[1] != '-')
        ++at;
    const std::from_chars_result read = std::from_chars(at, end, value);
    // "nan" and "inf" are words, not numbers.
    return read.ec == std::errc() && std::isfinite(value) ? read.ptr : begin;
}
} // namespace

bool CHreadNumber(const char* text, fpreal& value)
{
    if (!text)
        return false;
    const char* end = text + std::strlen(text);
    fpreal number = 0;
    const char* behind = readLeadingNumber(text, end, number);
    if (behind == text || skipBlanks(behind, end) != end)
        return false;
    value = number;
    return true;
}

std::string CHprintNumber(fpreal value, int digits)
{
    if (value == 0)
        return "0"; // also of minus zero
    char text[64];
    const std::to_chars_result end =
        std::to_chars(text, text + sizeof(text), value, std::chars_format::general, digits);
    return std::string(text, end.ptr);
}

fpreal CH_ExprValue::asNumber() const
{
    if (!isText)
        return number;
    fpreal value = 0;
    const bool found = readLeadingNumber(text.data(), text.data() + text.size(), value) != text.data();
    return found ? value : 0;
}

std::string CH_ExprValue::asText() const { return isText ? text : CHprintNumber(number); }
