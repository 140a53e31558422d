#pragma once

#include <optional>
#include <string>

namespace zelk::renderer
{

/// Why a path is no file that can be read to its end: it is a directory, a pipe or a device. Empty when it is a file, and
/// also when nothing can be told about it, since opening it will tell. Opens nothing, so that no pipe makes it wait.
std::string objectionToKind(const char* file);

/// The bytes of a file; nothing when it cannot be read, and then `why` tells the reason.
std::optional<std::string> readFile(const char* file, std::string& why);

} // namespace zelk::renderer
