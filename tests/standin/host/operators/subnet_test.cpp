#include "test_types.h"

using ::testing::HasSubstr;

class Subnet : public NetworkTest
{
protected:
    Subnet() : source(node("source")), sink(node("sink"))
    {
        std::string why;
        subnet = CAST_VOPNODE(standin::createNodeByUser(*net, "subnet", "", why));
        begin = subnet->findVOPNode("subinput1");
        end = subnet->findVOPNode("suboutput1");
    }

    VOP_Node* source;
    VOP_Node* sink;
    VOP_Node* subnet;
    VOP_Node* begin;
    VOP_Node* end;
};

TEST_F(Subnet, IsMadeWithABeginningAndAnEnd)
{
    ASSERT_NE(begin, nullptr);
    ASSERT_NE(end, nullptr);
    EXPECT_EQ(subnet->getNchildren(), 2);
    EXPECT_TRUE(subnet->isNetwork());
}

TEST_F(Subnet, HasOneFreeInputMoreThanItUses)
{
    EXPECT_EQ(subnet->getNumVisibleInputs(), 1u);
    subnet->setInput(0, source, 1);
    EXPECT_EQ(subnet->getNumVisibleInputs(), 2u);
    EXPECT_EQ(subnet->getInputType(0), VOP_TYPE_VECTOR);
}

TEST_F(Subnet, ShowsItsInputsInside)
{
    EXPECT_EQ(begin->getNumVisibleOutputs(), 0u);
    const int before = standin::redrawCount(*begin);
    subnet->setInput(0, source, 1);
    EXPECT_EQ(begin->getNumVisibleOutputs(), 1u);
    EXPECT_EQ(begin->getOutputType(0), VOP_TYPE_VECTOR);
    EXPECT_GT(standin::redrawCount(*begin), before);
}

TEST_F(Subnet, ShowsOutsideWhatIsWiredToItsEnd)
{
    EXPECT_EQ(subnet->getNumVisibleOutputs(), 0u);
    const int before = standin::redrawCount(*subnet);
    end->setInput(0, subnet->createNode("test::source"), 0);
    EXPECT_EQ(subnet->getNumVisibleOutputs(), 1u);
    EXPECT_EQ(subnet->getOutputType(0), VOP_TYPE_FLOAT);
    EXPECT_GT(standin::redrawCount(*subnet), before);
}

TEST_F(Subnet, PassesWiresThrough)
{
    subnet->setInput(0, source, 1);
    OP_Node* null = subnet->createNode("null");
    null->setInput(0, begin, 0);
    end->setInput(0, null, 0);
    sink->setInput(1, subnet, 0);
    EXPECT_EQ(sink->getInput(1), subnet);
    EXPECT_EQ(sink->findSimpleInput(1), source);
    EXPECT_TRUE(sink->isConnected(1, true));
    EXPECT_EQ(subnet->getOutputType(0), VOP_TYPE_VECTOR);
}

TEST_F(Subnet, LeadsNowhereWhenNothingIsWiredInside)
{
    end->setInput(0, subnet->createNode("null"), 0);
    sink->setInput(1, subnet, 0);
    EXPECT_TRUE(sink->isConnected(1, false));
    EXPECT_FALSE(sink->isConnected(1, true));
    EXPECT_EQ(sink->findSimpleInput(1), nullptr);
}

TEST_F(Subnet, SurvivesTheLossOfItsEnd)
{
    subnet->destroyNode(end);
    EXPECT_EQ(subnet->getNumVisibleOutputs(), 0u);
    EXPECT_EQ(subnet->getOutputType(0), VOP_TYPE_UNDEF);
}

TEST_F(Subnet, SurvivesCirclesOfNulls)
{
    VOP_Node* a = CAST_VOPNODE(net->createNode("null"));
    VOP_Node* b = CAST_VOPNODE(net->createNode("null"));
    a->setInput(0, b);
    b->setInput(0, a);
    EXPECT_EQ(a->findSimpleInput(0), nullptr);
    EXPECT_EQ(a->getOutputType(0), VOP_TYPE_UNDEF);
}
