#include "fs_write.h"

#include "ut/ut_newfile.h"

#include <algorithm>
#include <cstring>
#include <functional>

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

/// False when a section cannot be read or the sink fails.
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

} // namespace

bool writeIndexFile(const std::vector<Section>& sections, const std::string& path, std::string& why)
{
    const std::string prefix = "\"" + path + "\" was not written: ";
    if (dataSize(sections) > max_data_size)
    {
        why = prefix + "its sections hold more than 4 GB. Make several files of it.";
        return false;
    }
    NewFile file(path);
    if (file.error())
    {
        why = prefix + std::strerror(file.error()) + ". Check that the directory exists and may be written.";
        return false;
    }
    const auto toFile = [&](const char* bytes, std::size_t size) { return file.write(bytes, size); };
    if (copyAll(sections, toFile) && file.takePlace())
        return true;
    why = prefix + (file.error()
                        ? std::string(std::strerror(file.error())) + ". Make room, or choose another place."
                        : "a section of the old file can no longer be read. Open the file anew.");
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
