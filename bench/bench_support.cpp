#include "bench_support.h"

#include <benchmark/benchmark.h>

#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace bench
{

ScratchDirectory::ScratchDirectory()
{
    std::string pattern = (fs::temp_directory_path() / "korvan_bench_XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw fs::filesystem_error("cannot make a directory", pattern,
                                   std::error_code(errno, std::generic_category()));
    m_path = pattern;
}

ScratchDirectory::~ScratchDirectory()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

void isolate(const fs::path& scratch)
{
    setenv("HOUDINI_PATH", scratch.c_str(), 1);
    setenv("ZELK_STARTUP_LOG", "0", 1);
    setenv("ZELK_IPR_ENDPOINT", ("ipc://" + (scratch / "render").string()).c_str(), 1);
    unsetenv("HOUDINI_DSO_PATH");
    unsetenv("KORVAN_PLUGIN_PATH");
}

double quantile(Times times, double fraction)
{
    if (times.empty())
        return 0;
    const double last = static_cast<double>(times.size() - 1);
    const auto at = times.begin() + static_cast<std::ptrdiff_t>(fraction * last);
    std::nth_element(times.begin(), at, times.end());
    return *at;
}

namespace
{

double processorMicroseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e6 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_nsec);
}

} // namespace

double processorMicrosecondsOf(const std::function<void()>& run)
{
    const double start = processorMicroseconds();
    run();
    return processorMicroseconds() - start;
}

bool runApart(const std::function<void()>& measure, void* bytes, std::size_t size)
{
    int ends[2];
    if (pipe(ends) != 0)
        return false;
    const pid_t child = fork();
    if (child == 0)
    {
        measure();
        _exit(write(ends[1], bytes, size) == static_cast<ssize_t>(size) ? 0 : 1);
    }
    close(ends[1]);
    const bool received = child > 0 && read(ends[0], bytes, size) == static_cast<ssize_t>(size);
    close(ends[0]);
    int status = 1;
    if (child > 0)
        waitpid(child, &status, 0);
    return received && status == 0;
}

void report(const Row& row)
{
    const char* file = std::getenv("KORVAN_BENCH_ROWS");
    if (!file)
        return;
    char line[512];
    std::snprintf(
        line, sizeof line,
        R"({"work": "%s", "size": "%s", "amount": %.6g, "ours": %.6g, "floor": %.6g, "aim": %.6g, "unit": "%s"})",
        row.work.c_str(), row.size.c_str(), row.amount, row.ours, row.floor, row.aim, row.unit);
    std::ofstream(file, std::ios::app) << line << '\n';
}

namespace
{

bool failed = false;

} // namespace

void failWith(benchmark::State& state, const char* text)
{
    failed = true;
    state.SkipWithError(text);
}

int runBenchmarks(int argc, char** argv, const std::function<void(const fs::path&)>& add,
                  const std::function<void()>& printTable)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    const ScratchDirectory scratch;
    add(scratch.path());
    const bool ran = benchmark::RunSpecifiedBenchmarks() > 0;
    printTable();
    return ran && !failed ? 0 : 1;
}

} // namespace bench
