#include "parm_node.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{
PRM_Name float_name("f", "F");
PRM_Name int_name("i", "I");
PRM_Name string_name("s", "S");
PRM_Name toggle_name("toggle", "Toggle");
PRM_Name ord_name("ord", "Ord");
PRM_Name strip_name("strip", "Strip");
PRM_Name label_name("heading", "Heading");
PRM_Name item_names[] = {PRM_Name("low", "Low"), PRM_Name("mid", "Middle"), PRM_Name("high", "High"),
                         PRM_Name()};
PRM_ChoiceList item_menu(PRM_CHOICELIST_SINGLE, item_names);
PRM_ChoiceList item_mask(PRM_CHOICELIST_TOGGLE, item_names);
PRM_Range restricted(PRM_RANGE_RESTRICTED, 0, PRM_RANGE_RESTRICTED, 10);

struct Call
{
    void* data;
    int index;
    fpreal time;
    const PRM_Template* tmpl;
};
std::vector<Call> calls;

int callback(void* data, int index, fpreal time, const PRM_Template* tmpl)
{
    calls.push_back(Call{data, index, time, tmpl});
    return 1;
}

int failingCallback(void*, int, fpreal, const PRM_Template*) { throw std::runtime_error("no luck"); }

PRM_Template templates[] = {
    PRM_Template(PRM_FLT, 1, &float_name, nullptr, nullptr, &restricted, callback),
    PRM_Template(PRM_INT, 2, &int_name),
    PRM_Template(PRM_STRING, 1, &string_name, nullptr, nullptr, nullptr, callback),
    PRM_Template(PRM_TOGGLE, 1, &toggle_name),
    PRM_Template(PRM_ORD, 1, &ord_name, nullptr, &item_menu),
    PRM_Template(PRM_BUTTONSTRIP, 1, &strip_name, nullptr, &item_mask),
    PRM_Template(PRM_HEADING, 1, &label_name),
    PRM_Template(),
};
} // namespace

TEST(Setting, TellsTheNodeTheIndexAfterTheValueIsStored)
{
    ParmNode node(templates);
    node.setInt("i", 1, 0, 7);
    node.setString("x", CH_STRING_LITERAL, "s", 0, 0);
    EXPECT_EQ(node.changes, (Ints{1, 2}));
    EXPECT_EQ(node.evalInt("i", 1, 0), 7);
}

TEST(Setting, TellsNobodyWhileEventsAreOff)
{
    ParmNode node(templates);
    node.setParmEvents(false);
    node.setInt("i", 0, 0, 7);
    EXPECT_TRUE(node.changes.empty());
    EXPECT_EQ(node.evalInt("i", 0, 0), 7);
}

TEST(Setting, OfWhatDoesNotExistChangesNothing)
{
    ParmNode node(templates);
    node.setInt("nowhere", 0, 0, 1);
    node.setFloat("f", 3, 0, 1);
    node.setInt("heading", 0, 0, 1);
    node.setString("x", CH_STRING_LITERAL, 99, 0, 0);
    EXPECT_FALSE(node.setParameterOrProperty("nowhere", 0, 0, 1));
    EXPECT_TRUE(node.changes.empty());
}

TEST(Setting, DoesNotLookAtTheRange)
{
    ParmNode node(templates);
    node.setFloat("f", 0, 0, 50);
    EXPECT_EQ(node.evalFloat("f", 0, 0), 50);
}

TEST(SettingText, OfAnOrdinalTakesTokensNumbersAndExpressions)
{
    ParmNode node(templates);
    node.setString("high", CH_STRING_LITERAL, "ord", 0, 0);
    EXPECT_EQ(node.evalInt("ord", 0, 0), 2);
    node.setString("1", CH_STRING_LITERAL, "ord", 0, 0);
    EXPECT_EQ(node.text("ord"), "mid");
    node.setString("1 + 1", CH_STRING_LITERAL, "ord", 0, 0);
    EXPECT_EQ(node.text("ord"), "high");
    EXPECT_TRUE(node.getParm("ord").hasExpression(0));
}

TEST(SettingText, OfAToggleTakesOnAndOff)
{
    ParmNode node(templates);
    node.setString("on", CH_STRING_LITERAL, "toggle", 0, 0);
    EXPECT_EQ(node.evalInt("toggle", 0, 0), 1);
    node.setString("off", CH_STRING_LITERAL, "toggle", 0, 0);
    EXPECT_EQ(node.text("toggle"), "off");
}

TEST(SettingText, OfAButtonStripTakesTheTokensOfItsBits)
{
    ParmNode node(templates);
    node.setString("low high", CH_STRING_LITERAL, "strip", 0, 0);
    EXPECT_EQ(node.evalInt("strip", 0, 0), 5);
    EXPECT_EQ(node.text("strip"), "5");
}

TEST(SettingText, OfANumberTakesAnExpression)
{
    ParmNode node(templates);
    node.setString("2.5", CH_STRING_LITERAL, "f", 0, 0);
    EXPECT_FALSE(node.getParm("f").hasExpression(0));
    node.setString("$F", CH_STRING_LITERAL, "f", 0, 0);
    EXPECT_EQ(node.evalFloat("f", 0, 1), 25);
}

TEST(Expressions, AreReplacedByValues)
{
    ParmNode node(templates);
    node.getParm("f").setExpression(0, "$F", CH_OLD_EXPR_LANGUAGE);
    node.getParm("f").deleteExpression(1, 0);
    EXPECT_FALSE(node.getParm("f").hasExpression(0));
    EXPECT_EQ(node.evalFloat("f", 0, 0), 25);
    EXPECT_EQ(node.changes, (Ints{0, 0}));
}

TEST(Expressions, OfTextsLeaveTheirText)
{
    ParmNode node(templates);
    node.getParm("s").setExpression(0, "\"n\" + $F", CH_OLD_EXPR_LANGUAGE);
    EXPECT_EQ(node.text("s"), "n1");
    EXPECT_EQ(node.raw("s"), "\"n\" + $F");
    node.getParm("s").deleteExpression(0, 0);
    EXPECT_EQ(node.raw("s"), "n1");
}

TEST(Reverting, BringsTheDefaultBack)
{
    ParmNode node(templates);
    node.setString("x", CH_STRING_LITERAL, "s", 0, 0);
    EXPECT_FALSE(node.getParm("s").isDefault(0));
    node.getParm("s").revertToDefault(0, -1);
    EXPECT_TRUE(node.getParm("s").isDefault(0));
    EXPECT_EQ(node.text("s"), "");
}

TEST(Entering, LimitsToTheRangeStoresAndCallsBack)
{
    calls.clear();
    ParmNode node(templates);
    EXPECT_TRUE(node.enterParm(node.getParm("f"), 0, "50", 2));
    EXPECT_EQ(node.evalFloat("f", 0, 0), 10);
    EXPECT_EQ(node.changes, (Ints{0}));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].data, node.parmData());
    EXPECT_EQ(calls[0].index, 0);
    EXPECT_EQ(calls[0].time, 2);
    EXPECT_EQ(calls[0].tmpl, &templates[0]);
}

TEST(Entering, RefusesWhatIsNoValueWithASentence)
{
    calls.clear();
    ParmNode node(templates);
    std::string why;
    EXPECT_FALSE(node.enterParm(node.getParm("f"), 0, "abc", 0, &why));
    EXPECT_EQ(why, "\"abc\" is no value for the parameter \"f\"; enter a number or one of its menu's items");
    EXPECT_TRUE(node.changes.empty());
    EXPECT_TRUE(calls.empty());
}

TEST(Callbacks, AreNotCalledWhenAScriptSetsAValue)
{
    calls.clear();
    ParmNode node(templates);
    node.setFloat("f", 0, 0, 1);
    node.setString("x", CH_STRING_LITERAL, "s", 0, 0);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(node.pressParm(node.getParm("s"), 0, 0), 1);
    EXPECT_EQ(calls.size(), 1u);
    EXPECT_EQ(node.pressParm(node.getParm("i"), 0, 0), 0);
}

TEST(Callbacks, ThatThrowAreAnErrorOfTheirParameter)
{
    PRM_Name name("press", "Press");
    PRM_Template button[] = {PRM_Template(PRM_CALLBACK, 1, &name, nullptr, nullptr, nullptr, failingCallback),
                             PRM_Template()};
    ParmNode node(button);
    EXPECT_EQ(node.pressParm(node.getParm("press"), 0, 0), 0);
    EXPECT_EQ(node.errors(), "node/press: its callback failed: no luck\n");
}

TEST(SpareParameters, FollowTheTemplatesAndCanBeRemoved)
{
    PRM_Name name("extra", "Extra");
    PRM_Template spare[] = {PRM_Template(PRM_FLT, 1, &name, PRMtwoDefaults), PRM_Template()};
    ParmNode node(templates);
    node.addSpareParms(spare);
    EXPECT_EQ(node.getParmIndex("extra"), 7);
    EXPECT_TRUE(node.getParm("extra").isSpareParm());
    EXPECT_EQ(node.evalFloat("extra", 0, 0), 2);
    EXPECT_FALSE(node.removeSpareParm(&node.getParm("f")));
    EXPECT_TRUE(node.removeSpareParm(&node.getParm("extra")));
    EXPECT_FALSE(node.hasParm("extra"));
}

TEST(Channels, AreFoundByNameAndByToken)
{
    ParmNode node(templates);
    int component = -1;
    EXPECT_EQ(node.getParmList()->getParmIndexFromChannel("i2", &component), 1);
    EXPECT_EQ(component, 1);
    EXPECT_EQ(node.getParmList()->getParmIndexFromChannel("i", &component), 1);
    EXPECT_EQ(component, 0);
    EXPECT_EQ(node.getParmList()->getParmIndexFromChannel("i3"), -1);
    EXPECT_EQ(node.getParmList()->getParmIndexFromChannel("f1"), -1);
    EXPECT_EQ(node.getParmList()->getParmPtr(nullptr), nullptr);
}
