#include "undo_fixture.h"

#include <limits>
#include <memory>
#include <stdexcept>

namespace
{
PRM_Name number_name("number", "Number");
PRM_Name color_name("color", "Colour");
PRM_Name text_name("text", "Text");
PRM_Name mode_name("mode", "Mode");
PRM_Default text_default(0, "hello");
PRM_Template value_templates[] = {PRM_Template(PRM_FLT, 1, &number_name),
                                  PRM_Template(PRM_RGB, 3, &color_name),
                                  PRM_Template(PRM_STRING, 1, &text_name, &text_default),
                                  PRM_Template(PRM_TOGGLE, 1, &mode_name), PRM_Template()};

typedef UndoTest ValueUndo;
} // namespace

TEST_F(ValueUndo, RestoresANumberAndTellsTheNode)
{
    ParmNode node(value_templates);
    node.setFloat("number", 0, 0, 2);
    node.changes.clear();
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
    EXPECT_EQ(node.changes, (Ints{0}));
    EXPECT_TRUE(undos.performRedo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 2);
    EXPECT_EQ(node.changes, (Ints{0, 0}));
}

TEST_F(ValueUndo, RestoresOneComponentOnly)
{
    ParmNode node(value_templates);
    node.setFloat("color", 0, 0, 0.25);
    node.setFloat("color", 2, 0, 0.75);
    undos.performUndo();
    EXPECT_EQ(node.text("color", 0), "0.25");
    EXPECT_EQ(node.text("color", 2), "0");
}

TEST_F(ValueUndo, RestoresTextsAsTyped)
{
    ParmNode node(value_templates);
    node.setString("$NOBODY `1 + 1` \"\xc3\xa9\"\n", CH_STRING_LITERAL, "text", 0, 0);
    undos.performUndo();
    EXPECT_EQ(node.raw("text"), "hello");
    undos.performRedo();
    EXPECT_EQ(node.raw("text"), "$NOBODY `1 + 1` \"\xc3\xa9\"\n");
}

TEST_F(ValueUndo, MakesOneStepOfOneEdit)
{
    ParmNode node(value_templates);
    node.setFloat("number", 0, 0, 1);
    node.setInt("mode", 0, 0, 1);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Parameter Change", "Parameter Change"}));
}

TEST_F(ValueUndo, MakesNoStepOfAnEditThatChangesNothing)
{
    ParmNode node(value_templates);
    node.setFloat("number", 0, 0, 0);
    node.setString("hello", CH_STRING_LITERAL, "text", 0, 0);
    node.setFloat("color", 7, 0, 1);
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST_F(ValueUndo, RestoresValuesThatAreNoNumbers)
{
    ParmNode node(value_templates);
    node.setFloat("number", 0, 0, std::numeric_limits<double>::infinity());
    node.setFloat("number", 0, 0, std::numeric_limits<double>::quiet_NaN());
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("number", 0, 0), std::numeric_limits<double>::infinity());
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
}

TEST_F(ValueUndo, BringsAnExpressionBackWithItsLanguage)
{
    ParmNode node(value_templates);
    PRM_Parm& number = node.getParm("number");
    number.setExpression(0, "1 + 2", CH_OLD_EXPR_LANGUAGE);
    number.setExpression(0, "nothing", CH_PYTHON);
    number.setValue(0, fpreal(9));
    undos.performUndo();
    EXPECT_STREQ(number.getExpression(0), "nothing");
    EXPECT_EQ(number.getExpressionLanguage(0), CH_PYTHON);
    undos.performUndo();
    EXPECT_EQ(number.getExpressionLanguage(0), CH_OLD_EXPR_LANGUAGE);
    EXPECT_EQ(node.evalFloat("number", 0, 0), 3);
    undos.performUndo();
    EXPECT_FALSE(number.hasExpression(0));
}

TEST_F(ValueUndo, BringsBackAnExpressionThatWasDeleted)
{
    ParmNode node(value_templates);
    PRM_Parm& number = node.getParm("number");
    number.setExpression(0, "$F", CH_OLD_EXPR_LANGUAGE);
    number.deleteExpression(1, 0);
    EXPECT_EQ(node.evalFloat("number", 0, 0), 25);
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("number", 0, 0), 1);
}

TEST_F(ValueUndo, TakesTheErrorOfAnExpressionWithIt)
{
    ParmNode node(value_templates);
    node.getParm("number").setExpression(0, "nothing(", CH_OLD_EXPR_LANGUAGE);
    node.evalFloat("number", 0, 0);
    EXPECT_NE(node.errors(), "");
    undos.performUndo();
    EXPECT_EQ(node.errors(), "");
}

TEST_F(ValueUndo, RestoresAllComponentsThatWereReverted)
{
    ParmNode node(value_templates);
    node.setFloat("color", 0, 0, 0.25);
    node.setFloat("color", 2, 0, 0.75);
    node.getParm("color").revertToDefault(0, -1);
    EXPECT_EQ(undos.getUndoLabels().size(), 3u);
    undos.performUndo();
    EXPECT_EQ(node.text("color", 0), "0.25");
    EXPECT_EQ(node.text("color", 2), "0.75");
}

TEST_F(ValueUndo, GoesBackToWhatWasBeforeABlockOfManyEdits)
{
    ParmNode node(value_templates);
    node.setFloat("number", 0, 0, 7);
    {
        const UT_AutoUndoBlock drag("Drag", ANYLEVEL);
        for (int i = 0; i < 100; ++i)
            node.setFloat("number", 0, 0, i);
    }
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Drag", "Parameter Change"}));
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("number", 0, 0), 7);
    undos.performRedo();
    EXPECT_EQ(node.evalFloat("number", 0, 0), 99);
}

TEST_F(ValueUndo, KeepsTheEditsOfABlockThatAnExceptionLeaves)
{
    ParmNode node(value_templates);
    try
    {
        const UT_AutoUndoBlock block("Half", ANYLEVEL);
        node.setFloat("number", 0, 0, 5);
        throw std::runtime_error("stop");
    }
    catch (const std::runtime_error&)
    {
    }
    EXPECT_EQ(node.evalFloat("number", 0, 0), 5);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Half"}));
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
}

TEST_F(ValueUndo, LeavesAloneWhatWasChangedWhileRecordingWasOff)
{
    ParmNode node(value_templates);
    {
        const UT_AutoUndoBlock block("Block", ANYLEVEL);
        node.setFloat("number", 0, 0, 5);
        const UT_AutoDisableUndos off;
        node.setInt("mode", 0, 0, 1);
    }
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
    EXPECT_EQ(node.evalInt("mode", 0, 0), 1);
}

TEST_F(ValueUndo, DropsWhatCanBeRedoneForANewEdit)
{
    ParmNode node(value_templates);
    node.setFloat("number", 0, 0, 1);
    undos.performUndo();
    node.setInt("mode", 0, 0, 1);
    EXPECT_FALSE(undos.performRedo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
}

TEST_F(ValueUndo, PassesOverNodesThatAreGone)
{
    ParmNode node(value_templates);
    node.setFloat("number", 0, 0, 1);
    {
        ParmNode brief(value_templates);
        brief.setFloat("number", 0, 0, 2);
    }
    EXPECT_EQ(undos.getUndoLabels().size(), 1u);
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
}

TEST_F(ValueUndo, RestoresTheNodesOfAStepThatAreLeft)
{
    ParmNode node(value_templates);
    std::unique_ptr<ParmNode> brief(new ParmNode(value_templates));
    {
        const UT_AutoUndoBlock both("Both", ANYLEVEL);
        node.setFloat("number", 0, 0, 1);
        brief->setFloat("number", 0, 0, 2);
    }
    brief.reset();
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
    EXPECT_TRUE(undos.performRedo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 1);
}

TEST_F(ValueUndo, HoldsAThousandStepsOfAHundredThousandEdits)
{
    ParmNode node(value_templates);
    for (int i = 1; i <= 100000; ++i)
        node.setFloat("number", 0, 0, i);
    EXPECT_EQ(undos.getUndoLabels().size(), 1000u);
    while (undos.performUndo())
        ;
    EXPECT_EQ(node.evalFloat("number", 0, 0), 99000);
}

TEST_F(ValueUndo, MakesOneStepOfAHundredThousandEditsInABlock)
{
    ParmNode node(value_templates);
    {
        const UT_AutoUndoBlock block("Block", ANYLEVEL);
        for (int i = 1; i <= 100000; ++i)
            node.setFloat("color", i % 3, 0, i);
    }
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Block"}));
    undos.performUndo();
    EXPECT_EQ(node.text("color", 1), "0");
}

TEST_F(ValueUndo, RestoresParametersThatShareATokenEachByItself)
{
    PRM_Template twins[] = {PRM_Template(PRM_FLT, 1, &number_name), PRM_Template(PRM_FLT, 1, &number_name),
                            PRM_Template()};
    ParmNode node(twins);
    {
        const UT_AutoUndoBlock block("Both", ANYLEVEL);
        node.setFloat(0, 0, 0, 1);
        node.setFloat(1, 0, 0, 2);
    }
    undos.performUndo();
    EXPECT_EQ(node.evalFloat(0, 0, 0), 0);
    EXPECT_EQ(node.evalFloat(1, 0, 0), 0);
    undos.performRedo();
    EXPECT_EQ(node.evalFloat(0, 0, 0), 1);
    EXPECT_EQ(node.evalFloat(1, 0, 0), 2);
}

TEST_F(ValueUndo, RestoresAParameterWithoutAToken)
{
    PRM_Name nameless("", "Tabs");
    PRM_Default tabs[] = {PRM_Default(1, "One"), PRM_Default(1, "Two")};
    PRM_Template templates[] = {PRM_Template(PRM_SWITCHER, 2, &nameless, tabs),
                                PRM_Template(PRM_FLT, 1, &number_name), PRM_Template(PRM_INT, 1, &mode_name),
                                PRM_Template()};
    ParmNode node(templates);
    node.setInt(0, 0, 0, 1);
    undos.performUndo();
    EXPECT_EQ(node.evalInt(0, 0, 0), 0);
}

TEST_F(ValueUndo, FindsAParameterAgainThatMovedInItsList)
{
    ParmNode node(value_templates);
    PRM_Name spare_name("spare", "Spare");
    PRM_Template first[] = {PRM_Template(PRM_FLT, 1, &spare_name), PRM_Template()};
    PRM_Name kept_name("kept", "Kept");
    PRM_Template second[] = {PRM_Template(PRM_FLT, 1, &kept_name), PRM_Template()};
    node.addSpareParms(first);
    node.addSpareParms(second);
    node.setFloat("spare", 0, 0, 1);
    node.setFloat("kept", 0, 0, 2);
    node.getParmList()->removeSpareParm(node.getParmPtr("spare"));
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("kept", 0, 0), 0);
    undos.performUndo();
    EXPECT_EQ(node.evalFloat("kept", 0, 0), 0);
}

// What listeners do

namespace
{
/// Keeps "color" at twice "number", as a node's own code may.
class LinkedNode : public ParmNode
{
public:
    LinkedNode() : ParmNode(value_templates) {}
    void parmChanged(int index) override
    {
        ParmNode::parmChanged(index);
        if (index == 0)
            setFloat("color", 0, 0, 2 * evalFloat("number", 0, 0));
    }
};

/// Deletes itself when it hears of an undo.
class ShyNode : public ParmNode
{
public:
    ShyNode() : ParmNode(value_templates) {}
    void parmChanged(int) override
    {
        if (!UTgetUndoManager()->isRecording())
            delete this;
    }
};

class ThrowingNode : public ParmNode
{
public:
    ThrowingNode() : ParmNode(value_templates) {}
    void parmChanged(int) override
    {
        if (!UTgetUndoManager()->isRecording())
            throw std::runtime_error("listener");
    }
};

/// Asks for an undo whenever it hears of a change.
class EagerNode : public ParmNode
{
public:
    EagerNode() : ParmNode(value_templates) {}
    void parmChanged(int) override { answers.push_back(UTgetUndoManager()->performUndo()); }
    std::vector<bool> answers;
};
} // namespace

TEST_F(ValueUndo, TakesBackWhatListenersChangedInTheSameStep)
{
    LinkedNode node;
    node.setFloat("number", 0, 0, 3);
    EXPECT_EQ(node.text("color"), "6");
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Parameter Change"}));
    undos.performUndo();
    EXPECT_EQ(node.text("color"), "0");
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
    EXPECT_TRUE(undos.getUndoLabels().empty());
    undos.performRedo();
    EXPECT_EQ(node.text("color"), "6");
}

TEST_F(ValueUndo, LetsANodeBeDeletedWhenItHearsOfIt)
{
    auto* shy = new ShyNode;
    ParmNode node(value_templates);
    {
        const UT_AutoUndoBlock block("Block", ANYLEVEL);
        node.setFloat("number", 0, 0, 1);
        shy->setFloat("number", 0, 0, 1);
        shy->setInt("mode", 0, 0, 1);
    }
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
    EXPECT_TRUE(undos.performRedo());
    EXPECT_EQ(node.evalFloat("number", 0, 0), 1);
}

TEST_F(ValueUndo, PassesTheExceptionOfAListenerOnWithTheStepDone)
{
    ThrowingNode node;
    {
        const UT_AutoUndoBlock block("Block", ANYLEVEL);
        node.setFloat("number", 0, 0, 1);
        node.setInt("mode", 0, 0, 1);
    }
    EXPECT_THROW(undos.performUndo(), std::runtime_error);
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
    EXPECT_EQ(node.evalInt("mode", 0, 0), 0);
}

TEST_F(ValueUndo, IsRefusedToListenersInTheMiddleOfAChange)
{
    EagerNode node;
    node.setFloat("number", 0, 0, 1);
    undos.performUndo();
    EXPECT_EQ(node.answers, (std::vector<bool>{false, false}));
    EXPECT_EQ(node.evalFloat("number", 0, 0), 0);
}
