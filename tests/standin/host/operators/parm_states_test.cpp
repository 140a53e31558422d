#include "test_types.h"

// What the host's own refresh makes of parameters: conditions, and inputs that take a parameter's place.
class ParmStates : public NetworkTest
{
protected:
    ParmStates() : source(node("source")), sink(node("sink")) {}

    bool enabled(const char* parm) { return sink->getParm(parm).getEnableState(0); }

    VOP_Node* source;
    VOP_Node* sink;
};

TEST_F(ParmStates, AreFreshOnANewNode)
{
    EXPECT_TRUE(enabled("a"));
    EXPECT_TRUE(enabled("b"));
}

TEST_F(ParmStates, FollowConditionsAfterEachChange)
{
    sink->setInt("mode", 0, 0, 1);
    EXPECT_FALSE(enabled("b"));
    sink->setInt("mode", 0, 0, 0);
    EXPECT_TRUE(enabled("b"));
}

TEST_F(ParmStates, FollowTheWireOfTheSameName)
{
    sink->setInput(0, source, 0);
    EXPECT_FALSE(enabled("a"));
    EXPECT_TRUE(enabled("b"));
    sink->setInput(0, nullptr);
    EXPECT_TRUE(enabled("a"));
}

TEST_F(ParmStates, LeaveConnectedOnesDisabledWhateverTheConditionSays)
{
    sink->setInput(1, source, 1);
    EXPECT_FALSE(enabled("b"));
    sink->setInt("mode", 0, 0, 1);
    sink->setInt("mode", 0, 0, 0);
    EXPECT_FALSE(enabled("b"));
}

TEST_F(ParmStates, LeaveDisabledOnesDisabledWhenTheWireGoes)
{
    sink->setInput(1, source, 1);
    sink->setInt("mode", 0, 0, 1);
    sink->setInput(1, nullptr);
    EXPECT_FALSE(enabled("b"));
}

TEST_F(ParmStates, FollowTheDeletionOfTheSource)
{
    sink->setInput(0, source, 0);
    net->destroyNode(source);
    EXPECT_TRUE(enabled("a"));
}
