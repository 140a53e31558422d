#include "fs_bytes.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace standin
{

namespace
{

class FileBytes : public Bytes
{
public:
    explicit FileBytes(int file) : m_file(file) {}
    ~FileBytes() override { ::close(m_file); }

    exint readAt(int64 offset, char* bytes, exint size) const override
    {
        ssize_t count;
        do
            count = ::pread(m_file, bytes, static_cast<std::size_t>(size), offset);
        while (count < 0 && errno == EINTR);
        return count;
    }

private:
    int m_file;
};

class MemoryBytes : public Bytes
{
public:
    explicit MemoryBytes(std::shared_ptr<const std::string> text) : m_text(std::move(text)) {}

    exint readAt(int64 offset, char* bytes, exint size) const override
    {
        const int64 left = std::max<int64>(0, static_cast<int64>(m_text->size()) - offset);
        const exint count = std::min<int64>(size, left);
        if (count > 0)
            std::memcpy(bytes, m_text->data() + offset, static_cast<std::size_t>(count));
        return count;
    }

private:
    std::shared_ptr<const std::string> m_text;
};

/// A range of bytes. A range that is longer than what is there breaks off.
class RangeStream : public UT_IStream
{
public:
    RangeStream(std::shared_ptr<const Bytes> bytes, int64 offset, int64 length)
        : m_bytes(std::move(bytes)), m_offset(offset), m_left(length)
    {
    }

protected:
    exint readBytes(char* bytes, exint size) override
    {
        if (m_left <= 0)
            return 0;
        const exint count = m_bytes->readAt(m_offset, bytes, std::min<int64>(size, m_left));
        if (count <= 0)
            return -1;
        m_offset += count;
        m_left -= count;
        return count;
    }

private:
    std::shared_ptr<const Bytes> m_bytes;
    int64 m_offset;
    int64 m_left;
};

FileIdentity identityOf(const struct stat& status)
{
    return {static_cast<int64>(status.st_dev), static_cast<int64>(status.st_ino), status.st_size,
            status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

} // namespace

bool FileIdentity::operator==(const FileIdentity& other) const
{
    return device == other.device && number == other.number && size == other.size &&
           seconds == other.seconds && nanoseconds == other.nanoseconds;
}

std::shared_ptr<const Bytes> BytesPlace::open() const
{
    if (memory)
        return std::make_shared<MemoryBytes>(memory);
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return nullptr;
    auto bytes = std::make_shared<FileBytes>(file);
    struct stat status;
    if (::fstat(file, &status) != 0 || !(identityOf(status) == identity))
        return nullptr;
    return bytes;
}

bool placeOfFile(const std::string& path, BytesPlace& place, std::string& why)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        why = "\"" + path + "\" cannot be read: " + std::strerror(errno) +
              ". Check the path, and that the file may be read.";
    else if (!S_ISREG(status.st_mode))
        why = "\"" + path + "\" cannot be read: it is no file. Name a file.";
    else
    {
        BytesPlace found; // and not `place`, whose own path may be the one that is asked for
        found.path = path;
        found.identity = identityOf(status);
        found.length = status.st_size;
        found.modTime = status.st_mtim.tv_sec;
        const bool readable = found.open() != nullptr;
        if (!readable)
            why = "\"" + path + "\" cannot be read: " + std::strerror(errno) +
                  ". Check that the file may be read.";
        place = std::move(found);
        return readable;
    }
    return false;
}

std::unique_ptr<UT_IStream> openStream(const BytesPlace& place)
{
    std::shared_ptr<const Bytes> bytes = place.open();
    if (!bytes)
        return nullptr;
    return std::unique_ptr<UT_IStream>(new RangeStream(bytes, place.offset, place.length));
}

bool isDirectory(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace standin
