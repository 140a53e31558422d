#include "test_types.h"

#include <standin/host.h>

#include <gmock/gmock.h>

#include <sstream>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace
{

OP_Operator* makeOperator(const char* name)
{
    return new VOP_Operator(name, "Label", nullptr, nullptr, 0, 0, "*");
}

std::string textOf(const UT_String& text) { return text.toStdString(); }

} // namespace

TEST(OperatorTable, KeepsTheOrderOfInsertion)
{
    OP_OperatorTable table("Vop");
    for (const char* name : {"zebra", "ant", "mule"})
        table.addOperator(makeOperator(name));
    std::vector<std::string> names;
    for (const OP_Operator* op : standin::operatorsOf(table))
        names.push_back(textOf(op->getName()));
    EXPECT_THAT(names, testing::ElementsAre("zebra", "ant", "mule"));
}

TEST(OperatorTable, KeepsTheFirstOfTwoOperatorsOfOneName)
{
    OP_OperatorTable table("Vop");
    OP_Operator* first = makeOperator("noise");
    const std::unique_ptr<OP_Operator> second(makeOperator("noise"));
    std::ostringstream err;
    EXPECT_TRUE(table.addOperator(first, &err));
    EXPECT_FALSE(table.addOperator(second.get(), &err));
    EXPECT_EQ(table.entries(), 1);
    EXPECT_EQ(table.getOperator("noise"), first);
    EXPECT_EQ(second->getTable(), nullptr);
    EXPECT_THAT(err.str(), HasSubstr("\"noise\" is already in the Vop table, registered by the host itself"));
    EXPECT_TRUE(standin::takeMessages().empty());
}

TEST(OperatorTable, ComplainsToTheHostWithoutAStream)
{
    OP_OperatorTable table("Vop");
    table.addOperator(makeOperator("noise"));
    const std::unique_ptr<OP_Operator> second(makeOperator("noise"));
    EXPECT_FALSE(table.addOperator(second.get()));
    const std::vector<standin::Message> messages = standin::takeMessages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].severity, standin::Severity::Error);
}

TEST(OperatorTable, TakesNeitherNullNorANamelessOperator)
{
    OP_OperatorTable table("Vop");
    const std::unique_ptr<OP_Operator> nameless(makeOperator(""));
    std::ostringstream err;
    EXPECT_FALSE(table.addOperator(nullptr, &err));
    EXPECT_FALSE(table.addOperator(nameless.get(), &err));
    EXPECT_EQ(table.entries(), 0);
}

TEST(OperatorTable, RemovesAnOperator)
{
    OP_OperatorTable table("Vop");
    table.addOperator(makeOperator("noise"));
    table.removeOperator(table.getOperator("noise"));
    EXPECT_EQ(table.entries(), 0);
    EXPECT_EQ(table.getOperator("noise"), nullptr);
}

TEST(OperatorTable, FindsNothingUnderNoName)
{
    OP_OperatorTable table("Vop");
    EXPECT_EQ(table.getOperator(nullptr), nullptr);
    EXPECT_EQ(table.getOperator(""), nullptr);
}

TEST(OperatorTable, IsTheSameForAName)
{
    EXPECT_EQ(OP_Network::getOperatorTable("Vop"), OP_Network::getOperatorTable("Vop", nullptr));
    EXPECT_EQ(OP_Network::getOperatorTable("Vop")->getOpTypeID(), VOP_OPTYPE_ID);
    EXPECT_EQ(OP_Network::getOperatorTable("Shop")->getOpTypeID(), SHOP_OPTYPE_ID);
    EXPECT_EQ(OP_Network::getOperatorTable(nullptr), nullptr);
}

TEST(OperatorTable, NamesNodesAfterTheType)
{
    OP_OperatorTable table("Vop");
    table.addOperator(makeOperator("korvan_light"));
    UT_String name;
    table.getDefaultNodeName("korvan_light", name);
    EXPECT_EQ(textOf(name), "korvan_light");
}

TEST(Operator, HasTheIconThatWasSetElseOneMadeOfTableAndName)
{
    OP_OperatorTable table("Vop");
    OP_Operator* op = makeOperator("korvan::noise");
    table.addOperator(op);
    EXPECT_EQ(textOf(op->getIconName()), "Vop_noise");
    op->setIconName("VOP_output");
    EXPECT_EQ(textOf(op->getIconName()), "VOP_output");
}

TEST(Operator, HasNoHelpAndNoSubMenuUnlessGiven)
{
    const std::unique_ptr<OP_Operator> op(makeOperator("noise"));
    UT_String text;
    EXPECT_FALSE(op->getOpHelpURL(text));
    EXPECT_FALSE(op->getOpTabSubMenuPath(text));
    op->setOpTabSubMenuPath("Texture/Procedural");
    EXPECT_TRUE(op->getOpTabSubMenuPath(text));
    EXPECT_EQ(textOf(text), "Texture/Procedural");
}

TEST(Operator, ComesFromNoAssetFile)
{
    const std::unique_ptr<OP_Operator> op(makeOperator("noise"));
    EXPECT_EQ(op->getOTLLibrary(), nullptr);
    EXPECT_EQ(op->getOTLIndexFile(), nullptr);
}

TEST(Operator, HasATerminatedTemplateListEvenWithoutTemplates)
{
    const std::unique_ptr<OP_Operator> op(makeOperator("noise"));
    ASSERT_NE(op->getParmTemplates(), nullptr);
    EXPECT_EQ(PRM_Template::countTemplates(op->getParmTemplates()), 0);
}

TEST(VopOperator, KeepsMaskAndOutputs)
{
    VOP_Operator op("noise", "Noise", nullptr, nullptr, 0, 2048, "korvan_vopnet", nullptr, 4, 7);
    auto* info = static_cast<VOP_OperatorInfo*>(op.getOpSpecificData());
    EXPECT_EQ(textOf(info->getVopnetMask()), "korvan_vopnet");
    EXPECT_EQ(op.maxOutputs(), 7u);
    EXPECT_EQ(op.getFlags(), 4u);
    EXPECT_EQ(op.getMaxSources(), 2048u);
    std::string mask;
    EXPECT_TRUE(standin::vopnetMaskOf(op, mask));
    EXPECT_EQ(mask, "korvan_vopnet");
}

TEST(ShopOperator, IsForEveryRenderer)
{
    SHOP_Operator op("net", "Net", nullptr, nullptr, 0, 0, nullptr, 0x10, 2);
    auto* info = static_cast<SHOP_OperatorInfo*>(op.getOpSpecificData());
    EXPECT_EQ(textOf(info->getRenderMask()), "*");
    std::string mask;
    EXPECT_FALSE(standin::vopnetMaskOf(op, mask));
}

TEST(ConnectorTypes, HaveWordsForMessages)
{
    EXPECT_STREQ(VOPgetTypeName(VOP_TYPE_FLOAT), "float");
    EXPECT_STREQ(VOPgetTypeName(VOP_ATMOSPHERE_SHADER), "atmosphere shader");
    EXPECT_STREQ(VOPgetTypeName(static_cast<VOP_Type>(1234)), "type 1234");
}

TEST(ConnectorTypes, NameTheShadersAmongThem)
{
    EXPECT_STREQ(VOPgetShaderTypeName(VOP_LENS_SHADER), "lens");
    EXPECT_EQ(VOPgetShaderTypeName(VOP_TYPE_FLOAT), nullptr);
}
