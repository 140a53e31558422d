#include "standin_session.h"

#include "vop_utility.h"

#include <UT/UT_String.h>
#include <VOP/VOP_OperatorInfo.h>

#include <ostream>

namespace
{

/// A node with the labels that a test wants; null for a connector without one.
class Labelled : public zelk::shop::VOP_KorvanUtility
{
public:
    static OP_Node* make(OP_Network* net, const char* name, OP_Operator* op)
    {
        return new Labelled(net, name, op);
    }

    const char* inputLabel(unsigned i) const override { return i < inputs.size() ? inputs[i] : nullptr; }
    const char* outputLabel(unsigned i) const override { return i < outputs.size() ? outputs[i] : nullptr; }
    unsigned getNumVisibleInputs() const override { return static_cast<unsigned>(inputs.size()); }

    std::vector<const char*> inputs, outputs;

protected:
    using VOP_KorvanUtility::VOP_KorvanUtility;
};

Labelled& newLabelled(StandinSession& session, std::vector<const char*> inputs)
{
    auto* op = new zelk::shop::VOP_KorvanUtilityOperator("labelled", "Labelled", Labelled::make, nullptr, 0,
                                                         9, "korvan_vopnet", nullptr, 0, 1);
    OP_Network::getOperatorTable("Vop")->addOperator(op);
    session.registerAll();
    auto& node = static_cast<Labelled&>(*session.container().createNodeUnfiltered("labelled"));
    node.inputs = std::move(inputs);
    return node;
}

} // namespace

TEST(UtilityConnectors, AreNamedAsTheyAreLabelled)
{
    StandinSession session;
    Labelled& node = newLabelled(session, {"1 : Position"});
    node.outputs = {"float"};
    UT_String input, output;
    node.getInputName(input, 0);
    node.getOutputName(output, 0);
    EXPECT_STREQ(input, "1 : Position");
    EXPECT_STREQ(output, "float");
}

TEST(UtilityConnectors, LeaveTheNameAloneWithoutALabel)
{
    StandinSession session;
    Labelled& node = newLabelled(session, {nullptr});
    UT_String input("before"), output("before");
    node.getInputName(input, 0);
    node.getOutputName(output, 0);
    EXPECT_STREQ(input, "before");
    EXPECT_STREQ(output, "before");
}

TEST(UtilityConnectors, AreFoundByTheFirstInputOfThatName)
{
    StandinSession session;
    Labelled& node = newLabelled(session, {"a", "b", "b", nullptr});
    EXPECT_EQ(node.getInputFromName("b"), 1);
    EXPECT_EQ(node.getInputFromName("B"), -1);
    EXPECT_EQ(node.getInputFromName("c"), -1);
    EXPECT_EQ(node.getInputFromName(""), -1);
    EXPECT_EQ(node.getInputFromName(UT_String()), 3) << "no name equals no label";
}

struct UtilityType
{
    const char* name;
    const char* label;
    const char* menu;
    const char* icon;
    unsigned maxInputs;
    unsigned outputs;
};

void PrintTo(const UtilityType& type, std::ostream* out) { *out << type.name; }

class UtilityTypes : public ::testing::TestWithParam<UtilityType>
{
};

TEST_P(UtilityTypes, HaveTheirOperator)
{
    StandinSession session;
    session.registerAll();
    VOP_Operator* op = static_cast<VOP_Operator*>(session.vop(GetParam().name));
    ASSERT_NE(op, nullptr);
    EXPECT_NE(dynamic_cast<zelk::shop::VOP_KorvanUtilityOperator*>(op), nullptr);

    UT_String menu;
    EXPECT_STREQ(op->getEnglish(), GetParam().label);
    EXPECT_TRUE(op->getOpTabSubMenuPath(menu));
    EXPECT_STREQ(menu, GetParam().menu);
    EXPECT_STREQ(op->getIconName(), GetParam().icon);
    EXPECT_EQ(op->getMinSources(), 0u);
    EXPECT_EQ(op->getMaxSources(), GetParam().maxInputs);
    EXPECT_EQ(op->maxOutputs(), GetParam().outputs);
    EXPECT_EQ(op->getFlags(), 0u);
    EXPECT_EQ(op->getVariables(), nullptr);
    EXPECT_STREQ(static_cast<VOP_OperatorInfo*>(op->getOpSpecificData())->getVopnetMask(), "korvan_vopnet");
}

TEST_P(UtilityTypes, RunTheHostsCreationScript)
{
    StandinSession session;
    const std::string script = "korvan--" + std::string(GetParam().name + sizeof("korvan::") - 1) + ".py";
    session.folder.write("scripts/vop/" + script, "kwargs['node'].setUserData('ran', 'yes')\n");
    session.registerAll();
    OP_Node& node = *session.container().createNode(GetParam().name);
    EXPECT_TRUE(node.runCreateScript());
    UT_String ran;
    EXPECT_TRUE(node.getUserData("ran", ran));
}

INSTANTIATE_TEST_SUITE_P(
    All, UtilityTypes,
    ::testing::Values(UtilityType{"korvan::fetch", "Fetch", "Utility", "OBJ_fetch", 0, 2048},
                      UtilityType{"korvan::ramp_float", "Ramp Float", "Texture", "VOP_rampparm", 2048, 1},
                      UtilityType{"korvan::ramp_rgb", "Ramp RGB", "Texture", "VOP_rampparm", 2048, 4}),
    [](const ::testing::TestParamInfo<UtilityType>& info)
    { return std::string(info.param.name + sizeof("korvan::") - 1); });

TEST(UtilityTable, StaysHandWrittenWhateverShadersTheRendererHas)
{
    StandinSession session;
    session.renderer.shader("ramp_rgb");
    newVopOperator(OP_Network::getOperatorTable("Vop"));
    OP_Operator* op = session.vop("korvan::ramp_rgb");
    EXPECT_NE(dynamic_cast<zelk::shop::VOP_KorvanUtilityOperator*>(op), nullptr);
    EXPECT_EQ(
        session.renderer.takeWarnings(),
        Messages{
            "[vop_utility] Ignoring the renderer's shader korvan::ramp_rgb: the type is hand-written. Set "
            "houdini.skip on the shader."});
}
