#ifndef STANDIN_FS_WRITE_H
#define STANDIN_FS_WRITE_H

#include "fs_table.h"

#include <string>
#include <vector>

namespace standin
{

/// Writes an indexed file beside `path` and puts it into its place. False, with a sentence, when that failed; what was at
/// `path` is then as it was.
bool writeIndexFile(const std::vector<Section>& sections, const std::string& path, std::string& why);

/// The bytes of such a file; empty when a section cannot be read.
std::string indexBytes(const std::vector<Section>& sections);

} // namespace standin

#endif
