// What registering N shaders costs, beside the least that it can cost.
//
// 1. The environment is set so that the search path holds the benchmark's own renderer plug-in and metadata, nothing else.
// 2. Each measurement runs in a process of its own: descriptions are kept for the process by design, so a second
//    registration in the same one would measure a fuller heap.
// 3. "load" is starting the renderer with its files and ending it, which nobody can avoid; "floor" is asking every
//    metadata question once; "ours" is registerShaders() less "load". The strict ratio is ours to floor, the whole ratio
//    that of the two with the load in both.
#include "bench_library.h"
#include "bench_support.h"
#include "registration_floor.h"
#include "vop_shaders.h"

#include <OP/OP_OperatorTable.h>
#include <UT/UT_PathSearch.h>
#include <UT/UT_StringArray.h>
#include <kr.h>

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <utility>

namespace fs = std::filesystem;

namespace
{

enum class Source
{
    declared, ///< the plug-in declares the metadata itself
    file      ///< the metadata is parsed from a .mtd file
};

const char* nameOf(Source source) { return source == Source::declared ? "declared" : "mtd"; }

const int sizes[] = {100, 1000, 10000};

/// What one process measured; seconds of processor time. NaN where it measured something else.
struct Sample
{
    double load;
    double floor;
    double whole;
    double bytes; ///< kept after a registration
    int operators;
};

/// Processor time of this process. The work has one thread and waits for nothing, and so it is measured the same on a
/// machine that is busy with other things.
double now()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// The directory that holds korvan/plugins with the benchmark's plug-in: beside bin/ of the build tree.
fs::path pluginTree() { return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "bench"; }

void writeMetadata(const fs::path& directory, int count)
{
    const int shaders_per_file = 100;
    fs::create_directories(directory / "korvan/metadata");
    for (int first = 0; first < count; first += shaders_per_file)
    {
        const std::string file = "korvan/metadata/bench" + std::to_string(first) + ".mtd";
        std::ofstream(directory / file) << bench::metadataFileText(first, shaders_per_file);
    }
}

void setEnvironment(Source source, int count, const fs::path& scratch)
{
    std::string path = pluginTree().string();
    if (source == Source::file)
        path += ";" + (scratch / std::to_string(count)).string();
    setenv("HOUDINI_PATH", path.c_str(), 1);
    setenv("ZELK_STARTUP_LOG", "0", 1);
    unsetenv("KORVAN_PLUGIN_PATH");
    setenv(bench::count_variable, std::to_string(count).c_str(), 1);
    setenv(bench::metadata_variable, nameOf(source), 1);
}

void loadRenderer()
{
    KrBegin();
    KrMsgSetConsoleFlags(0);
    const UT_PathSearch* path = UT_PathSearch::getInstance(UT_HOUDINI_PATH);
    UT_StringArray found;
    path->findAllDirectories("korvan/plugins", found);
    for (const UT_StringHolder& directory : found)
        KrLoadPlugins(directory);
    UT_StringArray files;
    path->matchAllFilesInSubdirectory(".mtd", "korvan/metadata", true, files, true, false);
    for (const UT_StringHolder& file : files)
        KrMetaDataLoadFile(file);
}

Sample measureFloor()
{
    const double start = now();
    loadRenderer();
    const double loaded = now();
    benchmark::DoNotOptimize(bench::askEveryQuestionOnce());
    const double asked = now();
    KrEnd();
    return {(loaded - start) + (now() - asked), asked - loaded, NAN, NAN, 0};
}

Sample measureRegistration()
{
    OP_OperatorTable* table = new OP_OperatorTable("Vop"); // ends with the process, as the host's does
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    const double start = now();
    zelk::shop::registerShaders(table);
    const double whole = now() - start;
    const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
    return {NAN, NAN, whole, static_cast<double>(after) - static_cast<double>(before), table->entries()};
}

/// The best of all iterations: what the work costs when nothing else runs.
struct Best
{
    double load = INFINITY;
    double floor = INFINITY;
    double whole = INFINITY;
    double bytes = NAN;
    double ours() const { return whole - load; }
    bool isComplete() const { return std::isfinite(load) && std::isfinite(whole); }
};

std::map<std::pair<Source, int>, Best> results;
void runFloor(benchmark::State& state, Source source, const fs::path& scratch)
{
    const int count = static_cast<int>(state.range(0));
    setEnvironment(source, count, scratch);
    Best& best = results[{source, count}];
    for (auto _ : state)
    {
        Sample sample = {};
        if (!bench::measureApart(measureFloor, sample))
            return bench::failWith(state, "the measuring process failed");
        state.SetIterationTime(sample.floor);
        best.load = std::min(best.load, sample.load);
        best.floor = std::min(best.floor, sample.floor);
    }
}

void runRegistration(benchmark::State& state, Source source, const fs::path& scratch)
{
    const int count = static_cast<int>(state.range(0));
    setEnvironment(source, count, scratch);
    Best& best = results[{source, count}];
    for (auto _ : state)
    {
        Sample sample = {};
        if (!bench::measureApart(measureRegistration, sample))
            return bench::failWith(state, "the measuring process failed");
        if (sample.operators != count)
            return bench::failWith(state, "not every shader was registered");
        state.SetIterationTime(sample.whole);
        best.whole = std::min(best.whole, sample.whole);
        best.bytes = sample.bytes;
    }
}

void addBenchmarks(const fs::path& scratch)
{
    for (const Source source : {Source::declared, Source::file})
        for (const int count : sizes)
        {
            const int iterations = count >= 10000 ? 3 : 10;
            const auto add =
                [&](const std::string& what, void (*run)(benchmark::State&, Source, const fs::path&))
            {
                benchmark::RegisterBenchmark((what + "/" + nameOf(source)).c_str(), run, source, scratch)
                    ->Arg(count)
                    ->Iterations(iterations)
                    ->UseManualTime()
                    ->Unit(benchmark::kMillisecond);
            };
            add("floor", runFloor);
            add("registration", runRegistration);
        }
}

double microsecondsPerParm(double seconds, int count)
{
    return 1e6 * seconds / (count * bench::parms_per_shader);
}

/// How much more a parameter costs than at the size before; 1 is linear growth.
std::string growthText(Source source, int count, double perParm)
{
    const int* size = std::find(std::begin(sizes), std::end(sizes), count);
    if (size == std::begin(sizes))
        return "-";
    const auto before = results.find({source, *(size - 1)});
    if (before == results.end() || !before->second.isComplete())
        return "-";
    char text[32];
    std::snprintf(text, sizeof text, "%.2f",
                  perParm / microsecondsPerParm(before->second.ours(), *(size - 1)));
    return text;
}

void reportRows(Source source, int count, const Best& best)
{
    const std::string metadata =
        std::string(" (metadata ") + (source == Source::declared ? "declared)" : "in files)");
    const std::string size = std::to_string(count) + " shaders";
    bench::report(
        {"registering shaders" + metadata, size, double(count), 1e6 * best.ours(), 1e6 * best.floor, 2});
    bench::report({"the same with loading in both" + metadata, size, double(count), 1e6 * best.whole,
                   1e6 * (best.load + best.floor), 2});
    if (source == Source::declared)
        bench::report({"memory of descriptions and templates, for each parameter", size, 0,
                       best.bytes / (count * bench::parms_per_shader), 0, 0, "bytes"});
}

void printTable()
{
    std::printf("\n%d parameters for each shader; ours is registerShaders() less the unavoidable load\n\n",
                bench::parms_per_shader);
    std::printf("%-9s %8s %9s %9s %9s %12s %11s %8s %7s %13s %11s\n", "metadata", "shaders", "load ms",
                "floor ms", "ours ms", "strict ratio", "whole ratio", "us/parm", "growth", "whole us/parm",
                "bytes/parm");
    for (const auto& [key, best] : results)
    {
        if (!best.isComplete())
            continue;
        const auto [source, count] = key;
        const double perParm = microsecondsPerParm(best.ours(), count);
        std::printf("%-9s %8d %9.2f %9.2f %9.2f %12.2f %11.2f %8.3f %7s %13.3f %11.0f\n", nameOf(source),
                    count, 1e3 * best.load, 1e3 * best.floor, 1e3 * best.ours(), best.ours() / best.floor,
                    best.whole / (best.load + best.floor), perParm,
                    growthText(source, count, perParm).c_str(), microsecondsPerParm(best.whole, count),
                    best.bytes / (count * bench::parms_per_shader));
        reportRows(source, count, best);
    }
    std::printf(
        "\n'whole' has everything in it: starting the renderer, its plug-ins and, for mtd, the files of 100 "
        "shaders each.\n");
}

} // namespace

int main(int argc, char** argv)
{
    const auto add = [](const fs::path& scratch)
    {
        for (const int count : sizes)
            writeMetadata(scratch / std::to_string(count), count);
        addBenchmarks(scratch);
    };
    return bench::runBenchmarks(argc, argv, add, printTable);
}
