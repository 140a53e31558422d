#include "sent_records.h"
#include "standin_session.h"

#include "vop_outputs.h"

#include <UT/UT_String.h>
#include <VOP/VOP_OperatorInfo.h>

#include <ostream>
#include <stdexcept>

namespace
{

VOP_Node& newOutput(OP_Network& net, const char* type)
{
    OP_Node* node = net.createNode(type);
    node->runCreateScript();
    return *node->castToVOPNode();
}

Names inputLabels(const VOP_Node& node)
{
    Names labels;
    for (unsigned i = 0; i < node.getNumVisibleInputs(); ++i)
        labels.push_back(node.inputLabel(i));
    return labels;
}

Names inputNames(const VOP_Node& node)
{
    Names names;
    for (unsigned i = 0; i < node.getNumVisibleInputs(); ++i)
    {
        UT_String name;
        node.getInputName(name, static_cast<int>(i));
        names.push_back(name.buffer());
    }
    return names;
}

std::vector<int> inputTypes(VOP_Node& node)
{
    std::vector<int> types;
    for (unsigned i = 0; i < node.getNumVisibleInputs(); ++i)
        types.push_back(node.getInputType(static_cast<int>(i)));
    return types;
}

std::vector<int> allowedTypes(VOP_Node& node, unsigned input)
{
    VOP_VopTypeArray allowed;
    node.getAllowedInputTypes(input, allowed);
    return std::vector<int>(allowed.begin(), allowed.end());
}

/// Asks the node itself: the host would hand it an empty list.
struct OpenOutput : zelk::shop::VOP_KorvanOutput
{
    static void addAllowedTypes(VOP_Node& node, unsigned input, UT_Array<VOP_Type>& types)
    {
        (static_cast<VOP_KorvanOutput&>(node).*&OpenOutput::getAllowedInputTypesSubclass)(input, types);
    }
};

/// A light filter: a shader whose output fits the light output's growing inputs.
OP_Node& newFilter(OP_Network& net) { return *net.createNode("korvan::filter"); }

void declareFilter(StandinSession& session)
{
    session.renderer.shader("filter").metaData("houdini.shader_type", "light_filter");
}

} // namespace

struct OutputType
{
    const char* name;
    const char* label;
    const char* defaultName;
    Names inputs;
    std::vector<int> types;
    unsigned flags;
};

void PrintTo(const OutputType& type, std::ostream* out) { *out << type.name; }

class OutputTypes : public ::testing::TestWithParam<OutputType>
{
};

TEST_P(OutputTypes, HaveTheirOperator)
{
    StandinSession session;
    session.registerAll();
    VOP_Operator* op = static_cast<VOP_Operator*>(session.vop(GetParam().name));
    ASSERT_NE(op, nullptr);

    UT_String menu, help;
    EXPECT_STREQ(op->getEnglish(), GetParam().label);
    EXPECT_STREQ(op->getIconName(), "VOP_output");
    EXPECT_TRUE(op->getOpTabSubMenuPath(menu));
    EXPECT_STREQ(menu, "Output");
    EXPECT_TRUE(op->getOpHelpURL(help));
    EXPECT_STREQ(help, "https://docs.korvan.example/houdini/Output+Nodes");
    EXPECT_EQ(op->getMinSources(), 0u);
    EXPECT_EQ(op->getMaxSources(), 2048u);
    EXPECT_EQ(op->maxOutputs(), 0u);
    EXPECT_EQ(op->getFlags(), GetParam().flags);
    EXPECT_STREQ(static_cast<VOP_OperatorInfo*>(op->getOpSpecificData())->getVopnetMask(), "korvan_vopnet");
    EXPECT_EQ(op->getVariables(), nullptr);
}

TEST_P(OutputTypes, NameTheirNewNodesUniquely)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    const std::string wanted = GetParam().defaultName;
    EXPECT_EQ(newOutput(net, GetParam().name).getName().toStdString(), wanted);
    EXPECT_EQ(newOutput(net, GetParam().name).getName().toStdString(), wanted + "1");
}

TEST_P(OutputTypes, RunTheHostsCreationScriptUnderTheirNewName)
{
    StandinSession session;
    session.folder.write("scripts/vop/" + std::string(GetParam().name) + ".py",
                         "kwargs['node'].setUserData('name', kwargs['node'].name())\n");
    session.registerAll();
    UT_String name;
    newOutput(session.container(), GetParam().name).getUserData("name", name);
    EXPECT_STREQ(name, GetParam().defaultName);
}

TEST_P(OutputTypes, ShowTypedInputs)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), GetParam().name);
    EXPECT_EQ(inputLabels(node), GetParam().inputs);
    EXPECT_EQ(inputNames(node), GetParam().inputs);
    EXPECT_EQ(inputTypes(node), GetParam().types);
    for (unsigned i = 0; i < GetParam().types.size(); ++i)
        EXPECT_EQ(allowedTypes(node, i), std::vector<int>{GetParam().types[i]}) << i;
}

TEST_P(OutputTypes, FindInputsByName)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), GetParam().name);
    for (unsigned i = 0; i < GetParam().inputs.size(); ++i)
        EXPECT_EQ(node.getInputFromName(GetParam().inputs[i].c_str()), static_cast<int>(i));
    EXPECT_EQ(node.getInputFromName("nothing"), -1);
    EXPECT_EQ(node.getInputFromName(""), -1);
    EXPECT_EQ(node.getInputFromName(UT_String()), -1);
}

TEST_P(OutputTypes, HaveNoOutputConnector)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), GetParam().name);
    UT_String name;
    node.getOutputName(name, 0);
    EXPECT_EQ(node.getNumVisibleOutputs(), 0u);
    EXPECT_STREQ(node.outputLabel(0), "none");
    EXPECT_STREQ(name, "none");
    EXPECT_EQ(node.getOutputType(0), VOP_TYPE_UNDEF);
}

TEST_P(OutputTypes, AreRedrawnTwiceByAParameterEventAndByNothingElse)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), GetParam().name);
    const int before = node.getUIChangeCount();
    node.opChanged(OP_PARM_CHANGED, nullptr);
    EXPECT_EQ(node.getUIChangeCount(), before + 2);
    node.opChanged(OP_NAME_CHANGED, nullptr);
    node.opChanged(OP_FLAG_CHANGED, nullptr);
    EXPECT_EQ(node.getUIChangeCount(), before + 2);
}

INSTANTIATE_TEST_SUITE_P(
    All, OutputTypes,
    ::testing::Values(
        OutputType{"korvan_material",
                   "Material Output",
                   "OUT_material",
                   {"surface", "bump", "displacement", "volume"},
                   {1, 3, 2, 51},
                   0},
        OutputType{"korvan_environment",
                   "Environment Output",
                   "OUT_environment",
                   {"atmosphere", "background"},
                   {39, 1},
                   0},
        OutputType{"korvan_light", "Light Output", "OUT_light", {"Color", "Light Filter 1"}, {2, 36}, 4},
        OutputType{"korvan_camera",
                   "Camera Output",
                   "OUT_camera",
                   {"camera", "uv_remap", "filtermap"},
                   {40, 1, 2},
                   0}),
    [](const ::testing::TestParamInfo<OutputType>& info) { return std::string(info.param.name); });

TEST(OutputTable, HasTheFourTypesBeforeEverythingElseOfOurs)
{
    StandinSession session;
    session.renderer.shader("noise");
    OP_OperatorTable* table = OP_Network::getOperatorTable("Vop");
    const int before = table->entries();
    newVopOperator(table);

    OP_OperatorList ops;
    table->getOperators(ops);
    Names names;
    for (int i = before; i < table->entries(); ++i)
        names.push_back(ops(i)->getName().toStdString());
    EXPECT_EQ(names, (Names{"korvan_material", "korvan_environment", "korvan_light", "korvan_camera",
                            "korvan::noise", "korvan::fetch", "korvan::ramp_float", "korvan::ramp_rgb"}));
}

TEST(OutputOperator, KeepsTheLabelsAndTypesThatTheLightOutputDoesNotShow)
{
    StandinSession session;
    session.registerAll();
    const auto* op = dynamic_cast<zelk::shop::VOP_KorvanOutputOperator*>(session.vop("korvan_light"));
    ASSERT_NE(op, nullptr);
    ASSERT_EQ(op->inputs.size(), 2u);
    EXPECT_EQ(op->inputs[1]->token, "light_filter");
    EXPECT_EQ(op->inputs[1]->label, "Light Filter");
    EXPECT_EQ(op->inputs[1]->type, 36);
}

TEST(OutputOperator, KeepsALabelOfEachInputForPeople)
{
    StandinSession session;
    session.registerAll();
    Names labels;
    for (const char* type : {"korvan_material", "korvan_environment", "korvan_camera"})
        for (const auto* input :
             dynamic_cast<zelk::shop::VOP_KorvanOutputOperator&>(*session.vop(type)).inputs)
            labels.push_back(input->label);
    EXPECT_EQ(labels, (Names{"Surface", "Bump", "Displacement", "Volume", "Atmosphere", "Background",
                             "Camera", "UV Remap", "Filtermap"}));
}

TEST(OutputInput, AddsItsTypeToTheOnesThatAreThere)
{
    StandinSession session;
    session.registerAll();
    for (const char* type : {"korvan_material", "korvan_light"})
    {
        UT_Array<VOP_Type> types;
        types.append(VOP_TYPE_STRING);
        OpenOutput::addAllowedTypes(newOutput(session.container(), type), 1, types);
        ASSERT_EQ(types.entries(), 2) << type;
        EXPECT_EQ(types(0), VOP_TYPE_STRING) << type;
    }
}

TEST(OutputInput, ThrowsOutOfRangeWhenThereIsNone)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), "korvan_material");
    VOP_VopTypeArray types;
    EXPECT_THROW(node.inputLabel(4), std::out_of_range);
    EXPECT_THROW(node.getInputType(4), std::out_of_range);
    EXPECT_THROW(node.getInputType(-1), std::out_of_range);
    EXPECT_THROW(node.getAllowedInputTypes(4, types), std::out_of_range);
}

TEST(MaterialOutput, HasNoParameters)
{
    StandinSession session;
    session.registerAll();
    for (const char* type : {"korvan_material", "korvan_light", "korvan_camera"})
        EXPECT_EQ(newOutput(session.container(), type).getNumParms(), 0) << type;
}

TEST(EnvironmentOutput, ShowsAllVisibilityButtonsOn)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), "korvan_environment");
    ASSERT_EQ(node.getNumParms(), 2);
    EXPECT_STREQ(node.getParm(0).getToken(), "spacer");
    EXPECT_TRUE(node.getParm(0).getType() == PRM_LABEL);
    EXPECT_STREQ(node.getParm(0).getTemplatePtr()->getLabel(), "");

    const PRM_Template& strip = *node.getParm(1).getTemplatePtr();
    EXPECT_STREQ(strip.getToken(), "background_visibility");
    EXPECT_STREQ(strip.getLabel(), "Background Visibility");
    EXPECT_TRUE(strip.getType() == PRM_BUTTONSTRIP);
    EXPECT_EQ(node.evalInt("background_visibility", 0, 0), 255);
    EXPECT_EQ(strip.getChoiceListPtr()->getType(), 2);

    const PRM_Name* items = nullptr;
    strip.getChoiceListPtr()->getChoiceNames(items, &node, strip.getSparePtr(), &node.getParm(1));
    Names tokens, labels;
    for (; items->getToken() && *items->getToken(); ++items)
    {
        tokens.push_back(items->getToken());
        labels.push_back(items->getLabel());
    }
    EXPECT_EQ(tokens, (Names{"camera", "shadow", "reflected", "refracted", "unused", "diffuse", "glossy"}));
    EXPECT_EQ(labels, (Names{"Camera", "Shadow", "Reflected", "Refracted", "", "Diffuse", "Glossy"}));
}

TEST(EnvironmentOutput, IsRedrawnTwiceWhenItsVisibilityChanges)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), "korvan_environment");
    const int before = node.getUIChangeCount();
    node.setInt("background_visibility", 0, 0, 3);
    EXPECT_EQ(node.getUIChangeCount(), before + 2);
}

TEST(EnvironmentOutput, SendsNothing)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& node = newOutput(session.container(), "korvan_environment");
    SentRecords sent;
    node.setInt("background_visibility", 0, 0, 3);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(OutputNode, LeavesRedrawingOnRewiringToTheHost)
{
    StandinSession session;
    declareFilter(session);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node& light = newOutput(net, "korvan_light");
    VOP_Node& plain = *net.createNode("null")->castToVOPNode();
    OP_Node& filter = newFilter(net);

    const int ofLight = light.getUIChangeCount(), ofPlain = plain.getUIChangeCount();
    light.setInput(1, &filter);
    plain.setInput(0, &filter);
    EXPECT_EQ(light.getUIChangeCount() - ofLight, plain.getUIChangeCount() - ofPlain);
}

TEST(LightOutput, AlwaysShowsOneFreeFilterInput)
{
    StandinSession session;
    declareFilter(session);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node& light = newOutput(net, "korvan_light");
    EXPECT_EQ(light.orderedInputs(), 1u);
    EXPECT_EQ(light.getNumVisibleInputs(), 2u);

    light.setInput(1, &newFilter(net));
    EXPECT_EQ(light.getNumVisibleInputs(), 3u);
    light.setInput(2, &newFilter(net));
    EXPECT_EQ(inputLabels(light), (Names{"Color", "Light Filter 1", "Light Filter 2", "Light Filter 3"}));
    EXPECT_EQ(inputTypes(light), (std::vector<int>{2, 36, 36, 36}));
    EXPECT_EQ(light.getInputFromName("Light Filter 3"), 3);
    EXPECT_EQ(light.getInputFromName("Light Filter 4"), -1);
}

TEST(LightOutput, OverwritesALabelWithTheNext)
{
    StandinSession session;
    session.registerAll();
    VOP_Node& light = newOutput(session.container(), "korvan_light");
    const char* label = light.inputLabel(0);
    light.inputLabel(1);
    EXPECT_STREQ(label, "Light Filter 1");
}

TEST(LightOutput, ClosesTheGapOfADisconnectedFilter)
{
    StandinSession session;
    declareFilter(session);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node& light = newOutput(net, "korvan_light");
    OP_Node& first = newFilter(net);
    OP_Node& second = newFilter(net);
    light.setInput(1, &first);
    light.setInput(2, &second);

    light.setInput(1, nullptr);
    EXPECT_EQ(light.getInput(1), &second);
    EXPECT_EQ(light.getNumVisibleInputs(), 3u);
    light.setInput(1, nullptr);
    EXPECT_EQ(light.getNumVisibleInputs(), 2u);
}

/// Deletes a node as soon as somebody hears of this of it.
template <OP_EventType Reason>
void deleteOn(OP_Node* node, void*, OP_EventType type, void*)
{
    if (type == Reason)
        node->getParent()->destroyNode(node);
}

TEST(CreationScript, FailsForANodeThatAListenerOfItsNewNameDeletes)
{
    StandinSession session;
    session.registerAll();
    OP_Node* node = session.container().createNode("korvan_material");
    node->addOpInterest(&session, deleteOn<OP_NAME_CHANGED>);
    EXPECT_FALSE(node->runCreateScript());
}

TEST(CreationScript, FailsForANodeThatAListenerOfItsMoveDeletes)
{
    StandinSession session;
    session.renderer.shader("noise").floats({"a", "b", "c", "d", "e"});
    session.registerAll();
    for (const char* type : {"korvan::ramp_float", "korvan::noise"})
    {
        OP_Node* node = session.container().createNode(type);
        node->addOpInterest(&session, deleteOn<OP_UI_MOVED>);
        EXPECT_FALSE(node->runCreateScript()) << type;
    }
}
