// What the container's tab menu costs with many installed assets.
//
// 1. Each measurement runs in a process of its own, with a host of its own. The assets are admitted ones, small, either
//    one to a file or all in one; half of them are stored in gzip form.
// 2. "install" is installing all files; "first" is the first tab menu, which opens each asset's index; "menu" is one after
//    that: the container's filter reads every asset's contents each time.
// 3. Growth is what an asset costs in "menu", and in "install", beside an asset at the count before: 1 is linear.
#include "bench_assets.h"
#include "bench_support.h"
#include "op/op_otl_manager.h"
#include "shop.h"
#include "vop_shaders.h"

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <kr.h>
#include <standin/host.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{

const int asset_counts[] = {50, 500, 5000};
const std::size_t contents_bytes = 10000;
const int runs_per_count = 3;

enum class Layout
{
    files,  ///< a file for each asset
    library ///< one file for all
};

const char* nameOf(Layout layout) { return layout == Layout::files ? "files" : "library"; }

std::string assetName(int index) { return "bench_asset_" + std::to_string(index); }

/// What one process measured; microseconds.
struct Sample
{
    double install, first, menu;
    int offered; ///< of the assets; -1 when one could not be installed
};

void writeAssets(const fs::path& directory, Layout layout, int count)
{
    fs::create_directories(directory);
    const std::string contents = bench::assetContents(contents_bytes, "korvan::noise");
    std::vector<bench::AssetType> types;
    for (int i = 0; i < count; ++i)
        types.push_back({assetName(i), contents, i % 2 == 0});
    if (layout == Layout::library)
        bench::writeAssetFile(directory / "all.hda", types);
    else
        for (const bench::AssetType& type : types)
            bench::writeAssetFile(directory / (type.name + ".hda"), {type});
}

std::vector<std::string> filesIn(const fs::path& directory)
{
    std::vector<std::string> files;
    for (const fs::directory_entry& file : fs::directory_iterator(directory))
        files.push_back(file.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

bool installAll(const std::vector<std::string>& files)
{
    std::string why;
    return std::all_of(files.begin(), files.end(),
                       [&](const std::string& file) { return standin::installLibrary(file, why); });
}

OP_Network& newContainer()
{
    KrMsgSetConsoleFlags(0);
    KrBegin();
    standin::startHost();
    newVopOperator(OP_Network::getOperatorTable("Vop"));
    newShopOperator(OP_Network::getOperatorTable("Shop"));
    return *static_cast<OP_Network*>(OPgetDirector()->getManager("shop")->createNode("korvan_vopnet"));
}

int assetsIn(const std::vector<standin::TabEntry>& menu)
{
    return static_cast<int>(std::count_if(menu.begin(), menu.end(),
                                          [](const standin::TabEntry& entry)
                                          { return entry.name.rfind("bench_asset_", 0) == 0; }));
}

Sample measure(const fs::path& directory)
{
    OP_Network& container = newContainer();
    const std::vector<std::string> files = filesIn(directory);
    Sample sample = {};
    bool installed = false;
    std::vector<standin::TabEntry> menu;
    sample.install = bench::processorMicrosecondsOf([&] { installed = installAll(files); });
    sample.first = bench::processorMicrosecondsOf([&] { menu = standin::tabMenu(container); });
    sample.menu = bench::processorMicrosecondsOf([&] { menu = standin::tabMenu(container); });
    sample.offered = installed ? assetsIn(menu) : -1;
    return sample;
}

struct Result
{
    Layout layout;
    int count;
    bench::Times install, first, menu;

    double installPerAsset() const { return bench::median(install) / count; }
    double menuPerAsset() const { return bench::median(menu) / count; }
};

std::vector<Result> results;
void runMenu(benchmark::State& state, const fs::path& scratch, Layout layout)
{
    const int count = static_cast<int>(state.range(0));
    const fs::path directory = scratch / (nameOf(layout) + std::to_string(count));
    writeAssets(directory, layout, count);
    Result result = {layout, count, {}, {}, {}};
    for (auto _ : state)
    {
        Sample sample = {};
        if (!bench::measureApart([&] { return measure(directory); }, sample))
            return bench::failWith(state, "the measuring process failed");
        if (sample.offered != count)
            return bench::failWith(state, "not every asset is offered");
        result.install.push_back(sample.install);
        result.first.push_back(sample.first);
        result.menu.push_back(sample.menu);
        state.SetIterationTime(1e-6 * sample.menu);
    }
    fs::remove_all(directory);
    results.push_back(result);
}

void addBenchmarks(const fs::path& scratch)
{
    for (const Layout layout : {Layout::files, Layout::library})
        for (const int count : asset_counts)
            benchmark::RegisterBenchmark((std::string("menu/") + nameOf(layout)).c_str(),
                                         [=, &scratch](benchmark::State& state)
                                         { runMenu(state, scratch, layout); })
                ->Arg(count)
                ->Iterations(runs_per_count)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
}

/// How much more an asset costs than at the count before.
std::string growthText(const Result& result, double (Result::*perAsset)() const)
{
    const Result* before = &result - 1;
    if (&result == results.data() || before->layout != result.layout)
        return "-";
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", (result.*perAsset)() / (before->*perAsset)());
    return text;
}

void printTable()
{
    std::printf("\nassets with contents of %zu bytes; medians of processor time\n\n", contents_bytes);
    std::printf("%-8s %6s %11s %9s %7s %10s %9s %9s %7s\n", "layout", "assets", "install ms", "us/asset",
                "growth", "first ms", "menu ms", "us/asset", "growth");
    for (const Result& result : results)
    {
        bench::report({std::string("a tab menu with assets, ") + nameOf(result.layout),
                       std::to_string(result.count) + " assets", double(result.count),
                       bench::median(result.menu), 0, 0});
        std::printf("%-8s %6d %11.2f %9.1f %7s %10.2f %9.2f %9.1f %7s\n", nameOf(result.layout), result.count,
                    1e-3 * bench::median(result.install), result.installPerAsset(),
                    growthText(result, &Result::installPerAsset).c_str(), 1e-3 * bench::median(result.first),
                    1e-3 * bench::median(result.menu), result.menuPerAsset(),
                    growthText(result, &Result::menuPerAsset).c_str());
    }
}

} // namespace

int main(int argc, char** argv)
{
    const auto add = [](const fs::path& scratch)
    {
        bench::isolate(scratch / "empty");
        unsetenv("HH");
        addBenchmarks(scratch);
    };
    return bench::runBenchmarks(argc, argv, add, printTable);
}
