#ifndef KSHOP_RECORD_FILE_H
#define KSHOP_RECORD_FILE_H

#include <string>
#include <vector>

namespace kshop
{

/// Reads a file of records, one JSON object a line as `listen --json` prints them, into serialised records. "-" is
/// standard input; lines with nothing but blanks are passed over.
///
/// False, after a sentence that names file and line, at the first mistake; `records` is then of no use.
bool readRecordFile(const std::string& path, std::vector<std::string>& records);

/// Checks that a file can be read. False after a sentence that names it; `what` is the word for such a file, `example`
/// what should have been given in place of a directory: "script" and "a Python script". "-" is standard input.
bool isReadable(const std::string& path, const std::string& what, const std::string& example);

} // namespace kshop

#endif
