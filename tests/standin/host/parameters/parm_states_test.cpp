#include "parm_node.h"

#include <gtest/gtest.h>

namespace
{
PRM_Name switch_name("switch", "Switch");
PRM_Name plain_name("plain", "Plain");
PRM_Name both_name("both", "Both");
PRM_Name secret_name("secret", "Secret");

PRM_ConditionalGroup& bothConditions()
{
    static PRM_ConditionalGroup group(PRM_ConditionalGroupArgs()
                                      << PRM_Conditional("{ switch == 1 }", PRM_CONDTYPE_DISABLE)
                                      << PRM_Conditional("{ switch == 2 }", PRM_CONDTYPE_HIDE));
    return group;
}

PRM_Template templates[] = {PRM_Template(PRM_INT, 1, &switch_name), PRM_Template(PRM_RGB, 3, &plain_name),
                            PRM_Template(PRM_FLT, 1, &both_name, nullptr, nullptr, nullptr, 0, nullptr, 1,
                                         nullptr, &bothConditions()),
                            PRM_Template(PRM_FLT | PRM_TYPE_INVISIBLE, 1, &secret_name), PRM_Template()};

/// Disables "plain" while the switch is 3, as a node with an override does.
class OverridingNode : public ParmNode
{
public:
    OverridingNode() : ParmNode(templates) {}
    int refreshes = 0;

protected:
    bool updateParmsFlags() override
    {
        ++refreshes;
        refreshParms(); // what a node that sets a parameter here would bring about
        return enableParm("plain", evalInt("switch", 0, 0) != 3);
    }
};
} // namespace

TEST(EnableState, BelongsToEachComponent)
{
    ParmNode node(templates);
    EXPECT_TRUE(node.enableParm("plain", 0, 1));
    EXPECT_FALSE(node.enableParm("plain", 0, 1));
    EXPECT_FALSE(node.getParm("plain").getEnableState(1));
    EXPECT_TRUE(node.getParm("plain").getEnableState());
    EXPECT_TRUE(node.enableParm(1, 0));
    EXPECT_FALSE(node.getParm("plain").getEnableState());
}

TEST(EnableState, OfAnUnknownParameterDoesNotChange)
{
    ParmNode node(templates);
    EXPECT_FALSE(node.enableParm("nowhere", 0));
    EXPECT_FALSE(node.enableParm(99, 0));
    EXPECT_FALSE(node.enableParm("plain", 0, 7));
    EXPECT_FALSE(node.setVisibleState("nowhere", false));
}

TEST(VisibleState, OfAnInvisibleTemplateIsAlwaysOff)
{
    ParmNode node(templates);
    EXPECT_FALSE(node.getParm("secret").getVisibleState());
    EXPECT_TRUE(node.setVisibleState("plain", false));
    EXPECT_FALSE(node.getParm("plain").getVisibleState());
}

TEST(Refresh, AppliesTheConditionsOfTheTemplates)
{
    ParmNode node(templates);
    EXPECT_FALSE(node.refreshParms());
    node.setInt("switch", 0, 0, 1);
    EXPECT_TRUE(node.refreshParms());
    EXPECT_FALSE(node.getParm("both").getEnableState());
    EXPECT_TRUE(node.getParm("both").getVisibleState());
    node.setInt("switch", 0, 0, 2);
    EXPECT_TRUE(node.refreshParms());
    EXPECT_TRUE(node.getParm("both").getEnableState());
    EXPECT_FALSE(node.getParm("both").getVisibleState());
}

TEST(Refresh, LeavesStatesWithoutAConditionAlone)
{
    ParmNode node(templates);
    node.enableParm("plain", 0);
    node.refreshParms();
    EXPECT_FALSE(node.getParm("plain").getEnableState());
}

TEST(Refresh, AsksTheNodeOnceAfterTheConditions)
{
    OverridingNode node;
    node.setInt("switch", 0, 0, 3);
    EXPECT_TRUE(node.refreshParms());
    EXPECT_EQ(node.refreshes, 1);
    EXPECT_FALSE(node.getParm("plain").getEnableState());
    EXPECT_FALSE(node.refreshParms());
}

TEST(DisableCondition, IsAppliedToOneParameter)
{
    ParmNode node(templates);
    node.setInt("switch", 0, 0, 1);
    EXPECT_TRUE(node.updateParmDisableConditional(node.getParm("both"), true, nullptr));
    EXPECT_FALSE(node.getParm("both").getEnableState());
    EXPECT_FALSE(node.updateParmDisableConditional(node.getParm("both"), true, nullptr));
}

TEST(DisableCondition, ThatDoesNotExistEnablesOnlyWhenForced)
{
    ParmNode node(templates);
    node.enableParm("plain", 0);
    EXPECT_FALSE(node.updateParmDisableConditional(node.getParm("plain"), false, nullptr));
    EXPECT_FALSE(node.getParm("plain").getEnableState());
    EXPECT_TRUE(node.updateParmDisableConditional(node.getParm("plain"), true, nullptr));
    EXPECT_TRUE(node.getParm("plain").getEnableState());
}
