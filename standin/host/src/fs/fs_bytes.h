#ifndef STANDIN_FS_BYTES_H
#define STANDIN_FS_BYTES_H

#include <FS/FS_Reader.h>

#include <memory>
#include <string>

/// @file
/// Where the bytes of a file or a section are, and reading them.

namespace standin
{

/// Tells a file from the one that took its place.
struct FileIdentity
{
    int64 device, number, size, seconds, nanoseconds;

    bool operator==(const FileIdentity& other) const;
};

/// Bytes that are open for reading.
class Bytes
{
public:
    virtual ~Bytes() {}
    /// Gives up to `size` bytes and returns how many; 0 at the end, -1 when they cannot be read.
    virtual exint readAt(int64 offset, char* bytes, exint size) const = 0;
};

/// A range of a file, or a text in memory. Holds nothing open.
struct BytesPlace
{
    std::string path;           ///< of the file; for texts in memory of the file they are meant for
    FileIdentity identity = {}; ///< of the file when it was looked at
    std::shared_ptr<const std::string> memory; ///< null for a range of a file
    int64 offset = 0;
    int64 length = 0;
    int64 modTime = 0; ///< Unix seconds

    /// Null when the file cannot be opened, or is another one by now.
    std::shared_ptr<const Bytes> open() const;
};

/// The whole of a file, whose path may be that of `place`; false, with a sentence, when it is missing, no file or not readable.
bool placeOfFile(const std::string& path, BytesPlace& place, std::string& why);

/// A stream of a range; null when it cannot be opened.
std::unique_ptr<UT_IStream> openStream(const BytesPlace& place);

bool isDirectory(const std::string& path);

} // namespace standin

/// What a reader reads: bytes, or the files of a directory, which have no stream.
struct FS_Reader::Source
{
    standin::BytesPlace place;
    bool directory = false;
};

#endif
