// Callbacks and action menus through hou, three levels of multi-parameters among them.
#include "python_fixture.h"

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <PRM/PRM_Include.h>
#include <UT/UT_UndoManager.h>

#include <stdexcept>

namespace
{

int note(void* data, int index, double, const PRM_Template* tmpl)
{
    const std::string text = std::string(tmpl->getToken()) + " " + std::to_string(index);
    static_cast<OP_Node*>(data)->setString(UT_String(text), CH_STRING_LITERAL, "log", 0, 0);
    return 1;
}

int destroy(void* data, int, double, const PRM_Template*)
{
    auto* node = static_cast<OP_Node*>(data);
    node->getParent()->destroyNode(node);
    return 1;
}

int fail(void*, int, double, const PRM_Template*) { throw std::runtime_error("no light"); }

/// Runs a script in Python, as callbacks of shaders do.
int script(void*, int, double, const PRM_Template* tmpl)
{
    PYrunPythonStatementsAndExpectNoErrors(tmpl->getSparePtr()->getValue("script"), "Callback");
    return 1;
}

class Node : public OP_Network
{
public:
    Node(OP_Network* parent, const char* name, OP_Operator* op) : OP_Network(parent, name, op) {}
};

OP_Node* construct(OP_Network* parent, const char* name, OP_Operator* op)
{
    return new Node(parent, name, op);
}

PRM_Name names[] = {PRM_Name("log", "Log"),   PRM_Name("go", "Go"),          PRM_Name("destroy", "Destroy"),
                    PRM_Name("fail", "Fail"), PRM_Name("menu", "Menu"),      PRM_Name("one", "One"),
                    PRM_Name("two#", "Two"),  PRM_Name("three#_#", "Three"), PRM_Name("p_#_#_#", "P #"),
                    PRM_Name("edit", "Edit"), PRM_Name("recurse", "Recurse")};
PRM_Name items[] = {PRM_Name("first", "First"), PRM_Name("second", "Second"), PRM_Name()};
PRM_ChoiceList actions(PRM_CHOICELIST_REPLACE, items);
PRM_SpareData editing(PRM_SpareToken("script", "n = hou.node('/obj/called')\n"
                                               "with hou.undos.group('Mine'):\n"
                                               "    n.parm('edit').set(n.evalParm('edit') + 1)\n"
                                               "    n.parm('log').set('edited')\n"));

PRM_Template button(PRM_Name& name, PRM_Callback callback, PRM_SpareData* spare = nullptr)
{
    return PRM_Template(PRM_CALLBACK, 1, &name, nullptr, nullptr, nullptr, callback, spare);
}

PRM_Template leaves[] = {PRM_Template(PRM_FLT, 1, &names[8], nullptr, nullptr, nullptr, PRM_Callback(&note)),
                         PRM_Template()};
PRM_Template level3[] = {PRM_Template(PRM_MULTITYPE_LIST, leaves, 1, &names[7], PRMthreeDefaults),
                         PRM_Template()};
PRM_Template level2[] = {PRM_Template(PRM_MULTITYPE_LIST, level3, 1, &names[6], PRMtwoDefaults),
                         PRM_Template()};
PRM_Template templates[] = {
    PRM_Template(PRM_STRING, 1, &names[0]),
    button(names[1], &note),
    button(names[2], &destroy),
    button(names[3], &fail),
    PRM_Template(PRM_CALLBACK, 1, &names[4], nullptr, &actions, nullptr, PRM_Callback(&note)),
    PRM_Template(PRM_MULTITYPE_LIST, level2, 1, &names[5], PRMoneDefaults),
    PRM_Template(PRM_INT, 1, &names[9], nullptr, nullptr, nullptr, PRM_Callback(&script), &editing),
    PRM_Template()};

/// A node with buttons, made anew for each test; scripts know it as `node`.
class Buttons : public PythonTest
{
protected:
    void SetUp() override
    {
        PythonTest::SetUp();
        static const bool registered =
            OP_Network::getOperatorTable(OBJ_TABLE_NAME)
                ->addOperator(new OP_Operator("called_back", "Called Back", &construct, templates, 0, 0));
        ASSERT_TRUE(registered);
        ASSERT_NE(OPgetDirector()->getManager("obj")->createNode("called_back", "called"), nullptr);
        UTgetUndoManager()->clear();
        run("node = hou.node('/obj/called')");
    }

    void TearDown() override
    {
        if (OP_Node* left = OPgetDirector()->findNode("/obj/called"))
            left->getParent()->destroyNode(left);
        EXPECT_EQ(UTgetUndoManager()->getLevel(), 0);
        UTgetUndoManager()->clear();
        PythonTest::TearDown();
    }
};

typedef Buttons ActionMenu;
typedef Buttons ThreeLevels;

} // namespace

TEST_F(Buttons, ArePressedWithNothingOrNoArguments)
{
    for (const char* call : {"pressButton()", "pressButton({})", "pressButton(None)"})
    {
        run("node.parm('log').set('')\nnode.parm('go')." + std::string(call));
        EXPECT_EQ(evaluate("node.evalParm('log')"), "'go 0'") << call;
    }
}

TEST_F(Buttons, RefuseArgumentsThatNoCallbackTakes)
{
    EXPECT_NE(errorOf("node.parm('go').pressButton({'speed': 1})")
                  .find("takes no further arguments; leave out: speed."),
              std::string::npos);
    EXPECT_EQ(evaluate("node.evalParm('log')"), "''");
}

TEST_F(Buttons, MayDeleteTheirNode)
{
    run("node.parm('destroy').pressButton()");
    EXPECT_EQ(evaluate("hou.node('/obj/called')"), "None");
    EXPECT_NE(errorOf("node.parm('go').pressButton()").find("ObjectWasDeleted"), std::string::npos);
}

TEST_F(Buttons, KeepTheExceptionOfTheirCallbackAsTheNodesError)
{
    EXPECT_EQ(errorOf("node.parm('fail').pressButton()"), "");
    EXPECT_EQ(evaluate("node.errors()"), "('/obj/called/fail: its callback failed: no light',)");
}

TEST_F(Buttons, EditTheirOwnParameterInANamedStep)
{
    run("node.parm('edit').pressButton()\nnode.parm('edit').pressButton()");
    EXPECT_EQ(evaluate("node.evalParm('edit'), node.evalParm('log'), hou.undos.undoLabels()"),
              "(2, 'edited', ('Mine', 'Mine'))");
    run("hou.undos.performUndo()");
    EXPECT_EQ(evaluate("node.evalParm('edit')"), "1");
    run("hou.undos.performUndo()");
    EXPECT_EQ(evaluate("node.evalParm('edit'), node.evalParm('log')"), "(0, '')");
}

TEST_F(Buttons, DoNotUndoInTheMiddleOfAGroup)
{
    EXPECT_NE(errorOf("with hou.undos.group('Mine'):\n    hou.undos.performUndo()")
                  .find("The undo block \"Mine\" is open; undo and redo when it is closed."),
              std::string::npos);
}

TEST_F(ActionMenu, PassesTheIndexOfTheItem)
{
    run("node.parm('menu').pressButton()");
    EXPECT_EQ(evaluate("node.evalParm('log')"), "'menu 0'");
    run("node.parm('menu').pressButton(menu_index=1)");
    EXPECT_EQ(evaluate("node.evalParm('log')"), "'menu 1'");
    EXPECT_EQ(evaluate("node.evalParm('menu')"), "0");
    EXPECT_EQ(evaluate("node.parm('menu').menuLabels()"), "('First', 'Second')");
}

TEST_F(ActionMenu, RefusesItemsThatItDoesNotHave)
{
    for (const char* index : {"2", "-1"})
        EXPECT_NE(errorOf("node.parm('menu').pressButton(menu_index=" + std::string(index) + ")")
                      .find("has no item " + std::string(index) + "; it has 2, counted from 0."),
                  std::string::npos);
    EXPECT_NE(errorOf("node.parm('go').pressButton(menu_index=0)").find("is no button with a menu"),
              std::string::npos);
    EXPECT_EQ(evaluate("node.evalParm('log')"), "''");
}

TEST_F(ThreeLevels, AreReadSetAndNumbered)
{
    run("p = node.parm('p_1_2_3')\np.set(2.5)");
    EXPECT_EQ(evaluate("p.eval(), p.multiParmInstanceIndices(), p.description()"), "(2.5, (1, 2, 3), 'P 3')");
    EXPECT_EQ(evaluate("p.parentMultiParm().name(), p.parentMultiParm().parentMultiParm().name(), "
                       "node.parm('two1').parentMultiParm().name()"),
              "('three1_2', 'two1', 'one')");
    EXPECT_EQ(evaluate("[q.name() for q in node.parm('three1_2').multiParmInstances()]"),
              "['p_1_2_1', 'p_1_2_2', 'p_1_2_3']");
}

TEST_F(ThreeLevels, CallBackWithTheirOwnToken)
{
    run("node.parm('p_1_2_3').pressButton()");
    EXPECT_EQ(evaluate("node.evalParm('log')"), "'p_1_2_3 0'");
}

TEST_F(ThreeLevels, ComeBackWithTheirValues)
{
    run("node.parm('p_1_2_3').set(2.5)\nnode.parm('three1_2').insertMultiParmInstance(0)\n"
        "moved = node.evalParm('p_1_2_4')\nnode.parm('one').set(0)\nhou.undos.performUndo()");
    EXPECT_EQ(evaluate("moved, node.evalParm('p_1_2_4'), node.evalParm('three1_2')"), "(2.5, 2.5, 4)");
    run("hou.undos.performUndo()");
    EXPECT_EQ(evaluate("node.evalParm('p_1_2_3'), node.parm('p_1_2_4')"), "(2.5, None)");
}
