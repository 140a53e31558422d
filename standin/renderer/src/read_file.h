#pragma once

#include <optional>
#include <string>

namespace zelk::renderer
{

/// The bytes of a file; nothing when it cannot be read, and then `errno` tells why.
std::optional<std::string> readFile(const char* file);

} // namespace zelk::renderer
