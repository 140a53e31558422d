#include "test_types.h"

using ::testing::ElementsAre;

class Deletion : public NetworkTest
{
protected:
    Deletion() : source(node("source")), sink(node("sink")) { sink->setInput(0, source, 0); }

    VOP_Node* source;
    VOP_Node* sink;
};

TEST_F(Deletion, CutsTheWiresAtBothEnds)
{
    EXPECT_EQ(net->destroyNode(source), 1);
    EXPECT_EQ(sink->getInput(0), nullptr);
    EXPECT_EQ(sink->nInputs(), 0u);
}

TEST_F(Deletion, FreesTheOutputsUpstream)
{
    net->destroyNode(sink);
    EXPECT_EQ(source->nOutputs(), 0u);
}

TEST_F(Deletion, TellsTheNodeItsNetworkAndWhatItFed)
{
    EventRecorder own(source), parent(net), fed(sink);
    net->destroyNode(source);
    EXPECT_THAT(own.events, ElementsAre(SeenEvent{OP_UI_CHANGED, OP_UICHANGE_CONNECTIONS},
                                        SeenEvent{OP_NODE_DELETED, 0}));
    EXPECT_EQ(parent.count(OP_CHILD_DELETED), 1);
    EXPECT_EQ(fed.count(OP_INPUT_REWIRED), 1);
}

TEST_F(Deletion, ForgetsTheNameAndTheNumber)
{
    const int id = source->getUniqueId();
    net->destroyNode(source);
    EXPECT_EQ(net->getChild("source1"), nullptr);
    EXPECT_EQ(net->getNchildren(), 1);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
}

TEST_F(Deletion, NeverReusesANumber)
{
    const int id = source->getUniqueId();
    net->destroyNode(source);
    EXPECT_NE(node("source")->getUniqueId(), id);
}

TEST_F(Deletion, OfANetworkTakesItsChildrenAlong)
{
    OP_Network* subnet = net->createNode("subnet")->castToOPNetwork();
    OP_Network* inner = subnet->createNode("subnet")->castToOPNetwork();
    OP_Node* leaf = inner->createNode("test::source");
    const int id = leaf->getUniqueId();
    EventRecorder seen(leaf);
    net->destroyNode(subnet);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    EXPECT_EQ(seen.count(OP_NODE_DELETED), 1);
}

TEST_F(Deletion, IsForChildrenOnly)
{
    EXPECT_EQ(OPgetDirector()->getManager("obj")->destroyNode(source), 0);
    EXPECT_EQ(net->destroyNode(nullptr), 0);
    EXPECT_EQ(source->getParent(), net);
}

TEST_F(Deletion, AskedForAgainMeanwhileIsRefused)
{
    static int again;
    again = -1;
    source->addOpInterest(nullptr,
                          [](OP_Node* caller, void*, OP_EventType type, void*)
                          {
                              if (type == OP_NODE_DELETED)
                                  again = caller->getParent()->destroyNode(caller);
                          });
    EXPECT_EQ(net->destroyNode(source), 1);
    EXPECT_EQ(again, 0);
}

TEST_F(Deletion, IsVisibleToWhomItConcerns)
{
    static bool seen;
    seen = false;
    source->addOpInterest(nullptr,
                          [](OP_Node* caller, void*, OP_EventType type, void*)
                          {
                              if (type == OP_NODE_DELETED)
                                  seen = caller->isBeingDeleted();
                          });
    EXPECT_FALSE(source->isBeingDeleted());
    net->destroyNode(source);
    EXPECT_TRUE(seen);
}

TEST_F(Deletion, OfTheWholeNetworkMayHappenMeanwhile)
{
    const int id = net->getUniqueId();
    source->addOpInterest(nullptr,
                          [](OP_Node* caller, void*, OP_EventType type, void*)
                          {
                              OP_Network* network = caller->getParent();
                              if (type == OP_NODE_DELETED && network)
                                  network->getParent()->destroyNode(network);
                          });
    EXPECT_EQ(net->destroyNode(source), 1);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
}

TEST_F(Deletion, OfWhatIsDownstreamMayHappenMeanwhile)
{
    const int id = sink->getUniqueId();
    sink->addOpInterest(nullptr,
                        [](OP_Node* caller, void*, OP_EventType type, void*)
                        {
                            if (type == OP_INPUT_REWIRED)
                                caller->getParent()->destroyNode(caller);
                        });
    EXPECT_EQ(net->destroyNode(source), 1);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
}

TEST_F(Deletion, CannotBeUndoneByWiringTheNodeAgain)
{
    static OP_Node* fed;
    fed = sink;
    source->addOpInterest(nullptr,
                          [](OP_Node* caller, void*, OP_EventType type, void*)
                          {
                              if (type == OP_NODE_DELETED)
                              {
                                  EXPECT_EQ(fed->setInput(0, caller), UT_ERROR_ABORT);
                              }
                          });
    net->destroyNode(source);
    EXPECT_EQ(sink->getInput(0), nullptr);
}

TEST_F(Deletion, OfTheObjectItselfLeavesNoTrace)
{
    OP_Node* node = source;
    delete node;
    EXPECT_EQ(net->getNchildren(), 1);
    EXPECT_EQ(sink->getInput(0), nullptr);
}
