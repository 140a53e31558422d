#include "scene_fixture.h"

#include <CH/CH_Manager.h>
#include <UT/UT_UndoManager.h>

#include <cstdio>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::string textOf(const OP_Node* node, const char* parm)
{
    UT_String text;
    node->evalStringRaw(text, parm, 0, 0);
    return text.toStdString();
}

const char* const awkward = "a \"b\" \\n { } [ ] ( )\n\t\u00e9 $F `x` 070707.init";

} // namespace

class RoundTrip : public SceneTest
{
};

TEST_F(RoundTrip, KeepsNamesTypesOrderAndPlaces)
{
    node("source", "z");
    OP_Node* second = node("sink", "a");
    second->setXY(1.0 / 3, -2.5);
    roundTrip();
    OP_Network* loaded = OPgetDirector()->findNode(netPath().c_str())->castToOPNetwork();
    ASSERT_EQ(loaded->getNchildren(), 2);
    EXPECT_EQ(nameOf(loaded->getChild(0)), "z");
    EXPECT_EQ(nameOf(loaded->getChild(1)), "a");
    EXPECT_EQ(loaded->getChild(1)->getOperator()->getName(), "test::sink");
    EXPECT_EQ(loaded->getChild(1)->getX(), 1.0 / 3);
    EXPECT_EQ(loaded->getChild(1)->getY(), -2.5);
}

TEST_F(RoundTrip, KeepsValuesOfEveryKind)
{
    OP_Node* parms = node("parms", "p");
    parms->setFloat("f", 0, 0, 0.1);
    parms->setFloat("v", 2, 0, 1e-9);
    parms->setFloat("c", 1, 0, 0.25);
    parms->setInt("i", 0, 0, -7);
    parms->setInt("on", 0, 0, 1);
    parms->setInt("menu", 0, 0, 1);
    parms->setInt("folder", 0, 0, 1);
    parms->setString(awkward, CH_STRING_LITERAL, "text", 0, 0);
    roundTrip();
    parms = find("p");
    EXPECT_EQ(parms->evalFloat("f", 0, 0), 0.1);
    EXPECT_FALSE(parms->getParm("f").hasExpression(0));
    EXPECT_EQ(parms->evalFloat("v", 2, 0), 1e-9);
    EXPECT_EQ(parms->evalFloat("c", 1, 0), 0.25);
    EXPECT_EQ(parms->evalInt("i", 0, 0), -7);
    EXPECT_EQ(parms->evalInt("on", 0, 0), 1);
    EXPECT_EQ(parms->evalInt("menu", 0, 0), 1);
    EXPECT_EQ(parms->evalInt("folder", 0, 0), 1);
    EXPECT_EQ(textOf(parms, "text"), awkward);
}

TEST_F(RoundTrip, KeepsExpressionsWithTheirLanguage)
{
    OP_Node* parms = node("parms", "p");
    parms->getParm("v").setExpression(0, "$F * 2", CH_OLD_EXPR_LANGUAGE, true, 1);
    parms->getParm("i").setExpression(0, "len(\"ab\\n\")\n", CH_PYTHON, true, 0);
    parms->getParm("text").setExpression(0, "`1`\"", CH_OLD_EXPR_LANGUAGE, true, 0);
    roundTrip();
    parms = find("p");
    EXPECT_STREQ(parms->getParm("v").getExpression(1), "$F * 2");
    EXPECT_FALSE(parms->getParm("v").hasExpression(0));
    EXPECT_STREQ(parms->getParm("i").getExpression(0), "len(\"ab\\n\")\n");
    EXPECT_EQ(parms->getParm("i").getExpressionLanguage(0), CH_PYTHON);
    EXPECT_STREQ(parms->getParm("text").getExpression(0), "`1`\"");
    EXPECT_STREQ(parms->getParm("f").getExpression(0), "1 + 1"); // its default
}

TEST_F(RoundTrip, KeepsRampsAndListsInLists)
{
    OP_Node* parms = node("parms", "p");
    parms->setInt("ramp", 0, 0, 3);
    parms->setFloat("ramp2pos", 0, 0, 0.3);
    parms->setFloat("ramp3c", 2, 0, 0.9);
    parms->setInt("ramp1interp", 0, 0, 4);
    parms->setInt("outer", 0, 0, 2);
    parms->setString(awkward, CH_STRING_LITERAL, "label2", 0, 0);
    parms->setInt("inner2", 0, 0, 3);
    parms->setFloat("leaf2_3", 0, 0, 8.5);
    roundTrip();
    parms = find("p");
    EXPECT_EQ(parms->getParm("ramp").getMultiParmNumItems(), 3);
    EXPECT_EQ(parms->evalFloat("ramp2pos", 0, 0), 0.3);
    EXPECT_EQ(parms->evalFloat("ramp3c", 2, 0), 0.9);
    EXPECT_EQ(parms->evalInt("ramp1interp", 0, 0), 4);
    EXPECT_EQ(textOf(parms, "label2"), awkward);
    EXPECT_EQ(parms->getParm("inner1").getMultiParmNumItems(), 0);
    EXPECT_EQ(parms->evalFloat("leaf2_3", 0, 0), 8.5);
}

TEST_F(RoundTrip, KeepsRampsWithoutKeysAndWithMany)
{
    node("parms", "none")->setInt("ramp", 0, 0, 0);
    OP_Node* many = node("parms", "many");
    many->getParm("ramp").setValue(0, 5000, false);
    many->setFloat("ramp4999pos", 0, 0, 0.123);
    roundTrip();
    EXPECT_EQ(find("none")->getParm("ramp").getMultiParmNumItems(), 0);
    EXPECT_EQ(find("many")->getParm("ramp").getMultiParmNumItems(), 5000);
    EXPECT_EQ(find("many")->evalFloat("ramp4999pos", 0, 0), 0.123);
}

TEST_F(RoundTrip, KeepsUserDataOfAnyLength)
{
    OP_Node* source = node("source", "s");
    const std::string longText(70000, 'x');
    source->setUserData("empty", "", false);
    source->setUserData(UT_String(awkward), UT_String(awkward), false);
    source->setUserData("long", UT_String(longText), false);
    roundTrip();
    UT_String value;
    EXPECT_TRUE(find("s")->getUserData("empty", value));
    EXPECT_EQ(value.toStdString(), "");
    EXPECT_TRUE(find("s")->getUserData(awkward, value));
    EXPECT_EQ(value.toStdString(), awkward);
    EXPECT_TRUE(find("s")->getUserData("long", value));
    EXPECT_EQ(value.toStdString(), longText);
}

TEST_F(RoundTrip, KeepsFlags)
{
    VOP_Node* source = node("source", "s");
    source->flags().setBypass(true);
    source->flags().setDisplay(false);
    source->setExtraFlag(VOP_OPT_MEDIUM_FLAG, 1);
    node("source", "plain");
    roundTrip();
    EXPECT_TRUE(find("s")->flags().getBypass());
    EXPECT_FALSE(find("s")->flags().getDisplay());
    EXPECT_EQ(find("s")->getExtraFlag(VOP_OPT_MEDIUM_FLAG), 1);
    EXPECT_FALSE(find("plain")->flags().getBypass());
    EXPECT_EQ(find("plain")->getExtraFlag(VOP_OPT_MEDIUM_FLAG), 0);
}

TEST_F(RoundTrip, KeepsWiresAndTheOrderInWhichTheyWereMade)
{
    VOP_Node* sink = node("sink", "sink");
    VOP_Node* lights = node("lights", "lights");
    VOP_Node* source = node("source", "source"); // comes after those that it feeds
    lights->setInput(1, source, 0);
    sink->setInput(1, source, 1);
    sink->setInput(0, source, 0);
    lights->setInput(0, source, 0);
    roundTrip();
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.0>0", "source.1>1"));
    EXPECT_THAT(wiresOf(find("lights")), ElementsAre("source.0>0", "source.0>1"));
    ASSERT_EQ(find("source")->nOutputs(), 4u);
    Texts targets;
    for (unsigned i = 0; i < 4; ++i)
        targets.push_back(nameOf(find("source")->getOutput(i)));
    EXPECT_THAT(targets, ElementsAre("lights", "sink", "sink", "lights"));
}

TEST_F(RoundTrip, KeepsWiresFromOutputsThatComeWithTheUserData)
{
    VOP_Node* mirror = node("mirror", "m");
    mirror->setUserData("outputs", "xyz", false);
    node("sink", "sink")->setInput(0, mirror, 2);
    roundTrip();
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("m.2>0"));
}

TEST_F(RoundTrip, KeepsWiresFromOutputsThatAreNoMore)
{
    VOP_Node* mirror = node("mirror", "m");
    mirror->setUserData("outputs", "xyz", false);
    node("sink", "sink")->setInput(0, mirror, 2);
    mirror->setUserData("outputs", "xy", false);
    roundTrip();
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("m.2>0"));
}

TEST_F(RoundTrip, FollowsTheNameOfAnInputThatMoved)
{
    VOP_Node* source = node("source", "source");
    node("sink", "sink")->setInput(1, source, 0);
    std::string why;
    ASSERT_TRUE(standin::saveScene(file, why)) << why;
    replaceInFile("type = test::sink\n", "type = test::spread\n");
    load();
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.0>2")); // "b", which was number 1
}

TEST_F(RoundTrip, KeepsSubnetsWhoseConnectorsDependOnEachOther)
{
    VOP_Node* source = node("source", "source");
    VOP_Node* subnet = CAST_VOPNODE(net->createNode("subnet", "sub"));
    subnet->runCreateScript();
    OP_Node* begin = subnet->getChild("subinput1");
    OP_Node* end = subnet->getChild("suboutput1");
    subnet->setInput(0, source, 1);
    end->setInput(0, begin, 0);
    node("sink", "sink")->setInput(0, subnet, 0);
    roundTrip();
    EXPECT_THAT(wiresOf(find("sub")), ElementsAre("source.1>0"));
    EXPECT_THAT(wiresOf(find("sub/suboutput1")), ElementsAre("subinput1.0>0"));
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("sub.0>0"));
    EXPECT_EQ(findVop("sub")->getNchildren(), 2); // no creation script ran
}

TEST_F(RoundTrip, KeepsTheOrderOfWiresFromOutputsThatAreNoMore)
{
    VOP_Node* mirror = node("mirror", "m");
    mirror->setUserData("outputs", "xyz", false);
    node("sink", "b")->setInput(0, mirror, 2);
    node("sink", "a")->setInput(0, mirror, 0);
    node("sink", "c")->setInput(0, mirror, 1);
    mirror->setUserData("outputs", "x", false);
    roundTrip();
    Texts targets;
    for (unsigned i = 0; i < find("m")->nOutputs(); ++i)
        targets.push_back(nameOf(find("m")->getOutput(i)));
    EXPECT_THAT(targets, ElementsAre("b", "a", "c"));
}

TEST_F(RoundTrip, GivesTheSameBytesAgain)
{
    VOP_Node* source = node("source", "source");
    node("sink", "sink")->setInput(0, source, 0);
    node("parms", "p")->setInt("outer", 0, 0, 2);
    std::string why;
    ASSERT_TRUE(standin::saveScene(file, why)) << why;
    const std::string first = bytes();
    roundTrip();
    ASSERT_TRUE(standin::saveScene(file, why)) << why;
    EXPECT_EQ(bytes(), first);
}

TEST_F(RoundTrip, KeepsTimeRateAndVariables)
{
    CHgetManager()->setSamplesPerSec(25);
    CHgetManager()->setEvalTime(1.5);
    CHgetManager()->setVariable("SCENE_TEST", awkward);
    std::string why;
    ASSERT_TRUE(standin::saveScene(file, why)) << why;
    CHgetManager()->setSamplesPerSec(24);
    CHgetManager()->setEvalTime(0);
    CHgetManager()->unsetVariable("SCENE_TEST");
    load();
    EXPECT_EQ(CHgetManager()->getSamplesPerSec(), 25);
    EXPECT_EQ(CHgetManager()->getEvalTime(), 1.5);
    std::string value;
    EXPECT_TRUE(CHgetManager()->getVariable("SCENE_TEST", value));
    EXPECT_EQ(value, awkward);
    CHgetManager()->unsetVariable("SCENE_TEST");
}

// --- how it loads -----------------------------------------------------------------------------------------------

class Loading : public SceneTest
{
};

/// A change of something that no scene holds, so that it outlives them all.
class LastingChange : public UT_Undo
{
public:
    void undo() override {}
    void redo() override {}
    bool isAlive() const override { return true; }
    std::size_t getMemoryUsage() const override { return sizeof(*this); }
    std::string getTarget() const override { return std::string(); }
};

TEST_F(Loading, SendsNoParameterEventsAndTellsThatItIsUnderWay)
{
    node("parms", "p")->setInt("outer", 0, 0, 2);
    OP_Network* objects = OPgetDirector()->getManager("obj");
    objects->createNode("null", "n")->setFloat("t", 0, 0, 4);
    ParmEventCounter counter(objects);
    roundTrip();
    EXPECT_EQ(counter.isLoadingSeen, 1);
    EXPECT_EQ(counter.parmEvents, 0);
    EXPECT_EQ(OPgetDirector()->isLoading(), 0);
    objects->getChild("n")->setFloat("t", 0, 0, 5);
    EXPECT_GT(counter.parmEvents, 0); // it does count
}

TEST_F(Loading, ForgetsWhatCouldBeUndone)
{
    UTgetUndoManager()->addToUndoBlock(std::unique_ptr<UT_Undo>(new LastingChange), "A Change");
    EXPECT_FALSE(UTgetUndoManager()->getUndoLabels().empty());
    roundTrip();
    EXPECT_THAT(UTgetUndoManager()->getUndoLabels(), IsEmpty());
}

TEST_F(Loading, AppliesConditionsAndDrawsTheNodesAnew)
{
    node("sink", "s")->setInt("mode", 0, 0, 1);
    roundTrip();
    EXPECT_FALSE(find("s")->getParm("b").getEnableState());
    EXPECT_GT(standin::redrawCount(*find("s")), 0);
}

TEST_F(Loading, DoesNotAskTheFilter)
{
    net->createNodeUnfiltered("add", "foreign");
    roundTrip();
    EXPECT_NE(find("foreign"), nullptr);
}

TEST_F(Loading, ReplacesTheSceneAndMergingAddsToIt)
{
    node("source", "s");
    std::string why;
    Texts warnings;
    ASSERT_TRUE(standin::saveScene(file, why)) << why;
    node("source", "later");
    load();
    EXPECT_EQ(find("later"), nullptr);
    ASSERT_TRUE(standin::mergeScene(file, warnings, why)) << why;
    EXPECT_THAT(warnings, IsEmpty());
    EXPECT_NE(find("s"), nullptr);
    EXPECT_NE(OPgetDirector()->findNode("/shop/test_vopnet2/s"), nullptr);
}

TEST_F(Loading, MakesTheFileTheScenesOwn)
{
    roundTrip();
    EXPECT_EQ(standin::scenePath(), file);
    std::string name, why;
    EXPECT_TRUE(CHgetManager()->getVariable("HIPFILE", name));
    EXPECT_EQ(name, file);
    ASSERT_TRUE(standin::clearScene(why)) << why;
    EXPECT_THAT(standin::scenePath(), testing::EndsWith("/untitled.hip"));
    EXPECT_EQ(OPgetDirector()->getManager("shop")->getNchildren(), 0);
}
