#ifndef KSHOP_PREVIEW_WORKER_PROCESS_H
#define KSHOP_PREVIEW_WORKER_PROCESS_H

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <string>

namespace kshop
{

/// A running worker: this very program as `preview-worker`, in a process group of its own, its standard output and error
/// caught. Ends with this object, and so does everything that its scripts started in that group. For one thread at a time.
class WorkerProcess
{
public:
    enum class Outcome
    {
        answered,
        died,   ///< it ended, or closed the line
        late,   ///< no answer in time; it is no longer of use
        stopped ///< `stop` was set meanwhile
    };

    /// Starts one with the person's --dso (may be empty). When that fails every exchange finds it dead.
    explicit WorkerProcess(const std::string& dso);
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Sends one line and waits for the line that answers it.
    Outcome exchange(const std::string& request, std::string& answer, std::chrono::milliseconds patience,
                     const std::atomic<bool>& stop);

    /// What it and its scripts wrote to standard output and error since the last call; of very much only the beginning.
    std::string takeConsole();

    /// How it ended, as the rest of a sentence: "ended with status 3", "was killed by signal 11". Call it after died.
    std::string waitForEnd();

private:
    enum class Step
    {
        wait,
        done,
        gone
    };
    void spawn(const std::string& dso, int line, int console);
    void readConsole();
    Step sendSome(const std::string& text, std::size_t& sent);
    Step receiveSome();

    pid_t m_pid = -1;
    int m_line = -1;    ///< our end; not blocking
    int m_console = -1; ///< reading end; not blocking
    std::string m_received;
    std::string m_consoleText;
    bool m_consoleWasCut = false;
};

} // namespace kshop

#endif
