/// What the tests of the road share: processes, places, and the environment.
#pragma once

#include <gmock/gmock.h>

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

/// Patience with a machine that is busy with other things; nothing is expected to take as long.
constexpr std::chrono::seconds patience{60};

/// A directory of the test's own, removed with everything in it.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string path(const std::string& name = "") const
    {
        return name.empty() ? m_path : m_path + "/" + name;
    }
    std::string endpoint(const std::string& name = "render") const { return "ipc://" + path(name); }

private:
    std::string m_path;
};

/// Sets an environment variable (to nothing at all when `value` is null) until the end of its life.
class Environment
{
public:
    Environment(const char* name, const char* value);
    ~Environment();
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    std::string m_name;
    std::string m_former;
    bool m_wasSet;
};

/// A program that runs beside the test and whose output lines are read one by one. It is killed at the end.
class Process
{
public:
    explicit Process(const std::vector<std::string>& command);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// The next line of its standard output; "<end>" after the last one, "<timeout>" when `limit` is over.
    std::string line(std::chrono::milliseconds limit = patience);

    /// Everything on its standard error up to its end.
    std::string errors();

    void signal(int number) const;

    /// Kills it without a chance to say anything.
    void kill();

    /// Its exit status; -1 when a signal ended it.
    int wait();

private:
    bool fill(std::chrono::milliseconds limit);

    pid_t m_pid = -1;
    int m_output = -1;
    int m_errors = -1;
    int m_status = -1;
    std::string m_buffer;
};

/// A render that listens; the constructor returns when it does.
class RenderProcess : public Process
{
public:
    explicit RenderProcess(const std::string& endpoint);

    /// Its endpoint as bound.
    std::string endpoint;
};

/// Waits until `condition` holds, and tells whether it does.
bool eventually(const std::function<bool()>& condition);

/// Memory of this process, in bytes.
std::size_t residentBytes();

/// True under a sanitizer, which keeps freed memory to itself.
bool memoryIsMeasurable();

/// An endpoint on this machine that nobody listens at.
std::string freeTcpEndpoint();

/// How often `part` occurs in `text`.
int occurrences(const std::string& text, const std::string& part);
