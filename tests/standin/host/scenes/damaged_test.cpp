#include "scene_fixture.h"

#include <csignal>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DamagedScene : public SceneTest
{
protected:
    DamagedScene()
    {
        VOP_Node* sink = node("sink", "sink");
        sink->setInput(0, node("source", "source"), 0);
        sink->setFloat("a", 0, 0, 4);
        sink->setUserData("key", "value", false);
        std::string why;
        EXPECT_TRUE(standin::saveScene(file, why)) << why;
    }

    /// What loading says; the scene must stay as it was.
    std::string refusal()
    {
        const int id = net->getUniqueId();
        Texts warnings;
        std::string why;
        EXPECT_FALSE(standin::loadScene(file, warnings, why));
        EXPECT_THAT(warnings, IsEmpty());
        EXPECT_EQ(OP_Node::lookupNode(id), net);
        return why;
    }
};

TEST_F(DamagedScene, IsRefusedAtEveryLengthThatIsTooShort)
{
    const std::string whole = bytes();
    for (std::size_t size = 0; size < whole.size(); ++size)
    {
        setBytes(whole.substr(0, size));
        ASSERT_THAT(refusal(), AllOf(HasSubstr(file), HasSubstr(size ? "at byte " : "empty"),
                                     HasSubstr("Load another copy")))
            << size;
    }
    setBytes(whole);
    EXPECT_THAT(load(), IsEmpty());
}

TEST_F(DamagedScene, IsRefusedWhenItIsSomethingElse)
{
    setBytes("Lorem ipsum");
    EXPECT_THAT(refusal(), HasSubstr("there is no archive entry at byte 0"));
    setBytes(standin::writeArchive({{"node_type", "Vop\n"}}));
    EXPECT_THAT(refusal(), HasSubstr("not one of a scene"));
    file = ::testing::TempDir();
    EXPECT_THAT(refusal(), AllOf(HasSubstr("cannot be read"), HasSubstr("directory")));
    file = "/nowhere/at/all.hip";
    EXPECT_THAT(refusal(), AllOf(HasSubstr(file), HasSubstr("Check the path")));
}

TEST_F(DamagedScene, LosesOnlyThePositionThatIsNoPosition)
{
    replaceInFile("position ", "position x");
    EXPECT_THAT(load(), Contains(file + ": /shop/test_vopnet1/sink: the position is not two numbers."));
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.0>0"));
    EXPECT_EQ(find("sink")->evalFloat("a", 0, 0), 4);
}

TEST_F(DamagedScene, KeepsTheDefaultOfAValueThatIsNone)
{
    replaceInFile("a \t[ 0 \tlocks=0 ] \t( \t4 )", "a \t[ 0 \tlocks=0 ] \t( \tfour )");
    EXPECT_THAT(load(),
                ElementsAre(file +
                            ": /shop/test_vopnet1/sink: \"four\" is no value for \"a\", which keeps its "
                            "default."));
    EXPECT_EQ(find("sink")->evalFloat("a", 0, 0), 0);
    EXPECT_TRUE(find("sink")->hasUserData("key"));
}

TEST_F(DamagedScene, NamesParametersThatTheTypeNoLongerHas)
{
    replaceInFile("mode \t[", "mood \t[");
    EXPECT_THAT(
        load(),
        ElementsAre(file + ": /shop/test_vopnet1/sink: its type has no parameter \"mood\" any more."));
}

TEST_F(DamagedScene, SaysThatUserDataIsCutOff)
{
    replaceInFile("value", "");
    EXPECT_THAT(load(), ElementsAre(HasSubstr("/shop/test_vopnet1/sink: the user data is cut off at byte")));
    EXPECT_EQ(find("sink")->evalFloat("a", 0, 0), 4);
}

TEST_F(DamagedScene, KeepsANodeWhoseTypeIsLost)
{
    replaceInFile("type = test_vopnet\n", "tape\n");
    EXPECT_THAT(load(),
                Contains(file + ": /shop/test_vopnet1: its type is lost; a placeholder keeps the rest."));
    EXPECT_EQ(find("sink")->evalFloat("a", 0, 0), 4);
}

TEST_F(DamagedScene, IsReadSafelyWhateverByteIsWrong)
{
    const std::string whole = bytes();
    Texts warnings;
    std::string why;
    for (std::size_t at = 0; at < whole.size(); ++at)
    {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(at % 3 == 0 ? '"' : at % 3 == 1 ? '7' : '\n');
        setBytes(damaged);
        why.clear();
        if (!standin::loadScene(file, warnings, why))
        {
            EXPECT_THAT(why, HasSubstr(file));
        }
    }
    standin::takeMessages(); // of types that are none
    setBytes(whole);
    EXPECT_THAT(load(), IsEmpty());
    EXPECT_THAT(wiresOf(find("sink")), ElementsAre("source.0>0"));
}

// --- files that cannot be written -------------------------------------------------------------------------------

TEST_F(DamagedScene, LeavesTheOldFileWhenTheDiskIsFull)
{
    const std::string old = bytes();
    node("source", "another");
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small = {500, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    std::string why;
    const bool saved = standin::saveScene(file, why);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(saved);
    EXPECT_THAT(why, AllOf(HasSubstr(file), HasSubstr("Make room"), HasSubstr("The old file is as it was")));
    EXPECT_EQ(bytes(), old);
    EXPECT_FALSE(std::ifstream(file + ".saving-" + std::to_string(getpid())).good());
}

TEST_F(DamagedScene, SaysThatADeviceIsFull)
{
    std::string why;
    EXPECT_FALSE(standin::saveScene("/dev/full", why));
    EXPECT_THAT(why, AllOf(HasSubstr("/dev/full"), HasSubstr("No space left")));
    EXPECT_EQ(standin::scenePath(), file);
    struct stat device;
    EXPECT_TRUE(stat("/dev/full", &device) == 0 && S_ISCHR(device.st_mode));
}

TEST_F(DamagedScene, SaysThatADirectoryIsMissing)
{
    std::string why;
    EXPECT_FALSE(standin::saveScene("/nowhere/at/all.hip", why));
    EXPECT_EQ(
        why,
        "The file \"/nowhere/at/all.hip\" cannot be written: No such file or directory. Check the path.");
}

TEST_F(DamagedScene, IsReplacedBehindASymbolicLinkWithItsPermissionsKept)
{
    const std::string link = file + ".link";
    setBytes("old");
    chmod(file.c_str(), 0640);
    std::remove(link.c_str());
    ASSERT_EQ(symlink(file.c_str(), link.c_str()), 0);
    std::string why;
    EXPECT_TRUE(standin::saveScene(link, why)) << why;
    EXPECT_NE(bytes(), "old");
    struct stat info;
    EXPECT_TRUE(lstat(link.c_str(), &info) == 0 && S_ISLNK(info.st_mode));
    EXPECT_TRUE(stat(file.c_str(), &info) == 0 && (info.st_mode & 0777) == 0640);
    std::remove(link.c_str());
}
