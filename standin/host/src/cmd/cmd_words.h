#ifndef STANDIN_CMD_WORDS_H
#define STANDIN_CMD_WORDS_H

#include <functional>
#include <string>
#include <vector>

/// @file
/// How the text of an hscript is cut into commands and words.

namespace standin
{

/// Gives the value of a variable, and whether there is one of that name.
typedef std::function<std::string(const std::string& name, bool& found)> VariableLookUp;

/// Value of an expression; what is wrong with it goes to `problem`.
typedef std::function<std::string(const std::string& text, std::string& problem)> Evaluator;

/// A letter or '_', then letters, digits and '_'.
bool isVariableName(const std::string& text);

/// $NAME and ${NAME} replaced; unknown ones stay as typed.
std::string expandVariables(const std::string& text, const VariableLookUp& lookUp);

/// The words of a text, quotes around them taken off. Returns what is wrong with it; empty when nothing is.
std::string splitQuoted(const std::string& text, std::vector<std::string>& words);

/// Reads a script command by command.
class CommandReader
{
public:
    /// Without `evaluate` a backquote is a character like any other.
    CommandReader(const std::string& text, VariableLookUp lookUp, Evaluator evaluate = Evaluator());

    /// Reads the next command, its variables replaced; false at the end. `words` may be empty. `problem` says what
    /// is wrong with the command, which then is not to be run; empty when nothing is.
    bool next(std::vector<std::string>& words, std::string& problem);
    /// That command as it was typed.
    std::string source() const;

private:
    void skipBlanks();
    void skipRemark();
    std::string readWord(std::string& problem);
    void readQuoted(std::string& word, std::string& problem);
    bool readSpecial(std::string& word, std::string& problem);
    void readBackquoted(std::string& word, std::string& problem);
    bool atEnd() const { return m_at >= m_text.size(); }
    bool atSeparator() const { return m_text[m_at] == ';' || m_text[m_at] == '\n'; }

    std::string m_text;
    VariableLookUp m_lookUp;
    Evaluator m_evaluate;
    std::size_t m_at = 0;
    std::size_t m_begin = 0; // of the command that was read last
    std::size_t m_end = 0;
};

} // namespace standin

#endif
