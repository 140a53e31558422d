#ifndef KSHOP_DIFF_DESCRIPTION_FILE_H
#define KSHOP_DIFF_DESCRIPTION_FILE_H

#include "../interface_json.h"

#include <string>

namespace kshop
{

/// Reads what `describe --json` has written and checks that it has all that a comparison looks at.
///
/// @param path   file; "-" is standard input
/// @param value  the document
/// @param why    a sentence with the file, the place in it and the remedy, when it cannot be used
bool readDescription(const std::string& path, Json& value, std::string& why);

} // namespace kshop

#endif
