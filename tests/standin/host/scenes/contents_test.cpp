#include "op/op_contents.h"
#include "scene_fixture.h"

using testing::ElementsAre;
using testing::HasSubstr;

class Contents : public SceneTest
{
protected:
    Contents() : asset(CAST_VOPNODE(net->createNode("subnet", "asset")))
    {
        asset->runCreateScript();
        OP_Node* source = asset->createNode("test::source", "source");
        asset->getChild("suboutput1")->setInput(0, source, 1);
        asset->createNode("test::parms", "parms")->setFloat("f", 0, 0, 5);
    }

    VOP_Node* asset;
};

TEST_F(Contents, BeginWithTheirSizeAndTheTableAndEndWithTheTrailer)
{
    const std::string bytes = standin::writeContents(*asset, "root");
    std::size_t size = 0;
    for (int i = 3; i >= 0; --i)
        size = size << 8 | static_cast<unsigned char>(bytes[static_cast<std::size_t>(i)]);
    EXPECT_EQ(size, bytes.size() - 4);
    std::vector<standin::ArchiveEntry> entries;
    std::string why;
    ASSERT_TRUE(standin::readArchive(bytes.substr(4), entries, why)) << why;
    Texts names;
    for (const standin::ArchiveEntry& entry : entries)
        names.push_back(entry.name);
    EXPECT_THAT(names, ElementsAre("node_type", "root.init", "root.def", "root.parm", "root/subinput1.init",
                                   "root/subinput1.def", "root/subinput1.parm", "root/suboutput1.init",
                                   "root/suboutput1.def", "root/suboutput1.parm", "root/source.init",
                                   "root/source.def", "root/source.parm", "root/parms.init", "root/parms.def",
                                   "root/parms.parm", "root.order", "root.net"));
    EXPECT_EQ(entries[0].data, "Vop\n");
    EXPECT_EQ(entries[1].data, "type = subnet\nmatchesdef = 0\n");
    EXPECT_EQ(entries[16].data, "4\nsubinput1\nsuboutput1\nsource\nparms\n");
    EXPECT_EQ(entries[17].data, "1\n");
}

TEST_F(Contents, AreMadeAgainInAnotherNetwork)
{
    const std::string bytes = standin::writeContents(*asset, "root");
    VOP_Node* other = CAST_VOPNODE(net->createNode("subnet", "other"));
    std::string why;
    ASSERT_TRUE(standin::readContents(*other, bytes, why)) << why;
    EXPECT_EQ(other->getNchildren(), 4);
    EXPECT_THAT(wiresOf(other->getChild("suboutput1")), ElementsAre("source.1>0"));
    EXPECT_EQ(other->getChild("parms")->evalFloat("f", 0, 0), 5);
    EXPECT_EQ(standin::writeContents(*other, "root"), bytes);
}

TEST_F(Contents, ThatAreCutOffMakeNothing)
{
    const std::string bytes = standin::writeContents(*asset, "root");
    VOP_Node* other = CAST_VOPNODE(net->createNode("subnet", "other"));
    for (std::size_t size = 0; size < bytes.size(); ++size)
    {
        std::string why;
        ASSERT_FALSE(standin::readContents(*other, bytes.substr(0, size), why)) << size;
        ASSERT_NE(why, "") << size;
        ASSERT_EQ(other->getNchildren(), 0) << size;
    }
}

TEST_F(Contents, MustHoldOneNodeAtTheTop)
{
    const std::string archive = standin::writeArchive({{"node_type", "Vop\n"}});
    std::string why;
    EXPECT_FALSE(standin::readContents(
        *asset, std::string(1, static_cast<char>(archive.size())) + std::string(3, '\0') + archive, why));
    EXPECT_THAT(why, HasSubstr("one node at the top, but holds 0"));
}
