// What the container's filter costs for a digital asset, beside the least that its contents can cost.
//
// 1. Assets with contents of several sizes, stored as they are and in gzip form, of Korvan nodes only (admitted) and with a
//    foreign node as the very last (refused). The file stays in the system's memory: no disk is measured.
// 2. Each sample times two things in turn: "filter" is the container's filter from the operator to its verdict; "floor" is
//    opening the file, reading the contents in blocks, inflating them with zlib where they are in gzip form, and adding
//    each byte up.
// 3. Times are processor time. The first call, which reads the asset's index, is left out: the operator keeps it.
// 4. Memory: what a process grows by at most while its filter reads contents of 200 MB.
#include "bench_assets.h"
#include "bench_support.h"
#include "shop.h"

#include <OP/OP_OTLLibrary.h>
#include <VOP/VOP_Operator.h>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{

const char* const admitted_child = "korvan::noise";
const char* const foreign_child = "add";

struct SizeRow
{
    const char* name;
    std::size_t bytes;
    int samples;
};

const SizeRow size_rows[] = {{"10KB", 10000, 2000}, {"1MB", 1000000, 200}, {"20MB", 20000000, 15}};

const std::size_t memory_bytes = 200000000;

/// An asset in a file of its own, and the operator that the host would make for it.
class Asset
{
public:
    Asset(const fs::path& file, std::size_t bytes, bool compressed, bool admitted) : m_file(file.string())
    {
        const bench::AssetType type = {
            "own", bench::assetContents(bytes, admitted ? admitted_child : foreign_child), compressed};
        m_bytes = type.contents.size();
        m_stored = bench::writeAssetFile(file, {type});
        m_operator.reset(
            new VOP_Operator("own", "Own", nullptr, nullptr, 0, 0, "*", nullptr, OP_FLAG_NETWORK, 0));
        m_operator->setOTLLibrary(std::make_shared<OP_OTLLibrary>(m_file.c_str()), 0);
    }

    bool isAdmitted()
    {
        zelk::shop::OP_KorvanMaterialOperatorFilter filter;
        return filter.allowOperatorAsChild(m_operator.get());
    }

    const std::string& file() const { return m_file; }
    std::size_t bytes() const { return m_bytes; }
    std::size_t stored() const { return m_stored; }

private:
    std::string m_file;
    std::size_t m_bytes;
    std::size_t m_stored;
    std::unique_ptr<VOP_Operator> m_operator;
};

// --- The floor --------------------------------------------------------------------------------------------------

const std::size_t block_size = 64 * 1024;

/// The end of a file, block by block.
class FileEnd
{
public:
    FileEnd(const std::string& file, std::size_t size) : m_file(open(file.c_str(), O_RDONLY | O_CLOEXEC))
    {
        lseek(m_file, -static_cast<off_t>(size), SEEK_END);
    }
    ~FileEnd() { close(m_file); }
    FileEnd(const FileEnd&) = delete;
    FileEnd& operator=(const FileEnd&) = delete;

    /// Bytes that were read; 0 at the end.
    std::size_t read(unsigned char* block) const
    {
        const ssize_t count = ::read(m_file, block, block_size);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

private:
    int m_file;
};

unsigned sumOf(const unsigned char* bytes, std::size_t size)
{
    unsigned sum = 0;
    for (std::size_t i = 0; i < size; ++i)
        sum += bytes[i];
    return sum;
}

std::size_t touchStored(const Asset& asset, unsigned& sum)
{
    const std::unique_ptr<unsigned char[]> block(new unsigned char[block_size]);
    const FileEnd file(asset.file(), asset.stored());
    std::size_t total = 0;
    while (const std::size_t count = file.read(block.get()))
    {
        sum += sumOf(block.get(), count);
        total += count;
    }
    return total;
}

std::size_t touchInflated(const Asset& asset, unsigned& sum)
{
    const std::unique_ptr<unsigned char[]> packed(new unsigned char[block_size]),
        block(new unsigned char[block_size]);
    const FileEnd file(asset.file(), asset.stored());
    z_stream stream = {};
    inflateInit2(&stream, 16 + MAX_WBITS);
    for (int state = Z_OK; state == Z_OK;)
    {
        if (stream.avail_in == 0)
        {
            stream.next_in = packed.get();
            stream.avail_in = static_cast<uInt>(file.read(packed.get()));
        }
        stream.next_out = block.get();
        stream.avail_out = block_size;
        state = inflate(&stream, Z_NO_FLUSH);
        sum += sumOf(block.get(), block_size - stream.avail_out);
    }
    const std::size_t total = stream.total_out;
    inflateEnd(&stream);
    return total;
}

// --- Measuring --------------------------------------------------------------------------------------------------

struct Result
{
    std::string name;
    std::size_t bytes, stored;
    bench::Times filter, floor;

    double ratio() const { return bench::median(filter) / bench::median(floor); }
    double megabytesPerSecond() const { return static_cast<double>(bytes) / bench::median(filter); }
};

std::vector<Result> results;
void runFilter(benchmark::State& state, const fs::path& scratch, const std::string& name, const SizeRow& size,
               bool compressed, bool admitted)
{
    Asset asset(scratch / "own.hda", size.bytes, compressed, admitted);
    Result result = {name, asset.bytes(), asset.stored(), {}, {}};
    if (asset.isAdmitted() != admitted)
        return bench::failWith(state, "the verdict is wrong");
    for (auto _ : state)
    {
        unsigned sum = 0;
        std::size_t touched = 0;
        result.filter.push_back(
            bench::processorMicrosecondsOf([&] { benchmark::DoNotOptimize(asset.isAdmitted()); }));
        result.floor.push_back(bench::processorMicrosecondsOf(
            [&] { touched = compressed ? touchInflated(asset, sum) : touchStored(asset, sum); }));
        benchmark::DoNotOptimize(sum);
        if (touched != asset.bytes())
            return bench::failWith(state, "the floor did not read all contents");
        state.SetIterationTime(1e-6 * result.filter.back());
    }
    results.push_back(result);
}

// --- Memory -----------------------------------------------------------------------------------------------------

/// A number of kilobytes that the system tells of this process: "VmRSS", "VmHWM".
double kilobytes(const std::string& key)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double number = 0;
    while (status >> word)
        if (word == key + ":" && status >> number)
            return number;
    return 0;
}

/// What the filter makes the process grow by at most; negative when its verdict is wrong.
double growthOfFilter(const fs::path& file)
{
    VOP_Operator op("own", "Own", nullptr, nullptr, 0, 0, "*", nullptr, OP_FLAG_NETWORK, 0);
    op.setOTLLibrary(std::make_shared<OP_OTLLibrary>(file.c_str()), 0);
    std::ofstream("/proc/self/clear_refs") << 5; // the highest mark so far becomes the present state
    const double before = kilobytes("VmRSS");
    zelk::shop::OP_KorvanMaterialOperatorFilter filter;
    const bool admitted = filter.allowOperatorAsChild(&op);
    return admitted ? kilobytes("VmHWM") - before : -1;
}

struct MemoryResult
{
    std::string name;
    double kilobytes;
};

std::vector<MemoryResult> memory_results;

void runMemory(benchmark::State& state, const fs::path& scratch, bool compressed)
{
    const fs::path file = scratch / "large.hda";
    int written = 0;
    const auto write = [&]
    {
        bench::writeAssetFile(file,
                              {{"own", bench::assetContents(memory_bytes, admitted_child), compressed}});
        return 1;
    };
    // Apart, so that this process's memory stays what it is.
    if (!bench::measureApart(write, written))
        return bench::failWith(state, "the asset could not be written");
    double growth = 0;
    for (auto _ : state)
        if (!bench::measureApart([&] { return growthOfFilter(file); }, growth) || growth < 0)
            return bench::failWith(state, "the filter failed");
    fs::remove(file);
    state.counters["peak_KB"] = growth;
    memory_results.push_back({compressed ? "gzip" : "plain", growth});
}

// --- All of it --------------------------------------------------------------------------------------------------

void addBenchmarks(const fs::path& scratch)
{
    for (const SizeRow& size : size_rows)
        for (const bool compressed : {true, false})
            for (const bool admitted : {true, false})
            {
                const std::string name = std::string(size.name) + "/" + (compressed ? "gzip" : "plain") +
                                         "/" + (admitted ? "admitted" : "refused");
                benchmark::RegisterBenchmark(("filter/" + name).c_str(),
                                             [=, &scratch, &size](benchmark::State& state)
                                             { runFilter(state, scratch, name, size, compressed, admitted); })
                    ->Iterations(size.samples)
                    ->UseManualTime()
                    ->Unit(benchmark::kMicrosecond);
            }
    for (const bool compressed : {true, false})
        benchmark::RegisterBenchmark((std::string("memory/") + (compressed ? "gzip" : "plain")).c_str(),
                                     [=, &scratch](benchmark::State& state)
                                     { runMemory(state, scratch, compressed); })
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
}

void printTable()
{
    std::printf(
        "\nmicroseconds of the container's filter for one asset; the ratio is that of the medians\n\n");
    std::printf("%-20s %10s %10s %11s %11s %11s %11s %6s %9s\n", "contents", "bytes", "stored", "filter p50",
                "filter p99", "floor p50", "floor p99", "ratio", "MB/s");
    for (const Result& result : results)
    {
        const std::string form = result.name.substr(result.name.find('/') + 1);
        bench::report({"the container's filter, " + form, result.name.substr(0, result.name.find('/')),
                       double(result.bytes), bench::median(result.filter), bench::median(result.floor), 1.5});
        std::printf("%-20s %10zu %10zu %11.1f %11.1f %11.1f %11.1f %6.2f %9.0f\n", result.name.c_str(),
                    result.bytes, result.stored, bench::median(result.filter),
                    bench::quantile(result.filter, 0.99), bench::median(result.floor),
                    bench::quantile(result.floor, 0.99), result.ratio(), result.megabytesPerSecond());
    }
    for (const MemoryResult& result : memory_results)
        std::printf("%s%s contents of %zu MB: the process grows by at most %.0f KB\n",
                    &result == memory_results.data() ? "\n" : "", result.name.c_str(), memory_bytes / 1000000,
                    result.kilobytes);
}

} // namespace

int main(int argc, char** argv)
{
    unsetenv("HH");
    return bench::runBenchmarks(argc, argv, addBenchmarks, printTable);
}
