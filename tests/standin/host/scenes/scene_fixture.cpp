#include "scene_fixture.h"

#include <PRM/PRM_Include.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace
{

// --- test::parms ------------------------------------------------------------------------------------------------

PRM_Name float_name("f", "Float");
PRM_Name vector_name("v", "Vector");
PRM_Name color_name("c", "Color");
PRM_Name int_name("i", "Whole");
PRM_Name toggle_name("on", "On");
PRM_Name menu_name("menu", "Menu");
PRM_Name text_name("text", "Text");
PRM_Name folder_name("folder", "Folder");
PRM_Name ramp_name("ramp", "Ramp");
PRM_Name outer_name("outer", "Outer");
PRM_Name inner_name("inner#", "Inner");
PRM_Name label_name("label#", "Label");
PRM_Name leaf_name("leaf#_#", "Leaf");

PRM_Name menu_items[] = {PRM_Name("red", "Red"), PRM_Name("green", "Green"), PRM_Name()};
PRM_ChoiceList menu(PRM_CHOICELIST_SINGLE, menu_items);
PRM_Default float_default(0, "1 + 1", CH_OLD_EXPRESSION);
PRM_Default text_default(0, "as made");
PRM_Default tabs[] = {PRM_Default(0, "One"), PRM_Default(0, "Two")};
PRM_Default two(2);

PRM_Template leaf_templates[] = {PRM_Template(PRM_FLT, 1, &leaf_name), PRM_Template()};
PRM_Template inner_templates[] = {
    PRM_Template(PRM_STRING, 1, &label_name),
    PRM_Template(PRM_MULTITYPE_LIST, leaf_templates, 1, &inner_name),
    PRM_Template(),
};
PRM_Template parms_templates[] = {
    PRM_Template(PRM_FLT, 1, &float_name, &float_default),
    PRM_Template(PRM_XYZ, 3, &vector_name),
    PRM_Template(PRM_RGB, 3, &color_name),
    PRM_Template(PRM_INT, 1, &int_name),
    PRM_Template(PRM_TOGGLE, 1, &toggle_name),
    PRM_Template(PRM_ORD, 1, &menu_name, nullptr, &menu),
    PRM_Template(PRM_STRING, 1, &text_name, &text_default),
    PRM_Template(PRM_SWITCHER, 2, &folder_name, tabs),
    PRM_Template(PRM_MULTITYPE_RAMP_RGB, nullptr, 1, &ramp_name, &two),
    PRM_Template(PRM_MULTITYPE_LIST, inner_templates, 1, &outer_name),
    PRM_Template(),
};

class ParmsVop : public VOP_Node
{
public:
    ParmsVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op) {}
};

/// Its outputs are in the user data, as those of nodes that mirror others.
class MirrorVop : public VOP_Node
{
public:
    MirrorVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op) {}

    unsigned getNumVisibleOutputs() const override
    {
        UT_String outputs;
        getUserData("outputs", outputs);
        return static_cast<unsigned>(outputs.toStdString().size());
    }

protected:
    void getOutputNameSubclass(UT_String& out, int idx) const override
    {
        out.harden(("m" + std::to_string(idx + 1)).c_str());
    }
    VOP_Type getOutputTypeSubclass(int) override { return VOP_TYPE_FLOAT; }
};

class SpreadVop : public VOP_Node
{
public:
    SpreadVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op) {}

protected:
    void getInputNameSubclass(UT_String& in, int idx) const override
    {
        const char* const names[] = {"x", "a", "b"};
        in.harden(names[idx]);
    }
    VOP_Type getInputTypeSubclass(int) override { return VOP_TYPE_FLOAT; }
};

template <typename Node>
void addType(const char* name, PRM_Template* templates, unsigned inputs, unsigned outputs)
{
    OP_Network::getOperatorTable(VOP_TABLE_NAME)
        ->addOperator(new VOP_Operator(
            name, name,
            [](OP_Network* net, const char* n, OP_Operator* op) -> OP_Node* { return new Node(net, n, op); },
            templates, 0, inputs, "test_vopnet", nullptr, 0, outputs));
}

} // namespace

void startSceneHost()
{
    startTestHost();
    addType<ParmsVop>("test::parms", parms_templates, 0, 0);
    addType<MirrorVop>("test::mirror", nullptr, 0, VOP_VARIABLE_INOUT_MAX);
    addType<SpreadVop>("test::spread", nullptr, 3, 0);
}

SceneTest::SceneTest() : file(::testing::TempDir() + "scene_test_" + std::to_string(getpid()) + ".hip") {}

SceneTest::~SceneTest()
{
    std::string why;
    standin::clearScene(why);
    std::remove(file.c_str());
}

Texts SceneTest::load()
{
    Texts warnings;
    std::string why;
    EXPECT_TRUE(standin::loadScene(file, warnings, why)) << why;
    net = nullptr; // that was deleted
    return warnings;
}

void SceneTest::roundTrip()
{
    std::string why;
    ASSERT_TRUE(standin::saveScene(file, why)) << why;
    EXPECT_EQ(load(), Texts());
}

std::string SceneTest::bytes() const
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
}

void SceneTest::setBytes(const std::string& bytes) const
{
    // Some file systems wait for the disk when a file is written over, and tests do that thousands of times.
    std::remove(file.c_str());
    std::ofstream(file, std::ios::binary) << bytes;
}

void SceneTest::replaceInFile(const std::string& what, const std::string& by)
{
    std::string why;
    std::vector<standin::ArchiveEntry> entries;
    ASSERT_TRUE(standin::readArchive(bytes(), entries, why)) << why;
    bool found = false;
    for (standin::ArchiveEntry& entry : entries)
        for (std::size_t at = 0; (at = entry.data.find(what, at)) != std::string::npos; at += by.size())
        {
            entry.data.replace(at, what.size(), by);
            found = true;
        }
    EXPECT_TRUE(found) << "The file does not hold: " << what;
    setBytes(standin::writeArchive(entries));
}

std::string SceneTest::entry(const std::string& name) const
{
    std::string why;
    std::vector<standin::ArchiveEntry> entries;
    EXPECT_TRUE(standin::readArchive(bytes(), entries, why)) << why;
    for (const standin::ArchiveEntry& entry : entries)
        if (entry.name == name)
            return entry.data;
    return "(none)";
}

OP_Node* SceneTest::find(const std::string& name) const
{
    return OPgetDirector()->findNode((netPath() + "/" + name).c_str());
}

ParmEventCounter::ParmEventCounter(OP_Network* network) : m_networkId(network->getUniqueId())
{
    network->addOpInterest(this, receive);
}

ParmEventCounter::~ParmEventCounter()
{
    OP_Node* network = OP_Node::lookupNode(m_networkId);
    if (!network)
        return;
    network->removeOpInterest(this, receive);
    for (int i = 0; i < network->castToOPNetwork()->getNchildren(); ++i)
        network->castToOPNetwork()->getChild(i)->removeOpInterest(this, receive);
}

void ParmEventCounter::receive(OP_Node*, void* callee, OP_EventType type, void* data)
{
    auto* counter = static_cast<ParmEventCounter*>(callee);
    counter->parmEvents += type >= OP_PARM_UICHANGED && type <= OP_PARM_CHANNELS;
    if (type != OP_CHILD_CREATED)
        return;
    counter->isLoadingSeen = OPgetDirector()->isLoading();
    static_cast<OP_Node*>(data)->addOpInterest(callee, receive);
}

Texts wiresOf(const OP_Node* node)
{
    Texts wires;
    for (unsigned i = 0; i < node->nInputs(); ++i)
        if (const OP_Node* source = node->getInput(i))
            wires.push_back(source->getName().toStdString() + "." +
                            std::to_string(node->getInputReferenceConst(i)->getNodeOutputIndex()) + ">" +
                            std::to_string(i));
    return wires;
}
