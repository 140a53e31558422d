#ifndef BENCH_SUPPORT_H
#define BENCH_SUPPORT_H

#include <filesystem>
#include <functional>
#include <vector>

/// @file
/// What the benchmarks have in common: a place of their own, clocks, and the numbers made of many samples.

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

/// By the clock on the wall: what a person waits for.
double microsecondsOf(const std::function<void()>& run);

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

} // namespace bench

#endif
