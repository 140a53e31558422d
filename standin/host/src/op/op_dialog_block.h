#ifndef STANDIN_OP_DIALOG_BLOCK_H
#define STANDIN_OP_DIALOG_BLOCK_H

#include "op_text.h"

#include <string>
#include <vector>

/// @file
/// Dialog scripts as a tree of lines and of blocks between braces.

namespace standin
{

/// One line, with what stands between the braces behind it.
struct DialogLine
{
    Line words; ///< before the '{'; of braces that end on the same line, what is between them too
    std::vector<DialogLine> inside; ///< the lines of the block; empty when there is none

    bool is(const char* key) const { return !words.empty() && words[0].is(key); }
    /// The word at a place; empty behind the last one.
    std::string word(std::size_t place) const
    {
        return place < words.size() ? words[place].text : std::string();
    }
};

/// Reads a dialog script. Lines that begin with '#' say nothing. A brace too many or too few, and blocks that are nested
/// beyond reason, are left out with a sentence in `why`.
std::vector<DialogLine> readDialogLines(const std::string& text, std::string& why);

} // namespace standin

#endif
