#include "sent_records.h"
#include "standin_session.h"

#include <CH/CH_Manager.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Node.h>

namespace
{

VOP_Node& newNode(OP_Network& net, const char* type) { return *net.createNode(type)->castToVOPNode(); }

void fetch(OP_Node& node, const std::string& path)
{
    node.setString(path.c_str(), CH_STRING_LITERAL, "target", 0, 0);
}

Names outputLabels(const VOP_Node& node)
{
    Names labels;
    for (unsigned i = 0; i < node.getNumVisibleOutputs(); ++i)
        labels.push_back(node.outputLabel(i));
    return labels;
}

std::vector<int> outputTypes(VOP_Node& node)
{
    std::vector<int> types;
    for (unsigned i = 0; i < node.getNumVisibleOutputs(); ++i)
        types.push_back(node.getOutputType(static_cast<int>(i)));
    return types;
}

std::string userData(const OP_Node& node)
{
    UT_String text("absent");
    node.getUserData("outputs", text);
    return text.toStdString();
}

std::string descriptiveName(const OP_Node& node)
{
    UT_String name;
    node.getDescriptiveName(name);
    return name.toStdString();
}

std::string pathOf(const OP_Node& node)
{
    UT_String path;
    node.getFullPath(path);
    return path.toStdString();
}

/// A node whose outputs are those of a test.
class Source : public VOP_Node
{
public:
    struct Output
    {
        const char* name;
        const char* label;
        VOP_Type type;
    };

    static OP_Node* make(OP_Network* net, const char* name, OP_Operator* op)
    {
        return new Source(net, name, op);
    }

    unsigned getNumVisibleOutputs() const override { return static_cast<unsigned>(outputs.size()); }
    const char* outputLabel(unsigned i) const override { return outputs.at(i).label; }

    std::vector<Output> outputs;

protected:
    using VOP_Node::VOP_Node;
    void getOutputNameSubclass(UT_String& name, int i) const override
    {
        name.harden(outputs.at(static_cast<std::size_t>(i)).name);
    }
    VOP_Type getOutputTypeSubclass(int i) override { return outputs.at(static_cast<std::size_t>(i)).type; }
};

Source& newSource(OP_Network& net, std::vector<Source::Output> outputs)
{
    OP_OperatorTable* table = OP_Network::getOperatorTable("Vop");
    if (!table->getOperator("source"))
        table->addOperator(
            new VOP_Operator("source", "Source", Source::make, nullptr, 0, 0, "*", nullptr, 0, 2048));
    Source& source = static_cast<Source&>(*net.createNodeUnfiltered("source"));
    source.outputs = std::move(outputs);
    return source;
}

} // namespace

TEST(FetchNode, HasOneParameterForTheTarget)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    ASSERT_EQ(node.getNumParms(), 1);
    const PRM_Template& target = *node.getParm(0).getTemplatePtr();
    EXPECT_STREQ(target.getToken(), "target");
    EXPECT_STREQ(target.getLabel(), "Target");
    EXPECT_TRUE(target.getType() == PRM_STRING_OPREF);
    EXPECT_EQ(target.getTypeExtended(), 17);
    EXPECT_EQ(target.getVectorSize(), 1);
    EXPECT_EQ(target.getFactoryDefaults(), nullptr);
    EXPECT_EQ(target.getSparePtr(), &PRM_SpareData::vopPath);
    EXPECT_EQ(target.getParmGroup(), 1);
}

TEST(FetchNode, HasNoInputs)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    VOP_VopTypeArray types;
    node.getAllowedInputTypes(0, types);
    EXPECT_EQ(node.getNumVisibleInputs(), 0u);
    EXPECT_STREQ(node.inputLabel(0), "<none>");
    EXPECT_EQ(node.getInputType(0), VOP_TYPE_UNDEF);
    EXPECT_EQ(types.entries(), 0);
}

TEST(FetchNode, HasNoOutputsWhileItIsNew)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    EXPECT_EQ(node.getNumVisibleOutputs(), 0u);
    EXPECT_EQ(node.outputLabel(0), nullptr);
    EXPECT_EQ(node.getOutputType(0), VOP_TYPE_UNDEF);
    EXPECT_EQ(node.getOutputType(-1), VOP_TYPE_UNDEF);
    EXPECT_EQ(descriptiveName(node), "");
}

TEST(FetchTarget, GivesItsOutputsToTheNode)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    Source& source = newSource(net, {{"a", "A", VOP_TYPE_FLOAT}, {"b", "B", VOP_TYPE_VECTOR}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");

    EXPECT_EQ(outputLabels(node), (Names{"A", "B"}));
    EXPECT_EQ(outputTypes(node), (std::vector<int>{3, 2}));
    EXPECT_EQ(userData(node), "a:A:3;b:B:2;");
    EXPECT_EQ(descriptiveName(node), "../source1");
    UT_String name;
    node.getOutputName(name, 1);
    EXPECT_STREQ(name, "B") << "a utility node's connector is named as it is labelled";
    EXPECT_EQ(node.outputLabel(2), nullptr);
    EXPECT_EQ(node.getOutputType(2), VOP_TYPE_UNDEF);

    fetch(node, pathOf(source));
    EXPECT_EQ(userData(node), "a:A:3;b:B:2;");
    EXPECT_EQ(descriptiveName(node), pathOf(source));
}

TEST(FetchTarget, IsFollowedWhenItIsSetAndNotLater)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    Source& source = newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");
    source.outputs.clear();
    EXPECT_EQ(outputLabels(node), Names{"A"});
    net.destroyNode(&source);
    EXPECT_EQ(outputLabels(node), Names{"A"});
}

TEST(FetchTarget, IsReadAtTimeZero)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    CHgetManager()->setEvalTime(1);
    node.setString("'../source1' if hou.time() == 0 else '..'", CH_PYTHON_EXPRESSION, "target", 0, 0);
    EXPECT_EQ(outputLabels(node), Names{"A"});
    EXPECT_EQ(descriptiveName(node), "../source1");
}

TEST(FetchTarget, MayHaveNoOutputs)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");
    EXPECT_EQ(node.getNumVisibleOutputs(), 0u);
    EXPECT_EQ(userData(node), "");
    EXPECT_EQ(descriptiveName(node), "../source1");
}

TEST(FetchTarget, ThatIsTheNodeItselfGivesNothing)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");
    fetch(node, ".");
    EXPECT_EQ(node.getNumVisibleOutputs(), 0u);
    EXPECT_EQ(userData(node), "");
}

struct NoTarget
{
    const char* path;
    const char* descriptiveName;
};

class FetchWithoutTarget : public ::testing::TestWithParam<NoTarget>
{
};

INSTANTIATE_TEST_SUITE_P(Paths, FetchWithoutTarget,
                         ::testing::Values(NoTarget{"../nobody", "Invalid Path"},
                                           NoTarget{"/obj", "Invalid Path"}, NoTarget{"..", "Invalid Path"},
                                           NoTarget{"", ""}),
                         [](const ::testing::TestParamInfo<NoTarget>& info)
                         { return "path" + std::to_string(info.index); });

TEST_P(FetchWithoutTarget, HasNoOutputsAndNoWires)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}, {"b", "B", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    VOP_Node& reader = newNode(net, "korvan::ramp_float");
    VOP_Node& light = newNode(net, "korvan_light");
    fetch(node, "../source1");
    reader.setInput(0, &node, 0);
    reader.setInput(1, &node, 1);
    light.setInput(1, &node, 0);
    light.setInput(2, &node, 1);
    fetch(node, GetParam().path);

    EXPECT_EQ(node.getNumVisibleOutputs(), 0u);
    EXPECT_EQ(node.nOutputs(-1), 0u);
    EXPECT_EQ(reader.nInputs(), 0u);
    EXPECT_EQ(light.nInputs(), 0u);
    EXPECT_EQ(userData(node), "");
    EXPECT_EQ(descriptiveName(node), GetParam().descriptiveName);
}

TEST(FetchWires, MoveToTheLastOutputWhateverItsType)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT},
                    {"b", "B", VOP_TYPE_STRING},
                    {"c", "C", VOP_TYPE_FLOAT},
                    {"d", "D", VOP_TYPE_FLOAT}});
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}, {"b", "B", VOP_TYPE_STRING}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");
    VOP_Node& reader = newNode(net, "korvan::ramp_float");
    VOP_Node& other = newNode(net, "korvan::ramp_float");
    for (unsigned i = 0; i < 4; ++i)
        reader.setInput(i, &node, i);
    other.setInput(5, &node, 3);
    fetch(node, "../source2");

    std::vector<int> outputs;
    for (unsigned i = 0; i < 4; ++i)
    {
        ASSERT_EQ(reader.getInput(i), &node) << i;
        outputs.push_back(reader.getInputReferenceConst(i)->getNodeOutputIndex());
    }
    EXPECT_EQ(outputs, (std::vector<int>{0, 1, 1, 1}));
    ASSERT_EQ(other.getInput(5), &node);
    EXPECT_EQ(other.getInputReferenceConst(5)->getNodeOutputIndex(), 1);
    EXPECT_EQ(node.nOutputs(-1), 5u);
}

TEST(FetchWires, StayWhenTheNewTargetHasMoreOutputs)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}, {"b", "B", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");
    VOP_Node& reader = newNode(net, "korvan::ramp_float");
    reader.setInput(0, &node, 0);
    fetch(node, "../source2");
    EXPECT_EQ(reader.getInputReferenceConst(0)->getNodeOutputIndex(), 0);
}

TEST(FetchUserData, IsReadWhenTheNodeWasLoaded)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    node.setUserData("outputs", "rgb:Colour:2;r:R:3;", false);
    EXPECT_EQ(node.getNumVisibleOutputs(), 2u);
    EXPECT_EQ(outputLabels(node), (Names{"Colour", "R"}));
    EXPECT_EQ(outputTypes(node), (std::vector<int>{2, 3}));
}

TEST(FetchUserData, IsNotReadAgainOnceALabelWasAskedFor)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    node.setUserData("outputs", "a:A:3;", false);
    EXPECT_EQ(node.getNumVisibleOutputs(), 1u);
    node.setUserData("outputs", "a:A:3;b:B:3;", false);
    EXPECT_EQ(node.getNumVisibleOutputs(), 2u) << "a count alone reads no list in";
    EXPECT_EQ(node.getOutputType(1), VOP_TYPE_FLOAT);
    node.setUserData("outputs", "", false);
    EXPECT_EQ(node.getNumVisibleOutputs(), 2u);
}

TEST(FetchUserData, WithTooFewFieldsReadsAsEmptyAndZero)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    node.setUserData("outputs", ";;a;b:B;:::;c:C:12x;d:D:x;e:E:-1:f;g::7;", false);
    EXPECT_EQ(outputLabels(node), (Names{"", "B", "", "C", "D", "E", "7"}));
    EXPECT_EQ(outputTypes(node), (std::vector<int>{0, 0, 0, 12, 0, -1, 0}));
}

TEST(FetchUserData, CountsAsTheOldOutputsWhenALoadedNodeGetsAnotherTarget)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    node.setUserData("outputs", "a:A:3;b:B:3;c:C:3;", false);
    VOP_Node& reader = newNode(net, "korvan::ramp_float");
    reader.setInput(0, &node, 2);
    fetch(node, "../source1");
    ASSERT_EQ(reader.getInput(0), &node);
    EXPECT_EQ(reader.getInputReferenceConst(0)->getNodeOutputIndex(), 0);
}

TEST(FetchUserData, DoesNotEscapeSeparators)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a:b", "A;B", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");
    EXPECT_EQ(userData(node), "a:b:A;B:3;");
    EXPECT_EQ(outputLabels(node), Names{"A;B"}) << "until the scene is loaded again";
}

TEST(FetchEdit, OfAnotherParameterChangesNothingButTheTile)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    Source& source = newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    fetch(node, "../source1");
    source.outputs.clear();
    const int redraws = node.getUIChangeCount();
    node.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(1));
    node.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(-1));
    EXPECT_EQ(node.getUIChangeCount(), redraws + 2);
    EXPECT_EQ(outputLabels(node), Names{"A"});
}

TEST(FetchEdit, SendsNothing)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    SentRecords sent;
    fetch(node, "../source1");
    EXPECT_EQ(sent.count(), 0u);
}

/// Deletes a node when another one is rewired or redrawn.
void deleteOn(OP_EventType reason, OP_Node& heard, OP_Node& victim)
{
    static OP_EventType wanted;
    wanted = reason;
    heard.addOpInterest(&victim,
                        [](OP_Node*, void* node, OP_EventType type, void*)
                        {
                            OP_Node* doomed = static_cast<OP_Node*>(node);
                            if (type == wanted && !doomed->isBeingDeleted())
                                doomed->getParent()->destroyNode(doomed);
                        });
}

TEST(FetchEdit, EndsWhenItsRedrawDeletesTheNode)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    const int id = node.getUniqueId();
    deleteOn(OP_UI_CHANGED, node, node);
    fetch(node, "../nobody");
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
}

TEST(FetchEdit, EndsWhenAnExpressionDeletesTheNode)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newNode(session.container(), "korvan::fetch");
    const int id = node.getUniqueId();
    node.setString("hou.pwd().destroy() or '..'", CH_PYTHON_EXPRESSION, "target", 0, 0);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
}

TEST(FetchEdit, EndsWhenAWireTakesTheNodeWithIt)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}, {"b", "B", VOP_TYPE_FLOAT}, {"c", "C", VOP_TYPE_FLOAT}});
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    for (const char* next : {"../source2", "../nobody"})
    {
        VOP_Node& node = newNode(net, "korvan::fetch");
        VOP_Node& reader = newNode(net, "korvan::ramp_float");
        fetch(node, "../source1");
        reader.setInput(0, &node, 1);
        reader.setInput(1, &node, 2);
        const int id = node.getUniqueId();
        deleteOn(OP_INPUT_REWIRED, reader, node);
        fetch(node, next);
        EXPECT_EQ(OP_Node::lookupNode(id), nullptr) << next;
    }
}

TEST(FetchEdit, GoesOnWhenAWireTakesItsReaderAway)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}, {"b", "B", VOP_TYPE_FLOAT}});
    newSource(net, {{"a", "A", VOP_TYPE_FLOAT}});
    VOP_Node& node = newNode(net, "korvan::fetch");
    VOP_Node& doomed = newNode(net, "korvan::ramp_float");
    VOP_Node& other = newNode(net, "korvan::ramp_float");
    fetch(node, "../source1");
    doomed.setInput(0, &node, 1);
    doomed.setInput(1, &node, 1);
    other.setInput(0, &node, 1);
    deleteOn(OP_INPUT_REWIRED, doomed, doomed);
    fetch(node, "../source2");
    EXPECT_EQ(other.getInputReferenceConst(0)->getNodeOutputIndex(), 0);
    EXPECT_EQ(userData(node), "a:A:3;");
}
