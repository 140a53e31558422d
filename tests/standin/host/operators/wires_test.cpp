#include "test_types.h"

#include <algorithm>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Wires : public NetworkTest
{
protected:
    Wires() : source(node("source")), sink(node("sink")) {}

    VOP_Node* source;
    VOP_Node* sink;
};

TEST_F(Wires, ConnectAnInputToAnOutput)
{
    EXPECT_EQ(sink->setInput(1, source, 1), UT_ERROR_NONE);
    EXPECT_EQ(sink->getInput(1), source);
    ASSERT_NE(sink->getInputReferenceConst(1), nullptr);
    EXPECT_EQ(sink->getInputReferenceConst(1)->getNodeOutputIndex(), 1);
    EXPECT_TRUE(sink->isConnected(1, false));
    EXPECT_FALSE(sink->isConnected(0, false));
    EXPECT_FALSE(sink->isConnected(-1, true));
}

TEST_F(Wires, AreCountedAtBothEnds)
{
    EXPECT_EQ(sink->nInputs(), 0u);
    sink->setInput(1, source, 1);
    EXPECT_EQ(sink->nInputs(), 2u);
    EXPECT_EQ(sink->nConnectedInputs(), 1u);
    EXPECT_EQ(source->nOutputs(), 1u);
    EXPECT_EQ(source->nOutputs(-1), 1u);
    EXPECT_EQ(source->nOutputs(0), 0u);
    EXPECT_EQ(source->nOutputs(1), 1u);
    EXPECT_EQ(source->getOutput(0), sink);
    EXPECT_EQ(source->getOutput(0, 0), nullptr);
    EXPECT_EQ(source->getOutput(1), nullptr);
}

TEST_F(Wires, LeaveAnOutputInTheOrderOfTheirMaking)
{
    OP_Node* other = node("sink");
    other->setInput(0, source, 0);
    sink->setInput(0, source, 0);
    EXPECT_EQ(source->getOutput(0, 0), other);
    EXPECT_EQ(source->getOutput(1, 0), sink);
}

TEST_F(Wires, GoWhenDisconnectedAndLeaveTheSlot)
{
    sink->setInput(0, source, 0);
    EXPECT_EQ(sink->setInput(0, nullptr), UT_ERROR_NONE);
    EXPECT_EQ(sink->getInput(0), nullptr);
    EXPECT_EQ(sink->nInputs(), 0u);
    EXPECT_EQ(sink->getInputsArraySize(), 2u);
    EXPECT_EQ(source->nOutputs(), 0u);
}

TEST_F(Wires, ReplaceTheOneThatWasThere)
{
    OP_Node* other = node("source");
    sink->setInput(0, source, 0);
    sink->setInput(0, other, 0);
    EXPECT_EQ(sink->getInput(0), other);
    EXPECT_EQ(source->nOutputs(), 0u);
}

TEST_F(Wires, FindSlotsForVisibleInputsFromTheBeginning)
{
    EXPECT_EQ(sink->getInputsArraySize(), 2u);
    EXPECT_EQ(source->getInputsArraySize(), 0u);
    EXPECT_EQ(node("lights")->getInputsArraySize(), 2u);
}

TEST_F(Wires, AreRefusedOutOfRange)
{
    EXPECT_EQ(sink->setInput(2, source, 0), UT_ERROR_ABORT);
    EXPECT_EQ(sink->setInput(0, source, 2), UT_ERROR_ABORT);
    EXPECT_EQ(source->setInput(0, sink, 0), UT_ERROR_ABORT);
    EXPECT_EQ(sink->nInputs(), 0u);
    EXPECT_EQ(sink->getInput(7), nullptr);
    EXPECT_EQ(sink->getInputReference(7, true), nullptr);
}

TEST_F(Wires, AreRefusedBetweenNetworks)
{
    OP_Node* far = OPgetDirector()->getManager("obj")->createNode("null");
    EXPECT_EQ(sink->setInput(0, far, 0), UT_ERROR_ABORT);
    OPgetDirector()->getManager("obj")->destroyNode(far);
}

TEST_F(Wires, OfTheWrongTypeAreMadeInCodeAllTheSame)
{
    EXPECT_EQ(sink->setInput(0, source, 1), UT_ERROR_NONE);
}

TEST_F(Wires, TellBothEndsToRedraw)
{
    EventRecorder seen(sink);
    const int before = standin::redrawCount(*source);
    sink->setInput(1, source, 1);
    EXPECT_THAT(seen.events, ElementsAre(SeenEvent{OP_INPUT_REWIRED, 1}, SeenEvent{OP_INPUT_CHANGED, 0},
                                         SeenEvent{OP_UI_CHANGED, OP_UICHANGE_CONNECTIONS}));
    EXPECT_EQ(standin::redrawCount(*source), before + 1);
}

TEST_F(Wires, ThatAreThereAlreadyChangeNothing)
{
    sink->setInput(1, source, 1);
    EventRecorder seen(sink);
    sink->setInput(1, source, 1);
    sink->setInput(0, nullptr);
    EXPECT_TRUE(seen.events.empty());
}

// --- unordered inputs -------------------------------------------------------------------------------------------

class UnorderedInputs : public Wires
{
protected:
    UnorderedInputs() : lights(node("lights"))
    {
        for (unsigned i = 0; i < 4; ++i)
            lights->setInput(i, sources[i] = node("source"), 0);
    }

    std::vector<int> wired() const
    {
        std::vector<int> order;
        for (unsigned i = 0; i < lights->nInputs(); ++i)
            order.push_back(static_cast<int>(std::find(sources, sources + 4, lights->getInput(i)) - sources));
        return order;
    }

    VOP_Node* lights;
    OP_Node* sources[4];
};

TEST_F(UnorderedInputs, CloseUpWhenOneIsDisconnected)
{
    lights->setInput(2, nullptr);
    EXPECT_THAT(wired(), ElementsAre(0, 1, 3));
    EXPECT_EQ(lights->getNumVisibleInputs(), 4u);
    EXPECT_EQ(sources[3]->getOutput(0), lights);
    EXPECT_EQ(sources[3]->nOutputs(0), 1u);
}

TEST_F(UnorderedInputs, KeepTheirPlacesBelowTheOrderedCount)
{
    lights->setInput(0, nullptr);
    EXPECT_THAT(wired(), ElementsAre(4, 1, 2, 3)); // 4 stands for nothing
}

TEST_F(UnorderedInputs, TellEveryInputThatMoved)
{
    EventRecorder seen(lights);
    lights->setInput(1, nullptr);
    EXPECT_THAT(seen.events, ElementsAre(SeenEvent{OP_INPUT_REWIRED, 1}, SeenEvent{OP_INPUT_REWIRED, 2},
                                         SeenEvent{OP_INPUT_REWIRED, 3}, SeenEvent{OP_INPUT_CHANGED, 0},
                                         SeenEvent{OP_UI_CHANGED, OP_UICHANGE_CONNECTIONS}));
}

TEST_F(UnorderedInputs, CloseUpWhenANodeUpstreamIsDeleted)
{
    net->destroyNode(sources[1]);
    EXPECT_THAT(wired(), ElementsAre(0, 2, 3));
}

TEST_F(UnorderedInputs, AlwaysHaveASlotForTheFreeConnector) { EXPECT_EQ(lights->getInputsArraySize(), 5u); }

// --- what a person may wire -------------------------------------------------------------------------------------

class Wiring : public Wires
{
protected:
    std::string obstacle(OP_Node* from, unsigned output, OP_Node* to, unsigned input)
    {
        std::string why;
        const bool allowed = standin::canConnect(*from, output, *to, input, why);
        EXPECT_EQ(allowed, why.empty());
        return why;
    }
};

TEST_F(Wiring, OfFittingTypesIsAllowed)
{
    EXPECT_EQ(obstacle(source, 0, sink, 0), "");
    EXPECT_EQ(obstacle(source, 1, sink, 1), "");
}

TEST_F(Wiring, OfTypesThatDoNotFitIsRefusedWithBothEndsNamed)
{
    EXPECT_EQ(obstacle(source, 1, sink, 0), "Cannot connect output 1 \"v\" (vector) of " + pathOf(source) +
                                                " to input 0 \"a\" (float) of " + pathOf(sink) +
                                                ": the input takes float.");
    EXPECT_THAT(obstacle(source, 0, sink, 1), HasSubstr("the input takes vector, color."));
}

TEST_F(Wiring, BeyondTheVisibleConnectorsIsRefusedWithoutAskingTheNode)
{
    EXPECT_EQ(obstacle(source, 0, sink, 2), pathOf(sink) + " has no input 2: it has 2, counted from 0.");
    EXPECT_EQ(obstacle(sink, 0, sink, 0), pathOf(sink) + " has no output 0: it has none.");
}

TEST_F(Wiring, InACircleIsRefused)
{
    OP_Node* a = net->createNode("null");
    OP_Node* b = net->createNode("null");
    EXPECT_EQ(obstacle(a, 0, b, 0), "");
    b->setInput(0, a);
    EXPECT_THAT(obstacle(b, 0, a, 0), HasSubstr("circle"));
    EXPECT_THAT(obstacle(a, 0, a, 0), HasSubstr("circle"));
}

TEST_F(Wiring, BetweenNetworksIsRefused)
{
    OP_Network* subnet = net->createNode("subnet")->castToOPNetwork();
    EXPECT_THAT(obstacle(source, 0, subnet->createNode("null"), 0), HasSubstr("not in the same network"));
}

TEST_F(Wiring, OfANullPassesOnTheTypeOfItsInput)
{
    VOP_Node* null = CAST_VOPNODE(net->createNode("null"));
    EXPECT_THAT(obstacle(null, 0, sink, 0), HasSubstr("(undefined)"));
    null->setInput(0, source, 0);
    EXPECT_EQ(obstacle(null, 0, sink, 0), "");
    EXPECT_NE(obstacle(null, 0, sink, 1), "");
    EXPECT_EQ(null->getOutputType(0), VOP_TYPE_FLOAT);
}

TEST(ConnectorNames, OfTheHostsOwnNodesAreNumbered)
{
    OP_Network* vex = OPgetDirector()->getManager("vex");
    VOP_Node* add = CAST_VOPNODE(vex->createNode("add"));
    ASSERT_NE(add, nullptr);
    UT_String name;
    add->getInputName(name, 1);
    EXPECT_EQ(name.toStdString(), "input2");
    EXPECT_EQ(add->getInputFromName(UT_String("input2")), 1);
    EXPECT_EQ(add->getInputFromName(UT_String("nobody")), -1);
    EXPECT_EQ(add->getOutputFromName(UT_String("sum")), 0);
    EXPECT_EQ(add->getOutputFromName(UT_String("nobody")), -1);
    EXPECT_STREQ(add->inputLabel(0), "Input 1");
    EXPECT_EQ(add->getInputType(1), VOP_TYPE_FLOAT);
    vex->destroyNode(add);
}
