#include "shared_object.h"

#include <common/cut_off.h>

#include <cerrno>
#include <cstring>
#include <elf.h>
#include <fstream>
#include <optional>
#include <sys/stat.h>

namespace standin
{

std::string objectionToFile(const std::string& path)
{
    struct stat status; // before it is opened: a pipe would wait for its writer
    if (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        return "it is a pipe, a directory or a device and no file. Take it out of the plug-in path.";
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::string("it cannot be read: ") + std::strerror(errno) +
               ". Make it readable, or take it out of the plug-in path.";
    char magic[SELFMAG] = {};
    if (!file.read(magic, sizeof magic) || std::memcmp(magic, ELFMAG, SELFMAG) != 0)
        return "it is no shared object. Replace it, or move it out of the plug-in path.";
    if (const std::optional<CutOff> cut = findCutOff(path))
        return "it is cut off: it should have " + std::to_string(cut->promised) + " bytes and has " +
               std::to_string(cut->size) + ". Copy it again.";
    return std::string();
}

} // namespace standin
