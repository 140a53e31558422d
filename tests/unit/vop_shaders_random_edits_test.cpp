#include "edited_nodes.h"

#include <UT/UT_UndoManager.h>

#include <functional>
#include <iostream>
#include <random>

namespace
{

const char* const seed_variable = "KORVAN_RANDOM_SEED";
const char* const count_variable = "KORVAN_RANDOM_OPERATIONS";
const int default_count = 10000;
const std::size_t most_nodes = 40;

unsigned long numberFrom(const char* variable, unsigned long otherwise)
{
    const char* text = std::getenv(variable);
    return text && *text ? std::strtoul(text, nullptr, 10) : otherwise;
}

/// Checks each record while its edit is under way: the node that it names is there, and has the value that it holds.
class TruthfulRecords
{
public:
    TruthfulRecords()
    {
        ::setenv("ZELK_IPR_ENDPOINT", ("ipc://" + (m_folder.path() / "render").string()).c_str(), 1);
        zelk::ipr::setSendObserver([this](const std::string& text) { check(text); });
    }
    ~TruthfulRecords() { zelk::ipr::setSendObserver({}); }

    int count() const { return m_count; }

private:
    void check(const std::string& text)
    {
        ++m_count;
        zelk::ipr::ReceivedDelta delta;
        std::string error;
        ASSERT_TRUE(zelk::ipr::readDelta(text, delta, error)) << error;
        ASSERT_EQ(delta.size(), delta.count("position") ? 3u : 1u);
        OP_Node* node = OPgetDirector()->findNode(delta.nodePath.c_str());
        ASSERT_NE(node, nullptr) << delta.nodePath;
        const bool isCamera = std::string(delta.entryName) == "lens";
        EXPECT_EQ(isCamera, delta.nodePath.compare(0, 5, "/obj/") == 0);
        if (delta.begin()->first == "amount")
        {
            EXPECT_EQ(delta.begin()->second.value.flt, static_cast<float>(node->evalFloat("amount", 0, 0)));
        }
    }

    TemporaryFolder m_folder;
    int m_count = 0;
};

/// Creates, edits, renames, wires, undoes and deletes at random. Listeners do the same while events fire.
class Chaos
{
public:
    Chaos(OP_Network& net, unsigned long seed) : m_net(net), m_random(seed) {}
    ~Chaos()
    {
        // What is left is deleted in peace: its listeners are this object.
        m_depth = most_depth;
        for (OP_Network* network : {&m_net, &objects()})
            while (network->getNchildren() > 0)
                network->destroyNode(network->getChild(0));
    }

    void step() { (this->*pick(m_steps))(); }
    int redos() const { return m_redos; }
    int nested() const { return m_nested; }

private:
    typedef void (Chaos::*Step)();
    static const int most_depth = 3;

    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_random);
    }

    template <typename List>
    auto pick(const List& list) -> decltype(list[0])
    {
        return list[below(std::size(list))];
    }

    OP_Node* anyOf(OP_Network& network)
    {
        const int count = network.getNchildren();
        return count ? network.getChild(static_cast<int>(below(static_cast<std::size_t>(count)))) : nullptr;
    }
    OP_Node* anyShader() { return anyOf(m_net); }

    void create()
    {
        if (m_net.getNchildren() >= static_cast<int>(most_nodes))
            return;
        static const char* const types[] = {"korvan::s",     "korvan::s",        "korvan::lens",
                                            "korvan::sink",  "korvan::ramp_rgb", "korvan::ramp_float",
                                            "korvan::fetch", "korvan_light"};
        OP_Node* node = m_net.createNode(pick(types));
        if (node && below(3) == 0)
            node->addOpInterest(this, &Chaos::onEvent);
    }

    void createCamera()
    {
        if (objects().getNchildren() >= 10)
            return;
        static const char* const prefixes[] = {"", "/shop", "/shop/korvan_vopnet1/lens1", "/elsewhere"};
        OP_Node& camera = cameraObject(pick(prefixes));
        if (below(3) == 0)
            camera.addOpInterest(this, &Chaos::onEvent);
    }

    void destroyIn(OP_Network& network)
    {
        if (OP_Node* node = anyOf(network))
            network.destroyNode(node);
    }
    void destroy() { destroyIn(m_net); }
    void destroyCamera() { destroyIn(objects()); }

    void rename()
    {
        static const char* const names[] = {"a", "b", "lens1", "lens10", "node"};
        if (OP_Node* node = anyShader())
            m_net.renameNode(node, pick(names));
    }

    void wire()
    {
        OP_Node *node = anyShader(), *source = anyShader();
        if (node && node != source && node->getNumVisibleInputs() > 0)
            node->setInput(static_cast<unsigned>(below(node->getNumVisibleInputs())), source);
    }

    void unwire()
    {
        if (OP_Node* node = anyShader())
            node->setInput(0, nullptr);
    }

    void edit()
    {
        OP_Node* node = anyShader();
        if (!node || node->getNumParms() == 0)
            return;
        PRM_Parm& parm =
            node->getParm(static_cast<int>(below(static_cast<std::size_t>(node->getNumParms()))));
        const int component = static_cast<int>(below(static_cast<std::size_t>(parm.getVectorSize())));
        if (parm.getType().isStringType())
            parm.setValue(0, "text $F", CH_STRING_LITERAL, true, PRM_AK_NEVER, component);
        else
            parm.setValue(0, static_cast<fpreal>(below(4)), true, PRM_AK_NEVER, component);
    }

    void editAmount()
    {
        if (OP_Node* node = anyShader())
            node->setFloat("amount", 0, 0, 0.5 * static_cast<double>(below(100)));
    }

    void fetch()
    {
        OP_Node *node = anyShader(), *target = anyShader();
        if (node)
            node->setString(("../" + target->getName().toStdString()).c_str(), CH_STRING_LITERAL, "target", 0,
                            0);
    }

    void wireAnywhere()
    {
        OP_Node *node = anyShader(), *source = anyShader();
        if (node && node != source && source->getNumVisibleOutputs() > 0)
            node->setInput(static_cast<unsigned>(below(12)), source,
                           static_cast<unsigned>(below(source->getNumVisibleOutputs())));
    }

    void press()
    {
        if (OP_Node* node = anyShader())
            if (PRM_Parm* parm = node->getParmPtr("reset"))
                node->pressParm(*parm, 0, 0);
    }

    void undo() { UTgetUndoManager()->performUndo(); }
    void redo() { m_redos += UTgetUndoManager()->performRedo(); }

    void editInABlock()
    {
        const UT_AutoUndoBlock block("Several", ANYLEVEL);
        for (int i = 0; i < 3; ++i)
            edit();
    }

    static void onEvent(OP_Node*, void* self, OP_EventType type, void*)
    {
        Chaos& chaos = *static_cast<Chaos*>(self);
        if (type == OP_NODE_DELETED || chaos.m_depth >= most_depth || chaos.below(8) != 0)
            return;
        ++chaos.m_depth;
        ++chaos.m_nested;
        chaos.step();
        --chaos.m_depth;
    }

    OP_Network& m_net;
    std::mt19937_64 m_random;
    int m_depth = 0;
    int m_redos = 0;
    int m_nested = 0;
    const std::vector<Step> m_steps = {
        &Chaos::create, &Chaos::create,       &Chaos::createCamera, &Chaos::destroy, &Chaos::destroyCamera,
        &Chaos::rename, &Chaos::wire,         &Chaos::unwire,       &Chaos::edit,    &Chaos::edit,
        &Chaos::edit,   &Chaos::editAmount,   &Chaos::editAmount,   &Chaos::press,   &Chaos::undo,
        &Chaos::redo,   &Chaos::editInABlock, &Chaos::wire,         &Chaos::fetch,   &Chaos::wireAnywhere,
    };
};

} // namespace

// Run it under the address sanitizer to see whether a dead node was touched.
TEST(RandomEdits, NeverTouchADeadNodeWhileEventsFire)
{
    const unsigned long seed = numberFrom(seed_variable, std::random_device()());
    const unsigned long count = numberFrom(count_variable, default_count);
    std::cout << "seed " << seed << ", " << count << " operations; set " << seed_variable
              << " to see the same again\n";
    RecordProperty("seed", std::to_string(seed));

    StandinSession session;
    session.renderer.shader("s")
        .floats({"amount"})
        .parm("color", KR_TYPE_RGB, rgbValue(0, 0, 0))
        .parm("name", KR_TYPE_STRING, stringValue(""))
        .enumeration("mode", {"one", "two"}, 0)
        .floatArray("weights", {1, 2})
        .parmWithoutDefault("in", KR_TYPE_NODE)
        .metaData("houdini.parm.toggle.extra", "on")
        .metaData("houdini.parm.button.reset", "hscript:opparm . amount 0 weights 3");
    session.renderer.camera("lens").floats({"squeeze"});
    session.renderer.shader("sink").parmWithoutDefault("in", KR_TYPE_NODE);
    session.registerAll();
    const TruthfulRecords records;
    Chaos chaos(session.container(), seed);
    for (unsigned long i = 0; i < count && !::testing::Test::HasFailure(); ++i)
        chaos.step();

    std::cout << records.count() << " records, " << chaos.nested() << " operations by listeners\n";
    EXPECT_EQ(UTgetUndoManager()->getLevel(), 0);
    EXPECT_GT(records.count(), static_cast<int>(count / 100));
    EXPECT_GT(chaos.redos(), 0);
    EXPECT_GT(chaos.nested(), static_cast<int>(count / 1000));
}
