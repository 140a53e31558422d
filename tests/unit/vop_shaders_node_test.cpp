#include "standin_session.h"

#include "shader_desc.h"

#include <PRM/PRM_Parm.h>
#include <VOP/VOP_Node.h>

#include <stdexcept>

using namespace zelk::shop;

namespace
{

VOP_Node& shaderNode(OP_Network& net, const char* type) { return *net.createNode(type)->castToVOPNode(); }

std::string inputName(const VOP_Node& node, int i)
{
    UT_String name;
    node.getInputName(name, i);
    return name.isstring() ? name.buffer() : "";
}

/// The node's own answers, which the host does not ask for past the last connector.
class OpenShader : public VOP_KorvanShader
{
public:
    static std::string inputNameOf(VOP_Node& node, int i)
    {
        UT_String name;
        (shader(node).*&OpenShader::getInputNameSubclass)(name, i);
        return name.buffer();
    }

    static VOP_Type inputTypeOf(VOP_Node& node, int i)
    {
        return (shader(node).*&OpenShader::getInputTypeSubclass)(i);
    }

    static void allowedTypesOf(VOP_Node& node, unsigned i, UT_Array<VOP_Type>& types)
    {
        (shader(node).*&OpenShader::getAllowedInputTypesSubclass)(i, types);
    }

    static bool updateFlagsOf(VOP_Node& node) { return (shader(node).*&OpenShader::updateParmsFlags)(); }

private:
    static VOP_KorvanShader& shader(VOP_Node& node) { return static_cast<VOP_KorvanShader&>(node); }
};

} // namespace

TEST(ShaderNode, HasAnInputForEachLinkableParameter)
{
    StandinSession session;
    session.renderer.shader("mix")
        .parm("base_color", KR_TYPE_RGB, rgbValue(0, 0, 0))
        .parm("file", KR_TYPE_STRING, stringValue(""))
        .parmMetaData("file", "linkable", false)
        .parm("amount", KR_TYPE_FLOAT, floatValue(0));
    session.registerAll();

    VOP_Node& node = shaderNode(session.container(), "korvan::mix");
    ASSERT_EQ(node.getNumVisibleInputs(), 2u);
    EXPECT_EQ(inputName(node, 0), "base_color");
    EXPECT_STREQ(node.inputLabel(0), "Base Color");
    EXPECT_EQ(node.getInputType(0), VOP_TYPE_VECTOR);
    EXPECT_EQ(inputName(node, 1), "amount");
    EXPECT_EQ(node.getInputType(1), VOP_TYPE_FLOAT);
    EXPECT_EQ(node.getInputFromName("amount"), 1);
    EXPECT_EQ(node.getInputFromName("file"), -1);
    EXPECT_EQ(node.getInputFromName("nothing"), -1);
}

TEST(ShaderNode, FindsNothingUnderANullName)
{
    StandinSession session;
    session.renderer.shader("noise", KR_TYPE_RGB).floats({"a"});
    session.registerAll();

    VOP_Node& node = shaderNode(session.container(), "korvan::noise");
    EXPECT_EQ(node.getInputFromName(UT_String()), -1);
    EXPECT_EQ(node.getOutputFromName(UT_String()), 0); // as under any name that is no output's
    EXPECT_EQ(node.getOutputFromName("nothing"), 0);
}

TEST(ShaderNode, AllowsAnInputOnlyItsOwnType)
{
    StandinSession session;
    session.renderer.shader("mix").parm("base_color", KR_TYPE_RGB, rgbValue(0, 0, 0));
    session.registerAll();

    UT_Array<VOP_Type> types;
    shaderNode(session.container(), "korvan::mix").getAllowedInputTypes(0, types);
    ASSERT_EQ(types.entries(), 1);
    EXPECT_EQ(types(0), VOP_TYPE_VECTOR);
}

TEST(ShaderNode, AddsAnInputsTypeToTheOnesThatAreThere)
{
    StandinSession session;
    session.renderer.shader("mix").parm("base_color", KR_TYPE_RGB, rgbValue(0, 0, 0));
    session.registerAll();

    UT_Array<VOP_Type> types;
    types.append(VOP_TYPE_STRING);
    OpenShader::allowedTypesOf(shaderNode(session.container(), "korvan::mix"), 0, types);
    ASSERT_EQ(types.entries(), 2);
    EXPECT_EQ(types(0), VOP_TYPE_STRING);
    EXPECT_EQ(types(1), VOP_TYPE_VECTOR);
}

TEST(ShaderNode, AnswersForInputsThatDoNotExist)
{
    StandinSession session;
    session.renderer.shader("mix").floats({"a"});
    session.registerAll();
    VOP_Node& node = shaderNode(session.container(), "korvan::mix");

    EXPECT_STREQ(node.inputLabel(1), "Invalid");
    for (int i : {1, -1})
    {
        EXPECT_EQ(OpenShader::inputNameOf(node, i), "invalid");
        EXPECT_THROW(OpenShader::inputTypeOf(node, i), std::out_of_range);
    }
    UT_Array<VOP_Type> types;
    EXPECT_THROW(OpenShader::allowedTypesOf(node, 1, types), std::out_of_range);
}

TEST(ShaderNode, HasTheMainOutputAndOneForEachComponent)
{
    StandinSession session;
    session.renderer.shader("noise", KR_TYPE_RGB);
    session.registerAll();

    VOP_Node& node = shaderNode(session.container(), "korvan::noise");
    ASSERT_EQ(node.getNumVisibleOutputs(), 4u);
    EXPECT_STREQ(node.outputLabel(0), "rgb");
    EXPECT_EQ(node.getOutputType(0), VOP_TYPE_VECTOR);
    UT_String name;
    node.getOutputName(name, 2);
    EXPECT_STREQ(name, "g");
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(node.getOutputType(i), VOP_TYPE_FLOAT);
    EXPECT_EQ(node.getOutputFromName("b"), 3);
    EXPECT_EQ(node.getOutputFromName("rgb"), 0);
}

TEST(ShaderNode, OfALightFilterHasItsOwnConnector)
{
    StandinSession session;
    session.renderer.shader("gobo", KR_TYPE_RGB).metaData("houdini.shader_type", "light_filter");
    session.registerAll();

    VOP_Node& node = shaderNode(session.container(), "korvan::gobo");
    EXPECT_STREQ(node.outputLabel(0), "light filter");
    EXPECT_EQ(node.getOutputType(0), 36);
}

TEST(ShaderNode, LivesOnlyInTheContainer)
{
    StandinSession session;
    session.renderer.shader("noise");
    session.registerAll();

    EXPECT_NE(session.container().createNode("korvan::noise"), nullptr);
    EXPECT_EQ(OPgetDirector()->getManager("vex")->createNode("korvan::noise"), nullptr);
}

// --- Parameter flags --------------------------------------------------------------------------------------

namespace
{

/// A shader whose parameter "a" is disabled while "off" is 1, and whose parameters and inputs line up.
void declareMix(StandinRenderer& renderer)
{
    renderer.shader("mix", KR_TYPE_FLOAT)
        .floats({"a", "b"})
        .parmMetaData("a", "houdini.disable_when", "{ off == 1 }")
        .parm("off", KR_TYPE_INT, intValue(0))
        .parmMetaData("off", "linkable", false);
}

bool isEnabled(OP_Node& node, const char* parm) { return node.getParm(parm).getEnableState(); }

} // namespace

TEST(ParmFlags, DisableTheParameterOfAConnectedInputUntilTheWireGoes)
{
    StandinSession session;
    declareMix(session.renderer);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &source = shaderNode(net, "korvan::mix"), &node = shaderNode(net, "korvan::mix");

    node.setInput(1, &source);
    EXPECT_FALSE(isEnabled(node, "b"));
    EXPECT_TRUE(isEnabled(node, "a"));
    node.setInput(1, nullptr);
    EXPECT_TRUE(isEnabled(node, "b"));
}

TEST(ParmFlags, FollowTheConditionOfAFreeInput)
{
    StandinSession session;
    declareMix(session.renderer);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &source = shaderNode(net, "korvan::mix"), &node = shaderNode(net, "korvan::mix");

    node.setInt("off", 0, 0, 1);
    EXPECT_FALSE(isEnabled(node, "a"));
    node.setInput(0, &source);
    EXPECT_FALSE(isEnabled(node, "a"));
    node.setInput(0, nullptr);
    EXPECT_FALSE(isEnabled(node, "a")) << "the wire is gone, but its condition holds";
    node.setInt("off", 0, 0, 0);
    EXPECT_TRUE(isEnabled(node, "a"));
}

TEST(ParmFlags, KeepAConnectedInputsParameterDisabledWhateverItsConditionSays)
{
    StandinSession session;
    declareMix(session.renderer);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &source = shaderNode(net, "korvan::mix"), &node = shaderNode(net, "korvan::mix");

    node.setInput(0, &source);
    node.setInt("off", 0, 0, 1);
    node.setInt("off", 0, 0, 0);
    EXPECT_FALSE(isEnabled(node, "a"));
}

TEST(ParmFlags, MixParameterAndInputIndices)
{
    // "fixed" takes no input, so that input i belongs to parameter i + 1: the conditions that are applied are those
    // of the first parameters, one for each input slot, and the last parameter's is left to the host.
    StandinSession session;
    session.renderer.shader("mix", KR_TYPE_FLOAT)
        .floats({"fixed", "a", "b"})
        .parmMetaData("fixed", "linkable", false);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &source = shaderNode(net, "korvan::mix"), &node = shaderNode(net, "korvan::mix");
    node.setInput(0, &source);
    ASSERT_FALSE(isEnabled(node, "a"));

    // Whatever disabled them: parameters 0 and 1 are looked at again, parameter 2 only through its input.
    node.enableParm("fixed", 0);
    node.enableParm("b", 0);
    EXPECT_FALSE(OpenShader::updateFlagsOf(node)) << "\"b\" is not among the parameters that count";
    EXPECT_FALSE(isEnabled(node, "fixed")) << "disabled before, so its missing condition does not enable it";
    EXPECT_FALSE(isEnabled(node, "a"));
    EXPECT_TRUE(isEnabled(node, "b"));
}

TEST(ParmFlags, FollowTheConditionsOfAsManyParametersAsThereAreInputs)
{
    // "b" is the parameter of the second input and the third parameter: enabled for the wire that it lacks, whatever its
    // own condition says.
    StandinSession session;
    session.renderer.shader("mix", KR_TYPE_FLOAT)
        .floats({"fixed", "a", "b"})
        .parm("off", KR_TYPE_INT, intValue(0))
        .parmMetaData("fixed", "linkable", false)
        .parmMetaData("off", "linkable", false)
        .parmMetaData("a", "houdini.disable_when", "{ off == 1 }")
        .parmMetaData("b", "houdini.disable_when", "{ off == 1 }");
    session.registerAll();
    VOP_Node& node = shaderNode(session.container(), "korvan::mix");
    ASSERT_EQ(node.getInputsArraySize(), 2u);

    node.setInt("off", 0, 0, 1);
    EXPECT_FALSE(isEnabled(node, "a"));
    EXPECT_TRUE(isEnabled(node, "b"));
}

TEST(ParmFlags, ReportAChangeOnce)
{
    StandinSession session;
    declareMix(session.renderer);
    session.registerAll();
    VOP_Node& node = shaderNode(session.container(), "korvan::mix");

    node.enableParm("b", 0);
    EXPECT_TRUE(OpenShader::updateFlagsOf(node));
    EXPECT_FALSE(OpenShader::updateFlagsOf(node));
}

TEST(ParmFlags, ReportAChangeOfAnyParameterEitherWay)
{
    StandinSession session;
    declareMix(session.renderer);
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &source = shaderNode(net, "korvan::mix"), &node = shaderNode(net, "korvan::mix");

    node.enableParm("a", 0);
    EXPECT_TRUE(OpenShader::updateFlagsOf(node)) << "the first of two";
    node.setInput(0, &source);
    node.enableParm("a", 1);
    EXPECT_TRUE(OpenShader::updateFlagsOf(node)) << "disabled by its wire";
    EXPECT_FALSE(OpenShader::updateFlagsOf(node));
}

TEST(ParmFlags, ReportNothingOnANodeWithoutInputs)
{
    StandinSession session;
    session.renderer.shader("flat").floats({"a"}).parmMetaData("a", "linkable", false);
    session.registerAll();

    VOP_Node& node = shaderNode(session.container(), "korvan::flat");
    ASSERT_EQ(node.getInputsArraySize(), 0u);
    EXPECT_FALSE(OpenShader::updateFlagsOf(node));
}

TEST(ParmFlags, PassOverInputsBehindTheLastParameter)
{
    StandinSession session;
    session.renderer.shader("mix", KR_TYPE_FLOAT)
        .floats({"a", "b"})
        .metaData("houdini.parm.folder.tabs", "")
        .metaData("houdini.order", "tabs");
    session.registerAll();
    session.renderer.takeErrors();

    VOP_Node& node = shaderNode(session.container(), "korvan::mix");
    ASSERT_EQ(node.getNumParms(), 0);
    ASSERT_EQ(node.getInputsArraySize(), 2u);
    EXPECT_FALSE(OpenShader::updateFlagsOf(node));
}

TEST(ParmFlags, LeaveHideConditionsToTheHost)
{
    StandinSession session;
    session.renderer.shader("mix")
        .parm("mode", KR_TYPE_INT, intValue(0))
        .floats({"a"})
        .parmMetaData("a", "houdini.hide_when", "{ mode == 1 }");
    session.registerAll();

    VOP_Node& node = shaderNode(session.container(), "korvan::mix");
    EXPECT_TRUE(node.getParm("a").getVisibleState());
    node.setInt("mode", 0, 0, 1);
    EXPECT_FALSE(node.getParm("a").getVisibleState());
}

// --- Creation script --------------------------------------------------------------------------------------

namespace
{

/// The detail letter that is on after a node's creation script; ' ' for none.
char detailOf(const char* lod, int inputs)
{
    StandinSession session;
    EntryBuilder s = session.renderer.shader("s");
    for (int i = 0; i < inputs; ++i)
        s.floats({"p" + std::to_string(i)});
    if (lod)
        s.metaData("houdini.lod", lod);
    session.registerAll();
    VOP_Node& node = shaderNode(session.container(), "korvan::s");
    EXPECT_TRUE(node.runCreateScript());
    for (char letter : {'H', 'M', 'L'})
        if (node.getExtraFlag(letter))
            return letter;
    return ' ';
}

} // namespace

TEST(CreationScript, ShowsAllOfFourInputs) { EXPECT_EQ(detailOf(nullptr, 4), ' '); }
TEST(CreationScript, ShowsOnlyConnectedOnesOfFiveInputs) { EXPECT_EQ(detailOf(nullptr, 5), 'M'); }
TEST(CreationScript, TakesTheShadersWordForMuch) { EXPECT_EQ(detailOf("high", 5), 'H'); }
TEST(CreationScript, TakesTheShadersWordForLittle) { EXPECT_EQ(detailOf("low", 1), 'L'); }

TEST(CreationScript, CountsInputsAndNotParameters)
{
    StandinSession session;
    session.renderer.shader("s").floats({"a", "b", "c", "d", "e"}).parmMetaData("e", "linkable", false);
    session.registerAll();
    VOP_Node& node = shaderNode(session.container(), "korvan::s");
    ASSERT_TRUE(node.runCreateScript());
    EXPECT_FALSE(node.getExtraFlag('M'));
}

TEST(CreationScript, FallsBackToTheNumberOfInputsOnAnUnknownWord)
{
    StandinSession session;
    session.renderer.shader("s").floats({"a", "b", "c", "d", "e"}).metaData("houdini.lod", "x");
    session.registerAll();
    VOP_Node& node = shaderNode(session.container(), "korvan::s");
    node.runCreateScript();
    EXPECT_TRUE(node.getExtraFlag('M'));
    EXPECT_EQ(session.renderer.takeWarnings().size(), 1u);
}

TEST(CreationScript, GivesTheHostsOwnResult)
{
    StandinSession session;
    session.folder.write("scripts/vop/korvan--s.py", "kwargs['node'].destroy()\n");
    session.renderer.shader("s");
    session.registerAll();
    EXPECT_FALSE(shaderNode(session.container(), "korvan::s").runCreateScript());
}

TEST(CreationScript, KeepsTheMiddleOfTheTileInPlace)
{
    StandinSession session;
    session.renderer.shader("s").floats({"a", "b", "c", "d", "e"});
    session.registerAll();
    VOP_Node& node = shaderNode(session.container(), "korvan::s");
    node.setXY(3, 10);
    const double height = node.getH();

    node.runCreateScript();
    ASSERT_LT(node.getH(), height);
    EXPECT_DOUBLE_EQ(node.getX(), 3);
    EXPECT_DOUBLE_EQ(node.getY(), 10 - 0.5 * (height - node.getH()));
}

// --- Events -----------------------------------------------------------------------------------------------

TEST(NodeEvents, RedrawTheTileOnAParameterChange)
{
    StandinSession session;
    session.renderer.shader("s").floats({"a"});
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &node = shaderNode(net, "korvan::s"), &other = shaderNode(net, "korvan::s");
    const int before = standin::redrawCount(node), others = standin::redrawCount(other);

    node.setFloat("a", 0, 0, 0.5);
    EXPECT_EQ(standin::redrawCount(node), before + 1);
    EXPECT_EQ(standin::redrawCount(other), others);
}

TEST(NodeEvents, AreIgnoredButForParameterChanges)
{
    StandinSession session;
    session.renderer.shader("s").floats({"a"});
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &node = shaderNode(net, "korvan::s"), &plain = *net.createNode("null")->castToVOPNode();

    for (OP_EventType event : {OP_NAME_CHANGED, OP_INPUT_CHANGED, OP_FLAG_CHANGED, OP_OUTPUT_CHANGED})
    {
        const int before = standin::redrawCount(node), plainBefore = standin::redrawCount(plain);
        node.opChanged(event);
        plain.opChanged(event);
        EXPECT_EQ(standin::redrawCount(node) - before, standin::redrawCount(plain) - plainBefore)
            << "event " << event << ": more than the host draws by itself";
    }
}

TEST(NodeEvents, ReachNoDeletedNode)
{
    StandinSession session;
    session.renderer.shader("s").floats({"a"});
    session.registerAll();
    OP_Network& net = session.container();
    VOP_Node &node = shaderNode(net, "korvan::s"), &other = shaderNode(net, "korvan::s");

    other.setInput(0, &node);
    net.destroyNode(&node);
    other.setFloat("a", 0, 0, 0.5);
    EXPECT_EQ(other.getInput(0), nullptr);
}
