// Undo of what hou does in several steps of its own: ramps and lists.
#include "node_fixture.h"

#include <UT/UT_UndoManager.h>

namespace
{

class HouUndo : public NodeTest
{
protected:
    void SetUp() override
    {
        NodeTest::SetUp();
        UTgetUndoManager()->clear();
    }
    void TearDown() override
    {
        EXPECT_EQ(UTgetUndoManager()->getLevel(), 0);
        UTgetUndoManager()->clear();
        NodeTest::TearDown();
    }
};

} // namespace

TEST_F(HouUndo, TakesARampBackInOneStep)
{
    run("before = node.parm('tint').eval()\n"
        "ramp = hou.Ramp([hou.rampBasis.Constant] * 3, (0, 0.25, 1), ((1, 0, 0), (0, 1, 0), (0, 0, 1)))\n"
        "node.parm('tint').set(ramp)\n"
        "labels = hou.undos.undoLabels()\n"
        "hou.undos.performUndo()\nback = node.parm('tint').eval()\n"
        "hou.undos.performRedo()\nagain = node.parm('tint').eval()");
    EXPECT_EQ(evaluate("labels"), "('Parameter Change',)");
    EXPECT_EQ(evaluate("back.keys() == before.keys(), back.values() == before.values(), "
                       "back.basis() == before.basis()"),
              "(True, True, True)");
    EXPECT_EQ(evaluate("again.keys(), again.values()[1], again.basis()[1]"),
              "((0.0, 0.25, 1.0), (0.0, 1.0, 0.0), rampBasis.Constant)");
}

TEST_F(HouUndo, BringsBackRemovedInstances)
{
    run("node.parm('list_2').set(7)\nnode.parm('list').removeMultiParmInstance(0)\n"
        "moved = node.evalParm('list_1')\nhou.undos.performUndo()");
    EXPECT_EQ(evaluate("moved, node.evalParm('list_2')"), "(7.0, 7.0)");
}

TEST_F(HouUndo, LeavesAHandleToAnInstanceThatWasUndoneWithoutAParameter)
{
    run("node.parm('list').insertMultiParmInstance(2)\nlast = node.parm('list_3')\nhou.undos.performUndo()");
    EXPECT_NE(errorOf("last.eval()").find("ObjectWasDeleted"), std::string::npos);
    run("hou.undos.performRedo()");
    EXPECT_EQ(evaluate("last.eval()"), "0.0");
}

TEST_F(HouUndo, RevertsInOneStep)
{
    run("node.parmTuple('color').set((0.1, 0.2, 0.3))\nnode.parmTuple('color').revertToDefaults()\n"
        "labels = hou.undos.undoLabels()\nhou.undos.performUndo()");
    EXPECT_EQ(evaluate("len(labels), node.evalParm('color')"), "(2, (0.1, 0.2, 0.3))");
}
