#include "scene_file.h"

#include <cerrno>
#include <cstdlib>
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
    File(const std::string& path, int flags, mode_t mode = 0666)
        : m_fd(open(path.c_str(), flags | O_CLOEXEC, mode))
    {
    }
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

/// The file behind symbolic links; the path itself where there is none yet.
std::string resolved(const std::string& path)
{
    char* real = realpath(path.c_str(), nullptr);
    std::string result = real ? real : path;
    std::free(real);
    return result;
}

/// 0, or the error number.
int writeAll(File& file, const std::string& bytes, bool toDisk)
{
    if (file.fd() < 0)
        return errno;
    for (std::size_t written = 0; written < bytes.size();)
    {
        const ssize_t count = write(file.fd(), bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR)
            return errno;
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    // Without this a crash of the machine may leave an empty file under the new name.
    if (toDisk && fsync(file.fd()) != 0 && errno != EINVAL && errno != EROFS)
        return errno;
    return file.close();
}

int replace(const std::string& path, const struct stat* old, const std::string& bytes)
{
    const std::string beside = path + ".saving-" + std::to_string(getpid());
    unlink(beside.c_str()); // left by a process of that number that was ended in the middle
    File file(beside, O_WRONLY | O_CREAT | O_EXCL);
    if (file.fd() < 0)
        return errno;
    if (old && fchmod(file.fd(), old->st_mode & 07777) != 0)
        errno = 0; // another owner's file: the person's own permissions are as good
    int error = writeAll(file, bytes, true);
    if (!error && rename(beside.c_str(), path.c_str()) != 0)
        error = errno;
    if (error)
        unlink(beside.c_str());
    return error;
}

int writeDirectly(const std::string& path, const std::string& bytes)
{
    File file(path, O_WRONLY);
    return writeAll(file, bytes, false);
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
    const std::string target = resolved(path);
    struct stat old;
    const bool exists = stat(target.c_str(), &old) == 0;
    const int error = exists && !S_ISREG(old.st_mode) ? writeDirectly(target, bytes)
                                                      : replace(target, exists ? &old : nullptr, bytes);
    if (error)
        why = "The file " + quoted(path) + " cannot be written: " + reason(error) +
              (exists && S_ISREG(old.st_mode) ? " The old file is as it was." : "");
    return error == 0;
}

} // namespace standin
