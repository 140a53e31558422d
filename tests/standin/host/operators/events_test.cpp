#include "op/op_loading.h"
#include "test_types.h"

#include <cstdint>

using ::testing::Contains;
using ::testing::ElementsAre;

namespace
{

std::vector<std::string> called; // which of the callbacks below ran, in order

void first(OP_Node*, void*, OP_EventType, void*) { called.push_back("first"); }
void second(OP_Node*, void*, OP_EventType, void*) { called.push_back("second"); }

void removeSecond(OP_Node* caller, void*, OP_EventType, void*)
{
    called.push_back("remover");
    caller->removeOpInterest(nullptr, second);
}

void removeItself(OP_Node* caller, void* callee, OP_EventType, void*)
{
    called.push_back("itself");
    caller->removeOpInterest(callee, removeItself);
}

void addSecond(OP_Node* caller, void*, OP_EventType, void*)
{
    called.push_back("adder");
    caller->addOpInterest(nullptr, second);
}

void deleteNode(OP_Node* caller, void*, OP_EventType type, void*)
{
    called.push_back("deleter");
    if (type != OP_NODE_DELETED)
        caller->getParent()->destroyNode(caller);
}

} // namespace

class Interests : public NetworkTest
{
protected:
    Interests() : source(node("source")) { called.clear(); }

    OP_Node* source;
};

TEST_F(Interests, AreCalledInTheOrderOfRegistration)
{
    source->addOpInterest(nullptr, second);
    source->addOpInterest(nullptr, first);
    source->opChanged(OP_FLAG_CHANGED);
    EXPECT_THAT(called, ElementsAre("second", "first"));
}

TEST_F(Interests, AreStoredOnceForAPair)
{
    source->addOpInterest(nullptr, first);
    source->addOpInterest(nullptr, first);
    source->addOpInterest(this, first);
    source->opChanged(OP_FLAG_CHANGED);
    EXPECT_EQ(called.size(), 2u);
}

TEST_F(Interests, CanBeAskedForAndRemoved)
{
    source->addOpInterest(nullptr, first);
    EXPECT_TRUE(source->hasOpInterest(nullptr, first));
    EXPECT_FALSE(source->hasOpInterest(this, first));
    source->removeOpInterest(this, first);
    EXPECT_TRUE(source->hasOpInterest(nullptr, first));
    source->removeOpInterest(nullptr, first);
    EXPECT_FALSE(source->hasOpInterest(nullptr, first));
}

TEST_F(Interests, RemovedByAnEarlierOneAreNotCalled)
{
    source->addOpInterest(nullptr, removeSecond);
    source->addOpInterest(nullptr, second);
    source->addOpInterest(nullptr, first);
    source->opChanged(OP_FLAG_CHANGED);
    EXPECT_THAT(called, ElementsAre("remover", "first"));
}

TEST_F(Interests, MayRemoveThemselves)
{
    source->addOpInterest(nullptr, removeItself);
    source->addOpInterest(nullptr, first);
    source->opChanged(OP_FLAG_CHANGED);
    source->opChanged(OP_FLAG_CHANGED);
    EXPECT_THAT(called, ElementsAre("itself", "first", "first"));
}

TEST_F(Interests, AddedDuringAnEventWaitForTheNext)
{
    source->addOpInterest(nullptr, addSecond);
    source->opChanged(OP_FLAG_CHANGED);
    EXPECT_THAT(called, ElementsAre("adder"));
    source->opChanged(OP_FLAG_CHANGED);
    EXPECT_THAT(called, ElementsAre("adder", "adder", "second"));
}

TEST_F(Interests, AreNotCalledAnyMoreOnceTheNodeIsGone)
{
    const int id = source->getUniqueId();
    source->addOpInterest(nullptr, deleteNode);
    source->addOpInterest(nullptr, first);
    source->opChanged(OP_FLAG_CHANGED);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    // The second one hears of the deletion, and not of what caused it.
    EXPECT_THAT(called, ElementsAre("deleter", "deleter", "first"));
}

TEST_F(Interests, MayDeleteTheNodeWhenAParameterChanges)
{
    OP_Node* sink = node("sink");
    const int id = sink->getUniqueId();
    sink->addOpInterest(nullptr, deleteNode);
    sink->setFloat("a", 0, 0, 1);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
}

TEST_F(Interests, MayDeleteTheNodeWhenItIsWired)
{
    OP_Node* sink = node("sink");
    const int id = sink->getUniqueId();
    sink->addOpInterest(nullptr, deleteNode);
    EXPECT_EQ(sink->setInput(0, source), UT_ERROR_NONE);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    EXPECT_EQ(source->nOutputs(), 0u);
}

using Events = NetworkTest;

TEST_F(Events, TellTheParameterThatChanged)
{
    OP_Node* sink = node("sink");
    EventRecorder seen(sink);
    sink->setInt("mode", 0, 0, 3);
    EXPECT_THAT(seen.events, ElementsAre(SeenEvent{OP_PARM_CHANGED, 2}));
}

TEST_F(Events, ComeAfterTheValueIsStored)
{
    OP_Node* sink = node("sink");
    static exint value;
    sink->addOpInterest(nullptr, [](OP_Node* caller, void*, OP_EventType, void*)
                        { value = caller->evalInt("mode", 0, 0); });
    sink->setInt("mode", 0, 0, 3);
    EXPECT_EQ(value, 3);
}

TEST_F(Events, OfParametersAreHeldBackWhileASceneLoads)
{
    OP_Node* sink = node("sink");
    EventRecorder seen(sink);
    {
        const standin::LoadingScope loading;
        EXPECT_NE(OPgetDirector()->isLoading(), 0);
        sink->setInt("mode", 0, 0, 3);
        sink->opChanged(OP_NAME_CHANGED);
    }
    EXPECT_THAT(seen.events, ElementsAre(SeenEvent{OP_NAME_CHANGED, 0}));
}

TEST_F(Events, OfChangedValuesReachEveryNodeDownstreamOnce)
{
    OP_Node* a = net->createNode("null");
    OP_Node* left = net->createNode("null");
    OP_Node* right = net->createNode("null");
    OP_Node* join = node("lights");
    left->setInput(0, a);
    right->setInput(0, a);
    join->setInput(0, left);
    join->setInput(1, right);
    EventRecorder seen(join);
    a->opChanged(OP_PARM_CHANGED);
    EXPECT_EQ(seen.count(OP_INPUT_CHANGED), 1);
}

TEST_F(Events, EndInACircleOfWires)
{
    OP_Node* a = net->createNode("null");
    OP_Node* b = net->createNode("null");
    b->setInput(0, a);
    a->setInput(0, b);
    EventRecorder seen(b);
    a->opChanged(OP_PARM_CHANGED);
    EXPECT_EQ(seen.count(OP_INPUT_CHANGED), 1);
}

TEST_F(Events, TellTheNetworkOfNewChildren)
{
    EventRecorder seen(net);
    node("source");
    EXPECT_EQ(seen.count(OP_CHILD_CREATED), 1);
    net->createNode("test::source", nullptr, 0);
    EXPECT_EQ(seen.count(OP_CHILD_CREATED), 1);
}

TEST_F(Events, AskForARedrawWithItsKind)
{
    OP_Node* source = node("source");
    EventRecorder seen(source);
    const int before = standin::redrawCount(*source);
    source->triggerUIChanged(OP_UICHANGE_CONNECTIONS);
    EXPECT_THAT(seen.events, ElementsAre(SeenEvent{OP_UI_CHANGED, OP_UICHANGE_CONNECTIONS}));
    EXPECT_EQ(standin::redrawCount(*source), before + 1);
}

TEST(Messages, ReachTheLogAndTheObserver)
{
    std::vector<std::string> observed;
    standin::setMessageObserver([&](const standin::Message& message) { observed.push_back(message.text); });
    standin::report(standin::Severity::Warning, "Look out.");
    standin::setMessageObserver(nullptr);
    standin::report(standin::Severity::Information, "All is well.");
    EXPECT_THAT(observed, ElementsAre("Look out."));
    const std::vector<standin::Message> messages = standin::takeMessages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].severity, standin::Severity::Warning);
    EXPECT_EQ(messages[1].text, "All is well.");
    EXPECT_TRUE(standin::messages().empty());
}
