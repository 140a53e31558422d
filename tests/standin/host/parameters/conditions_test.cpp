#include "parm_node.h"

#include <UT/UT_IntArray.h>

#include <gtest/gtest.h>

#include <memory>

namespace
{
PRM_Name number_name("number", "Number");
PRM_Name text_name("text", "Text");
PRM_Name toggle_name("toggle", "Toggle");
PRM_Name ord_name("ord", "Ord");
PRM_Name mode_name("mode", "Mode");
PRM_Name color_name("color", "Color");
PRM_Name list_name("list", "List");
PRM_Name kind_name("kind#", "Kind");
PRM_Name child_name("child#", "Child");
PRM_Name item_names[] = {PRM_Name("low", "Low"), PRM_Name("mid", "Middle"), PRM_Name("7", "Seven"),
                         PRM_Name()};
PRM_ChoiceList item_menu(PRM_CHOICELIST_SINGLE, item_names);
PRM_Default mid_default(0, "mid");
PRM_Default text_default(0, "hello world");
PRM_Conditional child_condition("{ kind# == 1 }");

PRM_Template children[] = {PRM_Template(PRM_INT, 1, &kind_name),
                           PRM_Template(PRM_FLT, 1, &child_name, nullptr, nullptr, nullptr, 0, nullptr, 1,
                                        nullptr, &child_condition),
                           PRM_Template()};

/// number 3, text "hello world", toggle on, ord 1 (mid), mode "mid", color (2 2 2)
PRM_Template templates[] = {PRM_Template(PRM_FLT, 1, &number_name, PRMthreeDefaults),
                            PRM_Template(PRM_STRING, 1, &text_name, &text_default),
                            PRM_Template(PRM_TOGGLE, 1, &toggle_name, PRMoneDefaults),
                            PRM_Template(PRM_ORD, 1, &ord_name, PRMoneDefaults, &item_menu),
                            PRM_Template(PRM_STRING, 1, &mode_name, &mid_default, &item_menu),
                            PRM_Template(PRM_RGB, 3, &color_name, PRMtwoDefaults),
                            PRM_Template(PRM_MULTITYPE_LIST, children, 1, &list_name, PRMtwoDefaults),
                            PRM_Template()};

struct Row
{
    const char* text;
    bool holds;
};

/// A test's name has to be the same in every run.
void PrintTo(const Row& row, std::ostream* out) { *out << testing::PrintToString(row.text); }
} // namespace

class Condition : public testing::TestWithParam<Row>
{
};

TEST_P(Condition, HoldsOrNot)
{
    ParmNode node(templates);
    node.connected = {1};
    const PRM_Conditional condition(GetParam().text);
    EXPECT_GT(condition.entries(), 0) << GetParam().text;
    EXPECT_EQ(condition.eval(node.getParm("number"), *node.getParmList(), nullptr), GetParam().holds)
        << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Comparisons, Condition,
    testing::Values(Row{"{ number == 3 }", true}, Row{"{ number == 3.0 }", true},
                    Row{"{ number != 3 }", false}, Row{"{ number < 4 }", true}, Row{"{ number > 3 }", false},
                    Row{"{ number <= 3 }", true}, Row{"{ number >= 4 }", false},
                    Row{"{ text == \"hello world\" }", true}, Row{"{ text == \"\" }", false},
                    Row{"{ text != hello }", true}, Row{"{ text =~ hello* }", true},
                    Row{"{ text =~ \"*w?r[l-n]d\" }", true}, Row{"{ text !~ *x* }", true},
                    Row{"{ text =~ hello }", false}, Row{"{ toggle == 1 }", true},
                    Row{"{ toggle == on }", true}, Row{"{ toggle == 0 }", false},
                    Row{"{ colorg == 2 }", true}, Row{"{ color == 2 }", true}, Row{"{ list == 2 }", true},
                    Row{"{ number == 10 }", false}, Row{"{ number < 10 }", true}));

INSTANTIATE_TEST_SUITE_P(Menus, Condition,
                         testing::Values(Row{"{ ord == mid }", true}, Row{"{ ord == 1 }", true},
                                         Row{"{ ord == low }", false}, Row{"{ ord > low }", true},
                                         Row{"{ ord == 7 }", false}, Row{"{ mode == mid }", true},
                                         Row{"{ mode == 1 }", true}, Row{"{ mode == 0 }", false},
                                         Row{"{ mode != low }", true}, Row{"{ mode =~ m* }", true},
                                         Row{"{ mode == nothing }", false}));

INSTANTIATE_TEST_SUITE_P(Groups, Condition,
                         testing::Values(Row{"{ number == 3 toggle == 1 }", true},
                                         Row{"{ number == 3 toggle == 0 }", false},
                                         Row{"{ number == 4 } { toggle == 1 }", true},
                                         Row{"{ number == 4 } { toggle == 0 }", false},
                                         Row{"{ number == 3 } { toggle == 0 }", true},
                                         Row{"number == 3 toggle == 0", false},
                                         Row{"{number == 3}{toggle == 0}", true}));

INSTANTIATE_TEST_SUITE_P(FunctionsAndUnknownNames, Condition,
                         testing::Values(Row{"{ ninputs() == 1 }", true}, Row{"{ hasinput(1) == 1 }", true},
                                         Row{"{ hasinput( 0 ) == 1 }", false},
                                         Row{"{ isparm(text) == 1 }", true},
                                         Row{"{ isparm(nothing) == 0 }", true},
                                         Row{"{ nothing == 0 }", false}, Row{"{ nothing != 0 }", false},
                                         Row{"{ unknown() == 0 }", false}));

class MalformedCondition : public testing::TestWithParam<const char*>
{
};

TEST_P(MalformedCondition, HasNoEntriesNeverAppliesAndKeepsItsText)
{
    const ParmNode node(templates);
    PRM_Conditional condition;
    UT_String error;
    EXPECT_FALSE(condition.setListFromString(GetParam(), error)) << GetParam();
    EXPECT_TRUE(error.isstring());
    EXPECT_EQ(condition.entries(), 0);
    EXPECT_FALSE(condition.eval(node.getParm("number"), *node.getParmList(), nullptr));
    UT_String text;
    condition.getStringFromList(text);
    EXPECT_STREQ(text, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Texts, MalformedCondition,
                         testing::Values("{ number==3 }", "{ number == 3", "{ }", "{ number == }",
                                         "{ number 3 }", "{ number == == }", "{ \"number\" == 3 }",
                                         "{ text == \"x }", "} {", "{ number == 3 } toggle",
                                         "{ { number == 3 } }", "{ number = 3 }", "{"));

TEST(ConditionText, IsGivenBackAsItWas)
{
    const char* given = "  {  number ==   3 }{ text == \"a b\" }";
    UT_String text;
    EXPECT_TRUE(PRM_Conditional(given).getStringFromList(text));
    EXPECT_STREQ(text, given);
}

TEST(ConditionTerms, AboutSkippedParametersDoNotHold)
{
    const ParmNode node(templates);
    UT_StringArray skip;
    skip.append("number");
    const PRM_Conditional condition("{ number == 3 }");
    EXPECT_FALSE(condition.eval(node.getParm("text"), *node.getParmList(), &skip));
}

TEST(ConditionGroup, HoldsOneConditionOfEachType)
{
    PRM_ConditionalGroup group;
    group.addConditional("{ number == 1 }", PRM_CONDTYPE_DISABLE);
    group.addConditional("{ number == 2 }", PRM_CONDTYPE_HIDE);
    const PRM_Template tmpl(PRM_FLT, 1, &number_name, nullptr, nullptr, nullptr, 0, nullptr, 1, nullptr,
                            &group);
    UT_String text;
    tmpl.getConditionalPtr(PRM_CONDTYPE_HIDE)->getStringFromList(text);
    EXPECT_STREQ(text, "{ number == 2 }");
    EXPECT_EQ(tmpl.getConditionalPtr(PRM_CONDTYPE_DISABLE)->getType(), PRM_CONDTYPE_DISABLE);
    EXPECT_EQ(PRM_Template().getConditionalPtr(PRM_CONDTYPE_HIDE), nullptr);
}

TEST(ConditionGroup, InstancesHaveTheirNumbersFilledIn)
{
    PRM_ConditionalGroup group(PRM_ConditionalGroupArgs() << PRM_Conditional("{ a#_# == 1 }"));
    UT_IntArray indices;
    indices.append(3);
    indices.append(4);
    const std::unique_ptr<PRM_ConditionalBase> instance(group.instance(indices));
    UT_String text;
    instance->getConditional(PRM_CONDTYPE_DISABLE)->getStringFromList(text);
    EXPECT_STREQ(text, "{ a3_4 == 1 }");
}

TEST(ConditionInAMultiParameter, SpeaksOfItsOwnInstance)
{
    ParmNode node(templates);
    node.setInt("kind2", 0, 0, 1);
    node.refreshParms();
    EXPECT_TRUE(node.getParm("child1").getEnableState());
    EXPECT_FALSE(node.getParm("child2").getEnableState());
}
