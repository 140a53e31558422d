#include "read_file.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace zelk::renderer
{

std::string objectionToKind(const char* file)
{
    struct stat status;
    if (stat(file, &status) != 0 || S_ISREG(status.st_mode))
        return std::string();
    return S_ISDIR(status.st_mode) ? std::strerror(EISDIR) : "It is a pipe or a device and no file";
}

std::optional<std::string> readFile(const char* file, std::string& why)
{
    why = objectionToKind(file);
    if (!why.empty())
        return std::nullopt;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file, "rb"), &std::fclose);
    std::string text;
    std::size_t length = stream ? 1 : 0;
    for (std::array<char, 65536> block; length > 0; text.append(block.data(), length))
        length = std::fread(block.data(), 1, block.size(), stream.get());
    if (stream && !std::ferror(stream.get()))
        return text;
    why = std::strerror(errno);
    return std::nullopt;
}

} // namespace zelk::renderer
