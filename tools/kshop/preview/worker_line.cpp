#include "worker_line.h"

#include "../output.h"

#include <sys/socket.h>
#include <sys/stat.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <thread>

namespace kshop
{

namespace
{

/// A script in an endless loop would never notice that nobody waits for it.
void endWithFront()
{
    pollfd line = {worker_line_fd, POLLRDHUP, 0};
    while (poll(&line, 1, -1) < 0 && errno == EINTR)
        ;
    std::_Exit(0);
}

bool isSocket(int fd)
{
    struct stat status = {};
    return fstat(fd, &status) == 0 && S_ISSOCK(status.st_mode);
}

} // namespace

bool WorkerLine::open()
{
    if (!isSocket(worker_line_fd))
    {
        complain("this command is the preview's own; try 'kshop preview'");
        return false;
    }
    fcntl(worker_line_fd, F_SETFD, FD_CLOEXEC); // not for programs that a script starts
    std::thread(endWithFront).detach();
    return true;
}

bool WorkerLine::receive(std::string& text)
{
    std::size_t end = 0;
    while ((end = m_buffer.find('\n')) == std::string::npos)
    {
        char part[65536];
        const ssize_t count = read(worker_line_fd, part, sizeof part);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        m_buffer.append(part, static_cast<std::size_t>(count));
    }
    text = m_buffer.substr(0, end);
    m_buffer.erase(0, end + 1);
    return true;
}

bool WorkerLine::send(const std::string& text)
{
    const std::string line = text + "\n";
    for (std::size_t sent = 0; sent < line.size();)
    {
        const ssize_t count = ::send(worker_line_fd, line.data() + sent, line.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace kshop
