#include "node_fixture.h"

namespace
{

using HouParm = NodeTest;

/// Deletes the node as soon as something of it changes.
void destroyOnChange(OP_Node* caller, void*, OP_EventType type, void*)
{
    if (type == OP_PARM_CHANGED || type == OP_INPUT_REWIRED || type == OP_NAME_CHANGED)
        caller->getParent()->destroyNode(caller);
}

/// A node that is gone after the first change.
class HouOnAVanishingNode : public NodeTest
{
protected:
    void SetUp() override
    {
        NodeTest::SetUp();
        node->addOpInterest(nullptr, &destroyOnChange);
    }
};
using HouMultiParm = NodeTest;
using HouRamp = NodeTest;
using HouTemplates = NodeTest;

TEST_F(HouParm, EvaluatesToTheTypeOfItsKind)
{
    EXPECT_EQ(evaluate("node.parm('amount').eval()"), "0.5");
    EXPECT_EQ(evaluate("node.parmTuple('color').eval()"), "(1.0, 1.0, 1.0)");
    EXPECT_EQ(evaluate("node.parm('count1').eval()"), "2");
    EXPECT_EQ(evaluate("node.parm('on').eval()"), "0");
    EXPECT_EQ(evaluate("node.parm('text').eval()"), "'hello'");
    EXPECT_EQ(evaluate("node.parm('mode').eval()"), "'b'");
    EXPECT_EQ(evaluate("node.parm('list').eval()"), "2");
}

TEST_F(HouParm, IsFoundByChannelAndItsTupleByToken)
{
    EXPECT_EQ(evaluate("node.parm('colorg').componentIndex()"), "1");
    EXPECT_EQ(evaluate("node.parm('color')"), "None");
    EXPECT_EQ(evaluate("[p.name() for p in node.parmTuple('color')]"), "['colorr', 'colorg', 'colorb']");
    EXPECT_EQ(evaluate("hou.parm('/obj/every/count2').path()"), "'/obj/every/count2'");
    EXPECT_EQ(evaluate("hou.parm('/obj/every/nothing')"), "None");
    EXPECT_EQ(evaluate("hou.parm('/obj/nobody/tx')"), "None");
}

TEST_F(HouParm, SetsEveryKind)
{
    run("node.setParms({'amount': 3, 'color': (0, .5, 1), 'count2': 9, 'on': True, 'text': 'a$F', 'mode': "
        "'a'})");
    EXPECT_EQ(evaluate("node.parm('amount').eval()"), "3.0");
    EXPECT_EQ(evaluate("node.evalParm('color')"), "(0.0, 0.5, 1.0)");
    EXPECT_EQ(evaluate("node.evalParm('count')"), "(2, 9)");
    EXPECT_EQ(evaluate("node.parm('on').eval()"), "1");
    EXPECT_EQ(evaluate("node.parm('text').eval()"), "'a1'");
    EXPECT_EQ(evaluate("node.parm('text').unexpandedString()"), "'a$F'");
    EXPECT_EQ(evaluate("node.parm('mode').evalAsString()"), "'a'");
}

TEST_F(HouParm, TakesAMenusToken)
{
    run("node.parm('shape').set('b')");
    EXPECT_EQ(evaluate("node.parm('shape').eval()"), "1");
    EXPECT_EQ(evaluate("node.parm('shape').evalAsString()"), "'b'");
    EXPECT_NE(errorOf("node.parm('shape').set('z')").find("has no item \"z\"; its items are: a b."),
              std::string::npos);
}

TEST_F(HouParm, RefusesValuesOfTheWrongType)
{
    EXPECT_NE(errorOf("node.parm('amount').set('much')").find("TypeError"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('amount').set(None)").find("TypeError"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('text').set(3)").find("TypeError"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('note').set('x')").find("hou._errors.OperationFailed"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('count1').set(float('nan'))").find("OperationFailed"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('count1').set(2 ** 70)").find("OverflowError"), std::string::npos);
    EXPECT_NE(errorOf("node.parmTuple('color').set((1, 2))").find("InvalidSize"), std::string::npos);
}

TEST_F(HouParm, KnowsItsDefaults)
{
    run("p = node.parm('amount')\np.set(2)\nchanged = p.isAtDefault()\np.revertToDefaults()");
    EXPECT_EQ(evaluate("changed, p.isAtDefault(), p.eval()"), "(False, True, 0.5)");
}

TEST_F(HouParm, FollowsItsConditions)
{
    EXPECT_EQ(evaluate("node.parm('text').isDisabled(), node.parm('note').isHidden()"), "(True, True)");
    run("node.parm('on').set(1)");
    EXPECT_EQ(evaluate("node.parm('text').isDisabled(), node.parm('note').isHidden()"), "(False, False)");
}

TEST_F(HouParm, CanBeDisabledAndHiddenByAScript)
{
    run("p = node.parm('amount')\np.disable(True)\np.hide(True)");
    EXPECT_EQ(evaluate("p.isDisabled(), p.isHidden()"), "(True, True)");
    run("p.disable(False)\np.hide(False)");
    EXPECT_EQ(evaluate("p.isDisabled(), p.isHidden()"), "(False, False)");
}

TEST_F(HouParm, PressesTheCallbackOfAnyKind)
{
    run("node.parm('go').pressButton()");
    EXPECT_EQ(evaluate("node.parm('log').eval()"), "'go 0'");
    run("node.parm('colorg').pressButton()");
    EXPECT_EQ(evaluate("node.parm('log').eval()"), "'color 1'");
    run("node.parm('amount').pressButton()"); // has none
    EXPECT_EQ(evaluate("node.parm('log').eval()"), "'color 1'");
}

TEST_F(HouParm, CallsNoCallbackWhenSet)
{
    run("node.parm('colorr').set(0.25)");
    EXPECT_EQ(evaluate("node.parm('log').eval()"), "''");
}

TEST_F(HouParm, GivesItsMenuOrRaises)
{
    EXPECT_EQ(evaluate("node.parm('mode').menuItems()"), "('a', 'b')");
    EXPECT_EQ(evaluate("node.parm('mode').menuLabels()"), "('First', 'Second')");
    EXPECT_NE(errorOf("node.parm('amount').menuItems()").find("is not a menu"), std::string::npos);
}

TEST_F(HouParm, KnowsTheFoldersAroundIt)
{
    EXPECT_EQ(evaluate("node.parm('amount').containingFolders()"), "('Main',)");
    EXPECT_EQ(evaluate("node.parm('text').containingFolders()"), "('More',)");
    EXPECT_EQ(evaluate("node.parm('mode').containingFolders()"), "()");
}

TEST_F(HouParm, RaisesObjectWasDeletedWhenItsNodeIsGone)
{
    run("p, t = node.parm('amount'), node.parmTuple('color')\nnode.destroy()");
    for (const char* use :
         {"p.eval()", "p.set(1)", "p.name()", "t.eval()", "t[0]", "len(t)", "p.pressButton()"})
        EXPECT_NE(errorOf(use).find("ObjectWasDeleted"), std::string::npos) << use;
    EXPECT_NE(evaluate("p").find("deleted"), std::string::npos);
}

TEST_F(HouOnAVanishingNode, EveryChangeIsSafe)
{
    const char* const changes[] = {
        "node.parm('amount').set(1)",
        "node.parm('text').set('x')",
        "node.parm('amount').setExpression('$F')",
        "node.parm('amount').revertToDefaults()",
        "node.parm('list').set(5)",
        "node.parm('list').insertMultiParmInstance(0)",
        "node.parm('list').removeMultiParmInstance(0)",
        "node.parm('go').pressButton()",
        "node.setName('other')",
        "node.setInput(0, node.parent().createNode('null'))",
    };
    for (const char* change : changes)
    {
        const std::string error = errorOf(change);
        EXPECT_TRUE(error.empty() || error.find("Error") != std::string::npos) << change << ": " << error;
        EXPECT_EQ(evaluate("hou.node('/obj/every'), hou.node('/obj/other')"), "(None, None)") << change;
        TearDown();
        SetUp();
    }
    run("[child.destroy() for child in hou.node('/obj').children()]");
}

TEST_F(HouMultiParm, ListsItsInstances)
{
    EXPECT_EQ(evaluate("[p.name() for p in node.parm('list').multiParmInstances()]"), "['list_1', 'list_2']");
    EXPECT_EQ(evaluate("node.parm('list_2').multiParmInstanceIndices()"), "(2,)");
    EXPECT_EQ(evaluate("node.parm('list_2').parentMultiParm().name()"), "'list'");
    EXPECT_EQ(evaluate("node.parm('list_2').isMultiParmInstance(), node.parm('list').isMultiParmInstance()"),
              "(True, False)");
    EXPECT_EQ(evaluate("node.parm('list_2').description()"), "'Entry 2'");
}

TEST_F(HouMultiParm, InsertsAndRemovesByPosition)
{
    run("multi = node.parm('list')\nnode.parm('list_1').set(1)\nnode.parm('list_2').set(2)\n"
        "multi.insertMultiParmInstance(1)");
    EXPECT_EQ(evaluate("[p.eval() for p in multi.multiParmInstances()]"), "[1.0, 0.0, 2.0]");
    run("multi.removeMultiParmInstance(0)");
    EXPECT_EQ(evaluate("[p.eval() for p in multi.multiParmInstances()]"), "[0.0, 2.0]");
    EXPECT_NE(errorOf("multi.removeMultiParmInstance(2)").find("has no place 2; it has 2 instances"),
              std::string::npos);
    EXPECT_NE(errorOf("multi.insertMultiParmInstance(-1)").find("OperationFailed"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('amount').insertMultiParmInstance(0)").find("not a multi-parameter"),
              std::string::npos);
}

TEST_F(HouMultiParm, TakesACountInReason)
{
    run("node.parm('list').set(4)");
    EXPECT_EQ(evaluate("node.parm('list').eval()"), "4");
    EXPECT_NE(errorOf("node.parm('list').set(-1)").find("cannot have -1 instances"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('list').set(10 ** 12)").find("OperationFailed"), std::string::npos);
    EXPECT_EQ(evaluate("node.parm('list').eval()"), "4");
}

TEST_F(HouMultiParm, LeavesHandlesOfRemovedInstancesSafe)
{
    run("gone = node.parm('list_2')\nnode.parm('list').set(1)");
    EXPECT_NE(errorOf("gone.eval()").find("ObjectWasDeleted"), std::string::npos);
}

TEST_F(HouRamp, ReadsTheKeysOfARamp)
{
    EXPECT_EQ(evaluate("node.parm('curve').evalAsRamp().keys()"), "(0.0, 1.0)");
    EXPECT_EQ(evaluate("node.parm('curve').eval().values()"), "(0.0, 1.0)");
    EXPECT_EQ(evaluate("node.parm('tint').evalAsRamp().values()"), "((0.0, 0.0, 0.0), (1.0, 1.0, 1.0))");
    EXPECT_EQ(evaluate("node.parm('tint').evalAsRamp().isColor()"), "True");
    EXPECT_NE(errorOf("node.parm('list').evalAsRamp()").find("is no ramp"), std::string::npos);
}

TEST_F(HouRamp, IsSetAsAWhole)
{
    run("B = hou.rampBasis\n"
        "ramp = hou.Ramp((B.Linear, B.BSpline, B.Constant), (0, 0.25, 1), (1, 2, 3))\n"
        "node.parm('curve').set(ramp)");
    EXPECT_EQ(evaluate("node.parm('curve').evalAsRamp() == ramp"), "True");
    EXPECT_EQ(evaluate("[p.eval() for p in node.parm('curve').multiParmInstances()]"),
              "[0.0, 1.0, 1, 0.25, 2.0, 5, 1.0, 3.0, 0]");
}

TEST_F(HouRamp, OfColoursTakesColoursAndGreys)
{
    run("L = hou.rampBasis.Linear\n"
        "node.parm('tint').set(hou.Ramp((L,), (0.5,), ((1, 0, 0.5),)))\n"
        "one = node.parm('tint').evalAsRamp().values()\n"
        "node.parm('tint').set(hou.Ramp((L, L), (0, 1), (0.25, 0.75)))");
    EXPECT_EQ(evaluate("one"), "((1.0, 0.0, 0.5),)");
    EXPECT_EQ(evaluate("node.parm('tint').evalAsRamp().values()"),
              "((0.25, 0.25, 0.25), (0.75, 0.75, 0.75))");
}

TEST_F(HouRamp, IsRefusedWhereItDoesNotFit)
{
    run("colours = hou.Ramp((hou.rampBasis.Linear,), (0,), ((1, 0, 0),))");
    EXPECT_NE(errorOf("node.parm('curve').set(colours)").find("cannot take the colours"), std::string::npos);
    EXPECT_NE(errorOf("node.parm('amount').set(colours)").find("is no ramp"), std::string::npos);
}

TEST_F(HouTemplates, TellWhatAParameterIs)
{
    run("t = node.parm('amount').parmTemplate()");
    EXPECT_EQ(evaluate("t.name(), t.label(), t.type(), t.numComponents()"),
              "('amount', 'Amount', parmTemplateType.Float, 1)");
    EXPECT_EQ(evaluate("t.defaultValue(), t.minValue(), t.maxValue(), t.minIsStrict(), t.maxIsStrict()"),
              "((0.5,), 0.0, 2.0, True, False)");
    EXPECT_EQ(evaluate("t.help(), t.tags()"), "('How much', {'unit': 'm'})");
}

TEST_F(HouTemplates, AreOfTheClassOfTheirKind)
{
    EXPECT_EQ(
        evaluate("[type(t).__name__[:-12] for t in node.type().parmTemplates()]"),
        "['FolderSet', 'Float', 'Float', 'Int', 'Toggle', 'String', 'String', 'String', 'Button', 'Label', "
        "'Folder', 'Ramp', 'Ramp', 'String', 'Menu', 'Menu']");
    EXPECT_EQ(evaluate("node.parmTuple('color').parmTemplate().look()"), "parmLook.ColorSquare");
    EXPECT_EQ(evaluate("node.parm('mode').parmTemplate().menuItems()"), "('a', 'b')");
    EXPECT_EQ(evaluate("node.parm('script').parmTemplate().itemGeneratorScriptLanguage()"),
              "scriptLanguage.Python");
    EXPECT_EQ(evaluate("node.parm('text').parmTemplate().conditionals()"),
              "{parmCondType.DisableWhen: '{ on == 0 }'}");
    EXPECT_EQ(evaluate("node.parm('note').parmTemplate().columnLabels()"), "('Read me',)");
    EXPECT_EQ(evaluate("node.parm('tint').parmTemplate().parmType()"), "rampParmType.Color");
}

TEST_F(HouTemplates, OfAnInstanceBearItsNumber)
{
    EXPECT_EQ(evaluate("node.parm('list_2').parmTemplate().name()"), "'list_2'");
    EXPECT_EQ(evaluate("node.parm('list').parmTemplate().parmTemplates()[0].name()"), "'list_#'");
}

TEST_F(HouTemplates, FoldIntoATree)
{
    run("group = node.parmTemplateGroup()");
    EXPECT_EQ(evaluate("[e.label() for e in group.entries()][:4]"), "['Main', 'More', 'Mode', 'Script']");
    EXPECT_EQ(evaluate("[t.name() for t in group.findFolder('More').parmTemplates()]"),
              "['count', 'on', 'text']");
    EXPECT_EQ(evaluate("group.find('text').name(), group.find('nothing'), group.findFolder('Nothing')"),
              "('text', None, None)");
}

} // namespace
