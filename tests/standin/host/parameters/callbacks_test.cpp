// What pressing and entering do: callbacks, the template they get, and action menus.
#include "undo_fixture.h"

#include <UT/UT_IntArray.h>

#include <memory>
#include <stdexcept>

namespace
{
/// A callback's call as the callback saw it.
struct Call
{
    void* data;
    int index;
    double time;
    std::string token;
    std::string label;
    const PRM_Template* tmpl;
};
std::vector<Call> calls;

int note(void* data, int index, double time, const PRM_Template* tmpl)
{
    calls.push_back({data, index, time, tmpl->getToken(), tmpl->getLabel(), tmpl});
    return 7;
}

int throwError(void*, int, double, const PRM_Template*) { throw std::runtime_error("no light"); }
int throwNumber(void*, int, double, const PRM_Template*) { throw 5; }
int throwInBlock(void*, int, double, const PRM_Template*)
{
    const UT_AutoUndoBlock block("Inside", ANYLEVEL);
    throw std::runtime_error("no light");
}
int deleteNode(void* data, int, double, const PRM_Template*)
{
    delete static_cast<ParmNode*>(data);
    return 1;
}
/// Writes its own parameter, whatever was entered.
int writeItself(void* data, int index, double time, const PRM_Template* tmpl)
{
    auto* node = static_cast<OP_Parameters*>(data);
    node->setFloat(tmpl->getToken(), index, time, 100 + node->evalFloat(tmpl->getToken(), index, time));
    return 1;
}
int setOther(void* data, int, double time, const PRM_Template*)
{
    const UT_AutoUndoBlock block("Callback", ANYLEVEL);
    static_cast<OP_Parameters*>(data)->setFloat("other", 0, time, 3);
    return 1;
}
/// Removes the instance that it belongs to.
int removeList(void* data, int, double time, const PRM_Template* tmpl)
{
    static_cast<OP_Parameters*>(data)->setInt("one", 0, time, 0);
    calls.push_back({data, 0, time, tmpl->getToken(), tmpl->getLabel(), nullptr});
    return 1;
}

PRM_Name names[] = {PRM_Name("noted", "Noted"), PRM_Name("throwing", "Throwing"),
                    PRM_Name("odd", "Odd"),     PRM_Name("deadly", "Deadly"),
                    PRM_Name("own", "Own"),     PRM_Name("linked", "Linked"),
                    PRM_Name("other", "Other"), PRM_Name("menu", "Menu"),
                    PRM_Name("block", "Block"), PRM_Name("go", "Go")};
PRM_Name items[] = {PRM_Name("first", "First"), PRM_Name("second", "Second"), PRM_Name("7", "Seven"),
                    PRM_Name()};
PRM_ChoiceList actions(PRM_CHOICELIST_REPLACE, items);
PRM_Range ten(PRM_RANGE_RESTRICTED, 0, PRM_RANGE_RESTRICTED, 10);

PRM_Name l1_name("one", "One");
PRM_Name l2_name("two#", "Two");
PRM_Name l3_name("three#_#", "Three");
PRM_Name leaf_name("p_#_#_#", "P #");
PRM_Name color_name("c#", "C #");
PRM_Name button_name("b_#_#_#", "B");
PRM_Template leaves[] = {
    PRM_Template(PRM_FLT, 1, &leaf_name, nullptr, nullptr, nullptr, PRM_Callback(&note)),
    PRM_Template(PRM_RGB, 3, &color_name, nullptr, nullptr, nullptr, PRM_Callback(&note)),
    PRM_Template(PRM_CALLBACK, 1, &button_name, nullptr, nullptr, nullptr, PRM_Callback(&removeList)),
    PRM_Template()};
PRM_Template level3[] = {PRM_Template(PRM_MULTITYPE_LIST, leaves, 1, &l3_name, PRMthreeDefaults),
                         PRM_Template()};
PRM_Template level2[] = {PRM_Template(PRM_MULTITYPE_LIST, level3, 1, &l2_name, PRMtwoDefaults),
                         PRM_Template()};

PRM_Template make(const PRM_Type& type, PRM_Name& name, PRM_Callback callback, PRM_Range* range = nullptr)
{
    return PRM_Template(type, 1, &name, nullptr, nullptr, range, callback);
}

PRM_Template templates[] = {
    make(PRM_FLT, names[0], &note, &ten),
    make(PRM_FLT, names[1], &throwError),
    make(PRM_FLT, names[2], &throwNumber),
    make(PRM_FLT, names[3], &deleteNode),
    make(PRM_FLT, names[4], &writeItself),
    make(PRM_FLT, names[5], &setOther),
    make(PRM_FLT, names[6], PRM_Callback()),
    PRM_Template(PRM_CALLBACK, 1, &names[7], nullptr, &actions, nullptr, PRM_Callback(&note)),
    make(PRM_CALLBACK, names[8], &throwInBlock),
    make(PRM_CALLBACK, names[9], &note),
    PRM_Template(PRM_MULTITYPE_LIST, level2, 1, &l1_name, PRMoneDefaults),
    PRM_Template()};

class PressedParms : public UndoTest
{
protected:
    PressedParms() : node(new ParmNode(templates)) { calls.clear(); }

    std::unique_ptr<ParmNode> node;
};

typedef PressedParms ActionMenus;
} // namespace

TEST_F(PressedParms, GetTheNodeTheComponentTheTimeAndTheTemplate)
{
    EXPECT_EQ(node->pressParm(node->getParm("go"), 0, 1.5), 7);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].data, node->parmData());
    EXPECT_EQ(calls[0].index, 0);
    EXPECT_EQ(calls[0].time, 1.5);
    EXPECT_EQ(calls[0].tmpl, node->getParm("go").getTemplatePtr());
}

TEST_F(PressedParms, AreCalledWhenAPersonEntersAValueAndNotForAScript)
{
    EXPECT_TRUE(node->enterParm(node->getParm("noted"), 0, "99", 0));
    EXPECT_EQ(node->evalFloat("noted", 0, 0), 10) << "the range limits what a person enters";
    node->setFloat("noted", 0, 0, 3);
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(PressedParms, AreNotCalledForATextThatIsNoValue)
{
    std::string why;
    EXPECT_FALSE(node->enterParm(node->getParm("noted"), 0, "much", 0, &why));
    EXPECT_EQ(why,
              "\"much\" is no value for the parameter \"noted\"; enter a number or one of its menu's items");
    EXPECT_FALSE(node->enterParm(node->getParm("noted"), 0, nullptr, 0));
    EXPECT_FALSE(node->enterParm(node->getParm("noted"), 5, "1", 0));
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST_F(PressedParms, OfAnInstanceThreeLevelsDeepGetItsOwnToken)
{
    node->pressParm(node->getParm("p_1_2_3"), 0, 0);
    node->pressParm(node->getParm("c1_2_1"), 2, 0);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].token, "p_1_2_3");
    EXPECT_EQ(calls[0].label, "P 3");
    EXPECT_EQ(calls[1].token, "c1_2_1");
    EXPECT_EQ(calls[1].label, "C 1");
    EXPECT_EQ(calls[1].index, 2);
    EXPECT_STREQ(node->getParm("p_1_2_3").getTemplatePtr()->getToken(), "p_#_#_#");
}

TEST_F(PressedParms, OfAnInstanceMayRemoveTheInstance)
{
    EXPECT_EQ(node->pressParm(node->getParm("b_1_2_3"), 0, 0), 1);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].token, "b_1_2_3");
    EXPECT_EQ(node->evalInt("one", 0, 0), 0);
    undos.performUndo();
    EXPECT_NE(node->getParmPtr("b_1_2_3"), nullptr);
}

TEST_F(PressedParms, MayDeleteTheirNode)
{
    ParmNode* brief = node.release();
    EXPECT_EQ(brief->pressParm(brief->getParm("deadly"), 0, 0), 1);
    brief = new ParmNode(templates);
    EXPECT_TRUE(brief->enterParm(brief->getParm("deadly"), 0, "5", 0));
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST_F(PressedParms, ThatThrowLeaveTheirSentenceOnTheNodeUntilTheyDoNot)
{
    EXPECT_EQ(node->pressParm(node->getParm("throwing"), 0, 0), 0);
    EXPECT_EQ(node->errors(), "node/throwing: its callback failed: no light\n");
    EXPECT_TRUE(node->enterParm(node->getParm("throwing"), 0, "4", 0));
    EXPECT_EQ(node->evalFloat("throwing", 0, 0), 4);
    EXPECT_EQ(node->errors(), "node/throwing: its callback failed: no light\n");
    node->pressParm(node->getParm("odd"), 0, 0);
    EXPECT_NE(node->errors().find("node/odd: its callback failed for a reason that it did not tell"),
              std::string::npos);
}

TEST_F(PressedParms, ThatThrowLeaveNoBlockOpen)
{
    node->pressParm(node->getParm("block"), 0, 0);
    EXPECT_EQ(undos.getLevel(), 0);
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST_F(PressedParms, MayEditTheirOwnParameterAsPartOfTheSameStep)
{
    EXPECT_TRUE(node->enterParm(node->getParm("own"), 0, "5", 0));
    EXPECT_EQ(node->evalFloat("own", 0, 0), 105);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Parameter Change"}));
    undos.performUndo();
    EXPECT_EQ(node->evalFloat("own", 0, 0), 0);
    undos.performRedo();
    EXPECT_EQ(node->evalFloat("own", 0, 0), 105);
}

TEST_F(PressedParms, AreUndoneWithTheValueThatWasEntered)
{
    node->enterParm(node->getParm("linked"), 0, "5", 0);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Parameter Change"}));
    undos.performUndo();
    EXPECT_EQ(node->evalFloat("linked", 0, 0), 0);
    EXPECT_EQ(node->evalFloat("other", 0, 0), 0);
}

TEST_F(PressedParms, ThatOpenABlockNameTheStepOfAButton)
{
    node->pressParm(node->getParm("linked"), 0, 0);
    EXPECT_EQ(undos.getUndoLabels(), (Texts{"Callback"}));
}

TEST_F(PressedParms, AreNotCalledByUndoAndRedo)
{
    node->enterParm(node->getParm("noted"), 0, "5", 0);
    undos.performUndo();
    undos.performRedo();
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(ActionMenus, CallWithTheIndexOfTheItemAndStoreNothing)
{
    PRM_Parm& menu = node->getParm("menu");
    EXPECT_TRUE(menu.isActionMenu());
    EXPECT_FALSE(node->getParm("go").isActionMenu());
    EXPECT_TRUE(node->enterParm(menu, 0, "second", 0));
    EXPECT_TRUE(node->enterParm(menu, 0, "0", 0));
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].index, 1);
    EXPECT_EQ(calls[1].index, 0);
    EXPECT_EQ(node->evalInt("menu", 0, 0), 0);
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST_F(ActionMenus, TakeAnItemsTokenBeforeANumber)
{
    EXPECT_TRUE(node->enterParm(node->getParm("menu"), 0, "7", 0));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].index, 2);
}

TEST_F(ActionMenus, RefuseWhatIsNoItem)
{
    std::string why;
    for (const char* text : {"third", "3", "-1", "0.5", "", "1e300"})
    {
        EXPECT_FALSE(node->enterParm(node->getParm("menu"), 0, text, 0, &why)) << text;
        EXPECT_EQ(why, "\"" + std::string(text) +
                           "\" is no value for the parameter \"menu\"; choose one of its menu's items");
    }
    EXPECT_FALSE(node->enterParm(node->getParm("menu"), 0, nullptr, 0));
    EXPECT_TRUE(calls.empty());
}

TEST(ThreeLevels, AreReadAndWrittenByInstanceNumbers)
{
    ParmNode node(templates);
    const int inst[] = {1, 2, 3};
    node.setFloatInst(5.5, "p_#_#_#", inst, 0, 0, 3);
    EXPECT_EQ(node.evalFloat("p_1_2_3", 0, 0), 5.5);
    EXPECT_EQ(node.evalFloatInst("p_#_#_#", inst, 0, 0, 3), 5.5);
    EXPECT_EQ(node.evalIntInst("p_#_#_#", inst, 0, 0, 3), 5);
    EXPECT_EQ(node.evalFloatInstT("p_#_#_#", inst, 0, 0, 0, 3), 5.5);
    EXPECT_EQ(node.evalIntInst("three#_#", inst, 0, 0, 2), 3);
    EXPECT_EQ(node.evalIntInst("two#", inst, 0, 0, 1), 2);
    node.setFloatInst(0.5, "c#", inst, 2, 0, 3);
    EXPECT_EQ(node.evalFloatInst("c#", inst, 2, 0, 3), 0.5);
    EXPECT_EQ(node.evalFloatInst("c#", inst, 1, 0, 3), 0);
    UT_String text;
    node.evalStringInst("p_#_#_#", inst, text, 0, 0, 3);
    EXPECT_STREQ(text, "5.5");
}

TEST(ThreeLevels, ReadAsZeroForAnInstanceThatIsNotThere)
{
    const ParmNode node(templates);
    const int inst[] = {1, 3, 1};
    EXPECT_EQ(node.evalFloatInst("p_#_#_#", inst, 0, 0, 3), 0);
}

TEST(ThreeLevels, KnowTheirNumbersFromTheOutsideIn)
{
    ParmNode node(templates);
    UT_IntArray indices;
    node.getParm("p_1_2_3").getMultiInstanceIndex(indices);
    EXPECT_EQ(Ints(indices.begin(), indices.end()), (Ints{1, 2, 3}));
    EXPECT_EQ(node.getParm("p_1_2_3").getParentMultiParm(), node.getParmPtr("three1_2"));
    node.getParm("three1_2").insertMultiParmItem(0);
    EXPECT_NE(node.getParmPtr("p_1_2_4"), nullptr);
}

TEST(ThreeLevels, AreReadByExpressionsToo)
{
    ParmNode node(templates);
    node.setFloat("p_1_2_3", 0, 0, 4);
    node.getParm("other").setExpression(0, "ch(\"p_1_2_3\") + 1", CH_OLD_EXPR_LANGUAGE);
    EXPECT_EQ(node.evalFloat("other", 0, 0), 5);
}
