#ifndef BENCH_SUPPORT_H
#define BENCH_SUPPORT_H

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace benchmark
{
class State;
}

/// @file
/// What the benchmarks have in common: a place of their own, clocks, the numbers made of many samples, and the rows of the
/// table that script/bench makes of all of them.

namespace bench
{

/// A directory of this run, removed at the end. Throws when it cannot be made.
class ScratchDirectory
{
public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// Has the host find nothing but what is in `scratch`, and records go to an endpoint there where nobody listens.
void isolate(const std::filesystem::path& scratch);

typedef std::vector<double> Times; ///< microseconds

/// The time that a fraction of the samples does not exceed; 0 without samples.
double quantile(Times times, double fraction);

inline double median(const Times& times) { return quantile(times, 0.5); }

/// Processor time of the calling thread: for work that waits for nothing, the same on a busy machine.
double processorMicrosecondsOf(const std::function<void()>& run);

/// Runs `measure` in a process of its own and hands over what it wrote into `bytes`. False when that process failed.
bool runApart(const std::function<void()>& measure, void* bytes, std::size_t size);

/// Takes a measurement, any plain record, in a process of its own.
template <typename Sample, typename Measure>
bool measureApart(Measure measure, Sample& sample)
{
    return runApart([&] { sample = measure(); }, &sample, sizeof sample);
}

/// One row of the common table.
struct Row
{
    std::string work; ///< what is done
    std::string size; ///< on how much of it, for people
    double amount;    ///< the size as a number, for the growth from row to row; 0: there is none
    double ours;      ///< microseconds, or what `unit` says
    double floor;     ///< of the least that must be done; 0: there is none
    double aim;       ///< of ours to floor; 0: none was set
    const char* unit = "us";
};

/// Adds a row to the file that KORVAN_BENCH_ROWS names, one JSON object a line. Does nothing without it.
void report(const Row& row);

/// Ends one benchmark; the program's status will be 1.
void failWith(benchmark::State& state, const char* text);

/// The whole program: takes Google Benchmark's arguments, has `add` register benchmarks with a directory of this run, runs
/// those that were chosen and prints. Returns the exit status: 2 for unknown arguments, 1 when nothing ran or one failed.
int runBenchmarks(int argc, char** argv, const std::function<void(const std::filesystem::path&)>& add,
                  const std::function<void()>& printTable);

} // namespace bench

#endif
