#include "test_types.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

namespace
{

std::vector<std::string> offered(OP_Network* network)
{
    std::vector<std::string> names;
    for (const standin::TabEntry& entry : standin::tabMenu(*network))
        names.push_back(entry.name);
    return names;
}

} // namespace

class Creation : public NetworkTest
{
protected:
    std::string obstacle(OP_Network* network, const std::string& type, const std::string& name = "")
    {
        std::string why;
        EXPECT_EQ(standin::createNodeByUser(*network, type, name, why), nullptr) << type;
        return why;
    }

    OP_Network* vex() const { return OPgetDirector()->getManager("vex"); }
};

TEST_F(Creation, BuildsTheParametersOfTheType)
{
    OP_Node* sink = node("sink");
    EXPECT_EQ(sink->getNumParms(), 3);
    EXPECT_TRUE(sink->hasParm("mode"));
    EXPECT_EQ(sink->getOperator()->getName().toStdString(), "test::sink");
    EXPECT_EQ(sink->getParent(), net);
}

TEST_F(Creation, FollowsTheFilterOfTheNetwork)
{
    EXPECT_NE(net->createNode("test::source"), nullptr);
    EXPECT_NE(net->createNode("subnet"), nullptr);
    EXPECT_EQ(net->createNode("add"), nullptr);
    EXPECT_EQ(net->createNode("a_good"), nullptr);
}

TEST_F(Creation, FollowsTheNetworkMaskOfTheType)
{
    EXPECT_EQ(net->createNode("test::elsewhere"), nullptr);
    EXPECT_NE(net->createNode("test::lights"), nullptr); // "test_*" is a pattern
    EXPECT_EQ(vex()->createNode("test::source"), nullptr);
    OP_Node* add = vex()->createNode("add");
    ASSERT_NE(add, nullptr);
    vex()->destroyNode(add);
}

TEST_F(Creation, InASubnetObeysTheContainerAroundIt)
{
    OP_Network* subnet = net->createNode("subnet")->castToOPNetwork();
    OP_Network* inner = subnet->createNode("subnet")->castToOPNetwork();
    EXPECT_NE(inner->createNode("test::source"), nullptr);
    EXPECT_EQ(inner->createNode("add"), nullptr);
    EXPECT_EQ(inner->createNode("test::elsewhere"), nullptr);
}

TEST_F(Creation, InASubnetOfAnotherNetworkObeysThatOne)
{
    OP_Network* subnet = vex()->createNode("subnet")->castToOPNetwork();
    EXPECT_NE(subnet->createNode("add"), nullptr);
    EXPECT_EQ(subnet->createNode("test::source"), nullptr);
    vex()->destroyNode(subnet);
}

TEST_F(Creation, OfAnUnknownTypeGivesNothing)
{
    EXPECT_EQ(net->createNode("nobody"), nullptr);
    EXPECT_EQ(net->createNode(""), nullptr);
    EXPECT_EQ(net->createNode(nullptr), nullptr);
}

TEST_F(Creation, GivesNothingInANodeThatHoldsNone)
{
    OP_Network* source = node("source");
    EXPECT_FALSE(source->isNetwork());
    EXPECT_EQ(source->createNode("test::source"), nullptr);
    EXPECT_THAT(obstacle(source, "test::source"), HasSubstr("cannot contain other nodes"));
}

TEST_F(Creation, ReportsAConstructorThatThrows)
{
    EXPECT_EQ(node("throwing"), nullptr);
    const std::vector<standin::Message> messages = standin::takeMessages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0].text, HasSubstr("\"test::throwing\""));
    EXPECT_THAT(messages[0].text, HasSubstr("no memory"));
    EXPECT_EQ(net->getNchildren(), 0);
}

TEST_F(Creation, ByATableGoesToNetworksOfThatTable)
{
    OP_OperatorTable* vops = OP_Network::getOperatorTable("Vop");
    EXPECT_NE(vops->createNode(net, "test::source"), nullptr);
    EXPECT_EQ(vops->createNode(OPgetDirector()->getManager("obj"), "null"), nullptr);
}

TEST_F(Creation, OfManagersIsFinished)
{
    EXPECT_FALSE(OP_Network::canDestroyNode(vex()));
    EXPECT_EQ(OPgetDirector()->destroyNode(vex()), 0);
    EXPECT_FALSE(OP_Network::canDestroyNode(OPgetDirector()));
}

// --- by a person ------------------------------------------------------------------------------------------------

TEST_F(Creation, ByAPersonNamesAndPlacesTheNode)
{
    std::string why;
    OP_Node* first = standin::createNodeByUser(*net, "test::source", "", why);
    OP_Node* second = standin::createNodeByUser(*net, "test::source", "mine", why);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(why, "");
    EXPECT_EQ(nameOf(first), "source1");
    EXPECT_EQ(nameOf(second), "mine");
    EXPECT_LT(second->getY() + second->getH(), first->getY());
}

TEST_F(Creation, ByAPersonExplainsWhatIsNotAllowed)
{
    EXPECT_EQ(obstacle(net, "test::elsewhere"), "The node type \"test::elsewhere\" cannot be created in " +
                                                    pathOf(net) + ": " + pathOf(net) +
                                                    " does not allow it. It is made for networks of type "
                                                    "\"elsewhere\".");
    EXPECT_THAT(obstacle(vex(), "test::source"), HasSubstr("\"test_vopnet\""));
    EXPECT_THAT(obstacle(net, "add"), HasSubstr(pathOf(net) + " does not allow it."));
}

TEST_F(Creation, ByAPersonExplainsUnknownTypesAndNames)
{
    EXPECT_THAT(obstacle(net, "source"), HasSubstr("no node type \"source\" among the Vop types"));
    EXPECT_THAT(obstacle(net, "test::source", "a b"), HasSubstr("\"a b\" is no node name"));
}

TEST_F(Creation, ByAPersonTellsWhenTheScriptDeletedTheNode)
{
    EXPECT_THAT(obstacle(net, "test::suicidal"), HasSubstr("deleted the node"));
    EXPECT_EQ(net->getNchildren(), 0);
}

TEST_F(Creation, ByAPersonRunsTheCreationScript)
{
    std::string why;
    OP_Node* made = standin::createNodeByUser(*net, "test::scripted", "", why);
    ASSERT_NE(made, nullptr);
    UT_String path;
    EXPECT_TRUE(OPgetDirector()->getCommandManager()->getVariable("scripted_path", path));
    EXPECT_EQ(path.toStdString(), pathOf(made));
    EXPECT_FALSE(OPgetDirector()->getCommandManager()->getVariable("arg1", path));
}

TEST_F(Creation, ByAPersonRunsAPythonCreationScript)
{
    std::string why;
    OP_Node* made = standin::createNodeByUser(*net, "test::snake", "", why);
    ASSERT_NE(made, nullptr);
    UT_String type;
    EXPECT_TRUE(made->getUserData("made by", type));
    EXPECT_EQ(type.toStdString(), "test::snake");
}

TEST_F(Creation, InCodeRunsNoCreationScript)
{
    OP_Node* made = node("snake");
    EXPECT_FALSE(made->hasUserData("made by"));
}

// --- tab menus --------------------------------------------------------------------------------------------------

TEST_F(Creation, IsOfferedByTheTabMenuWhereItIsAllowed)
{
    EXPECT_THAT(offered(net),
                ElementsAre("subnet", "null", "test::source", "test::sink", "test::lights", "test::throwing",
                            "test::suicidal", "test::scripted", "test::snake"));
    EXPECT_THAT(offered(vex()), Contains("add"));
    EXPECT_THAT(offered(vex()), Not(Contains("test::source")));
}

TEST_F(Creation, IsOfferedInSubMenus)
{
    for (const standin::TabEntry& entry : standin::tabMenu(*net))
        EXPECT_EQ(entry.subMenu, entry.name == "test::lights" ? "Outputs/Lights" : "") << entry.name;
}

TEST_F(Creation, IsNotOfferedInNodesThatHoldNone) { EXPECT_THAT(offered(node("source")), IsEmpty()); }

TEST_F(Creation, IsListedByTheTableForANetwork)
{
    OP_OperatorList list;
    EXPECT_EQ(OP_Network::getOperatorTable("Vop")->getOperators(list, net), 9);
    EXPECT_EQ(list.entries(), 9);
}
