#include "op/op_dialog_parms.h"
#include "op/op_dialog_script.h"

#include <gmock/gmock.h>

#include <string>

namespace
{

using standin::DialogScript;
using standin::readDialogScript;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<std::string> tokensOf(const DialogScript& script)
{
    std::vector<std::string> tokens;
    for (const PRM_Template* one = script.templates; one->getType() != PRM_LIST_TERMINATOR; ++one)
        tokens.push_back(one->getToken());
    return tokens;
}

/// The first parameter of a script with one "parm" block.
PRM_Template& parm(const std::string& lines)
{
    const DialogScript script = readDialogScript("{\nparm {\nname \"a\"\n" + lines + "\n}\n}\n");
    EXPECT_THAT(script.problems, IsEmpty());
    return script.templates[0];
}

TEST(DialogScript, HasTypedConnectors)
{
    const DialogScript script =
        readDialogScript("# Dialog script for a::b { \"\n\n{\n    name\ta::b\n    label\t\"B\"\n"
                         "    input\tint\tchannel\t\"The Channel\"\n"
                         "    input\tmatrix\txform\tTransform\n"
                         "    output\t\"surface shader\"\tout\tOut\n"
                         "    signature\t\"Default Inputs\"\tdefault\t{ int matrix }\n"
                         "    outputoverrides\tdefault\n    {\n\t___begin\tauto\n\t\t\t(0)\n    }\n"
                         "    help {\n\t\"\"\n    }\n}\n");
    EXPECT_THAT(script.problems, IsEmpty());
    ASSERT_EQ(script.inputs.size(), 2u);
    EXPECT_EQ(script.inputs[0].type, VOP_TYPE_INTEGER);
    EXPECT_EQ(script.inputs[0].name, "channel");
    EXPECT_EQ(script.inputs[0].label, "The Channel");
    EXPECT_EQ(script.inputs[1].type, VOP_TYPE_MATRIX4);
    ASSERT_EQ(script.outputs.size(), 1u);
    EXPECT_EQ(script.outputs[0].type, VOP_SURFACE_SHADER);
    EXPECT_THAT(tokensOf(script), IsEmpty());
}

TEST(DialogScript, HasNumbersWithDefaultsAndLimits)
{
    const PRM_Template& made = parm("label \"An A\"\ntype float\nsize 3\ndefault { \"0\" \"1\" \"0.5\" }\n"
                                    "range { 0.001! 10 }\nexport none");
    EXPECT_EQ(made.getType(), PRM_FLT);
    EXPECT_STREQ(made.getLabel(), "An A");
    EXPECT_EQ(made.getVectorSize(), 3);
    EXPECT_EQ(made.getDefault(1)->getFloat(), 1);
    EXPECT_EQ(made.getDefault(2)->getFloat(), 0.5);
    EXPECT_EQ(made.getRangePtr()->getMin(), 0.001);
    EXPECT_TRUE(made.getRangePtr()->hasParmMin());
    EXPECT_FALSE(made.getRangePtr()->hasParmMax());
}

TEST(DialogScript, HasMenusWhoseDefaultIsAWord)
{
    const PRM_Template& made =
        parm("type ordinal\ndefault { \"b\" }\nmenu {\n\"a\" \"The A\"\n\"b\" \"The B\"\n}\nrange { 0 1 }");
    EXPECT_EQ(made.getType(), PRM_ORD);
    EXPECT_EQ(made.getDefault(0)->getFloat(), 1);
    EXPECT_STREQ(made.getChoiceListPtr()->choiceNamesPtr()[1].getLabel(), "The B");
    EXPECT_EQ(made.getChoiceListPtr()->choiceNamesPtr()[2].getToken(), nullptr);
}

TEST(DialogScript, HasExpressionsConditionsTagsAndFlags)
{
    const PRM_Template& made =
        parm("type string\ninvisible\njoinnext\nnolabel\ndefault { [ \"ch(\\\"b\\\")\" ] }\n"
             "disablewhen \"{ b == 1 }\"\nhidewhen \"{ c != x }\"\n"
             "parmtag { \"opfilter\" \"!!SOP!!\" }\nhelp \"Some help\"");
    EXPECT_STREQ(made.getDefault(0)->getString(), "ch(\"b\")");
    EXPECT_EQ(made.getDefault(0)->getStringMeaning(), CH_OLD_EXPRESSION);
    EXPECT_TRUE(made.getInvisible() && made.getJoinNext() && made.getLabelNone());
    UT_String condition;
    EXPECT_TRUE(made.getConditionalPtr(PRM_CONDTYPE_HIDE)->getStringFromList(condition));
    EXPECT_STREQ(condition, "{ c != x }");
    EXPECT_STREQ(made.getSparePtr()->getOpFilter(), "!!SOP!!");
    EXPECT_STREQ(made.getHelpText(), "Some help");
}

TEST(DialogScript, HasMenusMadeByScripts)
{
    const PRM_Template& made =
        parm("type string\nmenureplace {\n[ \"a = 1\" ]\n[ \"return a\" ]\nlanguage python\n}");
    EXPECT_STREQ(made.getChoiceListPtr()->getScript(), "a = 1\nreturn a");
    EXPECT_EQ(made.getChoiceListPtr()->getScriptLanguage(), CH_PYTHON_SCRIPT);
    EXPECT_EQ(made.getChoiceListPtr()->getType(), PRM_CHOICELIST_REPLACE);
}

TEST(DialogScript, MakesOneSetOfGroupsThatFollowEachOther)
{
    const DialogScript script =
        readDialogScript("{\nparm {\nname a\ntype float\n}\n"
                         "group {\nname folder0\nlabel \"One\"\nparm {\nname b\ntype float\n}\nparm {\nname "
                         "c\ntype float\n}\n}\n"
                         "group {\nname folder0_1\nlabel \"Two\"\nparm {\nname d\ntype float\n}\n}\n"
                         "parm {\nname e\ntype float\n}\n}\n");
    EXPECT_THAT(script.problems, IsEmpty());
    EXPECT_THAT(tokensOf(script), ElementsAre("a", "folder0", "b", "c", "d", "e"));
    const PRM_Template& set = script.templates[1];
    EXPECT_EQ(set.getType(), PRM_SWITCHER);
    ASSERT_EQ(set.getVectorSize(), 2);
    EXPECT_EQ(set.getDefault(0)->getFloat(), 2);
    EXPECT_STREQ(set.getDefault(0)->getString(), "One");
    EXPECT_EQ(set.getDefault(1)->getFloat(), 1);
}

TEST(DialogScript, HasRampsAndLists)
{
    const DialogScript script = readDialogScript(
        "{\nparm {\nname r\ntype ramp_rgb\ndefault { \"2\" }\n}\n"
        "multiparm {\nname n\nlabel \"N\"\ndefault 1\nparm {\nname \"x#\"\ntype float\n}\n}\n}\n");
    EXPECT_THAT(tokensOf(script), ElementsAre("r", "n"));
    EXPECT_TRUE(script.templates[0].isRampTypeColor());
    EXPECT_STREQ(script.templates[1].getMultiParmTemplate()->getToken(), "x#");
}

TEST(DialogScript, LeavesOutWhatItCannotMakeAndSaysSo)
{
    const DialogScript script =
        readDialogScript("{\nparm {\nname a\ntype hologram\n}\nparm {\nname b\ntype float\n}\n"
                         "parm {\nname b\ntype string\n}\nparm {\ntype float\n}\nunknown line\n}\n");
    EXPECT_THAT(tokensOf(script), ElementsAre("b"));
    EXPECT_THAT(
        script.problems,
        ElementsAre("the parameter \"a\" of the kind \"hologram\", which is not known here, is left out",
                    "the second parameter \"b\" is left out", "a parameter without a name is left out"));
}

TEST(DialogScript, OfAnyTextGivesAList)
{
    for (const char* text : {"", "}", "}}}", "{", "{{{{", "parm {", "{\nparm {\nname \"a", "{ } { }", "\"",
                             "{\nparm { name a type float }\n}"})
        EXPECT_NE(readDialogScript(text).templates, nullptr) << text;
    std::string deep;
    for (int i = 0; i < 200000; ++i)
        deep += "group {\n";
    EXPECT_THAT(readDialogScript("{\n" + deep).problems, ElementsAre(HasSubstr("nested more than 64 deep")));
    EXPECT_THAT(readDialogScript("{\nparm {\n").problems,
                ElementsAre("its braces do not match", HasSubstr("is left out")));
}

TEST(DialogScript, ReadsTheBlocksThatItWrites)
{
    const PRM_Template& made =
        parm("label \"Says \\\"A\\\"\"\ntype integer\nsize 2\ndefault { \"3\" [ \"$F\" python ] }\n"
             "menu {\n\"3\" \"Three\"\n}\ndisablewhen \"{ b == \\\"x\\\" }\"\nrange { 0! 5 }\n"
             "parmtag { \"k\" \"v w\" }\njoinnext");
    const std::string block = standin::dialogParmText(made);
    const DialogScript again = readDialogScript("{\n" + block + "}\n");
    EXPECT_THAT(again.problems, IsEmpty());
    EXPECT_EQ(standin::dialogParmText(again.templates[0]), block);
    EXPECT_THAT(block, HasSubstr("default\t{ \"3\" [ \"$F\" python ] }"));
    EXPECT_THAT(block, HasSubstr("range\t{ 0! 5 }"));
    EXPECT_THAT(block, HasSubstr("parmtag\t{ \"k\" \"v w\" }"));
}

} // namespace
