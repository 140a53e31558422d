#ifndef STANDIN_FS_TABLE_H
#define STANDIN_FS_TABLE_H

#include "fs_bytes.h"

#include <string>
#include <vector>

/// @file
/// The table of sections of an indexed file or directory, read and written.

namespace standin
{

struct Section
{
    std::string name;
    BytesPlace place;
    bool directory; ///< a directory of sections; `place` has its path and no bytes
};

/// A table as it was read. What is damaged is left out or cut, and `problem` says so.
struct SectionTable
{
    std::vector<Section> sections;
    std::string problem; ///< empty when all is well
    bool readable;       ///< false: this is no indexed file at all
};

/// Reads the table of an indexed file, or of one inside a section.
/// @param name  what the problem calls it
SectionTable readTable(const BytesPlace& place, const std::string& name);

/// Reads the table of a directory: the file "Sections.list" has a line for each section, the name of its file, a tab and
/// its own name. A file that is a directory holds sections again.
SectionTable readExpandedTable(const std::string& directory);

/// The header and the table before the data of these sections.
std::string writeTable(const std::vector<Section>& sections);

/// The most bytes that the data of all sections can have: their places are numbers of 32 bits.
constexpr int64 max_data_size = 0xffffffffLL;

} // namespace standin

#endif
