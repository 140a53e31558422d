// Undo of multi-parameters: their instances come back with everything inside.
#include "undo_fixture.h"

#include <map>
#include <random>

namespace
{
PRM_Name plain_name("plain", "Plain");
PRM_Name list_name("list", "List");
PRM_Name child_name("a_#", "A #");
PRM_Name words_name("word_#", "Word #");
PRM_Template children[] = {PRM_Template(PRM_FLT, 1, &child_name), PRM_Template(PRM_STRING, 1, &words_name),
                           PRM_Template()};
PRM_Template list_templates[] = {PRM_Template(PRM_MULTITYPE_LIST, children, 1, &list_name, PRMtwoDefaults),
                                 PRM_Template(PRM_FLT, 1, &plain_name), PRM_Template()};

PRM_Name l1_name("one", "One");
PRM_Name l2_name("two#", "Two");
PRM_Name l3_name("three#_#", "Three");
PRM_Name leaf_name("p_#_#_#", "P #");
PRM_Name ramp_name("ramp", "Ramp");
PRM_Template leaves[] = {PRM_Template(PRM_FLT, 1, &leaf_name), PRM_Template()};
PRM_Template level3[] = {PRM_Template(PRM_MULTITYPE_LIST, leaves, 1, &l3_name, PRMoneDefaults),
                         PRM_Template()};
PRM_Template level2[] = {PRM_Template(PRM_MULTITYPE_LIST, level3, 1, &l2_name, PRMoneDefaults),
                         PRM_Template()};
PRM_Template deep_templates[] = {PRM_Template(PRM_MULTITYPE_LIST, level2, 1, &l1_name, PRMoneDefaults),
                                 PRM_Template(PRM_MULTITYPE_RAMP_RGB, nullptr, 1, &ramp_name, PRMtwoDefaults),
                                 PRM_Template(PRM_FLT, 1, &plain_name), PRM_Template()};

/// Everything that a node holds: by channel, the expression or the value as typed.
std::map<std::string, std::string> contentOf(const ParmNode& node)
{
    std::map<std::string, std::string> content;
    for (int i = 0; i < node.getNumParms(); ++i)
    {
        const PRM_Parm& parm = node.getParm(i);
        for (int c = 0; c < parm.getVectorSize(); ++c)
        {
            UT_String value;
            parm.getValue(0, value, c, false, 0);
            content[parm.getChannelToken(c).toStdString()] =
                (parm.hasExpression(c) ? "= " : "") + value.toStdString();
        }
    }
    return content;
}

typedef UndoTest InstancesUndo;
} // namespace

TEST_F(InstancesUndo, BringsBackTheNumberAndTheValuesOfWhatWasRemoved)
{
    ParmNode node(list_templates);
    node.setFloat("a_2", 0, 0, 22);
    node.setString("second", CH_STRING_LITERAL, "word_2", 0, 0);
    node.getParm("a_1").setExpression(0, "10 + 1", CH_OLD_EXPR_LANGUAGE);
    const auto before = contentOf(node);
    node.setInt("list", 0, 0, 0);
    EXPECT_EQ(node.getNumParms(), 2);
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
    EXPECT_EQ(node.evalFloat("a_1", 0, 0), 11);
    undos.performRedo();
    EXPECT_EQ(node.getNumParms(), 2);
}

TEST_F(InstancesUndo, TellsTheNodeOfTheCountAndOfEachParameterThatCameBack)
{
    ParmNode node(list_templates);
    node.setInt("list", 0, 0, 1);
    node.changes.clear();
    undos.performUndo();
    EXPECT_EQ(node.changes, (Ints{0, 4, 5}));
    node.changes.clear();
    undos.performRedo();
    EXPECT_EQ(node.changes, (Ints{0}));
}

TEST_F(InstancesUndo, TakesBackAnInsertionWithTheValuesThatFollowedIt)
{
    ParmNode node(list_templates);
    node.setFloat("a_1", 0, 0, 1);
    node.setFloat("a_2", 0, 0, 2);
    const auto before = contentOf(node);
    node.getParm("list").insertMultiParmItem(1);
    node.setFloat("a_2", 0, 0, 15);
    const auto after = contentOf(node);
    undos.performUndo();
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
    undos.performRedo();
    undos.performRedo();
    EXPECT_EQ(contentOf(node), after);
}

TEST_F(InstancesUndo, BringsARemovedInstanceBackInItsPlace)
{
    ParmNode node(list_templates);
    node.setFloat("a_1", 0, 0, 1);
    node.setFloat("a_2", 0, 0, 2);
    const auto before = contentOf(node);
    node.getParm("list").removeMultiParmItem(0);
    EXPECT_EQ(node.evalFloat("a_1", 0, 0), 2);
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
}

TEST_F(InstancesUndo, RestoresARevertedList)
{
    ParmNode node(list_templates);
    node.setInt("list", 0, 0, 4);
    node.setFloat("a_4", 0, 0, 44);
    const auto before = contentOf(node);
    node.getParm("list").revertToDefault(0, -1);
    EXPECT_EQ(node.evalInt("list", 0, 0), 2);
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
}

TEST_F(InstancesUndo, MakesNoStepOfACountThatStaysOrIsRefused)
{
    ParmNode node(list_templates);
    node.setInt("list", 0, 0, 2);
    node.setInt("list", 0, 0, 2000000000);
    node.getParm("list").removeMultiParmItem(9);
    EXPECT_TRUE(undos.getUndoLabels().empty());
}

TEST_F(InstancesUndo, BringsBackWhatIsThreeLevelsDeep)
{
    ParmNode node(deep_templates);
    node.setInt("one", 0, 0, 2);
    node.setInt("two2", 0, 0, 3);
    node.setInt("three2_3", 0, 0, 2);
    node.setFloat("p_2_3_2", 0, 0, 232);
    const auto before = contentOf(node);
    node.setInt("one", 0, 0, 0);
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
    EXPECT_EQ(node.evalFloat("p_2_3_2", 0, 0), 232);
    node.getParm("one").removeMultiParmItem(0);
    EXPECT_EQ(node.evalFloat("p_1_3_2", 0, 0), 232);
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
}

TEST_F(InstancesUndo, RestoresTheKeysOfARampWithoutSpreadingThem)
{
    ParmNode node(deep_templates);
    node.setFloat("ramp2pos", 0, 0, 0.125);
    node.setFloat("ramp2c", 1, 0, 0.5);
    node.setInt("ramp2interp", 0, 0, PRM_RAMP_INTERP_CONSTANT);
    const auto before = contentOf(node);
    node.setInt("ramp", 0, 0, 5);
    const auto after = contentOf(node);
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
    undos.performRedo();
    EXPECT_EQ(contentOf(node), after);
    node.setInt("ramp", 0, 0, 0);
    undos.performUndo();
    EXPECT_EQ(contentOf(node), after);
}

TEST_F(InstancesUndo, DoesNothingWhenWhatItChangedHasOtherInstancesNow)
{
    ParmNode node(list_templates);
    node.setInt("list", 0, 0, 4);
    {
        const UT_AutoDisableUndos off;
        node.setInt("list", 0, 0, 1);
        node.setFloat("a_1", 0, 0, 5);
    }
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(node.evalInt("list", 0, 0), 1);
    EXPECT_EQ(node.evalFloat("a_1", 0, 0), 5);
    EXPECT_TRUE(undos.performRedo());
    EXPECT_EQ(node.evalInt("list", 0, 0), 1);
}

TEST_F(InstancesUndo, LeavesAloneAParameterWhoseInstanceIsGone)
{
    ParmNode node(list_templates);
    node.setFloat("a_2", 0, 0, 22);
    {
        const UT_AutoDisableUndos off;
        node.setInt("list", 0, 0, 1);
    }
    EXPECT_TRUE(undos.performUndo());
    EXPECT_EQ(node.tokens(), (Texts{"list", "plain", "a_1", "word_1"}));
    EXPECT_TRUE(undos.performRedo());
}

namespace
{
/// Looks at every parameter whenever a menu is asked for, as a script may.
void lookAround(void* data, PRM_Name* items, int size, const PRM_SpareData*, const PRM_Parm*)
{
    auto* node = static_cast<OP_Parameters*>(data);
    fpreal sum = 0;
    for (int i = 0; i < node->getNumParms(); ++i)
        sum += node->evalFloat(i, 0, 0);
    ASSERT_GE(size, 3);
    items[0] = PRM_Name("a", "First");
    items[1] = sum < 1e9 ? PRM_Name("b", "Second") : PRM_Name("c", "Third");
    items[2] = PRM_Name();
}

PRM_ChoiceList looking_menu(PRM_CHOICELIST_SINGLE, lookAround);
PRM_Name choice_name("choice_#", "Choice");
PRM_Default second_item(0, "b");
PRM_Template choosing_children[] = {PRM_Template(PRM_FLT, 1, &child_name),
                                    PRM_Template(PRM_ORD, 1, &choice_name, &second_item, &looking_menu),
                                    PRM_Template()};
PRM_Template choosing_templates[] = {
    PRM_Template(PRM_MULTITYPE_LIST, choosing_children, 1, &list_name, PRMtwoDefaults), PRM_Template()};
} // namespace

TEST_F(InstancesUndo, MenusThatMakeTheDefaultsSeeNothingThatIsGone)
{
    ParmNode node(choosing_templates);
    node.setFloat("a_1", 0, 0, 1);
    EXPECT_EQ(node.evalInt("choice_1", 0, 0), 1);
    const auto before = contentOf(node);
    node.getParm("list").revertToDefault(0, -1);
    undos.performUndo();
    undos.performRedo();
    undos.performUndo();
    EXPECT_EQ(contentOf(node), before);
}

namespace
{
/// A random edit of a node: a value, an expression, a count, an insertion, a removal or a reversion.
void editAtRandom(ParmNode& node, std::mt19937& random)
{
    const auto upTo = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    PRM_Parm& parm = node.getParm(upTo(node.getNumParms()));
    const int component = upTo(parm.getVectorSize());
    const int what = upTo(10);
    if (what == 0)
        parm.revertToDefault(0, -1);
    else if (!parm.isMultiParm())
    {
        if (what == 1)
            parm.setExpression(0, std::to_string(upTo(9)).c_str(), CH_OLD_EXPR_LANGUAGE, true, component);
        else
            parm.setValue(0, fpreal(upTo(5)), true, PRM_AK_NEVER, component);
    }
    else if (what < 4)
        parm.insertMultiParmItem(upTo(parm.getMultiParmNumItems() + 1));
    else if (what < 7)
        parm.removeMultiParmItem(upTo(parm.getMultiParmNumItems() + 1));
    else
        parm.setValue(0, fpreal(upTo(4)));
}
} // namespace

TEST_F(InstancesUndo, PassesThroughEveryStateOfManyRandomEditsBackAndForth)
{
    const auto seed = static_cast<unsigned>(std::random_device()());
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    ParmNode node(deep_templates);
    std::vector<std::map<std::string, std::string>> states(1, contentOf(node));
    while (states.size() < 300)
    {
        const std::size_t steps = undos.getUndoLabels().size();
        {
            const UT_AutoUndoBlock block("Block", ANYLEVEL);
            for (unsigned i = 0; i < 1 + random() % 4; ++i)
                editAtRandom(node, random);
        }
        if (undos.getUndoLabels().size() > steps)
            states.push_back(contentOf(node));
        else
            ASSERT_EQ(contentOf(node), states.back());
    }
    for (int round = 0; round < 2; ++round)
    {
        for (std::size_t i = states.size() - 1; i-- > 0;)
        {
            ASSERT_TRUE(undos.performUndo());
            ASSERT_EQ(contentOf(node), states[i]) << "undo to " << i;
        }
        ASSERT_FALSE(undos.performUndo());
        for (std::size_t i = 1; i < states.size(); ++i)
        {
            ASSERT_TRUE(undos.performRedo());
            ASSERT_EQ(contentOf(node), states[i]) << "redo to " << i;
        }
    }
}
