#include <common/cut_off.h>

#include <elf.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

namespace standin
{

namespace
{

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

constexpr std::uint64_t endless = std::numeric_limits<std::uint64_t>::max();

// Where a table or segment ends; a damaged header may name one that no file can hold.
std::uint64_t endOf(std::uint64_t begin, std::uint64_t length)
{
    return length > endless - begin ? endless : begin + length;
}

// The program headers; nothing when they are not all there.
std::vector<Elf64_Phdr> segmentsOf(std::FILE* file, const Elf64_Ehdr& header)
{
    std::vector<Elf64_Phdr> segments(header.e_phnum);
    const bool reached = header.e_phoff <= static_cast<std::uint64_t>(std::numeric_limits<long>::max()) &&
                         std::fseek(file, static_cast<long>(header.e_phoff), SEEK_SET) == 0;
    if (!reached || std::fread(segments.data(), sizeof(Elf64_Phdr), segments.size(), file) != segments.size())
        segments.clear();
    return segments;
}

std::uint64_t promisedBy(std::FILE* file, const Elf64_Ehdr& header)
{
    std::uint64_t end = endOf(header.e_phoff, std::uint64_t{header.e_phnum} * sizeof(Elf64_Phdr));
    if (header.e_shoff != 0)
        end = std::max(end, endOf(header.e_shoff, std::uint64_t{header.e_shnum} * header.e_shentsize));
    for (const Elf64_Phdr& segment : segmentsOf(file, header))
        if (segment.p_type == PT_LOAD)
            end = std::max(end, endOf(segment.p_offset, segment.p_filesz));
    return end;
}

} // namespace

std::optional<CutOff> findCutOff(const std::string& file)
{
    const Stream stream(std::fopen(file.c_str(), "rb"), &std::fclose);
    struct stat status;
    if (!stream || fstat(fileno(stream.get()), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;

    Elf64_Ehdr header = {};
    const std::size_t length = std::fread(&header, 1, sizeof header, stream.get());
    if (length < SELFMAG || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0)
        return std::nullopt;

    const auto size = static_cast<std::uint64_t>(status.st_size);
    std::uint64_t promised = 0;
    if (length < sizeof header)
        promised = sizeof header;
    else if (header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_phentsize == sizeof(Elf64_Phdr))
        promised = promisedBy(stream.get(), header);
    return size < promised ? std::optional<CutOff>({promised, size}) : std::nullopt;
}

} // namespace standin
