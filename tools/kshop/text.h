#ifndef KSHOP_TEXT_H
#define KSHOP_TEXT_H

#include <string>
#include <string_view>
#include <vector>

/// @file
/// Text for people: what a terminal can show, aligned columns, names that were perhaps meant. The same under every
/// locale.

namespace kshop
{

/// The text as a terminal may get it: bytes that are no UTF-8 become U+FFFD, control characters the escapes \n, \t and
/// \xNN.
std::string printable(std::string_view text);

/// The same between double quotes.
std::string quoted(std::string_view text);

/// Characters (code points) of a UTF-8 text.
std::size_t width(std::string_view text);

/// The text and blanks up to `columns` characters; longer texts stay as they are.
std::string padded(std::string_view text, std::size_t columns);

/// A number without needless digits: "1", "0.25", "-1294967296", "1e+20".
std::string numberText(double value);

/// "1 input", "2 inputs", "0 inputs".
std::string countText(std::size_t count, const std::string& noun);

/// Words joined by a separator.
std::string joined(const std::vector<std::string>& words, const std::string& separator);

/// At most three of `candidates` that look like `name`, the most similar first; may be empty.
std::vector<std::string> nearestNames(const std::string& name, const std::vector<std::string>& candidates);

/// "did you mean A or B?" with those of them; empty when there are none.
std::string didYouMean(const std::string& name, const std::vector<std::string>& candidates);

/// The type name that the plug-in gives a renderer entry: "korvan::image" of "zelk__image".
std::string operatorName(const std::string& entryName);

/// Rows of cells as text, each column as wide as its widest cell, two blanks between columns, none at a line's end.
/// Cells hold printable text; a row may be shorter than others.
std::string tableText(const std::vector<std::vector<std::string>>& rows, const std::string& indent = "");

/// Emphasis for terminals; plain text elsewhere.
class Style
{
public:
    /// Coloured when standard output is a terminal that knows colours, and NO_COLOR is not set.
    static Style forStandardOutput();
    explicit Style(bool coloured) : m_coloured(coloured) {}

    std::string title(const std::string& text) const { return wrapped("1", text); }
    std::string faint(const std::string& text) const { return wrapped("2", text); }

private:
    std::string wrapped(const char* code, const std::string& text) const;
    bool m_coloured;
};

} // namespace kshop

#endif
