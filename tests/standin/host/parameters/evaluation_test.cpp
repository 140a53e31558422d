#include "parm_node.h"

#include <gtest/gtest.h>

namespace
{
PRM_Name float_name("f", "F");
PRM_Name int_name("i", "I");
PRM_Name color_name("color", "Color");
PRM_Name string_name("s", "S");
PRM_Name toggle_name("toggle", "Toggle");
PRM_Name ord_name("ord", "Ord");
PRM_Name mode_name("mode", "Mode");
PRM_Name strip_name("strip", "Strip");
PRM_Name label_name("label", "Label");
PRM_Name folder_name("folder", "Folder");
PRM_Name button_name("button", "Button");

PRM_Name item_names[] = {PRM_Name("low", "Low"), PRM_Name("mid", "Middle"), PRM_Name("high", "High"),
                         PRM_Name()};
PRM_ChoiceList item_menu(PRM_CHOICELIST_SINGLE, item_names);
PRM_ChoiceList item_mask(PRM_CHOICELIST_TOGGLE, item_names);

PRM_Default mode_default(1, "mid");
PRM_Default ord_default(0, "high");
PRM_Default strip_default(5);
PRM_Default label_default(0, "shown text");
PRM_Default folder_defaults[] = {PRM_Default(2, "First"), PRM_Default(3, "Second")};

/// One parameter of each kind that has a value.
PRM_Template kinds[] = {
    PRM_Template(PRM_FLT, 1, &float_name, PRMoneDefaults),
    PRM_Template(PRM_INT, 1, &int_name),
    PRM_Template(PRM_RGB, 3, &color_name, PRMtwoDefaults),
    PRM_Template(PRM_STRING, 1, &string_name),
    PRM_Template(PRM_TOGGLE, 1, &toggle_name, PRMoneDefaults),
    PRM_Template(PRM_ORD, 1, &ord_name, &ord_default, &item_menu),
    PRM_Template(PRM_STRING, 1, &mode_name, &mode_default, &item_menu),
    PRM_Template(PRM_BUTTONSTRIP, 1, &strip_name, &strip_default, &item_mask),
    PRM_Template(PRM_LABEL, 1, &label_name, &label_default),
    PRM_Template(PRM_SWITCHER, 2, &folder_name, folder_defaults),
    PRM_Template(PRM_CALLBACK, 1, &button_name),
    PRM_Template(),
};

const PRM_Parm& nowhere()
{
    static ParmNode node(kinds);
    return static_cast<const OP_Parameters&>(node).getParm("nowhere");
}
} // namespace

TEST(ParmDefaults, AreTheFirstValues)
{
    const ParmNode node(kinds);
    EXPECT_EQ(node.evalFloat("f", 0, 0), 1);
    EXPECT_EQ(node.evalFloat("color", 2, 0), 2);
    EXPECT_EQ(node.text("s"), "");
    EXPECT_EQ(node.evalInt("toggle", 0, 0), 1);
    EXPECT_EQ(node.text("mode"), "mid");
    EXPECT_EQ(node.evalInt("strip", 0, 0), 5);
    EXPECT_EQ(node.evalInt("folder", 0, 0), 0);
}

TEST(ParmDefaults, TextOfAnOrdinalIsAToken) { EXPECT_EQ(ParmNode(kinds).evalInt("ord", 0, 0), 2); }

TEST(ParmDefaults, TextOfANumberIsAnExpression)
{
    PRM_Name name("e", "E");
    PRM_Default expression(7, "$F * 2", CH_OLD_EXPRESSION);
    PRM_Default literal(7, "2.5");
    PRM_Template templates[] = {PRM_Template(PRM_FLT, 1, &name, &expression),
                                PRM_Template(PRM_FLT, 1, &float_name, &literal), PRM_Template()};
    const ParmNode node(templates);
    EXPECT_EQ(node.evalFloat("e", 0, 0), 2);
    EXPECT_EQ(node.evalFloat("e", 0, 1), 50);
    EXPECT_STREQ(node.getParm("e").getExpression(0), "$F * 2");
    EXPECT_EQ(node.evalFloat("f", 0, 0), 2.5);
    EXPECT_FALSE(node.getParm("f").hasExpression(0));
}

TEST(ParmIndex, IsThePlaceInTheTemplateListFoldersAmongThem)
{
    const ParmNode node(kinds);
    EXPECT_EQ(node.getNumParms(), 11);
    EXPECT_EQ(node.getParmIndex("folder"), 9);
    EXPECT_EQ(node.getParmIndex("button"), 10);
    EXPECT_STREQ(node.getParm(2).getToken(), "color");
}

TEST(Evaluation, ByIndexAndByNameAgree)
{
    const ParmNode node(kinds);
    fpreal color[3] = {0, 0, 0};
    node.evalFloats(2, color, 0);
    EXPECT_EQ(color[2], node.evalFloatT("color", 2, 0, SYSgetSTID()));
    UT_String text;
    node.evalString(text, 6, 0, 0);
    EXPECT_STREQ(text, "mid");
}

TEST(Evaluation, AsTextSpeaksTheKindsLanguage)
{
    ParmNode node(kinds);
    node.setFloat("f", 0, 0, 0.1);
    EXPECT_EQ(node.text("f"), "0.1");
    EXPECT_EQ(node.text("i"), "0");
    EXPECT_EQ(node.text("toggle"), "on");
    EXPECT_EQ(node.text("ord"), "high");
    EXPECT_EQ(node.text("strip"), "5");
    EXPECT_EQ(node.text("label"), "shown text");
    EXPECT_EQ(node.text("button"), "0");
    node.setInt("ord", 0, 0, 12);
    EXPECT_EQ(node.text("ord"), "12");
}

TEST(Evaluation, AsIntegerTruncates)
{
    ParmNode node(kinds);
    node.setFloat("f", 0, 0, -1.9);
    EXPECT_EQ(node.evalInt("f", 0, 0), -1);
    node.setFloat("f", 0, 0, 1e300);
    EXPECT_GT(node.evalInt("f", 0, 0), 0);
    node.setFloat("i", 0, 0, 2.7);
    EXPECT_EQ(node.evalFloat("i", 0, 0), 2);
}

TEST(Evaluation, OfAMenuOfTextsAsIntegerIsThePlaceOfTheItem)
{
    ParmNode node(kinds);
    node.setString("high", CH_STRING_LITERAL, "mode", 0, 0);
    EXPECT_EQ(node.evalInt("mode", 0, 0), 2);
}

TEST(Evaluation, OfWhatDoesNotExistIsNothing)
{
    const ParmNode node(kinds);
    EXPECT_EQ(node.evalInt("nowhere", 0, 0), 0);
    EXPECT_EQ(node.evalFloat(99, 0, 0), 0);
    EXPECT_EQ(node.evalFloat("f", 5, 0), 0);
    EXPECT_EQ(node.text("nowhere"), "");
    EXPECT_EQ(node.text("s", -1), "");
    EXPECT_FALSE(node.hasParm("nowhere"));
    EXPECT_STREQ(nowhere().getToken(), "");
}

TEST(Evaluation, ExpandsTextsAndKeepsThemAsTyped)
{
    ParmNode node(kinds, "box");
    node.setString("$OS.$F4.`1+1`.exr", CH_STRING_LITERAL, "s", 0, 0);
    EXPECT_EQ(node.text("s", 0, 1), "box.0025.2.exr");
    EXPECT_EQ(node.raw("s"), "$OS.$F4.`1+1`.exr");
}

TEST(Evaluation, ParameterOrPropertySaysWhetherThereIsOne)
{
    const ParmNode node(kinds);
    int number = 9;
    UT_String text("before");
    EXPECT_FALSE(node.evalParameterOrProperty("nowhere", 0, 0, number));
    EXPECT_EQ(number, 9);
    PRM_Parm* source = nullptr;
    EXPECT_TRUE(node.evalParameterOrPropertyT("mode", 0, 0, text, SYSgetSTID(), &source));
    EXPECT_STREQ(text, "mid");
    EXPECT_STREQ(source->getToken(), "mode");
}

TEST(ChannelReference, ReadsOtherParametersOfThisNodeAndOfOthers)
{
    ParmNode node(kinds);
    ParmNode other(kinds);
    node.others["../other"] = &other;
    other.setFloat("color", 1, 0, 4);
    node.setString("ch(\"../other/colorg\") + ch(\"toggle\")", CH_OLD_EXPRESSION, "f", 0, 0);
    EXPECT_EQ(node.evalFloat("f", 0, 0), 5);
    node.setString("chs(\"mode\") + \"!\"", CH_OLD_EXPRESSION, "s", 0, 0);
    EXPECT_EQ(node.text("s"), "mid!");
}

TEST(ChannelReference, ToItselfIsAnErrorAndReadsAsZero)
{
    ParmNode node(kinds);
    node.setString("ch(\"i\") + 1", CH_OLD_EXPRESSION, "f", 0, 0);
    node.setString("ch(\"f\") + 1", CH_OLD_EXPRESSION, "i", 0, 0);
    EXPECT_EQ(node.evalFloat("f", 0, 0), 0);
    EXPECT_EQ(node.errors(), "node/f: its expression refers to itself\n");
}

TEST(ChannelReference, LongChainsDoNotExhaustTheStack)
{
    const int length = 5000;
    std::vector<std::string> tokens;
    for (int i = 0; i < length; ++i)
        tokens.push_back("p" + std::to_string(i));
    std::vector<PRM_Name> names;
    for (const std::string& token : tokens)
        names.emplace_back(token.c_str());
    std::vector<PRM_Template> templates;
    for (PRM_Name& name : names)
        templates.emplace_back(PRM_FLT, 1, &name);
    templates.emplace_back();
    ParmNode node(templates.data());
    for (int i = 0; i + 1 < length; ++i)
        node.setString(("ch(\"" + tokens[i + 1] + "\")").c_str(), CH_OLD_EXPRESSION, i, 0, 0);
    EXPECT_EQ(node.evalFloat(0, 0, 0), 0);
    EXPECT_NE(node.errors().find("too many parameters refer to one another"), std::string::npos);
}

TEST(ExpressionError, IsKeptUntilTheExpressionIsWellAgain)
{
    ParmNode node(kinds);
    node.setString("1 +", CH_OLD_EXPRESSION, "color", 1, 0);
    EXPECT_EQ(node.evalFloat("color", 1, 0), 0);
    EXPECT_EQ(node.errors(), "node/colorg: column 4: a value is missing\n");
    node.setString("1 + 1", CH_OLD_EXPRESSION, "color", 1, 0);
    EXPECT_EQ(node.evalFloat("color", 1, 0), 2);
    EXPECT_EQ(node.errors(), "");
}

TEST(ExpressionError, OfABackquoteLeavesTheRestOfTheText)
{
    ParmNode node(kinds);
    node.setString("a`1/0`b", CH_STRING_LITERAL, "s", 0, 0);
    EXPECT_EQ(node.text("s"), "ab");
    EXPECT_EQ(node.errors(), "node/s: in `1/0`: column 3: division by zero\n");
}

TEST(TimeDependence, FollowsVariablesAndChannels)
{
    ParmNode node(kinds);
    EXPECT_FALSE(node.getParm("f").isTimeDependent());
    node.setString("$F", CH_OLD_EXPRESSION, "f", 0, 0);
    node.setString("ch(\"f\")", CH_OLD_EXPRESSION, "i", 0, 0);
    node.setString("img.$F.exr", CH_STRING_LITERAL, "s", 0, 0);
    EXPECT_TRUE(node.getParm("f").isTimeDependent());
    EXPECT_TRUE(node.getParm("i").isTimeDependent());
    EXPECT_TRUE(node.getParm("s").isTimeDependent());
    EXPECT_FALSE(node.getParm("mode").isTimeDependent());
}

namespace
{
/// Puts a language in for as long as it lives.
class FakePython
{
public:
    explicit FakePython(decltype(PRM_ScriptHooks::evaluatePython) evaluate) : m_before(PRMscriptHooks())
    {
        PRMscriptHooks().evaluatePython = evaluate;
        PRMscriptHooks().runPythonMenu = menu;
    }
    ~FakePython() { PRMscriptHooks() = m_before; }

private:
    static bool menu(OP_Parameters* node, const PRM_Parm* parm, const char* script, PRM_MenuItems& items,
                     std::string& error)
    {
        if (std::string(script) == "bad")
        {
            error = "NameError";
            return false;
        }
        items.emplace_back(node->getName().toStdString(), parm->getLabel());
        return true;
    }

    const PRM_ScriptHooks m_before;
};

bool lengthAndTime(OP_Parameters*, const char* text, fpreal, int, CH_ExprValue& value, std::string& error)
{
    value = CH_ExprValue(static_cast<fpreal>(std::string(text).size()) + CHgetEvalTime());
    error = "it is bad";
    return std::string(text) != "bad";
}

ParmNode* doomed = nullptr;

bool deletesItsNode(OP_Parameters*, const char*, fpreal, int, CH_ExprValue& value, std::string&)
{
    delete doomed;
    value = CH_ExprValue(3.0);
    return true;
}
} // namespace

TEST(PythonExpression, IsEvaluatedByTheHookAtTheTime)
{
    const FakePython python(lengthAndTime);
    ParmNode node(kinds);
    node.setString("four", CH_PYTHON_EXPRESSION, "f", 0, 0);
    EXPECT_EQ(node.evalFloat("f", 0, 0.5), 4.5);
    EXPECT_EQ(node.getParm("f").getExpressionLanguage(0), CH_PYTHON);
    node.setString("bad", CH_PYTHON_EXPRESSION, "f", 0, 0);
    EXPECT_EQ(node.evalFloat("f", 0, 0), 0);
    EXPECT_EQ(node.errors(), "node/f: it is bad\n");
}

TEST(PythonExpression, WithoutPythonIsAnError)
{
    const FakePython none(nullptr);
    ParmNode node(kinds);
    node.setString("1", CH_PYTHON_EXPRESSION, "f", 0, 0);
    EXPECT_EQ(node.evalFloat("f", 0, 0), 0);
    EXPECT_EQ(node.errors(), "node/f: nothing here runs Python\n");
}

TEST(PythonExpression, MayDeleteItsOwnNode)
{
    const FakePython python(deletesItsNode);
    for (const char* parm : {"f", "s", "ord"})
    {
        doomed = new ParmNode(kinds);
        doomed->setString("x", CH_PYTHON_EXPRESSION, parm, 0, 0);
        EXPECT_EQ(doomed->text(parm), "3") << parm;
    }
}

TEST(ScriptMenu, IsMadeByTheHook)
{
    const FakePython python(lengthAndTime);
    PRM_ChoiceList menu(PRM_CHOICELIST_REPLACE, "good", CH_PYTHON_SCRIPT);
    PRM_Template templates[] = {PRM_Template(PRM_STRING, 1, &string_name, nullptr, &menu), PRM_Template()};
    const ParmNode node(templates, "box");
    const PRM_Name* names = nullptr;
    menu.getChoiceNames(names, nullptr, nullptr, &node.getParm("s"));
    EXPECT_STREQ(names[0].getToken(), "box");
    EXPECT_STREQ(names[0].getLabel(), "S");
    EXPECT_EQ(menu.getSize(&node.getParm("s")), 1);
    EXPECT_TRUE(menu.isDynamic());
}

TEST(ScriptMenu, ThatFailsIsEmptyAndAnErrorOfItsNode)
{
    const FakePython python(lengthAndTime);
    PRM_ChoiceList menu(PRM_CHOICELIST_REPLACE, "bad", CH_PYTHON_SCRIPT);
    PRM_Template templates[] = {PRM_Template(PRM_STRING, 1, &string_name, nullptr, &menu), PRM_Template()};
    const ParmNode node(templates);
    const PRM_Name* names = nullptr;
    menu.getChoiceNames(names, nullptr, nullptr, &node.getParm("s"));
    EXPECT_EQ(names[0].getToken(), nullptr);
    EXPECT_EQ(node.errors(), "node/s: its menu script failed: NameError\n");
}

namespace
{
void generateMenu(void* data, PRM_Name* names, int size, const PRM_SpareData*, const PRM_Parm*)
{
    names[0] = PRM_Name(data ? "data" : "none", "Label");
    names[size - 1] = PRM_Name("overflow", "Overflow");
}
} // namespace

TEST(GeneratedMenu, GetsTheNodeAndAlwaysEnds)
{
    PRM_ChoiceList menu(PRM_CHOICELIST_SINGLE, generateMenu);
    ParmNode node(kinds);
    const PRM_Name* names = nullptr;
    menu.getChoiceNames(names, node.parmData());
    EXPECT_STREQ(names[0].getToken(), "data");
    EXPECT_EQ(names[1].getToken(), nullptr);
    EXPECT_EQ(menu.getSize(nullptr), 1);
}

TEST(StaticMenu, GivesItsOwnList)
{
    const PRM_Name* names = nullptr;
    item_menu.getChoiceNames(names);
    EXPECT_EQ(names, item_names);
    EXPECT_EQ(item_menu.getSize(nullptr), 3);
}
