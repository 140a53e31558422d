#include "node_fixture.h"

#include <CH/CH_Manager.h>
#include <UT/UT_StringArray.h>

namespace
{

class PythonExpression : public NodeTest
{
protected:
    void TearDown() override
    {
        CHgetManager()->setEvalTime(0);
        NodeTest::TearDown();
    }

    void set(const char* channel, const char* text)
    {
        int component = 0;
        PRM_Parm* parm = node->getParmList()->getParmPtrFromChannel(channel, &component);
        ASSERT_NE(parm, nullptr);
        parm->setExpression(0, text, CH_PYTHON, true, component);
    }

    std::string parmErrors()
    {
        UT_StringArray errors;
        node->getParmErrors(errors);
        std::string text;
        for (exint i = 0; i < errors.entries(); ++i)
            text += errors(i).toStdString() + "\n";
        return text;
    }
};

using PythonMenu = NodeTest;

TEST_F(PythonExpression, GivesTheValueOfAComponent)
{
    set("colorg", "0.25 * 2");
    EXPECT_DOUBLE_EQ(node->evalFloat("color", 1, 0), 0.5);
    EXPECT_DOUBLE_EQ(node->evalFloat("color", 0, 0), 1.0);
}

TEST_F(PythonExpression, MayBeAFunctionBody)
{
    set("amount", "total = 0\nfor i in range(5):\n    total += i\nreturn total");
    EXPECT_DOUBLE_EQ(node->evalFloat("amount", 0, 0), 10);
}

TEST_F(PythonExpression, MayHoldTextsOfSeveralLinesUnchanged)
{
    set("text", "x = \"\"\"a\n  b\"\"\"\nreturn x");
    UT_String value;
    node->evalString(value, "text", 0, 0);
    EXPECT_STREQ(value, "a\n  b");
}

TEST_F(PythonExpression, SeesItsNodeAsTheWorkingNode)
{
    set("text", "hou.pwd().name()");
    UT_String value;
    node->evalString(value, "text", 0, 0);
    EXPECT_STREQ(value, "every");
    EXPECT_EQ(evaluate("hou.pwd().path()"), "'/'");
}

TEST_F(PythonExpression, ReadsOtherChannelsAndTheTimeOfEvaluation)
{
    set("amount", "ch('count1') + hou.frame()");
    EXPECT_DOUBLE_EQ(node->evalFloat("amount", 0, 0), 3);
    EXPECT_DOUBLE_EQ(node->evalFloat("amount", 0, 1.0), 2 + 25);
}

TEST_F(PythonExpression, ThatFailsReadsAsZeroAndBecomesTheNodesError)
{
    set("amount", "1 / 0");
    EXPECT_DOUBLE_EQ(node->evalFloat("amount", 0, 0), 0);
    EXPECT_NE(parmErrors().find("/obj/every/amount"), std::string::npos) << parmErrors();
    EXPECT_NE(parmErrors().find("ZeroDivisionError: division by zero"), std::string::npos) << parmErrors();
    EXPECT_EQ(evaluate("len(node.errors())"), "1");
    set("amount", "4");
    EXPECT_DOUBLE_EQ(node->evalFloat("amount", 0, 0), 4);
    EXPECT_EQ(parmErrors(), "");
}

TEST_F(PythonExpression, NeverEndsTheProcess)
{
    for (const char* text : {"exit(", "__import__('sys').exit(2)", "[][", "object()", "return", "",
                             "def f(): return f()\nreturn f()", "'\\x00'", "lambda: 0", "yield 3"})
    {
        set("amount", text);
        EXPECT_DOUBLE_EQ(node->evalFloat("amount", 0, 0), 0) << text;
    }
}

TEST_F(PythonExpression, ThatAsksForItselfEnds)
{
    set("amount", "hou.pwd().parm('amount').eval() + 1");
    node->evalFloat("amount", 0, 0);
    EXPECT_NE(parmErrors(), "");
}

TEST_F(PythonExpression, IsSetAndReadThroughHou)
{
    run("p = node.parm('amount')\np.setExpression('1 + 1', hou.exprLanguage.Python)");
    EXPECT_EQ(evaluate("p.eval(), p.expression(), p.expressionLanguage()"),
              "(2.0, '1 + 1', exprLanguage.Python)");
    EXPECT_NE(errorOf("node.parm('count1').expression()").find("does not have an expression"),
              std::string::npos);
}

TEST_F(PythonExpression, StaysWhenAValueIsSetUntilItIsDeleted)
{
    run("p = node.parm('amount')\np.setExpression('$F + 1')\np.set(7)\nkept = p.eval()\n"
        "p.deleteAllKeyframes()\nlast = p.eval()\np.set(7)");
    EXPECT_EQ(evaluate("kept, last, p.eval()"), "(2.0, 2.0, 7.0)");
}

TEST_F(PythonMenu, ComputesItsItemsFromNodeAndParameter)
{
    EXPECT_EQ(evaluate("node.parm('script').menuItems()"), "('every', 'script')");
    EXPECT_EQ(evaluate("node.parm('script').menuLabels()"), "('EVERY', 'Parm')");
}

} // namespace
