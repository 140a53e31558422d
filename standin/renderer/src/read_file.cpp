#include "read_file.h"

#include <array>
#include <cstdio>
#include <memory>

namespace zelk::renderer
{

std::optional<std::string> readFile(const char* file)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file, "rb"), &std::fclose);
    if (!stream)
        return std::nullopt;
    std::string text;
    std::size_t length = 1;
    for (std::array<char, 65536> block; length > 0; text.append(block.data(), length))
        length = std::fread(block.data(), 1, block.size(), stream.get());
    if (std::ferror(stream.get()))
        return std::nullopt;
    return text;
}

} // namespace zelk::renderer
