#include "shader_desc_text.h"

#include <gtest/gtest.h>

using namespace zelk::shop;

TEST(Replace, TakesTheFirstOccurrenceOnly)
{
    std::string text = "a-b-c";
    EXPECT_TRUE(replace(text, "-", "+"));
    EXPECT_EQ(text, "a+b-c");
}

TEST(Replace, LeavesATextWithoutTheWordAlone)
{
    std::string text = "a-b";
    EXPECT_FALSE(replace(text, "x", "y"));
    EXPECT_EQ(text, "a-b");
}

TEST(StartsWith, MatchesOnlyAtTheFirstCharacter)
{
    EXPECT_TRUE(startsWith("houdini.parm.x", "houdini.parm."));
    EXPECT_FALSE(startsWith("a houdini.parm.", "houdini.parm."));
    EXPECT_FALSE(startsWith("hou", "houdini"));
}

TEST(StartsWith, AlwaysMatchesAnEmptyPrefix)
{
    EXPECT_TRUE(startsWith("a", ""));
    EXPECT_TRUE(startsWith("", ""));
}

TEST(StripPrefix, TakesOneOffAndSaysSo)
{
    std::string text = "python:python:x", other = "x python:";
    EXPECT_TRUE(stripPrefix(text, prefix_python));
    EXPECT_EQ(text, "python:x");
    EXPECT_FALSE(stripPrefix(other, prefix_python));
    EXPECT_EQ(other, "x python:");
}
