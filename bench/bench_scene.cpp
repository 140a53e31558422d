#include "bench_scene.h"

#include "shop.h"
#include "vop_shaders.h"

#include <OP/OP_Director.h>
#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <kr.h>
#include <standin/host.h>
#include <zelk/ipr/publisher.h>

#include <cstdint>
#include <memory>

namespace bench
{

namespace
{

OP_Network& newContainer()
{
    return *static_cast<OP_Network*>(OPgetDirector()->getManager("shop")->createNode("korvan_vopnet"));
}

} // namespace

Scene::Scene(const std::filesystem::path& scratch, const std::function<void()>& declare)
{
    isolate(scratch);
    KrMsgSetConsoleFlags(0);
    KrBegin();
    if (declare)
        declare();
    standin::startHost();
    newVopOperator(OP_Network::getOperatorTable("Vop"));
    newShopOperator(OP_Network::getOperatorTable("Shop"));
    m_network = &newContainer();
}

Scene::~Scene()
{
    zelk::ipr::DeltaPublisher::instance().close();
    KrEnd();
}

OP_Node& Scene::node(const std::string& type) const { return *m_network->createNode(type.c_str()); }

std::vector<OP_Node*> Scene::nodes(const std::string& type, int count) const
{
    OP_Network& network = newContainer();
    std::vector<OP_Node*> made;
    while (static_cast<int>(made.size()) < count)
        made.push_back(network.createNode(type.c_str()));
    return made;
}

void sendParmEvent(OP_Node& node, int parm)
{
    node.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(static_cast<std::intptr_t>(parm)));
}

namespace
{

/// Microseconds of one of several runs in a row.
double timeOfOne(int runs, const EditTimes::Run& run)
{
    const auto all = [&]
    {
        for (int i = 0; i < runs; ++i)
            run();
    };
    return processorMicrosecondsOf(all) / runs;
}

} // namespace

void EditTimes::sample(int runs, const Run& event, const Run& silent, const Run& floor)
{
    // In turns: the first to send wakes the publisher's thread.
    const bool eventFirst = m_event.size() % 2 == 0;
    if (eventFirst)
        m_event.push_back(timeOfOne(runs, event));
    m_silent.push_back(timeOfOne(runs, silent));
    m_bare.push_back(timeOfOne(runs,
                               [&]
                               {
                                   silent();
                                   floor();
                               }));
    if (!eventFirst)
        m_event.push_back(timeOfOne(runs, event));
}

int runInScene(int argc, char** argv, const std::function<void()>& declare,
               const std::function<void(const Scene&)>& add, const std::function<void()>& printTable)
{
    std::unique_ptr<Scene> scene;
    const auto addToScene = [&](const std::filesystem::path& scratch)
    {
        scene = std::make_unique<Scene>(scratch, declare);
        add(*scene);
    };
    return runBenchmarks(argc, argv, addToScene, printTable);
}

} // namespace bench
