#include "cmd_words.h"

#include <algorithm>

namespace standin
{

namespace
{

// Not <cctype>: a script means the same under every locale.
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool isLetterOrDigit(char c) { return isLetter(c) || (c >= '0' && c <= '9'); }
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

/// Replaces the variable at a '$'; returns the index behind it.
std::size_t appendVariable(const std::string& text, std::size_t at, const VariableLookUp& lookUp,
                           std::string& result)
{
    const bool braced = text.compare(at, 2, "${") == 0;
    const std::size_t begin = at + (braced ? 2 : 1);
    std::size_t end = begin;
    while (end < text.size() && isLetterOrDigit(text[end]))
        ++end;
    const std::string name = text.substr(begin, end - begin);
    const bool complete = isVariableName(name) && (!braced || (end < text.size() && text[end] == '}'));
    bool found = false;
    const std::string value = complete ? lookUp(name, found) : std::string();
    if (!found)
    {
        result += '$';
        return at + 1;
    }
    result += value;
    return end + (braced ? 1 : 0);
}

} // namespace

bool isVariableName(const std::string& text)
{
    return !text.empty() && isLetter(text[0]) && std::all_of(text.begin(), text.end(), isLetterOrDigit);
}

std::string expandVariables(const std::string& text, const VariableLookUp& lookUp)
{
    std::string result;
    std::size_t at = 0;
    while (at < text.size())
        if (text[at] == '$')
            at = appendVariable(text, at, lookUp, result);
        else
            result += text[at++];
    return result;
}

std::string splitQuoted(const std::string& text, std::vector<std::string>& words)
{
    CommandReader reader(text,
                         [](const std::string&, bool& found)
                         {
                             found = false;
                             return std::string();
                         });
    std::vector<std::string> line;
    std::string problem;
    while (problem.empty() && reader.next(line, problem))
        words.insert(words.end(), line.begin(), line.end());
    return problem;
}

CommandReader::CommandReader(const std::string& text, VariableLookUp lookUp, Evaluator evaluate)
    : m_text(text), m_lookUp(std::move(lookUp)), m_evaluate(std::move(evaluate))
{
}

bool CommandReader::next(std::vector<std::string>& words, std::string& problem)
{
    words.clear();
    problem.clear();
    if (atEnd())
        return false;
    skipBlanks();
    m_begin = m_end = m_at;
    for (; !atEnd() && !atSeparator(); skipBlanks())
        if (m_text[m_at] == '#')
            skipRemark();
        else
        {
            words.push_back(readWord(problem));
            m_end = m_at;
        }
    if (!atEnd())
        ++m_at;
    return true;
}

std::string CommandReader::source() const { return m_text.substr(m_begin, m_end - m_begin); }

void CommandReader::skipBlanks()
{
    while (!atEnd() && isBlank(m_text[m_at]))
        ++m_at;
}

void CommandReader::skipRemark()
{
    while (!atEnd() && m_text[m_at] != '\n')
        ++m_at;
}

std::string CommandReader::readWord(std::string& problem)
{
    std::string word;
    while (!atEnd() && !isBlank(m_text[m_at]) && !atSeparator())
    {
        const char c = m_text[m_at];
        if (c == '"' || c == '\'')
            readQuoted(word, problem);
        else if (readSpecial(word, problem))
            continue;
        else if (c == '\\' && m_at + 1 < m_text.size())
        {
            word += m_text[m_at + 1];
            m_at += 2;
        }
        else
        {
            word += c;
            ++m_at;
        }
    }
    return word;
}

void CommandReader::readQuoted(std::string& word, std::string& problem)
{
    const char quote = m_text[m_at++];
    while (!atEnd() && m_text[m_at] != quote)
    {
        if (quote == '"' && readSpecial(word, problem))
            continue;
        if (quote == '"' && m_text[m_at] == '\\' && m_at + 1 < m_text.size())
            ++m_at;
        word += m_text[m_at++];
    }
    if (!atEnd())
        ++m_at;
    else if (problem.empty()) // an open backquote in it took the rest; that one is to be closed first
        problem = std::string("a ") + quote + " is not closed; the command is not run.";
}

/// Reads the variable or expression that begins here; false when none does.
bool CommandReader::readSpecial(std::string& word, std::string& problem)
{
    if (m_text[m_at] == '$')
        m_at = appendVariable(m_text, m_at, m_lookUp, word);
    else if (m_text[m_at] == '`' && m_evaluate)
        readBackquoted(word, problem);
    else
        return false;
    return true;
}

void CommandReader::readBackquoted(std::string& word, std::string& problem)
{
    const std::size_t end = m_text.find('`', m_at + 1);
    const std::string expression = m_text.substr(m_at + 1, end - m_at - 1);
    m_at = end == std::string::npos ? m_text.size() : end + 1;
    if (end == std::string::npos)
        problem = "a ` is not closed; the command is not run.";
    else if (problem.empty())
        word += m_evaluate(expression, problem);
}

} // namespace standin
