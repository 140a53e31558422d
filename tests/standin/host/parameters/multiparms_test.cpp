#include "parm_node.h"

#include <UT/UT_IntArray.h>

#include <gtest/gtest.h>

namespace
{
PRM_Name plain_name("plain", "Plain");
PRM_Name list_name("list", "List");
PRM_Name child_name("a_#", "A #");
PRM_Name color_name("col#", "Colour #");
PRM_Name inner_name("inner#", "Inner");
PRM_Name inner_child_name("p#_#", "P");
PRM_Name short_child_name("q#", "Q #");
PRM_Name ramp_name("ramp", "Ramp");

PRM_Template children[] = {PRM_Template(PRM_FLT, 1, &child_name, PRMthreeDefaults),
                           PRM_Template(PRM_RGB, 3, &color_name), PRM_Template()};
PRM_Template list_templates[] = {PRM_Template(PRM_MULTITYPE_LIST, children, 1, &list_name, PRMtwoDefaults),
                                 PRM_Template(PRM_FLT, 1, &plain_name), PRM_Template()};

PRM_Template inner_children[] = {PRM_Template(PRM_FLT, 1, &inner_child_name),
                                 PRM_Template(PRM_INT, 1, &short_child_name), PRM_Template()};
PRM_Template outer_children[] = {
    PRM_Template(PRM_MULTITYPE_LIST, inner_children, 1, &inner_name, PRMoneDefaults), PRM_Template()};
PRM_Template nested_templates[] = {
    PRM_Template(PRM_MULTITYPE_LIST, outer_children, 1, &list_name, PRMtwoDefaults), PRM_Template()};

PRM_Template float_ramp[] = {PRM_Template(PRM_MULTITYPE_RAMP_FLT, nullptr, PRM_Template::PRM_EXPORT_MIN, 1,
                                          &ramp_name, PRMtwoDefaults),
                             PRM_Template()};
PRM_Template color_ramp[] = {PRM_Template(PRM_MULTITYPE_RAMP_RGB, nullptr, 1, &ramp_name, PRMtwoDefaults),
                             PRM_Template()};

Ints instancesOf(const PRM_Parm& parm)
{
    UT_IntArray indices;
    parm.getMultiInstanceIndex(indices);
    return Ints(indices.begin(), indices.end());
}
} // namespace

TEST(MultiParameter, InstancesFollowAllTemplatesInOrder)
{
    const ParmNode node(list_templates);
    EXPECT_EQ(node.tokens(), (Texts{"list", "plain", "a_1", "col1", "a_2", "col2"}));
    EXPECT_EQ(node.evalInt("list", 0, 0), 2);
    EXPECT_EQ(node.text("list"), "2");
    EXPECT_STREQ(node.getParm("a_2").getLabel(), "A 2");
    EXPECT_EQ(node.evalFloat("a_1", 0, 0), 3);
    EXPECT_EQ(instancesOf(node.getParm("col2")), (Ints{2}));
    EXPECT_TRUE(instancesOf(node.getParm("plain")).empty());
}

TEST(MultiParameter, SettingTheCountAddsAndRemovesAtTheEnd)
{
    ParmNode node(list_templates);
    node.setFloat("a_1", 0, 0, 11);
    node.changes.clear();
    node.setInt("list", 0, 0, 3);
    EXPECT_EQ(node.getNumParms(), 8);
    EXPECT_EQ(node.changes, (Ints{0, 6, 7}));
    node.setInt("list", 0, 0, 1);
    EXPECT_EQ(node.tokens(), (Texts{"list", "plain", "a_1", "col1"}));
    EXPECT_EQ(node.evalFloat("a_1", 0, 0), 11);
}

TEST(MultiParameter, InsertingRenumbersWhatFollows)
{
    ParmNode node(list_templates);
    node.setFloat("a_2", 0, 0, 22);
    PRM_Parm* second = node.getParmPtr("a_2");
    EXPECT_TRUE(node.getParm("list").insertMultiParmItem(1));
    EXPECT_EQ(node.getParmPtr("a_3"), second);
    EXPECT_EQ(node.evalFloat("a_3", 0, 0), 22);
    EXPECT_EQ(node.evalFloat("a_2", 0, 0), 3);
    EXPECT_TRUE(node.getParm("list").removeMultiParmItem(0));
    EXPECT_EQ(node.evalFloat("a_2", 0, 0), 22);
    EXPECT_FALSE(node.getParm("list").insertMultiParmItem(9));
    EXPECT_FALSE(node.getParm("list").removeMultiParmItem(-1));
    EXPECT_FALSE(node.getParm("plain").insertMultiParmItem(0));
}

TEST(MultiParameter, NegativeCountsAreNoneAndHugeOnesRefused)
{
    ParmNode node(list_templates);
    node.setInt("list", 0, 0, 2000000000);
    EXPECT_EQ(node.evalInt("list", 0, 0), 2);
    EXPECT_EQ(node.errors(), "node/list: 2000000000 instances are too many; it can have up to 100000\n");
    node.setInt("list", 0, 0, -5);
    EXPECT_EQ(node.evalInt("list", 0, 0), 0);
    EXPECT_EQ(node.errors(), "");
}

TEST(MultiParameter, StartsWhereItsSpareDataSays)
{
    PRM_Template templates[] = {PRM_Template(PRM_MULTITYPE_LIST, children, 1, &list_name, PRMtwoDefaults,
                                             nullptr, &PRM_SpareData::multiStartOffsetZero),
                                PRM_Template()};
    const ParmNode node(templates);
    EXPECT_EQ(node.tokens(), (Texts{"list", "a_0", "col0", "a_1", "col1"}));
    EXPECT_EQ(node.getParm("list").getMultiStartOffset(), 0);
}

TEST(MultiParameter, InstanceFormsFillInTheNumber)
{
    ParmNode node(list_templates);
    int inst = 2;
    node.setFloatInst(5, "col#", &inst, 1, 0);
    EXPECT_EQ(node.evalFloatInst("col#", &inst, 1, 0), 5);
    EXPECT_EQ(node.evalIntInst("a_#", &inst, 0, 0), 3);
    UT_String text;
    node.evalStringInst("a_#", &inst, text, 0, 0);
    EXPECT_STREQ(text, "3");
    inst = 7;
    EXPECT_EQ(node.evalFloatInst("a_#", &inst, 0, 0), 0);
}

TEST(MultiParameter, ChildrenAreReachedFromTheParent)
{
    ParmNode node(list_templates);
    PRM_Parm& list = node.getParm("list");
    EXPECT_EQ(list.getMultiParmInstanceSize(), 2);
    EXPECT_STREQ(list.getMultiParm(3)->getToken(), "col2");
    EXPECT_EQ(list.getMultiParm(4), nullptr);
    EXPECT_EQ(node.getParm("col2").getParentMultiParm(), &list);
    EXPECT_EQ(node.getParm("a_1").getTemplatePtr(), &children[0]);
}

TEST(NestedMultiParameter, PutsTheOutermostNumberFirst)
{
    ParmNode node(nested_templates);
    node.setInt("inner2", 0, 0, 2);
    EXPECT_EQ(node.tokens(),
              (Texts{"list", "inner1", "inner2", "p1_1", "q1_1", "p2_1", "q2_1", "p2_2", "q2_2"}));
    EXPECT_EQ(instancesOf(node.getParm("p2_1")), (Ints{2, 1}));
    EXPECT_STREQ(node.getParm("q2_1").getLabel(), "Q 1");
    const int inst[] = {2, 1};
    node.setFloat("p2_1", 0, 0, 4);
    EXPECT_EQ(node.evalFloatInst("p#_#", inst, 0, 0, 2), 4);
}

TEST(NestedMultiParameter, IsRenumberedWithItsParent)
{
    ParmNode node(nested_templates);
    node.setFloat("p2_1", 0, 0, 4);
    node.getParm("list").removeMultiParmItem(0);
    EXPECT_EQ(node.tokens(), (Texts{"list", "inner1", "p1_1", "q1_1"}));
    EXPECT_EQ(node.evalFloat("p1_1", 0, 0), 4);
}

TEST(FloatRamp, HasThreeParametersForEachKey)
{
    const ParmNode node(float_ramp);
    EXPECT_EQ(node.tokens(), (Texts{"ramp", "ramp1pos", "ramp1value", "ramp1interp", "ramp2pos", "ramp2value",
                                    "ramp2interp"}));
    EXPECT_EQ(node.evalFloat("ramp1pos", 0, 0), 0);
    EXPECT_EQ(node.evalFloat("ramp2pos", 0, 0), 1);
    EXPECT_EQ(node.evalFloat("ramp2value", 0, 0), 1);
    EXPECT_EQ(node.evalInt("ramp1interp", 0, 0), PRM_RAMP_INTERP_LINEAR);
    EXPECT_EQ(node.text("ramp1interp"), "linear");
}

TEST(ColorRamp, HasAColourForEachKey)
{
    const ParmNode node(color_ramp);
    EXPECT_EQ(node.getParmIndex("ramp2c"), 5);
    fpreal color[3] = {0, 0, 0};
    node.evalFloats("ramp2c", color, 0);
    EXPECT_EQ(color[1], 1);
    EXPECT_EQ(node.getParm("ramp1c").getChannelToken(2).toStdString(), "ramp1cb");
    EXPECT_TRUE(node.getParm("ramp").isRampTypeColor());
}

TEST(Ramp, NewKeysLieEvenlyAndInsertedOnesBetweenTheirNeighbours)
{
    PRM_Template templates[] = {
        PRM_Template(PRM_MULTITYPE_RAMP_FLT, nullptr, 1, &ramp_name, PRMthreeDefaults), PRM_Template()};
    ParmNode node(templates);
    EXPECT_EQ(node.evalFloat("ramp2pos", 0, 0), 0.5);
    node.getParm("ramp").insertMultiParmItem(1);
    EXPECT_EQ(node.evalFloat("ramp2pos", 0, 0), 0.25);
    EXPECT_EQ(node.evalFloat("ramp2value", 0, 0), 0.25);
    node.setInt("ramp", 0, 0, 5);
    EXPECT_EQ(node.evalFloat("ramp5pos", 0, 0), 1);
    node.setInt("ramp", 0, 0, 0);
    node.setInt("ramp", 0, 0, 1);
    EXPECT_EQ(node.evalFloat("ramp1pos", 0, 0), 0);
}

TEST(Ramp, RevertsToItsDefaultKeys)
{
    ParmNode node(float_ramp);
    node.setInt("ramp", 0, 0, 4);
    node.setFloat("ramp1value", 0, 0, 9);
    EXPECT_FALSE(node.getParm("ramp").isDefault(0));
    node.getParm("ramp").revertToDefault(0, -1);
    EXPECT_EQ(node.evalInt("ramp", 0, 0), 2);
    EXPECT_EQ(node.evalFloat("ramp1value", 0, 0), 0);
}

namespace
{
/// Deletes itself when it hears of a change.
class BriefNode : public ParmNode
{
public:
    explicit BriefNode(PRM_Template* templates) : ParmNode(templates) {}
    void parmChanged(int) override { delete this; }
};
} // namespace

TEST(MultiParameter, NodeMayBeDeletedWhenItHearsOfAChange)
{
    auto* node = new BriefNode(list_templates);
    node->setInt("list", 0, 0, 5);
    node = new BriefNode(list_templates);
    node->enterParm(node->getParm("plain"), 0, "5", 0);
    SUCCEED() << "nothing was touched after the deletion";
}
