#include "fs_write.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace standin
{

namespace
{

constexpr exint block_size = 64 * 1024;

/// Takes the bytes of a file piece by piece; false when it cannot.
typedef std::function<bool(const char* bytes, std::size_t size)> Sink;

bool copySection(const Section& section, const Sink& sink)
{
    const std::shared_ptr<const Bytes> bytes = section.directory ? nullptr : section.place.open();
    if (!bytes)
        return false;
    std::string block(block_size, '\0');
    for (int64 done = 0; done < section.place.length;)
    {
        const exint wanted = std::min<int64>(block_size, section.place.length - done);
        const exint count = bytes->readAt(section.place.offset + done, &block[0], wanted);
        if (count <= 0 || !sink(block.data(), static_cast<std::size_t>(count)))
            return false;
        done += count;
    }
    return true;
}

/// A failure of the sink leaves its reason in errno.
bool copyAll(const std::vector<Section>& sections, const Sink& sink)
{
    const std::string table = writeTable(sections);
    return sink(table.data(), table.size()) &&
           std::all_of(sections.begin(), sections.end(),
                       [&](const Section& section) { return copySection(section, sink); });
}

int64 dataSize(const std::vector<Section>& sections)
{
    int64 size = 0;
    for (const Section& section : sections)
        size += section.place.length;
    return size;
}

bool writeFully(int file, const char* bytes, std::size_t size)
{
    while (size > 0)
    {
        const ssize_t count = ::write(file, bytes, size);
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
        {
            bytes += count;
            size -= static_cast<std::size_t>(count);
        }
    }
    return true;
}

/// A link stays a link: what it leads to is replaced.
std::string behindLinks(const std::string& path)
{
    char* resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved)
        return path;
    std::string real = resolved;
    std::free(resolved);
    return real;
}

mode_t modeFor(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) == 0)
        return status.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

bool writeIndexFile(const std::vector<Section>& sections, const std::string& path, std::string& why)
{
    const std::string prefix = "\"" + path + "\" was not written: ";
    if (dataSize(sections) > max_data_size)
    {
        why = prefix + "its sections hold more than 4 GB. Make several files of it.";
        return false;
    }
    const std::string target = behindLinks(path);
    std::string temporary = target + ".XXXXXX";
    const int file = ::mkstemp(&temporary[0]);
    if (file < 0)
    {
        why = prefix + std::strerror(errno) + ". Check that the directory exists and may be written.";
        return false;
    }
    errno = 0;
    bool written = copyAll(sections, [&](const char* bytes, std::size_t size)
                           { return writeFully(file, bytes, size); }) &&
                   ::fchmod(file, modeFor(target)) == 0 && ::fsync(file) == 0;
    const int closed = ::close(file);
    written = written && closed == 0 && ::rename(temporary.c_str(), target.c_str()) == 0;
    if (written)
        return true;
    why = prefix + (errno ? std::string(std::strerror(errno)) + ". Make room, or choose another place."
                          : "a section of the old file can no longer be read. Open the file anew.");
    ::unlink(temporary.c_str());
    return false;
}

std::string indexBytes(const std::vector<Section>& sections)
{
    std::string result;
    const bool whole = copyAll(sections,
                               [&](const char* bytes, std::size_t size)
                               {
                                   result.append(bytes, size);
                                   return true;
                               });
    return whole ? result : std::string();
}

} // namespace standin
