#include "test_types.h"

using ::testing::ElementsAre;

using UserData = NetworkTest;

TEST_F(UserData, IsKeptUnderItsName)
{
    OP_Node* source = node("source");
    UT_String value;
    source->setUserData("outputs", "rgb:rgb:2;", true);
    EXPECT_TRUE(source->getUserData("outputs", value));
    EXPECT_EQ(value.toStdString(), "rgb:rgb:2;");
    UT_StringHolder held;
    EXPECT_TRUE(source->getUserData("outputs", held));
    EXPECT_EQ(held.toStdString(), "rgb:rgb:2;");
}

TEST_F(UserData, LeavesTheValueAloneWhenAbsent)
{
    OP_Node* source = node("source");
    UT_String value("as before");
    EXPECT_FALSE(source->getUserData("outputs", value));
    EXPECT_EQ(value.toStdString(), "as before");
    EXPECT_FALSE(source->hasUserData("outputs"));
}

TEST_F(UserData, MayBeEmpty)
{
    OP_Node* source = node("source");
    UT_String value("as before");
    source->setUserData("outputs", "", false);
    EXPECT_TRUE(source->getUserData("outputs", value));
    EXPECT_EQ(value.toStdString(), "");
}

TEST_F(UserData, IsListedSortedAndDeleted)
{
    OP_Node* source = node("source");
    source->setUserData("z", "1", false);
    source->setUserData("a", "2", false);
    UT_StringArray names;
    source->getUserDataNames(names);
    ASSERT_EQ(names.entries(), 2);
    EXPECT_STREQ(names(0), "a");
    EXPECT_TRUE(source->deleteUserData("a", false));
    EXPECT_FALSE(source->deleteUserData("a", false));
    EXPECT_FALSE(source->hasUserData("a"));
}

TEST_F(UserData, SendsNoEvent)
{
    OP_Node* source = node("source");
    EventRecorder seen(source);
    source->setUserData("a", "2", false);
    EXPECT_TRUE(seen.events.empty());
}
