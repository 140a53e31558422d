// What one edit of a ramp costs, beside the least that it can cost: any edit of a key sends the whole ramp.
//
// 1. A float and a colour ramp, grown from key count to key count; nobody listens, and the endpoint is in a directory of
//    this run.
// 2. Each sample times three things in turn, so that all meet the same machine: "event" is the host's event for the
//    position of the first key; "silent" is the same event for no parameter, after which the plug-in only has the tile
//    redrawn; "bare" is "silent" and then the floor: evaluating every channel of every key (three, or five for a colour)
//    by its instance into arrays that are ready, filling a record with texts that are ready, serialising and sending it.
// 3. The strict ratio is that of event and bare, less silent; the whole ratio has the host's share in both.
//    Growth is what a key costs in "ours" beside a key at the count before: 1 is linear.
// 4. Times are processor time of the host's thread: large ramps take longer than the system lets a thread run in one go.
// 5. Event and floor send the same text, which is looked at once.
#include "bench_scene.h"
#include "bench_support.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Director.h>
#include <PRM/PRM_Parm.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <kr.h>
#include <zelk/ipr/delta.h>
#include <zelk/ipr/observe.h>
#include <zelk/ipr/publisher.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace
{

const int samples_per_case = 200;
const int key_counts[] = {2, 16, 64, 682, 5000};

/// Edits in one sample: a short one would measure the clock.
int editsFor(int keys) { return std::clamp(512 / keys, 1, 64); }

struct RampRow
{
    const char* name;
    const char* type;
    const char* entryName;
    const char* valueParm;
    int components;
    const char* valueKey;
    int elementType;
};

const RampRow ramp_rows[] = {
    {"float", "korvan::ramp_float", "zelk__ramp_float", "ramp#value", 1, "value", KR_TYPE_FLOAT},
    {"rgb", "korvan::ramp_rgb", "zelk__ramp_rgb", "ramp#c", 3, "color", KR_TYPE_RGB},
};

using bench::Scene;
using bench::sendParmEvent;

OP_Node& newRamp(const Scene& scene, const char* type, int keys)
{
    OP_Node& ramp = scene.node(type);
    ramp.setInt("ramp", 0, 0, keys);
    return ramp;
}

// --- The floor --------------------------------------------------------------------------------------------------

struct DestroyArray
{
    void operator()(KtArray* array) const { KrArrayDestroy(array); }
};
typedef std::unique_ptr<KtArray, DestroyArray> Array;

Array newArray(int keys, int elementType)
{
    return Array(
        KrArrayAllocate(static_cast<std::uint32_t>(keys), 1, static_cast<std::uint8_t>(elementType)));
}

/// Evaluates a ramp and sends it, with everything ready that does not change from edit to edit.
class Floor
{
public:
    Floor(const OP_Node& ramp, const RampRow& row, int keys)
        : m_ramp(ramp),
          m_row(row),
          m_keys(keys),
          m_first(ramp.getParm("ramp").getMultiStartOffset()),
          m_path(ramp.getFullPath().toStdString()),
          m_positions(newArray(keys, KR_TYPE_FLOAT)),
          m_values(newArray(keys, row.elementType)),
          m_interpolations(newArray(keys, KR_TYPE_INT))
    {
    }

    void evaluate() const
    {
        const double time = CHgetEvalTime();
        const int thread = SYSgetSTID();
        float* position = static_cast<float*>(m_positions->data);
        float* value = static_cast<float*>(m_values->data);
        std::int32_t* interpolation = static_cast<std::int32_t*>(m_interpolations->data);
        for (int key = 0; key < m_keys; ++key)
        {
            const int instance = m_first + key;
            *position++ = static_cast<float>(m_ramp.evalFloatInstT("ramp#pos", &instance, 0, time, thread));
            for (int c = 0; c < m_row.components; ++c)
                *value++ =
                    static_cast<float>(m_ramp.evalFloatInstT(m_row.valueParm, &instance, c, time, thread));
            *interpolation++ =
                static_cast<std::int32_t>(m_ramp.evalIntInstT("ramp#interp", &instance, 0, time, thread));
        }
    }

    void send() const
    {
        zelk::ipr::Delta delta;
        delta.nodePath = m_path;
        delta.entryName = m_row.entryName;
        put(delta["position"], m_positions);
        put(delta[m_row.valueKey], m_values);
        put(delta["interpolation"], m_interpolations);
        zelk::ipr::DeltaPublisher::instance().send(delta.serialize());
    }

private:
    static void put(zelk::ipr::DeltaParm& entry, const Array& array)
    {
        entry.type = KR_TYPE_ARRAY;
        entry.value.array = array.get();
    }

    const OP_Node& m_ramp;
    const RampRow& m_row;
    const int m_keys, m_first;
    const std::string m_path;
    const Array m_positions, m_values, m_interpolations;
};

// --- Measuring --------------------------------------------------------------------------------------------------

struct Result
{
    const RampRow* row;
    int keys;
    bench::EditTimes times;
    std::size_t bytes;

    double perKey() const { return times.ours() / keys; }
};

std::vector<Result> results;

/// The text that a function sends; empty when it does not send exactly one.
template <typename Send>
std::string sentBy(Send send)
{
    std::vector<std::string> texts;
    zelk::ipr::setSendObserver([&](const std::string& text) { texts.push_back(text); });
    send();
    zelk::ipr::setSendObserver({});
    return texts.size() == 1 ? texts.front() : std::string();
}

void runRamp(benchmark::State& state, const Scene& scene, const RampRow& row)
{
    const int keys = static_cast<int>(state.range(0));
    OP_Node& ramp = newRamp(scene, row.type, keys);
    const int parm = ramp.getParmIndex("ramp1pos"), edits = editsFor(keys);
    const Floor floor(ramp, row, keys);
    floor.evaluate();
    Result result = {&row, keys, {}, 0};
    const std::string text = sentBy([&] { sendParmEvent(ramp, parm); });
    result.bytes = text.size();
    if (text.empty() || text != sentBy([&] { floor.send(); }))
        return bench::failWith(state, "the event does not send what the floor sends");
    const auto floorRun = [&]
    {
        floor.evaluate();
        floor.send();
    };
    for (auto _ : state)
    {
        result.times.sample(
            edits, [&] { sendParmEvent(ramp, parm); }, [&] { sendParmEvent(ramp, -1); }, floorRun);
        state.SetIterationTime(1e-6 * result.times.event().back());
    }
    zelk::ipr::DeltaPublisher::instance().flush(1000);
    results.push_back(result);
}

void addBenchmarks(const Scene& scene)
{
    for (const RampRow& row : ramp_rows)
        for (const int keys : key_counts)
            benchmark::RegisterBenchmark((std::string("ramp/") + row.name).c_str(),
                                         [&scene, &row](benchmark::State& state)
                                         { runRamp(state, scene, row); })
                ->Arg(keys)
                ->Iterations(samples_per_case)
                ->UseManualTime()
                ->Unit(benchmark::kMicrosecond);
}

/// How much more a key costs than at the count before.
std::string growthText(const Result& result)
{
    const Result* before = &result - 1;
    if (&result == results.data() || before->row != result.row)
        return "-";
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", result.perKey() / before->perKey());
    return text;
}

void printTable()
{
    std::printf("\nmicroseconds of the host's thread, from its event to the return of send(); ratios are "
                "those of the medians\n\n");
    std::printf("%-6s %5s %10s %10s %11s %10s %12s %11s %7s %7s %8s\n", "ramp", "keys", "event p50",
                "event p99", "silent p50", "floor p50", "strict ratio", "whole ratio", "us/key", "growth",
                "bytes");
    for (const Result& result : results)
    {
        bench::report({std::string("a ramp edit, ") + result.row->name, std::to_string(result.keys) + " keys",
                       double(result.keys), result.times.ours(), result.times.floor(), 1.2});
        std::printf("%-6s %5d %10.2f %10.2f %11.2f %10.2f %12.2f %11.2f %7.3f %7s %8zu\n", result.row->name,
                    result.keys, bench::median(result.times.event()),
                    bench::quantile(result.times.event(), 0.99), bench::median(result.times.silent()),
                    result.times.floor(), result.times.strictRatio(), result.times.wholeRatio(),
                    result.perKey(), growthText(result).c_str(), result.bytes);
    }
    std::printf(
        "\n'silent' is the event without a record: the host's refresh of all parameters, and the redraw.\n");
}

} // namespace

int main(int argc, char** argv) { return bench::runInScene(argc, argv, {}, addBenchmarks, printTable); }
