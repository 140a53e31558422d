#include "worker_process.h"

#include "worker_line.h"

#include <sys/socket.h>
#include <sys/wait.h>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <unistd.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <vector>

namespace kshop
{

namespace
{

using Clock = std::chrono::steady_clock;

/// More than this of one answer's console text is left out.
const std::size_t most_console_bytes = 256 * 1024;

/// How long a wait may keep us from seeing that we are to stop.
const int glance_ms = 50;

/// Takes care that our ends are none of the descriptors that a child gets under fixed numbers.
void closeIfOpen(int& fd)
{
    if (fd >= 0)
        close(fd);
    fd = -1;
}

/// What a child does with its descriptors and signals before it becomes the worker.
class Spawning
{
public:
    Spawning(int line, int console)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&m_actions, console, 1);
        posix_spawn_file_actions_adddup2(&m_actions, console, 2);
        posix_spawn_file_actions_adddup2(&m_actions, line, worker_line_fd);
        // Connections of the page must not stay open in it.
        posix_spawn_file_actions_addclosefrom_np(&m_actions, worker_line_fd + 1);
        posix_spawnattr_init(&m_attributes);
        sigset_t none, ours;
        sigemptyset(&none);
        sigemptyset(&ours);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
            sigaddset(&ours, signal);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &ours);
        posix_spawnattr_setpgroup(&m_attributes, 0); // Ctrl-C is for us, not for it
        posix_spawnattr_setflags(&m_attributes,
                                 POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    ~Spawning()
    {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }
    Spawning(const Spawning&) = delete;
    Spawning& operator=(const Spawning&) = delete;

    pid_t run(std::vector<std::string> arguments) const
    {
        std::vector<char*> argv;
        argv.reserve(arguments.size() + 1);
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        pid_t pid = -1;
        return posix_spawn(&pid, "/proc/self/exe", &m_actions, &m_attributes, argv.data(), environ) == 0 ? pid
                                                                                                         : -1;
    }

private:
    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attributes;
};

} // namespace

WorkerProcess::WorkerProcess(const std::string& dso)
{
    int line[2] = {-1, -1}, console[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, line) == 0 && pipe2(console, O_CLOEXEC) == 0)
    {
        m_line = line[0];
        m_console = console[0];
        fcntl(m_line, F_SETFL, O_NONBLOCK);
        fcntl(m_console, F_SETFL, O_NONBLOCK);
        spawn(dso, line[1], console[1]);
    }
    else
        closeIfOpen(line[0]);
    closeIfOpen(line[1]);
    closeIfOpen(console[1]);
}

void WorkerProcess::spawn(const std::string& dso, int line, int console)
{
    std::vector<std::string> arguments = {"kshop"};
    if (!dso.empty())
        arguments.insert(arguments.end(), {"--dso", dso});
    arguments.emplace_back("preview-worker");
    m_pid = Spawning(line, console).run(arguments);
}

WorkerProcess::~WorkerProcess()
{
    closeIfOpen(m_line);
    if (m_pid > 0)
    {
        kill(-m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    closeIfOpen(m_console);
}

void WorkerProcess::readConsole()
{
    // A pipe holds less than this. A script that prints without an end would keep us here for ever.
    const int most_parts = 16;
    char part[16384];
    for (int i = 0; i < most_parts; ++i)
    {
        const ssize_t count = read(m_console, part, sizeof part);
        if (count <= 0)
            return;
        const std::size_t room = most_console_bytes - std::min(most_console_bytes, m_consoleText.size());
        m_consoleText.append(part, std::min(room, static_cast<std::size_t>(count)));
        m_consoleWasCut = m_consoleWasCut || room < static_cast<std::size_t>(count);
    }
}

std::string WorkerProcess::takeConsole()
{
    readConsole();
    std::string text;
    text.swap(m_consoleText);
    if (m_consoleWasCut)
        text += "\n... and more, which was left out\n";
    m_consoleWasCut = false;
    return text;
}

WorkerProcess::Step WorkerProcess::sendSome(const std::string& text, std::size_t& sent)
{
    const ssize_t count = send(m_line, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
    if (count > 0)
        sent += static_cast<std::size_t>(count);
    return count > 0 || errno == EAGAIN || errno == EINTR ? Step::wait : Step::gone;
}

WorkerProcess::Step WorkerProcess::receiveSome()
{
    char part[65536];
    const ssize_t count = recv(m_line, part, sizeof part, 0);
    if (count <= 0)
        return count < 0 && (errno == EAGAIN || errno == EINTR) ? Step::wait : Step::gone;
    m_received.append(part, static_cast<std::size_t>(count));
    return part[count - 1] == '\n' ? Step::done : Step::wait;
}

WorkerProcess::Outcome WorkerProcess::exchange(const std::string& request, std::string& answer,
                                               std::chrono::milliseconds patience,
                                               const std::atomic<bool>& stop)
{
    if (m_pid <= 0)
        return Outcome::died;
    const std::string text = request + "\n";
    const Clock::time_point end = Clock::now() + patience;
    std::size_t sent = 0;
    m_received.clear();
    while (!stop)
    {
        if (Clock::now() >= end)
            return Outcome::late;
        const short wanted = sent < text.size() ? POLLIN | POLLOUT : POLLIN;
        pollfd fds[] = {{m_line, wanted, 0}, {m_console, POLLIN, 0}};
        poll(fds, 2, glance_ms);
        readConsole(); // a full pipe would stop the worker
        Step step = Step::wait;
        if (fds[0].revents & POLLOUT)
            step = sendSome(text, sent);
        if (step == Step::wait && (fds[0].revents & (POLLIN | POLLHUP | POLLERR)))
            step = receiveSome();
        if (step == Step::gone)
            return Outcome::died;
        if (step == Step::done)
        {
            answer.swap(m_received);
            return Outcome::answered;
        }
    }
    return Outcome::stopped;
}

std::string WorkerProcess::waitForEnd()
{
    if (m_pid <= 0)
        return "could not be started";
    // It may have closed the line and live on.
    const Clock::time_point end = Clock::now() + std::chrono::seconds(1);
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(m_pid, &status, WNOHANG)) == 0 && Clock::now() < end)
        usleep(10000);
    if (ended != m_pid)
        return "closed its line";
    kill(-m_pid, SIGKILL); // what its scripts left behind
    m_pid = -1;
    if (WIFSIGNALED(status))
        return fmt::format("was killed by signal {}", WTERMSIG(status));
    return fmt::format("ended with status {}", WEXITSTATUS(status));
}

} // namespace kshop
