// A host for tests: `ipr_test_host COUNT` sends so many edits and ends at once. With "fork", a child sends
// the second half.
#include <zelk/ipr/publisher.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
using zelk::ipr::DeltaPublisher;

void send(int from, int to)
{
    for (int i = from; i < to; ++i)
        DeltaPublisher::instance().send("edit " + std::to_string(i));
}

/// Sends while static objects are destroyed, after the publisher was closed if `first` is made before it.
struct Latecomer
{
    ~Latecomer() { DeltaPublisher::instance().send("too late"); }
};

int threadCount()
{
    std::FILE* status = std::fopen("/proc/self/status", "r");
    char line[256];
    int threads = 0;
    while (status && std::fgets(line, sizeof line, status))
        if (std::strncmp(line, "Threads:", 8) == 0)
            threads = std::atoi(line + 8);
    if (status)
        std::fclose(status);
    return threads;
}

int sendInTwoProcesses(int count)
{
    send(0, count / 2);
    DeltaPublisher::instance().flush(60000);
    const pid_t child = fork();
    if (child == 0)
    {
        send(count / 2, count);
        std::exit(0); // which flushes the child's own road
    }
    int status = 1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
} // namespace

int main(int count, char** arguments)
{
    static const Latecomer latecomer;
    const int edits = count > 1 ? std::atoi(arguments[1]) : 0;
    if (count > 2 && std::strcmp(arguments[2], "fork") == 0)
        return sendInTwoProcesses(edits);
    send(0, edits);
    if (edits == 0)
    {
        DeltaPublisher::instance();
        std::printf("threads %d\n", threadCount());
    }
    return 0;
}
