#ifndef STANDIN_OP_TEXT_H
#define STANDIN_OP_TEXT_H

#include <string>
#include <vector>

/// @file
/// The words that the text entries of scenes and assets are made of.

namespace standin
{

/// The text between '"', with '"', '\' and control characters written as escapes; readLines() gives it back.
std::string quoteText(const std::string& text);

/// A name as one word: as it is when it is made of letters, digits and "_:.-" only, else quoted.
std::string nameText(const std::string& name);

/// The shortest text that reads back as the same number, whatever the locale; "nan", "inf", "-inf" too.
std::string printNumber(double value);
/// False when the word is no number, or has something behind it.
bool readNumber(const std::string& word, double& value);

struct Word
{
    std::string text;
    bool quoted; ///< a text between '"'; '{' in one is no brace

    bool is(const char* other) const { return !quoted && text == other; }
};
typedef std::vector<Word> Line;

/// The lines of a text that hold words. Words are separated by white space; a quoted one may go on over line ends. A
/// quoted word without an end takes the rest, and `why` then is a sentence that names the line.
std::vector<Line> readLines(const std::string& text, std::string& why);

} // namespace standin

#endif
