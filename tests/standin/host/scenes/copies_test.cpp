#include "scene_fixture.h"

#include <UT/UT_UndoManager.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Copies : public SceneTest
{
protected:
    /// The copies of nodes in a network; what goes wrong is a failure.
    std::vector<OP_Node*> copy(const std::vector<OP_Node*>& nodes, OP_Network* network)
    {
        std::vector<OP_Node*> copies;
        std::string why;
        EXPECT_TRUE(standin::copyNodes(nodes, *network, copies, why)) << why;
        return copies;
    }

    std::string refusal(OP_Node* node, OP_Network* network)
    {
        std::vector<OP_Node*> copies;
        std::string why;
        const int before = network->getNchildren();
        EXPECT_FALSE(standin::copyNodes({node}, *network, copies, why));
        EXPECT_THAT(copies, IsEmpty());
        EXPECT_EQ(network->getNchildren(), before);
        return why;
    }
};

TEST_F(Copies, HaveNamesOfTheirOwnAndTheSameValues)
{
    VOP_Node* parms = node("parms", "p");
    parms->setInt("outer", 0, 0, 2);
    parms->getParm("i").setExpression(0, "$F", CH_OLD_EXPR_LANGUAGE, true, 0);
    parms->setUserData("key", "value", false);
    parms->setXY(3, 4);
    const std::vector<OP_Node*> copies = copy({parms}, net);
    ASSERT_THAT(copies, SizeIs(1));
    EXPECT_EQ(nameOf(copies[0]), "p1");
    EXPECT_EQ(copies[0]->getParm("outer").getMultiParmNumItems(), 2);
    EXPECT_STREQ(copies[0]->getParm("i").getExpression(0), "$F");
    EXPECT_TRUE(copies[0]->hasUserData("key"));
    EXPECT_EQ(copies[0]->getX(), 3);
}

TEST_F(Copies, AreWiredToEachOtherAndInTheSameNetworkToWhatIsNotCopied)
{
    VOP_Node* outside = node("source", "outside");
    VOP_Node* source = node("source", "source");
    VOP_Node* sink = node("sink", "sink");
    sink->setInput(0, source, 0);
    sink->setInput(1, outside, 1);
    EXPECT_THAT(wiresOf(copy({sink, source}, net)[0]), ElementsAre("source1.0>0", "outside.1>1"));
    EXPECT_THAT(wiresOf(sink), ElementsAre("source.0>0", "outside.1>1"));

    OP_Network* other = OPgetDirector()->getManager("shop")->createNode("test_vopnet")->castToOPNetwork();
    EXPECT_THAT(wiresOf(copy({sink, source}, other)[0]), ElementsAre("source.0>0"));
}

TEST_F(Copies, AreNotWiredToNodesElsewhereThatHaveTheSameName)
{
    VOP_Node* sink = node("sink", "sink");
    sink->setInput(0, node("source", "source"), 0);
    OP_Network* other = OPgetDirector()->getManager("shop")->createNode("test_vopnet")->castToOPNetwork();
    other->createNode("test::source", "source");
    EXPECT_THAT(wiresOf(copy({sink}, other)[0]), IsEmpty());
}

TEST_F(Copies, ComeWithWhatIsInside)
{
    VOP_Node* subnet = CAST_VOPNODE(net->createNode("subnet", "sub"));
    subnet->runCreateScript();
    subnet->getChild("suboutput1")->setInput(0, subnet->createNode("test::source", "inner"), 1);
    OP_Node* made = copy({subnet}, net)[0];
    EXPECT_EQ(nameOf(made), "sub1");
    EXPECT_THAT(wiresOf(made->castToOPNetwork()->getChild("suboutput1")), ElementsAre("inner.1>0"));
    EXPECT_EQ(made->castToOPNetwork()->getNchildren(), 3);
}

TEST_F(Copies, CanStandInsideWhatTheyWereMadeFrom)
{
    VOP_Node* subnet = CAST_VOPNODE(net->createNode("subnet", "sub"));
    EXPECT_EQ(pathOf(copy({subnet}, subnet)[0]), netPath() + "/sub/sub");
    EXPECT_EQ(subnet->getNchildren(), 1);
}

TEST_F(Copies, SendNoParameterEventsAndRunNoCreationScripts)
{
    node("parms", "p")->setInt("outer", 0, 0, 2);
    ParmEventCounter counter(net);
    OP_Node* made = copy({net->getChild("p"), node("suicidal", "s")}, net)[0];
    EXPECT_EQ(counter.parmEvents, 0);
    EXPECT_EQ(counter.isLoadingSeen, 1);
    EXPECT_NE(net->getChild("s1"), nullptr);
    made->setFloat("f", 0, 0, 1);
    EXPECT_GT(counter.parmEvents, 0);
}

TEST_F(Copies, HaveValuesThatAreNoStepsOfUndo)
{
    VOP_Node* parms = node("parms", "p");
    parms->setInt("outer", 0, 0, 2);
    const Texts before = UTgetUndoManager()->getUndoLabels();
    OP_Node* made = copy({parms}, net)[0];
    EXPECT_EQ(UTgetUndoManager()->getUndoLabels(), before);
    EXPECT_EQ(made->getParm("outer").getMultiParmNumItems(), 2);
}

TEST_F(Copies, AreRefusedWhereTheNetworkDoesNotAllowTheType)
{
    OP_Node* add = OPgetDirector()->getManager("vex")->createNode("add", "add1");
    EXPECT_EQ(refusal(add, net),
              "/vex/add1 cannot be copied into /shop/test_vopnet1: the type \"add\" is not allowed "
              "there.");
    OP_Network* subnet = OPgetDirector()->getManager("vex")->createNode("subnet", "sub")->castToOPNetwork();
    subnet->createNode("add", "deep");
    EXPECT_THAT(refusal(subnet, net), HasSubstr("the type \"add\" of /vex/sub/deep is not allowed there"));
}

TEST_F(Copies, AreRefusedInNetworksOfAnotherKindAndInNoNetwork)
{
    OP_Network* objects = OPgetDirector()->getManager("obj");
    EXPECT_THAT(refusal(node("source", "s"), objects), HasSubstr("it takes nodes of the Object types"));
    OP_Node* null = objects->createNode("null", "n");
    EXPECT_THAT(refusal(null, null->castToOPNetwork()), HasSubstr("cannot contain other nodes"));
    EXPECT_THAT(refusal(objects, objects), HasSubstr("every scene has it once"));
}
