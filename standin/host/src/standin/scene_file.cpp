#include "scene_file.h"

#include "ut/ut_newfile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace standin
{

namespace
{

std::string quoted(const std::string& path) { return "\"" + path + "\""; }

/// What an error number means, and what to do about it.
std::string reason(int error)
{
    const std::string text = std::strerror(error);
    if (error == ENOSPC || error == EDQUOT || error == EFBIG)
        return text + ". Make room, or choose another place.";
    if (error == ENOENT || error == ENOTDIR)
        return text + ". Check the path.";
    if (error == EACCES || error == EPERM || error == EROFS)
        return text + ". Check the permissions, or choose another place.";
    return text + ".";
}

/// Closes a file at the end of its scope.
class File
{
public:
    File(const std::string& path, int flags) : m_fd(open(path.c_str(), flags | O_CLOEXEC)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { close(); }

    int fd() const { return m_fd; }

    /// 0, or the error number.
    int close()
    {
        const int fd = m_fd;
        m_fd = -1;
        return fd >= 0 && ::close(fd) != 0 ? errno : 0;
    }

private:
    int m_fd;
};

/// 0, or the error number.
int replace(const std::string& path, const std::string& bytes)
{
    NewFile file(path);
    if (file.write(bytes.data(), bytes.size()))
        file.takePlace();
    return file.error();
}

/// The same.
int writeDirectly(const std::string& path, const std::string& bytes)
{
    File file(path, O_WRONLY);
    const int error = file.fd() < 0 ? errno : writeFully(file.fd(), bytes.data(), bytes.size());
    return error ? error : file.close();
}

} // namespace

bool readWhole(const std::string& path, std::string& bytes, std::string& why)
{
    File file(path, O_RDONLY);
    int error = file.fd() < 0 ? errno : 0;
    char buffer[1 << 16];
    while (!error)
    {
        const ssize_t count = read(file.fd(), buffer, sizeof(buffer));
        if (count == 0)
            return true;
        if (count > 0)
            bytes.append(buffer, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            error = errno;
    }
    why = "The file " + quoted(path) + " cannot be read: " + reason(error);
    return false;
}

bool writeWhole(const std::string& path, const std::string& bytes, std::string& why)
{
    struct stat old;
    const bool exists = stat(path.c_str(), &old) == 0;
    const bool isDevice = exists && !S_ISREG(old.st_mode);
    const int error = isDevice ? writeDirectly(path, bytes) : replace(path, bytes);
    if (error)
        why = "The file " + quoted(path) + " cannot be written: " + reason(error) +
              (exists && !isDevice ? " The old file is as it was." : "");
    return error == 0;
}

} // namespace standin
