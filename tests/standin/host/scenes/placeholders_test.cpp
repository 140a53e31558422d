#include "scene_fixture.h"

#include "op/op_placeholder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A scene from a session that had types which are missing here.
class Placeholders : public SceneTest
{
protected:
    Placeholders()
    {
        VOP_Node* sink = node("sink", "sink");
        VOP_Node* source = node("source", "source");
        VOP_Node* parms = node("parms", "parms");
        VOP_Node* subnet = CAST_VOPNODE(net->createNode("subnet", "sub"));
        node("lights", "lights")->setInput(1, source, 1);
        subnet->createNodeUnfiltered("test::parms", "inside")->setFloat("f", 0, 0, 8);
        sink->setInput(1, source, 1);
        parms->setString("kept", CH_STRING_LITERAL, "text", 0, 0);
        parms->getParm("i").setExpression(0, "$F", CH_OLD_EXPR_LANGUAGE, true, 0);
        source->setUserData("key", "value", false);
        std::string why;
        EXPECT_TRUE(standin::saveScene(file, why)) << why;
        for (const char* type : {"sink", "source", "parms"})
            replaceInFile(std::string("type = test::") + type + "\n",
                          std::string("type = gone::") + type + "\n");
    }

    void save()
    {
        std::string why;
        EXPECT_TRUE(standin::saveScene(file, why)) << why;
    }
};

TEST_F(Placeholders, StandForTypesThatAreMissingAndSayWhich)
{
    EXPECT_THAT(
        load(),
        ElementsAre(HasSubstr("Vop type \"gone::parms\" is missing: /shop/test_vopnet1/parms and 1 other "
                              "node are placeholders"),
                    HasSubstr("Vop type \"gone::sink\" is missing: /shop/test_vopnet1/sink is a"),
                    HasSubstr("Vop type \"gone::source\" is missing")));
    EXPECT_EQ(find("sink")->getOperator()->getName(), "gone::sink");
    EXPECT_NE(findVop("sink"), nullptr);
    EXPECT_EQ(OP_Network::getOperatorTable(VOP_TABLE_NAME)->getOperator("gone::sink"), nullptr);
}

TEST_F(Placeholders, ShowTheConnectorsThatTheyHadAndKeepTheirWires)
{
    load();
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.1>1"));
    EXPECT_THAT(wiresOf(find("lights")), ElementsAre("source.1>1"));
    EXPECT_EQ(findVop("source")->getNumVisibleOutputs(), 2u);
    UT_String name;
    findVop("source")->getOutputName(name, 1);
    EXPECT_EQ(name, "v");
    EXPECT_EQ(findVop("sink")->getNumVisibleInputs(), 2u);
    findVop("sink")->getInputName(name, 1);
    EXPECT_EQ(name, "b");
}

TEST_F(Placeholders, AreSavedByteForByteAsTheyWereRead)
{
    const std::string before = bytes();
    load();
    save();
    EXPECT_EQ(bytes(), before);
}

TEST_F(Placeholders, KeepEntriesThatNobodyKnows)
{
    std::string why;
    std::vector<standin::ArchiveEntry> entries;
    ASSERT_TRUE(standin::readArchive(bytes(), entries, why)) << why;
    const std::string path = netPath().substr(1) + "/parms";
    entries.push_back({path + ".alias", "an alias\n"});
    entries.push_back({path + "/note1.postitinit", "type = postitnote\nmatchesdef = 0\n"});
    for (standin::ArchiveEntry& entry : entries)
        if (entry.name == path + ".def")
            entry.data = "comment \"by hand\"\nposition 1 2\ncolor UT_Color RGB 1 0 0\nend\n";
    setBytes(standin::writeArchive(entries));
    load();
    save();
    EXPECT_EQ(entry(path + ".alias"), "an alias\n");
    EXPECT_EQ(entry(path + "/note1.postitinit"), "type = postitnote\nmatchesdef = 0\n");
    EXPECT_THAT(entry(path + ".def"), HasSubstr("by hand"));
}

TEST_F(Placeholders, AreSavedAsTheyAreNowWhenTheyWereChanged)
{
    load();
    find("sink")->setXY(7, 8);
    find("source")->setUserData("key", "other", false);
    find("lights")->setInput(1, nullptr);
    save();
    const std::string net = netPath().substr(1);
    EXPECT_THAT(entry(net + "/sink.def"), HasSubstr("position 7 8\n"));
    EXPECT_THAT(entry(net + "/source.userdata"), HasSubstr("other"));
    load();
    EXPECT_EQ(find("sink")->getX(), 7);
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.1>1"));
}

TEST_F(Placeholders, FollowNodesThatAreRenamed)
{
    load();
    find("source")->getParent()->renameNode(find("source"), "renamed");
    save();
    load();
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("renamed.1>1"));
}

TEST_F(Placeholders, FollowNodesWhoseNamesWereTakenWhenTheyWereMerged)
{
    std::string why;
    std::vector<standin::ArchiveEntry> entries, moved;
    ASSERT_TRUE(standin::readArchive(bytes(), entries, why)) << why;
    for (const standin::ArchiveEntry& entry : entries)
    {
        const std::string inside = netPath().substr(1) + "/";
        const bool wanted = entry.name.compare(0, inside.size(), inside) == 0;
        if (wanted || entry.name == ".start" || entry.name == "vex.init")
            moved.push_back({wanted ? "vex/" + entry.name.substr(inside.size()) : entry.name, entry.data});
    }
    setBytes(standin::writeArchive(moved));
    load();
    Texts warnings;
    ASSERT_TRUE(standin::mergeScene(file, warnings, why)) << why;
    OP_Network* vex = OPgetDirector()->getManager("vex");
    EXPECT_THAT(wiresOf(vex->getChild("sink1")), ElementsAre("source1.1>1"));
    save();
    load();
    EXPECT_THAT(wiresOf(vex->getChild("sink1")), ElementsAre("source1.1>1"));
    EXPECT_THAT(wiresOf(vex->getChild("sink")), ElementsAre("source.1>1"));
}

TEST_F(Placeholders, GiveWayToTheRealTypeWhenItIsThere)
{
    load();
    save();
    for (const char* type : {"sink", "source", "parms"})
        replaceInFile(std::string("type = gone::") + type + "\n", std::string("type = test::") + type + "\n");
    EXPECT_THAT(load(), IsEmpty());
    UT_String text;
    find("parms")->evalStringRaw(text, "text", 0, 0);
    EXPECT_EQ(text, "kept");
    EXPECT_STREQ(find("parms")->getParm("i").getExpression(0), "$F");
    EXPECT_EQ(find("sub/inside")->evalFloat("f", 0, 0), 8);
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.1>1"));
    EXPECT_TRUE(find("source")->hasUserData("key"));
}

TEST_F(Placeholders, KeepWhatIsInsideAContainerThatIsMissing)
{
    replaceInFile("type = test_vopnet\n", "type = lost_vopnet\n");
    const std::string before = bytes();
    load();
    EXPECT_THAT(wiresOf(find("lights")), ElementsAre("source.1>1"));
    EXPECT_EQ(find("lights")->getOperator()->getName(), "test::lights");
    save();
    EXPECT_EQ(bytes(), before);
}

TEST_F(Placeholders, PassTheirInputsInAsTheMissingTypeDid)
{
    load();
    VOP_Node* subnet = findVop("sub");
    OP_Node* begin = subnet->createNodeUnfiltered("subinput", "begin");
    subnet->setInput(0, find("source"), 1);
    subnet->setInput(1, find("lights"), 0);
    subnet->createNodeUnfiltered("suboutput", "end")->setInput(0, begin, 1);
    save();
    replaceInFile("type = subnet\n", "type = gone::subnet\n");
    const std::string before = bytes();
    load();
    EXPECT_THAT(wiresOf(find("sub/end")), ElementsAre("begin.1>0"));
    save();
    EXPECT_EQ(bytes(), before);
}

TEST_F(Placeholders, AreMadeForTypesWhoseConstructorThrows)
{
    replaceInFile("type = gone::sink\n", "type = test::throwing\n");
    load();
    EXPECT_NE(standin::placeholderOf(find("sink")), nullptr);
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.1>1"));
    ASSERT_EQ(standin::takeMessages().size(), 1u);
}

TEST_F(Placeholders, AreCopiedWithAllTheyKeep)
{
    load();
    std::vector<OP_Node*> copies;
    std::string why;
    ASSERT_FALSE(standin::copyNodes({find("parms")}, *find("parms")->getParent(), copies, why));
    EXPECT_THAT(why, HasSubstr("\"gone::parms\" is not allowed there"));
    OP_Network* vex = OPgetDirector()->getManager("vex");
    ASSERT_TRUE(standin::copyNodes({find("parms")}, *vex, copies, why)) << why;
    save();
    EXPECT_EQ(entry("vex/parms.parm"), entry(netPath().substr(1) + "/parms.parm"));
    EXPECT_NE(entry("vex/parms.parm"), "(none)");
}
