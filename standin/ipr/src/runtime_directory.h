/// The directory of the default endpoint.
#pragma once

#include <string>

namespace zelk::ipr
{

/// XDG_RUNTIME_DIR, or else /tmp/korvan-UID.
std::string runtimeDirectory();

/// Makes sure that nobody else can enter the directory, and makes it first when it is the one below /tmp.
/// False, with a sentence in `error`, when it is missing, another user's, a link, or open to others.
bool prepareRuntimeDirectory(const std::string& directory, std::string& error);

} // namespace zelk::ipr
