#ifndef STANDIN_OP_ARCHIVE_H
#define STANDIN_OP_ARCHIVE_H

#include <string>
#include <vector>

/// @file
/// The archive that scenes and the contents of assets are stored in: cpio in its portable ASCII form ("odc"), one
/// header of 76 octal digits per entry, the name with its zero, the data, no padding, and "TRAILER!!!" at the end.

namespace standin
{

struct ArchiveEntry
{
    std::string name; ///< without zeros
    std::string data; ///< any bytes
};

/// The archive's bytes. They depend on names and data only: every entry has time 0.
std::string writeArchive(const std::vector<ArchiveEntry>& entries);

/// Appends the entries of an archive. False, with `entries` as it was and a sentence in `why`, when the bytes are none,
/// end too early, or go on after the end.
bool readArchive(const std::string& bytes, std::vector<ArchiveEntry>& entries, std::string& why);

} // namespace standin

#endif
