#include "asset_files.h"

#include "op/op_otl_manager.h"

#include <OP/OP_Director.h>
#include <OP/OP_OTLLibrary.h>
#include <OP/OP_OperatorTable.h>
#include <VOP/VOP_Node.h>
#include <standin/host.h>

namespace
{

using standin::installLibrary;
using standin::uninstallLibrary;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const char* const dialog = "{\n    input\tfloat\tx\t\"The X\"\n    input\tint\ty\t\"The Y\"\n"
                           "    output\tvector\tout\t\"The Out\"\n"
                           "    parm {\n\tname\t\"gain\"\n\ttype\tfloat\n\tdefault\t{ \"2.5\" }\n    }\n}\n";

/// A null fed by the first input, and the end fed by that.
std::string contents()
{
    return contentsBytes({{"node_type", "Vop\n"},
                          {"x1.init", "type = test::x\nmatchesdef = 0\n"},
                          {"x1.def", "comment \"\"\nend\n"},
                          {"x1/begin.init", "type = subinput\nmatchesdef = 0\n"},
                          {"x1/pass.init", "type = null\nmatchesdef = 0\n"},
                          {"x1/pass.def", "comment \"\"\ninputs\n{\n0 \tbegin 0 1\n}\nend\n"},
                          {"x1/suboutput1.init", "type = suboutput\nmatchesdef = 0\n"},
                          {"x1/suboutput1.def", "comment \"\"\ninputs\n{\n0 \tpass 0 1\n}\nend\n"},
                          {"x1.order", "3\nbegin\npass\nsuboutput1\n"},
                          {"x1.net", "1\n"}});
}

std::vector<std::string> takeTexts()
{
    std::vector<std::string> texts;
    for (const standin::Message& message : standin::takeMessages())
        texts.push_back(message.text);
    return texts;
}

class Assets : public AssetFiles
{
protected:
    Assets() : m_net(OPgetDirector()->getManager("vex")) { standin::takeMessages(); }

    ~Assets() override
    {
        while (m_net->getNchildren())
            m_net->destroyNode(m_net->getChild(0));
        std::string why;
        for (const std::string& path : standin::installedLibraries())
            EXPECT_TRUE(uninstallLibrary(path, why)) << why;
        EXPECT_THAT(takeTexts(), IsEmpty());
    }

    std::string write(const Sections& sections, const std::string& name = "test::x",
                      const std::string& fileName = "a.hda")
    {
        const std::string records = number(1) + typeRecord(name, "Vop", "*", 2);
        return file(fileName,
                    indexBytes({{"INDEX_SECTION", records}, {"Vop/" + name, indexBytes(sections)}}));
    }

    void install(const std::string& path)
    {
        std::string why;
        EXPECT_TRUE(installLibrary(path, why)) << why;
    }

    OP_Operator* op(const char* name)
    {
        return OP_Network::getOperatorTable(VOP_TABLE_NAME)->getOperator(name);
    }

    OP_Network* m_net;
};

TEST_F(Assets, BecomeOperatorsOfTheirTable)
{
    install(write({{"DialogScript", dialog}, {"Contents.gz", gzip(contents())}}));
    ASSERT_NE(op("test::x"), nullptr);
    EXPECT_NE(dynamic_cast<VOP_Operator*>(op("test::x")), nullptr);
    EXPECT_STREQ(op("test::x")->getEnglish(), "Label of test::x");
    EXPECT_STREQ(op("test::x")->getOTLLibrary()->getSource(), path("a.hda").c_str());
    EXPECT_STREQ(op("test::x")->getOTLDefinition().getName(), "test::x");
    ASSERT_NE(op("test::x")->getOTLIndexFile(), nullptr);
    EXPECT_EQ(op("test::x")->getOTLIndexFile(), op("test::x")->getOTLIndexFile());
    EXPECT_EQ(sectionOf(*op("test::x")->getOTLIndexFile(), "DialogScript"), dialog);
    std::string mask;
    EXPECT_TRUE(standin::vopnetMaskOf(*op("test::x"), mask));
    EXPECT_EQ(mask, "*");
    EXPECT_EQ(op("null")->getOTLIndexFile(), nullptr);
    EXPECT_STREQ(op("null")->getOTLDefinition().getName(), "");
}

TEST_F(Assets, GiveTheirNodesConnectorsParametersAndContents)
{
    install(write({{"DialogScript", dialog}, {"Contents.gz", gzip(contents())}}));
    VOP_Node* node = CAST_VOPNODE(m_net->createNode("test::x"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->evalFloat("gain", 0, 0), 2.5);
    ASSERT_EQ(node->getNumVisibleInputs(), 2u);
    EXPECT_STREQ(node->inputLabel(1), "The Y");
    EXPECT_EQ(node->getInputType(1), VOP_TYPE_INTEGER);
    ASSERT_EQ(node->getNumVisibleOutputs(), 1u);
    EXPECT_EQ(node->getOutputType(0), VOP_TYPE_VECTOR);
    EXPECT_EQ(node->getOutputFromName("out"), 0);
    ASSERT_EQ(node->getNchildren(), 3);
    EXPECT_EQ(node->findNode("suboutput1")->getInput(0), node->findNode("pass"));
    EXPECT_EQ(node->findNode("pass")->getInput(0), node->findNode("begin"));
}

TEST_F(Assets, ReadPlainContentsAsWell)
{
    install(write({{"Contents", contents()}}));
    EXPECT_EQ(m_net->createNode("test::x")->castToOPNetwork()->getNchildren(), 3);
    EXPECT_EQ(m_net->createNode("test::x", nullptr, 1, 1, 0)->castToOPNetwork()->getNchildren(), 0);
}

TEST_F(Assets, AreNotReadBeyondTheirIndexUntilTheyAreUsed)
{
    install(write({{"DialogScript", dialog}, {"Contents.gz", "damaged"}}));
    file("a.hda", "gone");
    const FS_IndexFile* index = op("test::x")->getOTLIndexFile();
    EXPECT_FALSE(index && index->hasSection("Contents.gz"));
}

TEST_F(Assets, WithDamagedContentsGiveEmptyNodesAndASentence)
{
    for (const Sections& sections : {Sections{{"Contents.gz", "damaged"}}, Sections{{"Contents", "damaged"}},
                                     Sections{{"Contents.gz", gzip(contents().substr(0, 200))}},
                                     Sections{{"Contents.gz", gzip(contents()).substr(0, 100)}}})
    {
        install(write(sections));
        OP_Node* node = m_net->createNode("test::x");
        EXPECT_EQ(node->castToOPNetwork()->getNchildren(), 0);
        EXPECT_THAT(takeTexts(), ElementsAre(HasSubstr("stays without its contents: \"" + path("a.hda"))));
        m_net->destroyNode(node);
    }
}

TEST_F(Assets, LoadTheContentsOfLockedAssetsInsideThem)
{
    install(write({{"Contents", contents()}}));
    const std::string outer = contentsBytes({{"node_type", "Vop\n"},
                                             {"y1.init", "type = test::y\nmatchesdef = 0\n"},
                                             {"y1/locked.init", "type = test::x\nmatchesdef = 1\n"},
                                             {"y1/open.init", "type = test::x\nmatchesdef = 0\n"}});
    install(write({{"Contents", outer}}, "test::y", "y.hda"));
    OP_Node* node = m_net->createNode("test::y");
    EXPECT_EQ(node->findNode("locked")->castToOPNetwork()->getNchildren(), 3);
    EXPECT_EQ(node->findNode("open")->castToOPNetwork()->getNchildren(), 0);
}

TEST_F(Assets, ThatHoldThemselvesEndWithASentence)
{
    const std::string endless = contentsBytes({{"node_type", "Vop\n"},
                                               {"x1.init", "type = test::x\nmatchesdef = 0\n"},
                                               {"x1/again.init", "type = test::x\nmatchesdef = 1\n"}});
    install(write({{"Contents", endless}}));
    OP_Node* node = m_net->createNode("test::x");
    EXPECT_EQ(node->findNode("again")->castToOPNetwork()->getNchildren(), 0);
    EXPECT_THAT(takeTexts(), ElementsAre(HasSubstr("holds a node of its own type")));
}

TEST_F(Assets, OfUnknownTablesAreListedButNotMade)
{
    const std::string records = number(1) + typeRecord("test::s", "Sop");
    install(file("a.hda", indexBytes({{"INDEX_SECTION", records}})));
    EXPECT_EQ(standin::installedLibrary(path("a.hda"))->getNumDefinitions(), 1);
    EXPECT_EQ(op("test::s"), nullptr);
}

TEST_F(Assets, OfOtherTablesAreNodesOfThose)
{
    const std::string records =
        number(2) + typeRecord("test::o", OBJ_TABLE_NAME) + typeRecord("test::s", SHOP_TABLE_NAME);
    install(file("a.hda", indexBytes({{"INDEX_SECTION", records}})));
    OP_Network* objects = OPgetDirector()->getManager("obj");
    OP_Node* object = objects->createNode("test::o");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->getOpTypeID(), OBJ_OPTYPE_ID);
    objects->destroyNode(object);
    OP_Network* shaders = OPgetDirector()->getManager("shop");
    OP_Node* shader = shaders->createNode("test::s");
    ASSERT_NE(shader, nullptr);
    EXPECT_NE(CAST_SHOPNODE(shader), nullptr);
    shaders->destroyNode(shader);
}

TEST_F(Assets, WhoseNameIsTakenAreLeftOutWithASentence)
{
    install(write({}, "null"));
    EXPECT_THAT(takeTexts(),
                ElementsAre(HasSubstr("\"null\" of \"" + path("a.hda") +
                                      "\" is left out: the host itself has a type of that name")));
    EXPECT_EQ(op("null")->getOTLLibrary(), nullptr);
    install(write({}, "test::x", "b.hda"));
    install(write({}, "test::x", "c.hda"));
    EXPECT_THAT(takeTexts(), ElementsAre(HasSubstr("is left out: \"" + path("b.hda") + "\" has a type")));
}

TEST_F(Assets, AreReadAnewWhenTheirFileIsInstalledAgain)
{
    install(write({{"DialogScript", "{\n}\n"}}));
    OP_Node* old = m_net->createNode("test::x");
    EXPECT_FALSE(old->hasParm("gain"));
    OP_Operator* before = op("test::x");
    install(write({{"DialogScript", dialog}}));
    EXPECT_EQ(op("test::x"), before);
    EXPECT_TRUE(m_net->createNode("test::x")->hasParm("gain"));
    EXPECT_FALSE(old->hasParm("gain"));
    EXPECT_EQ(standin::installedLibraries().size(), 1u);
}

TEST_F(Assets, AreUninstalledOnce)
{
    install(write({}));
    std::string why;
    EXPECT_TRUE(uninstallLibrary(path("a.hda"), why)) << why;
    EXPECT_EQ(op("test::x"), nullptr);
    EXPECT_FALSE(uninstallLibrary(path("a.hda"), why));
    EXPECT_THAT(why, HasSubstr("is not installed"));
}

TEST_F(Assets, LeavePlaceholdersWithEverythingWhenTheyAreUninstalled)
{
    install(write({{"DialogScript", dialog}, {"Contents.gz", gzip(contents())}}));
    OP_Node* before = m_net->createNode("add", "before");
    OP_Node* mine = m_net->createNode("test::x", "mine");
    OP_Node* other = m_net->createNode("test::x", "other");
    OP_Node* after = m_net->createNode("add", "after");
    mine->setInput(1, before);
    other->setInput(0, mine);
    after->setInput(0, other);
    other->setUserData("who", "me", false);

    std::string why;
    EXPECT_TRUE(uninstallLibrary(path("a.hda"), why)) << why;
    EXPECT_THAT(takeTexts(), ElementsAre(HasSubstr(": /vex/mine and 1 more stay as placeholders.")));
    EXPECT_EQ(op("test::x"), nullptr);
    OP_Node* mineNow = m_net->getChild("mine");
    OP_Node* otherNow = m_net->getChild("other");
    ASSERT_TRUE(mineNow && otherNow);
    EXPECT_STREQ(otherNow->getOperator()->getName(), "test::x");
    EXPECT_EQ(mineNow->getInput(1), before);
    EXPECT_EQ(otherNow->getInput(0), mineNow);
    EXPECT_EQ(after->getInput(0), otherNow);
    UT_String who;
    EXPECT_TRUE(otherNow->getUserData("who", who));
    EXPECT_STREQ(who, "me");
    EXPECT_EQ(mineNow->castToOPNetwork()->getNchildren(), 3);
    EXPECT_EQ(mineNow->findNode("suboutput1")->getInput(0), mineNow->findNode("pass"));
}

TEST_F(Assets, OfABadFileAreRefusedWithASentence)
{
    std::string why;
    EXPECT_FALSE(installLibrary(file("a.hda", "text"), why));
    EXPECT_THAT(why, HasSubstr("does not begin with \"INDX\""));
    EXPECT_FALSE(installLibrary(path("none.hda"), why));
    EXPECT_THAT(why, HasSubstr("No such file"));
    EXPECT_FALSE(installLibrary("", why));
    EXPECT_THAT(standin::installedLibraries(), IsEmpty());
}

} // namespace
