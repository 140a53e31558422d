// What one edit costs until the record is on its way, beside the least that it can cost.
//
// 1. A shader with one parameter of each type; nobody listens, and the endpoint is in a directory of this run.
// 2. Each sample times three things in turn, so that all meet the same machine: "event" is the host's event for the
//    edited parameter; "silent" is the same event for no parameter, after which the plug-in only has the tile redrawn;
//    "bare" is "silent" and then the floor: evaluating the value, filling a record with texts that are ready, serialising
//    and sending it. A record is made for every edit and not kept, so the floor makes one too.
// 3. The strict ratio is that of event and bare, less silent; the whole ratio has the host's share in both.
// 4. The same for a float of shaders with many parameters, and in networks with many such nodes, each edited in turn: the cost
//    of an edit must not grow with either.
// 5. The camera look-up: an edit of a wired camera shader among cameras that look through another one, against evaluating
//    the parameter of each.
#include "bench_scene.h"
#include "bench_support.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Director.h>
#include <PRM/PRM_Include.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_ValArray.h>
#include <kr_plugin.h>
#include <zelk/ipr/delta.h>
#include <zelk/ipr/publisher.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace
{

const int samples_per_case = 400;
const int edits_per_sample = 50;
const int camera_samples = 50;
const int camera_counts[] = {0, 10, 1000};
const int parm_counts[] = {30, 300};
const int node_counts[] = {50, 500}; ///< of nodes with the most parameters

// --- What is measured -------------------------------------------------------------------------------------------

/// Evaluates a parameter of a node into a record's entry, as its type needs it.
typedef void (*Evaluate)(const OP_Node& node, const char* parm, zelk::ipr::DeltaParm& entry);

void evaluateInt(const OP_Node& node, const char* parm, zelk::ipr::DeltaParm& entry)
{
    entry.value.int_ = static_cast<int>(node.evalIntT(parm, 0, CHgetEvalTime(), SYSgetSTID()));
}

void evaluateBool(const OP_Node& node, const char* parm, zelk::ipr::DeltaParm& entry)
{
    entry.value.byte_ = node.evalIntT(parm, 0, CHgetEvalTime(), SYSgetSTID()) != 0;
}

void evaluateFloat(const OP_Node& node, const char* parm, zelk::ipr::DeltaParm& entry)
{
    entry.value.flt = static_cast<float>(node.evalFloatT(parm, 0, CHgetEvalTime(), SYSgetSTID()));
}

template <int Count>
void evaluateFloats(const OP_Node& node, const char* parm, zelk::ipr::DeltaParm& entry)
{
    fpreal values[16];
    node.evalFloats(parm, values, CHgetEvalTime());
    float* target = Count == 16 ? &entry.matrix.m[0][0] : &entry.value.flt;
    std::copy(values, values + Count, target);
}

void evaluateText(const OP_Node& node, const char* parm, zelk::ipr::DeltaParm& entry)
{
    UT_String value;
    node.evalStringT(value, parm, 0, CHgetEvalTime(), SYSgetSTID());
    entry.str = value.toStdString();
}

struct TypeRow
{
    int type;
    const char* name; ///< also of the parameter
    Evaluate evaluate;
};

const TypeRow type_rows[] = {
    {KR_TYPE_BYTE, "byte", evaluateInt},
    {KR_TYPE_INT, "int", evaluateInt},
    {KR_TYPE_UINT, "uint", evaluateInt},
    {KR_TYPE_BOOLEAN, "boolean", evaluateBool},
    {KR_TYPE_FLOAT, "float", evaluateFloat},
    {KR_TYPE_RGB, "rgb", evaluateFloats<3>},
    {KR_TYPE_RGBA, "rgba", evaluateFloats<4>},
    {KR_TYPE_VECTOR, "vector", evaluateFloats<3>},
    {KR_TYPE_POINT, "point", evaluateFloats<3>},
    {KR_TYPE_POINT2, "point2", evaluateFloats<2>},
    {KR_TYPE_STRING, "string", evaluateText},
    {KR_TYPE_NODE, "node", evaluateText},
    {KR_TYPE_MATRIX, "matrix", evaluateFloats<16>},
    {KR_TYPE_ENUM, "enum", evaluateText},
};

void declareShader()
{
    KtNodeDecl* node = KrDeclareNode("zelk__bench", KR_NODE_SHADER, KR_TYPE_RGB);
    KrDeclareNodeFile(node, "bench.so");
    const char* const items[] = {"one", "two", nullptr};
    static const KtMatrix identity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    for (const TypeRow& row : type_rows)
    {
        KtParamValue value = {};
        if (row.type == KR_TYPE_MATRIX)
            value.mtx = &identity;
        if (row.type == KR_TYPE_STRING)
            value.str = "textures/wood.$F4.tx";
        if (row.type == KR_TYPE_ENUM)
            KrDeclareEnum(node, row.name, items, 1);
        else
            KrDeclareParam(node, row.name, row.type, &value);
    }
}

std::string longShader(int parms) { return "long" + std::to_string(parms); }
std::string longParm(int index) { return "strength_" + std::to_string(index); }

void declareLongShader(int parms)
{
    KtNodeDecl* node = KrDeclareNode(("zelk__" + longShader(parms)).c_str(), KR_NODE_SHADER, KR_TYPE_RGB);
    KrDeclareNodeFile(node, "bench.so");
    const KtParamValue zero = {};
    for (int i = 0; i < parms; ++i)
        KrDeclareParam(node, longParm(i).c_str(), KR_TYPE_FLOAT, &zero);
}

void declareCamera()
{
    KtNodeDecl* camera = KrDeclareNode("zelk__lens", KR_NODE_CAMERA, KR_TYPE_NODE);
    KrDeclareNodeFile(camera, "bench.so");
    const KtParamValue zero = {};
    KrDeclareParam(camera, "squeeze", KR_TYPE_FLOAT, &zero);
    KtNodeDecl* sink = KrDeclareNode("zelk__sink", KR_NODE_SHADER, KR_TYPE_RGB);
    KrDeclareNodeFile(sink, "bench.so");
    KrDeclareParam(sink, "in", KR_TYPE_NODE, nullptr);
}

void declareAll()
{
    declareShader();
    declareCamera();
    for (const int count : parm_counts)
        declareLongShader(count);
}

// --- Samples ----------------------------------------------------------------------------------------------------

using bench::Scene;
using bench::sendParmEvent;

struct Result
{
    std::string name;
    bench::EditTimes times;
    std::size_t bytes; ///< of one record; 0 when none is sent
};

std::vector<Result> results;

/// Takes one sample of each of the three for every iteration.
void measure(benchmark::State& state, Result& result, const std::function<void()>& event,
             const std::function<void()>& silent, const std::function<void()>& floor)
{
    for (auto _ : state)
    {
        result.times.sample(edits_per_sample, event, silent, floor);
        state.SetIterationTime(1e-6 * result.times.event().back());
    }
    zelk::ipr::DeltaPublisher::instance().flush(1000);
}

void runEdit(benchmark::State& state, const Scene& scene, const TypeRow& row)
{
    OP_Node& node = scene.node("korvan::bench");
    const int parm = node.getParmIndex(row.name);
    const std::string path = node.getFullPath().toStdString(), entryName = "zelk__bench", parmName = row.name;
    std::size_t bytes = 0;
    const auto floor = [&]
    {
        zelk::ipr::Delta delta;
        delta.nodePath = path;
        delta.entryName = entryName;
        zelk::ipr::DeltaParm& entry = delta[parmName];
        entry.type = static_cast<std::uint8_t>(row.type);
        row.evaluate(node, row.name, entry);
        std::string text = delta.serialize();
        bytes = text.size();
        zelk::ipr::DeltaPublisher::instance().send(std::move(text));
    };
    floor();
    Result result = {row.name, {}, bytes};
    measure(
        state, result, [&] { sendParmEvent(node, parm); }, [&] { sendParmEvent(node, -1); }, floor);
    results.push_back(result);
}

/// Edits the last float of nodes of a long shader, each in turn.
void runLong(benchmark::State& state, const Scene& scene, const std::string& name, int parms, int count)
{
    const std::vector<OP_Node*> nodes = scene.nodes("korvan::" + longShader(parms), count);
    const std::string entryName = "zelk__" + longShader(parms), parmName = longParm(parms - 1);
    const int parm = nodes.front()->getParmIndex(parmName.c_str());
    std::vector<std::string> paths;
    for (const OP_Node* node : nodes)
        paths.push_back(node->getFullPath().toStdString());
    std::size_t bytes = 0, turn = 0;
    const auto floor = [&]
    {
        zelk::ipr::Delta delta;
        delta.nodePath = paths[turn];
        delta.entryName = entryName;
        zelk::ipr::DeltaParm& entry = delta[parmName];
        entry.type = KR_TYPE_FLOAT;
        evaluateFloat(*nodes[turn], parmName.c_str(), entry);
        std::string text = delta.serialize();
        bytes = text.size();
        zelk::ipr::DeltaPublisher::instance().send(std::move(text));
    };
    floor();
    Result result = {name, {}, bytes};
    const auto send = [&](int edited)
    {
        turn = (turn + 1) % nodes.size();
        sendParmEvent(*nodes[turn], edited);
    };
    measure(
        state, result, [&] { send(parm); }, [&] { send(-1); }, floor);
    results.push_back(result);
}

/// Camera objects that look through another shader, as many as asked for.
void makeCameras(int count)
{
    static PRM_Name name("kv_camera_shader", "Camera Shader");
    static PRM_Template templates[] = {PRM_Template(PRM_STRING, 1, &name), PRM_Template()};
    OP_Network& objects = *OPgetDirector()->getManager("obj");
    while (objects.getNchildren() < count)
    {
        OP_Node& camera = *objects.createNode("cam");
        camera.addSpareParms(templates);
        camera.setString("/shop/net/other", CH_STRING_LITERAL, "kv_camera_shader", 0, 0);
    }
}

void runCameras(benchmark::State& state, const Scene& scene)
{
    const int count = static_cast<int>(state.range(0));
    makeCameras(count);
    OP_Node& lens = scene.node("korvan::lens");
    scene.node("korvan::sink").setInput(0, &lens);
    const int parm = lens.getParmIndex("squeeze");
    UT_ValArray<OP_Node*> cameras;
    OPgetDirector()->getManager("obj")->getOpsByName("cam", cameras);
    const auto floor = [&]
    {
        for (int i = 0; i < static_cast<int>(cameras.entries()); ++i)
        {
            UT_String chosen;
            cameras(i)->evalParameterOrPropertyT("kv_camera_shader", 0, CHgetEvalTime(), chosen,
                                                 SYSgetSTID());
            benchmark::DoNotOptimize(chosen.buffer());
        }
    };
    Result result = {std::to_string(count) + " cameras", {}, 0};
    measure(
        state, result, [&] { sendParmEvent(lens, parm); }, [&] { sendParmEvent(lens, -1); }, floor);
    results.push_back(result);
}

void addBenchmarks(const Scene& scene)
{
    for (const TypeRow& row : type_rows)
        benchmark::RegisterBenchmark((std::string("edit/") + row.name).c_str(),
                                     [&scene, &row](benchmark::State& state) { runEdit(state, scene, row); })
            ->Iterations(samples_per_case)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    const auto addLong = [&scene](const std::string& name, int parms, int nodes)
    {
        benchmark::RegisterBenchmark(("edit/" + name).c_str(), [=, &scene](benchmark::State& state)
                                     { runLong(state, scene, name, parms, nodes); })
            ->Iterations(samples_per_case)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    };
    for (const int count : parm_counts)
        addLong(std::to_string(count) + " parms", count, 1);
    for (const int count : node_counts)
        addLong(std::to_string(count) + " nodes", *std::prev(std::end(parm_counts)), count);
    for (const int count : camera_counts)
        benchmark::RegisterBenchmark("cameras",
                                     [&scene](benchmark::State& state) { runCameras(state, scene); })
            ->Arg(count)
            ->Iterations(camera_samples)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
}

/// Without cameras there is nothing to ask.
bool hasFloor(const Result& result) { return result.name != "0 cameras"; }

std::string fixed(double ratio)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", ratio);
    return text;
}

/// The row of the common table. A name like "10 cameras" has its size in front.
void reportRow(const Result& result)
{
    const std::size_t blank = result.name.find(' ');
    const bool hasSize = blank != std::string::npos;
    const std::string of = hasSize ? result.name.substr(blank + 1) : result.name;
    const double floor = result.times.floor();
    if (!hasSize)
        bench::report({"one edit", of, 0, result.times.ours(), floor, 1.3});
    else if (of != "cameras")
        bench::report({of == "parms" ? "one edit of a shader with many parameters"
                                     : "one edit among nodes of 300 parameters",
                       result.name, 0, result.times.ours(), floor, 1.3});
    else if (std::stoi(result.name) > 0)
        bench::report({"one edit of a camera's shader", result.name, std::stod(result.name),
                       result.times.ours(), floor, 0});
}

void printTable()
{
    std::printf("\nmicroseconds of the host's thread, from its event to the return of send(); ratios are "
                "those of the medians\n\n");
    std::printf("%-13s %9s %10s %9s %12s %11s %7s\n", "edit of", "event p50", "silent p50", "floor p50",
                "strict ratio", "whole ratio", "bytes");
    for (const Result& result : results)
    {
        reportRow(result);
        std::printf("%-13s %9.2f %10.2f %9.2f %12s %11.2f %7zu\n", result.name.c_str(),
                    bench::median(result.times.event()), bench::median(result.times.silent()),
                    result.times.floor(), hasFloor(result) ? fixed(result.times.strictRatio()).c_str() : "-",
                    result.times.wholeRatio(), result.bytes);
    }
    std::printf("\n'silent' is the event without a record: the host's refresh and redraw. Cameras look "
                "through another shader,\nso that their edit sends nothing.\n");
}

} // namespace

int main(int argc, char** argv)
{
    return bench::runInScene(argc, argv, declareAll, addBenchmarks, printTable);
}
