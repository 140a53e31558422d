// Undo as nodes hear of it: the events of an edit, and nodes that are gone.
#include "test_types.h"

#include <UT/UT_UndoManager.h>

#include <random>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

class NodeUndo : public NetworkTest
{
protected:
    NodeUndo() : undos(*UTgetUndoManager()) { undos.clear(); }
    ~NodeUndo() override
    {
        EXPECT_EQ(undos.getLevel(), 0);
        undos.clear();
    }

    UT_UndoManager& undos;
};

} // namespace

TEST_F(NodeUndo, SendsTheEventOfAnEditEachTime)
{
    VOP_Node* sink = node("sink");
    sink->setFloat("b", 1, 0, 5);
    const EventRecorder recorder(sink);
    undos.performUndo();
    EXPECT_THAT(recorder.events, ElementsAre(SeenEvent{OP_PARM_CHANGED, 1}));
    undos.performRedo();
    EXPECT_EQ(recorder.count(OP_PARM_CHANGED), 2);
    EXPECT_EQ(sink->evalFloat("b", 1, 0), 5);
}

TEST_F(NodeUndo, SendsAnEventForEachComponentThatItRestores)
{
    VOP_Node* sink = node("sink");
    {
        const UT_AutoUndoBlock block("Block", ANYLEVEL);
        sink->setFloat("b", 0, 0, 1);
        sink->setFloat("b", 0, 0, 2);
        sink->setFloat("b", 2, 0, 3);
    }
    const EventRecorder recorder(sink);
    undos.performUndo();
    EXPECT_EQ(recorder.count(OP_PARM_CHANGED), 2);
}

TEST_F(NodeUndo, KnowsNothingOfMakingAndDeletingNodes)
{
    VOP_Node* sink = node("sink");
    net->destroyNode(sink);
    EXPECT_THAT(undos.getUndoLabels(), IsEmpty());
    EXPECT_FALSE(undos.performUndo());
}

TEST_F(NodeUndo, LeavesANodeAloneThatTookTheNameOfADeletedOne)
{
    VOP_Node* first = node("sink", "same");
    first->setFloat("a", 0, 0, 1);
    net->destroyNode(first);
    VOP_Node* second = node("sink", "same");
    {
        const UT_AutoDisableUndos off;
        second->setFloat("a", 0, 0, 2);
    }
    EXPECT_FALSE(undos.performUndo());
    EXPECT_EQ(second->evalFloat("a", 0, 0), 2);
}

TEST_F(NodeUndo, SurvivesTheNodeThatIsDeletedWhenItHearsOfIt)
{
    struct Deleter
    {
        static void receive(OP_Node* caller, void*, OP_EventType type, void*)
        {
            if (type == OP_PARM_CHANGED && !UTgetUndoManager()->isRecording())
                caller->getParent()->destroyNode(caller);
        }
    };
    VOP_Node* kept = node("sink");
    VOP_Node* brief = node("sink");
    brief->addOpInterest(&brief, Deleter::receive);
    {
        const UT_AutoUndoBlock block("Block", ANYLEVEL);
        kept->setFloat("a", 0, 0, 1);
        brief->setFloat("a", 0, 0, 1);
        brief->setFloat("b", 0, 0, 1);
    }
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(net->getNchildren(), 1);
    EXPECT_EQ(kept->evalFloat("a", 0, 0), 0);
    EXPECT_TRUE(undos.performRedo());
    EXPECT_EQ(kept->evalFloat("a", 0, 0), 1);
}

TEST_F(NodeUndo, NeverTouchesADeadNodeInManyRandomEdits)
{
    const auto seed = static_cast<unsigned>(std::random_device()());
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const char* const parms[] = {"a", "b", "mode"};
    std::size_t performed = 0;
    for (int i = 0; i < 10000; ++i)
    {
        const auto what = random() % 10;
        OP_Node* any =
            net->getNchildren() > 0
                ? net->getChild(static_cast<int>(random() % static_cast<unsigned>(net->getNchildren())))
                : nullptr;
        if (!any || (what == 0 && net->getNchildren() < 20))
            node("sink");
        else if (what == 1)
            net->destroyNode(any);
        else if (what == 2)
            any->setName(("n" + std::to_string(i)).c_str());
        else if (what < 6)
            any->setFloat(parms[random() % 3], 0, 0, static_cast<fpreal>(1 + random() % 100));
        else
            performed += (what < 8 ? undos.performUndo() : undos.performRedo()) ? 1 : 0;
    }
    EXPECT_GT(performed, 100u);
    while (undos.performUndo())
        ;
    EXPECT_THAT(undos.getUndoLabels(), IsEmpty());
}
