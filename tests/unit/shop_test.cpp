#include "standin_session.h"

#include "shop.h"
#include "vop_utility.h"

#include <PY/PY_Python.h>
#include <SHOP/SHOP_OperatorInfo.h>
#include <VOP/VOP_Operator.h>

#include <gmock/gmock.h>

#include <vector>

using testing::Contains;
using testing::ElementsAre;
using zelk::shop::SHOP_KorvanMaterial;

namespace
{

std::vector<OP_OperatorTable*> told_tables;

} // namespace

/// Nobody watches tables in the host that the tests run in: the plug-in finds this one in place of the host's own.
void OP_OperatorTable::notifyUpdateTableSinksOfUpdate() { told_tables.push_back(this); }

TEST(EntryPoints, TellTheToolkitsVersionAndCompiler)
{
    const char* version = nullptr;
    HoudiniDSOVersion(&version);
    EXPECT_STREQ(version, "15.5");
    EXPECT_EQ(HoudiniCompilerVersion(), 408u);
}

TEST(ShopTable, GetsTheContainerAndNothingElse)
{
    StandinSession session;
    OP_OperatorTable* table = OP_Network::getOperatorTable("Shop");
    const int before = table->entries();
    newShopOperator(table);

    EXPECT_EQ(table->entries(), before + 1);
    OP_Operator* op = table->getOperator("korvan_vopnet");
    ASSERT_NE(op, nullptr);
    EXPECT_STREQ(op->getEnglish(), "Korvan Shader Network");
    EXPECT_EQ(op->getMinSources(), 0u);
    EXPECT_EQ(op->getMaxSources(), 0u);
    EXPECT_EQ(op->getFlags(), 0x10u);
    EXPECT_TRUE(op->getParmTemplates()->getType() == PRM_LIST_TERMINATOR);
}

TEST(Container, HoldsVopNodesOfTheHostsTable)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();

    EXPECT_STREQ(net.getChildType(), "VOP");
    EXPECT_EQ(net.getChildTypeID(), 10);
    EXPECT_EQ(net.getOperatorTable(), OP_Network::getOperatorTable("Vop"));
    EXPECT_EQ(SHOP_KorvanMaterial::createAndGetOperatorTable(), OP_Network::getOperatorTable("Vop"));
    EXPECT_EQ(net.getNumParms(), 0);
    EXPECT_EQ(static_cast<SHOP_Node&>(net).getShaderType(), 31);
}

TEST(Container, TellsWhoeverWatchesTheTableOfVopNodes)
{
    StandinSession session;
    session.registerAll();
    told_tables.clear();

    session.container();
    EXPECT_THAT(told_tables, Contains(OP_Network::getOperatorTable("Vop"))) << "when a container is made";
    told_tables.clear();
    SHOP_KorvanMaterial::createAndGetOperatorTable();
    EXPECT_THAT(told_tables, ElementsAre(OP_Network::getOperatorTable("Vop")));
}

TEST(Container, TakesOurNodesAndTheHostsPlainOnesOnly)
{
    StandinSession session;
    session.renderer.shader("noise");
    session.registerAll();
    OP_Network& net = session.container();

    EXPECT_NE(net.createNode("korvan::noise"), nullptr);
    EXPECT_NE(net.createNode("subnet"), nullptr);
    EXPECT_NE(net.createNode("null"), nullptr);
    EXPECT_EQ(net.createNode("add"), nullptr);
    EXPECT_EQ(net.createNode("subinput"), nullptr);
}

TEST(Container, StartsWithAPlacedMaterialOutput)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    EXPECT_EQ(net.getNchildren(), 0) << "until its creation script runs, which loading a scene never does";
    ASSERT_TRUE(net.runCreateScript());

    ASSERT_EQ(net.getNchildren(), 1);
    EXPECT_STREQ(net.getChild(0)->getOperator()->getName(), "korvan_material");
    EXPECT_STREQ(net.getChild(0)->getName(), "OUT_material");
}

TEST(Container, IsNotMadeWithoutItsMaterialOutput)
{
    StandinSession session;
    newShopOperator(OP_Network::getOperatorTable("Shop"));
    EXPECT_FALSE(session.container().runCreateScript()) << "the type is not there";
}

TEST(Container, IsNotMadeWhenACreationScriptDeletesItOrItsOutput)
{
    StandinSession session;
    session.registerAll();
    for (const char* script : {"scripts/shop/korvan_vopnet.py", "scripts/vop/korvan_material.py"})
    {
        session.folder.write(script, "kwargs['node'].destroy()\n");
        EXPECT_FALSE(session.container().runCreateScript()) << script;
        std::filesystem::remove(session.folder.path() / script);
    }
}

TEST(Container, PlacesItsMaterialOutputBesideWhatIsThere)
{
    StandinSession session;
    session.registerAll();
    OP_Network& net = session.container();
    ASSERT_TRUE(net.runCreateScript());
    ASSERT_TRUE(net.runCreateScript());
    ASSERT_EQ(net.getNchildren(), 2);
    EXPECT_TRUE(net.getChild(0)->getX() != net.getChild(1)->getX() ||
                net.getChild(0)->getY() != net.getChild(1)->getY());
}

TEST(Container, TakesThePlainNodesByTheirExactNames)
{
    StandinSession session;
    session.registerAll();
    OP_OperatorTable* table = OP_Network::getOperatorTable("Vop");
    zelk::shop::OP_KorvanMaterialOperatorFilter filter;
    EXPECT_TRUE(filter.allowOperatorAsChild(table->getOperator("null")));
    for (const char* name : {"null2", "subnets", "nul", ""})
    {
        VOP_Operator other(name, "Other", nullptr, nullptr, 0, 0, "*");
        EXPECT_FALSE(filter.allowOperatorAsChild(&other)) << name;
    }
    EXPECT_FALSE(filter.allowOperatorAsChild(nullptr));
}

namespace
{

std::string assetFile(const StandinSession& session) { return (session.folder.path() / "made.hda").string(); }

/// A digital asset made of a subnet, which is empty or holds a node of that type.
OP_Operator* newAsset(const StandinSession& session, const std::string& child = "")
{
    const std::string script = "import hou\n"
                               "net = hou.node('/shop').createNode('korvan_vopnet')\n"
                               "subnet = net.createNode('subnet')\n" +
                               (child.empty() ? child : "subnet.createNode('" + child + "')\n") +
                               "subnet.createDigitalAsset('test::made', '" + assetFile(session) + "')\n";
    PYrunPythonStatementsAndExpectNoErrors(script.c_str());
    return session.vop("test::made");
}

} // namespace

TEST(Container, RefusesAssetsWhosePathBeginsWithTheHostsDirectory)
{
    StandinSession session;
    session.renderer.shader("noise");
    session.registerAll();
    const std::string file = assetFile(session);
    OP_Operator* made = newAsset(session, "korvan::noise");
    ASSERT_NE(made, nullptr);

    zelk::shop::OP_KorvanMaterialOperatorFilter filter;
    const struct
    {
        std::string directory;
        bool admitted;
    } cases[] = {{file.substr(0, file.size() - 3), false}, // plain text, not whole names
                 {"/elsewhere", true},
                 {"made.hda", true},
                 {file.substr(1), true},
                 {"", false}};
    for (const auto& row : cases)
    {
        ::setenv("HH", row.directory.c_str(), 1);
        EXPECT_EQ(filter.allowOperatorAsChild(made), row.admitted) << row.directory;
    }
    ::unsetenv("HH");
    EXPECT_TRUE(filter.allowOperatorAsChild(made));
}

TEST(Container, RefusesAssetsWithoutKorvanNodes)
{
    StandinSession session;
    session.registerAll();
    OP_Operator* made = newAsset(session);
    ASSERT_NE(made, nullptr);
    zelk::shop::OP_KorvanMaterialOperatorFilter filter;
    EXPECT_FALSE(filter.allowOperatorAsChild(made));
}

TEST(Container, TakesOurTypesAndThePlainOnesWithoutALookAtTheirAsset)
{
    StandinSession session;
    session.registerAll();
    OP_Operator* made = newAsset(session);
    ASSERT_NE(made, nullptr);
    const std::shared_ptr<OP_OTLLibrary> library(std::shared_ptr<void>(), made->getOTLLibrary());
    VOP_Operator plain("null", "Null", nullptr, nullptr, 0, 0, "*");
    zelk::shop::VOP_KorvanUtilityOperator ours("ours", "Ours", nullptr, nullptr, 0, 0, "*");
    zelk::shop::OP_KorvanMaterialOperatorFilter filter;
    ::setenv("HH", "", 1);
    for (OP_Operator* op : {static_cast<OP_Operator*>(&plain), static_cast<OP_Operator*>(&ours)})
    {
        op->setOTLLibrary(library, 0);
        EXPECT_TRUE(filter.allowOperatorAsChild(op)) << op->getName();
    }
    ::unsetenv("HH");
}

TEST(Container, OffersItsNodesInTheTabMenuAndNobodyElseDoes)
{
    StandinSession session;
    session.renderer.shader("noise").metaData("houdini.category", "Texture");
    session.registerAll();

    Names inside, outside;
    for (const standin::TabEntry& entry : standin::tabMenu(session.container()))
        inside.push_back(entry.subMenu + "/" + entry.name);
    for (const standin::TabEntry& entry : standin::tabMenu(*OPgetDirector()->getManager("vex")))
        outside.push_back(entry.name);
    EXPECT_THAT(inside, ::testing::UnorderedElementsAre("Texture/korvan::noise", "/subnet", "/null",
                                                        "Output/korvan_material", "Output/korvan_environment",
                                                        "Output/korvan_light", "Output/korvan_camera",
                                                        "Utility/korvan::fetch", "Texture/korvan::ramp_float",
                                                        "Texture/korvan::ramp_rgb"));
    EXPECT_THAT(outside, ::testing::Not(::testing::Contains(::testing::StartsWith("korvan"))));
}
