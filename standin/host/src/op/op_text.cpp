#include "op_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>

namespace standin
{

namespace
{

struct EscapeRow
{
    char character;
    char letter;
};

const EscapeRow escape_rows[] = {{'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\t', 't'}, {'\r', 'r'}};

char letterOf(char character)
{
    for (const EscapeRow& row : escape_rows)
        if (row.character == character)
            return row.letter;
    return '\0';
}

char characterOf(char letter)
{
    for (const EscapeRow& row : escape_rows)
        if (row.letter == letter)
            return row.character;
    return letter;
}

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f'; }

/// Reads the quoted word whose '"' stands at `place`; moves behind its end. False when it has none.
bool readQuoted(const std::string& text, std::size_t& place, int& line, std::string& word)
{
    for (++place; place < text.size(); ++place)
    {
        line += text[place] == '\n';
        if (text[place] == '"')
        {
            ++place;
            return true;
        }
        if (text[place] == '\\' && place + 1 < text.size())
            word += characterOf(text[++place]);
        else
            word += text[place];
    }
    return false;
}

} // namespace

std::string quoteText(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text)
    {
        const char letter = letterOf(c);
        quoted += letter ? std::string{'\\', letter} : std::string(1, c);
    }
    return quoted + "\"";
}

std::string nameText(const std::string& name)
{
    const auto isPlain = [](unsigned char c)
    { return c < 128 && (std::isalnum(c) || std::strchr("_:.-", c) != nullptr); };
    const bool plain = !name.empty() && std::all_of(name.begin(), name.end(), isPlain);
    return plain ? name : quoteText(name);
}

std::string printNumber(double value)
{
    if (std::isnan(value))
        return "nan";
    char text[64];
    const std::to_chars_result end = std::to_chars(text, text + sizeof(text), value);
    return std::string(text, end.ptr);
}

bool readNumber(const std::string& word, double& value)
{
    const char* begin = word.c_str();
    const char* end = begin + word.size();
    if (begin != end && *begin == '+')
        ++begin;
    const std::from_chars_result result = std::from_chars(begin, end, value);
    return begin != end && result.ec == std::errc() && result.ptr == end;
}

std::vector<Line> readLines(const std::string& text, std::string& why)
{
    std::vector<Line> lines(1);
    int line = 1;
    for (std::size_t place = 0; place < text.size();)
    {
        if (isSpace(text[place]))
        {
            if (text[place] == '\n' && ++line && !lines.back().empty())
                lines.emplace_back();
            ++place;
            continue;
        }
        Word word{std::string(), text[place] == '"'};
        const int first = line;
        if (!word.quoted)
            while (place < text.size() && !isSpace(text[place]))
                word.text += text[place++];
        else if (!readQuoted(text, place, line, word.text))
            why = "the text that begins in line " + std::to_string(first) + " has no end";
        lines.back().push_back(word);
    }
    if (lines.back().empty())
        lines.pop_back();
    return lines;
}

} // namespace standin
