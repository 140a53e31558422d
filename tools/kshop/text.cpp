#include "text.h"

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <utility>

namespace kshop
{

namespace
{

const char* const replacement_character = "\xEF\xBF\xBD";

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// Length of a sequence by the bits of its first byte, and the least code point that needs as much.
struct SequenceRow
{
    std::size_t length;
    std::uint32_t least;
    unsigned char mask;
    unsigned char lead;
};

const SequenceRow sequence_rows[] = {
    {1, 0x0, 0x80, 0x00},
    {2, 0x80, 0xE0, 0xC0},
    {3, 0x800, 0xF0, 0xE0},
    {4, 0x10000, 0xF8, 0xF0},
};

bool isScalarValue(std::uint32_t code) { return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF); }

/// Bytes of the well-formed UTF-8 sequence at the beginning of a text that is not empty; 0 when there is none.
std::size_t sequenceLength(std::string_view text)
{
    const unsigned char first = static_cast<unsigned char>(text[0]);
    for (const SequenceRow& row : sequence_rows)
    {
        if ((first & row.mask) != row.lead)
            continue;
        if (text.size() < row.length)
            return 0;
        std::uint32_t code = first & static_cast<unsigned char>(~row.mask);
        for (std::size_t i = 1; i < row.length; ++i)
        {
            if (!isContinuation(text[i]))
                return 0;
            code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
        }
        return code >= row.least && isScalarValue(code) ? row.length : 0;
    }
    return 0;
}

std::string escaped(char c)
{
    if (c == '\n')
        return "\\n";
    if (c == '\t')
        return "\\t";
    return fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
}

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

/// Number of single-character edits between two texts.
std::size_t editDistance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t(0));
    for (std::size_t i = 1; i <= a.size(); ++i)
    {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j)
        {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

std::string withoutNamespace(const std::string& name)
{
    const std::size_t colons = name.rfind("::");
    return colons == std::string::npos ? name : name.substr(colons + 2);
}

/// How unlike two names are, their namespaces aside; one that holds the other is near.
std::size_t distance(const std::string& asked, const std::string& candidate)
{
    const std::string a = withoutNamespace(asked), b = withoutNamespace(candidate);
    if (!a.empty() && b.find(a) != std::string::npos)
        return a == b ? 0 : 1;
    return editDistance(a, b);
}

std::vector<std::size_t> columnWidths(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : rows)
    {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], width(row[i]));
    }
    return widths;
}

} // namespace

std::string printable(std::string_view text)
{
    std::string result;
    while (!text.empty())
    {
        const std::size_t length = sequenceLength(text);
        if (length == 0)
            result += replacement_character;
        else if (isControl(text[0]))
            result += escaped(text[0]);
        else
            result += text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string quoted(std::string_view text) { return '"' + printable(text) + '"'; }

std::size_t width(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
}

std::string padded(std::string_view text, std::size_t columns)
{
    const std::size_t have = width(text);
    return std::string(text) + std::string(columns > have ? columns - have : 0, ' ');
}

std::string numberText(double value)
{
    const double most_exact = 1e15; // integers below are shown in full
    if (value == std::floor(value) && std::fabs(value) < most_exact)
        return fmt::format("{:.0f}", value);
    const float single = static_cast<float>(value);
    // Most numbers come from the renderer's floats; 0.1 as a float is meant to be 0.1.
    return static_cast<double>(single) == value ? fmt::format("{}", single) : fmt::format("{:g}", value);
}

std::string countText(std::size_t count, const std::string& noun)
{
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string joined(const std::vector<std::string>& words, const std::string& separator)
{
    return fmt::format("{}", fmt::join(words, separator));
}

std::vector<std::string> nearestNames(const std::string& name, const std::vector<std::string>& candidates)
{
    // Comparing takes the product of the lengths, so what can be no typing mistake is not compared.
    const std::size_t longest_compared = 100, most_names = 3;
    if (name.size() > longest_compared)
        return {};
    const std::size_t limit = std::max<std::size_t>(2, withoutNamespace(name).size() / 3);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : candidates)
    {
        if (candidate.size() > longest_compared)
            continue;
        const std::size_t d = distance(name, candidate);
        if (d <= limit)
            near.emplace_back(d, candidate);
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> result;
    for (std::size_t i = 0; i < std::min(most_names, near.size()); ++i)
        result.push_back(near[i].second);
    return result;
}

std::string didYouMean(const std::string& name, const std::vector<std::string>& candidates)
{
    const std::string near = joined(nearestNames(name, candidates), " or ");
    return near.empty() ? near : "did you mean " + near + "?";
}

std::string operatorName(const std::string& entryName)
{
    const std::string_view prefix = "zelk__";
    const bool prefixed = entryName.compare(0, prefix.size(), prefix) == 0;
    return "korvan::" + (prefixed ? entryName.substr(prefix.size()) : entryName);
}

std::string tableText(const std::vector<std::vector<std::string>>& rows, const std::string& indent)
{
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::string text;
    for (const std::vector<std::string>& row : rows)
    {
        std::string line = indent;
        for (std::size_t i = 0; i < row.size(); ++i)
            line += padded(row[i], widths[i]) + "  ";
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

Style Style::forStandardOutput()
{
    const char* terminal = std::getenv("TERM");
    const char* noColour = std::getenv("NO_COLOR");
    const bool plain = (noColour && *noColour) || !terminal || std::strcmp(terminal, "dumb") == 0;
    return Style(!plain && isatty(STDOUT_FILENO) != 0);
}

std::string Style::wrapped(const char* code, const std::string& text) const
{
    return m_coloured ? fmt::format("\x1b[{}m{}\x1b[0m", code, text) : text;
}

} // namespace kshop
