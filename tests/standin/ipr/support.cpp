#include "support.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

using Clock = std::chrono::steady_clock;

TemporaryDirectory::TemporaryDirectory()
{
    char path[] = "/tmp/ipr-test-XXXXXX";
    m_path = mkdtemp(path);
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

Environment::Environment(const char* name, const char* value)
    : m_name(name), m_wasSet(std::getenv(name) != nullptr)
{
    if (m_wasSet)
        m_former = std::getenv(name);
    value ? setenv(name, value, 1) : unsetenv(name);
}

Environment::~Environment()
{
    m_wasSet ? setenv(m_name.c_str(), m_former.c_str(), 1) : unsetenv(m_name.c_str());
}

Process::Process(const std::vector<std::string>& command)
{
    int output[2];
    int errors[2];
    if (pipe2(output, O_CLOEXEC) != 0 || pipe2(errors, O_CLOEXEC) != 0)
        return;
    std::vector<char*> arguments;
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    m_pid = fork();
    if (m_pid == 0)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(output[1], STDOUT_FILENO);
        dup2(errors[1], STDERR_FILENO);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    close(output[1]);
    close(errors[1]);
    m_output = output[0];
    m_errors = errors[0];
}

Process::~Process()
{
    kill();
    close(m_output);
    close(m_errors);
}

bool Process::fill(std::chrono::milliseconds limit)
{
    pollfd item = {m_output, POLLIN, 0};
    if (poll(&item, 1, static_cast<int>(limit.count())) <= 0)
        return false;
    char bytes[4096];
    const ssize_t count = read(m_output, bytes, sizeof bytes);
    m_buffer += count > 0 ? std::string(bytes, static_cast<std::size_t>(count)) : "<end>\n";
    return true;
}

std::string Process::line(std::chrono::milliseconds limit)
{
    const auto deadline = Clock::now() + limit;
    std::size_t end = std::string::npos;
    while ((end = m_buffer.find('\n')) == std::string::npos)
    {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() < 0 || !fill(left))
            return "<timeout>";
    }
    const std::string text = m_buffer.substr(0, end);
    m_buffer.erase(0, end + 1);
    return text;
}

std::string Process::errors()
{
    std::string text;
    char bytes[4096];
    ssize_t count = 0;
    while ((count = read(m_errors, bytes, sizeof bytes)) > 0)
        text.append(bytes, static_cast<std::size_t>(count));
    return text;
}

void Process::signal(int number) const
{
    if (m_pid > 0)
        ::kill(m_pid, number);
}

void Process::kill()
{
    signal(SIGKILL);
    wait();
}

int Process::wait()
{
    int status = 0;
    if (m_pid > 0 && waitpid(m_pid, &status, 0) == m_pid)
        m_status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    m_pid = -1;
    return m_status;
}

RenderProcess::RenderProcess(const std::string& wanted) : Process({IPR_TEST_RENDER, wanted})
{
    const std::string beginning = "listening at ";
    const std::string first = line();
    EXPECT_EQ(first.substr(0, beginning.size()), beginning) << first;
    endpoint = first.size() > beginning.size() ? first.substr(beginning.size()) : "";
}

bool eventually(const std::function<bool()>& condition)
{
    const auto deadline = Clock::now() + patience;
    while (!condition() && Clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return condition();
}

std::size_t residentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

bool memoryIsMeasurable()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}

std::string freeTcpEndpoint()
{
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(probe, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size), 0);
    close(probe);
    return "tcp://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
}

int occurrences(const std::string& text, const std::string& part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}
