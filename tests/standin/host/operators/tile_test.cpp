#include "test_types.h"

#include <cmath>
#include <limits>

using ::testing::Contains;
using ::testing::ElementsAre;

class Tiles : public NetworkTest
{
protected:
    Tiles() : source(node("source")), sink(node("sink")) {}

    /// Height of a tile above that of one that shows nothing.
    fpreal rows(OP_Node* tile)
    {
        const fpreal height = tile->getH();
        VOP_Node* bare = node("sink");
        bare->setExtraFlag(VOP_OPT_LOW_FLAG, 1);
        const fpreal base = bare->getH();
        bare->setExtraFlag(VOP_OPT_HIGH_FLAG, 1);
        return (height - base) / ((bare->getH() - base) / 2);
    }

    VOP_Node* source;
    VOP_Node* sink;
};

TEST_F(Tiles, ShowEveryVisibleConnectorWithoutADetailFlag) { EXPECT_DOUBLE_EQ(rows(sink), 2); }

TEST_F(Tiles, ShowAsManyRowsAsTheSideWithMoreConnectorsNeeds)
{
    VOP_Node* lights = node("lights");
    for (unsigned i = 0; i < 3; ++i)
        lights->setInput(i, source, 0);
    EXPECT_DOUBLE_EQ(rows(lights), 4);
    EXPECT_DOUBLE_EQ(rows(source), 2);
}

TEST_F(Tiles, ShowNoConnectorInLowDetail)
{
    sink->setExtraFlag('L', 1);
    EXPECT_NEAR(rows(sink), 0, 1e-9);
}

TEST_F(Tiles, ShowConnectedOnesInMediumDetail)
{
    sink->setExtraFlag('M', 1);
    EXPECT_NEAR(rows(sink), 0, 1e-9);
    sink->setInput(1, source, 1);
    EXPECT_NEAR(rows(sink), 1, 1e-9);
    source->setExtraFlag('M', 1);
    EXPECT_NEAR(rows(source), 1, 1e-9);
}

TEST_F(Tiles, HaveOneDetailFlagAtMost)
{
    sink->setExtraFlag('M', 1);
    sink->setExtraFlag('H', 1);
    EXPECT_EQ(sink->getExtraFlag('H'), 1);
    EXPECT_EQ(sink->getExtraFlag('M'), 0);
    sink->setExtraFlag('L', 0);
    EXPECT_EQ(sink->getExtraFlag('H'), 1);
    sink->setExtraFlag('H', 0);
    EXPECT_EQ(sink->getExtraFlag('H'), 0);
}

TEST_F(Tiles, IgnoreFlagsThatNobodyKnows)
{
    EXPECT_EQ(sink->setExtraFlag('?', 1), 0);
    EXPECT_EQ(sink->getExtraFlag('?'), 0);
}

TEST_F(Tiles, AreRedrawnWhenTheDetailChanges)
{
    EventRecorder seen(sink);
    sink->setExtraFlag('M', 1);
    EXPECT_THAT(seen.events, ElementsAre(SeenEvent{OP_FLAG_CHANGED, 0}, SeenEvent{OP_UI_CHANGED, 0}));
    sink->setExtraFlag('M', 1);
    EXPECT_EQ(seen.events.size(), 2u);
}

TEST_F(Tiles, AreMovedWithinTheSafeArea)
{
    EventRecorder seen(sink);
    EXPECT_TRUE(sink->setXYWithBoundsChecks(3, -4));
    EXPECT_EQ(sink->getX(), 3);
    EXPECT_EQ(sink->getY(), -4);
    EXPECT_TRUE(sink->setXYWithBoundsChecks(1e9, -std::numeric_limits<fpreal>::infinity()));
    EXPECT_EQ(sink->getX(), 1e6);
    EXPECT_EQ(sink->getY(), -1e6);
    EXPECT_EQ(seen.count(OP_UI_MOVED), 2);
}

TEST_F(Tiles, StayWhereTheyAreForNoNumber)
{
    sink->setXYWithBoundsChecks(3, 4);
    EXPECT_FALSE(sink->setXYWithBoundsChecks(std::nan(""), 4));
    EXPECT_EQ(sink->getX(), 3);
}

TEST_F(Tiles, AreMovedRawWithoutLimitsAndEvents)
{
    EventRecorder seen(sink);
    sink->setXY(1e9, 0);
    EXPECT_EQ(sink->getX(), 1e9);
    EXPECT_TRUE(seen.events.empty());
}

TEST_F(Tiles, ArePlacedRightOfTheirInputs)
{
    source->setXY(5, 7);
    sink->setInput(0, source, 0);
    sink->moveToGoodPosition();
    EXPECT_GE(sink->getX(), source->getX() + source->getW());
    EXPECT_NEAR(sink->getY() + sink->getH() / 2, source->getY() + source->getH() / 2, 1e-9);
}

TEST_F(Tiles, ArePlacedLeftOfTheirOutputsWithoutInputs)
{
    sink->setXY(5, 7);
    sink->setInput(0, source, 0);
    source->moveToGoodPosition();
    EXPECT_LE(source->getX() + source->getW(), sink->getX());
}

TEST_F(Tiles, NeverOverlapAfterPlacing)
{
    for (int i = 0; i < 20; ++i)
    {
        VOP_Node* placed = node(i % 3 ? "sink" : "source");
        if (i % 3 == 1)
            placed->setInput(0, source, 0);
        placed->moveToGoodPosition();
        for (int k = 0; k < net->getNchildren(); ++k)
        {
            const OP_Node* other = net->getChild(k);
            if (other == placed || other == sink || other == source)
                continue;
            EXPECT_TRUE(other->getX() >= placed->getX() + placed->getW() ||
                        placed->getX() >= other->getX() + other->getW() ||
                        other->getY() >= placed->getY() + placed->getH() ||
                        placed->getY() >= other->getY() + other->getH())
                << nameOf(placed) << " and " << nameOf(other);
        }
    }
}

TEST(PlacingTheFirstNode, LeavesItWhereItIs)
{
    OP_Network* out = OPgetDirector()->getManager("obj");
    OP_Node* only = out->createNode("null");
    only->moveToGoodPosition();
    EXPECT_EQ(only->getX(), 0);
    EXPECT_EQ(only->getY(), 0);
    out->destroyNode(only);
}
