#include "shared_object.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <elf.h>
#include <fstream>
#include <limits>
#include <sys/stat.h>

namespace standin
{

namespace
{

template <typename Record>
bool readAt(std::ifstream& file, std::uint64_t offset, Record& record)
{
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<std::streamoff>::max()))
        return false;
    file.clear();
    file.seekg(static_cast<std::streamoff>(offset));
    return static_cast<bool>(file.read(reinterpret_cast<char*>(&record), sizeof record));
}

/// The end of a part of the file; the largest number for a part that no file can hold.
std::uint64_t endOf(std::uint64_t offset, std::uint64_t size)
{
    return size > UINT64_MAX - offset ? UINT64_MAX : offset + size;
}

/// How long a file must be to hold all that its header promises. Headers of other machines are the system's to refuse.
std::uint64_t promisedSize(std::ifstream& file)
{
    Elf64_Ehdr header;
    if (!readAt(file, 0, header))
        return sizeof header;
    if (header.e_ident[EI_CLASS] != ELFCLASS64 || header.e_phentsize != sizeof(Elf64_Phdr))
        return 0;
    std::uint64_t end = endOf(header.e_phoff, std::uint64_t(header.e_phnum) * sizeof(Elf64_Phdr));
    if (header.e_shoff != 0)
        end = std::max(end, endOf(header.e_shoff, std::uint64_t(header.e_shnum) * header.e_shentsize));
    for (unsigned i = 0; i < header.e_phnum; ++i)
    {
        Elf64_Phdr segment;
        if (!readAt(file, endOf(header.e_phoff, std::uint64_t(i) * sizeof segment), segment))
            break; // the headers themselves are cut off, and their end counts already
        if (segment.p_type == PT_LOAD)
            end = std::max(end, endOf(segment.p_offset, segment.p_filesz));
    }
    return end;
}

std::uint64_t sizeOf(std::ifstream& file)
{
    file.clear();
    file.seekg(0, std::ios::end);
    return static_cast<std::uint64_t>(file.tellg());
}

} // namespace

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
    if (!readAt(file, 0, magic) || std::memcmp(magic, ELFMAG, SELFMAG) != 0)
        return "it is no shared object. Replace it, or move it out of the plug-in path.";
    const std::uint64_t promised = promisedSize(file);
    const std::uint64_t size = sizeOf(file);
    if (size < promised)
        return "it is cut off: it should have " + std::to_string(promised) + " bytes and has " +
               std::to_string(size) + ". Copy it again.";
    return std::string();
}

} // namespace standin
