#include "ut_newfile.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace standin
{

namespace
{

/// The file behind symbolic links; the path itself where there is none yet.
std::string behindLinks(const std::string& path)
{
    char* real = ::realpath(path.c_str(), nullptr);
    std::string result = real ? real : path;
    std::free(real);
    return result;
}

/// Gives a file the permissions of another one, if there is that one. When it is somebody else's that may fail: the
/// person's own permissions are as good.
void copyPermissions(const std::string& from, int descriptor)
{
    struct stat old;
    if (::stat(from.c_str(), &old) == 0 && ::fchmod(descriptor, old.st_mode & 07777) != 0)
        errno = 0;
}

} // namespace

int writeFully(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0)
    {
        const ssize_t count = ::write(descriptor, bytes, size);
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0)
        {
            bytes += count;
            size -= static_cast<std::size_t>(count);
        }
    }
    return 0;
}

NewFile::NewFile(const std::string& path)
    : m_path(behindLinks(path)),
      m_beside(m_path + ".saving-" + std::to_string(::getpid())),
      m_descriptor(-1),
      m_error(0)
{
    ::unlink(m_beside.c_str()); // left by a process of that number that was ended in the middle
    m_descriptor = ::open(m_beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_descriptor < 0)
        failed();
    else
        copyPermissions(m_path, m_descriptor);
}

NewFile::~NewFile()
{
    close();
    if (!m_beside.empty())
        ::unlink(m_beside.c_str());
}

bool NewFile::write(const char* bytes, std::size_t size)
{
    if (!m_error)
        m_error = writeFully(m_descriptor, bytes, size);
    return m_error == 0;
}

bool NewFile::takePlace()
{
    if (m_error)
        return false;
    // Without this a crash of the machine may leave an empty file under the new name.
    if (::fsync(m_descriptor) != 0 && errno != EINVAL && errno != EROFS)
        return failed();
    close();
    if (!m_error && ::rename(m_beside.c_str(), m_path.c_str()) != 0)
        return failed();
    if (!m_error)
        m_beside.clear();
    return m_error == 0;
}

/// Remembers the error of the call that just failed.
bool NewFile::failed()
{
    m_error = errno;
    return false;
}

void NewFile::close()
{
    if (m_descriptor >= 0 && ::close(m_descriptor) != 0 && !m_error)
        m_error = errno;
    m_descriptor = -1;
}

} // namespace standin
