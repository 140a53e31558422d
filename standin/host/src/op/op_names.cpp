#include "op_names.h"

#include <algorithm>
#include <fnmatch.h>

namespace standin
{

namespace
{

// The number at the end of a name may have this many digits, so that it and its successors fit an int.
constexpr std::size_t max_digits = 9;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c) || c == '_' || c == '.' || c == '-';
}

bool isVersion(const std::string& text)
{
    return !text.empty() && std::any_of(text.begin(), text.end(), isDigit) &&
           std::all_of(text.begin(), text.end(), [](char c) { return isDigit(c) || c == '.'; });
}

std::vector<std::string> splitAtDoubleColons(const std::string& text)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find("::", begin)) != std::string::npos; begin = end + 2)
        pieces.push_back(text.substr(begin, end - begin));
    pieces.push_back(text.substr(begin));
    return pieces;
}

/// Takes the last piece off the list; empty when there is none.
std::string popBack(std::vector<std::string>& pieces)
{
    if (pieces.empty())
        return std::string();
    std::string last = pieces.back();
    pieces.pop_back();
    return last;
}

} // namespace

OperatorName splitOperatorName(const std::string& fullName)
{
    std::vector<std::string> pieces = splitAtDoubleColons(fullName);
    OperatorName result;
    if (pieces.size() > 1 && isVersion(pieces.back()))
        result.version = popBack(pieces);
    result.name = popBack(pieces);
    result.nameSpace = popBack(pieces);
    for (const std::string& piece : pieces)
        result.scope += (result.scope.empty() ? "" : "::") + piece;
    return result;
}

bool isValidNodeName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." &&
           std::all_of(name.begin(), name.end(), isNameCharacter);
}

std::string validNodeName(const std::string& name)
{
    if (isValidNodeName(name))
        return name;
    std::string valid = name;
    std::replace_if(
        valid.begin(), valid.end(), [](char c) { return !isNameCharacter(c); }, '_');
    return isValidNodeName(valid) ? valid : "node";
}

NumberedName splitNumber(const std::string& name)
{
    std::size_t begin = name.size();
    while (begin > 0 && isDigit(name[begin - 1]))
        --begin;
    const std::size_t digits = name.size() - begin;
    if (digits == 0 || digits > max_digits)
        return {name, -1};
    return {name.substr(0, begin), std::stoi(name.substr(begin))};
}

std::vector<std::string> splitWords(const std::string& text, const char* separators)
{
    std::vector<std::string> words;
    std::size_t begin = text.find_first_not_of(separators);
    while (begin != std::string::npos)
    {
        const std::size_t end = text.find_first_of(separators, begin);
        words.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(separators, end);
    }
    return words;
}

bool maskFits(const std::string& patterns, const std::string& words)
{
    const std::vector<std::string> contexts = splitWords(words, " ");
    for (const std::string& pattern : splitWords(patterns, " "))
        for (const std::string& context : contexts)
            if (fnmatch(pattern.c_str(), context.c_str(), 0) == 0)
                return true;
    return false;
}

} // namespace standin
