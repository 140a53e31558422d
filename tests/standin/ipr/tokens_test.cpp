#include "tokens.h"

#include <gmock/gmock.h>

using namespace zelk::ipr;

TEST(Tokens, FollowEachOtherInTheOrderOfTheText)
{
    std::vector<Token> tokens;
    std::string problem;
    const std::string text("\x82\xa1"
                           "a\x92\x01\xff\xa1"
                           "b\xc3",
                           9);
    ASSERT_TRUE(parseTokens(text, tokens, problem)) << problem;
    ASSERT_EQ(tokens.size(), 7u);
    EXPECT_EQ(tokens[0].kind, TokenKind::Map);
    EXPECT_EQ(tokens[0].size, 2u);
    EXPECT_EQ(tokens[1].text(), "a");
    EXPECT_EQ(tokens[3].integer, 1);
    EXPECT_EQ(tokens[4].integer, -1);
    EXPECT_TRUE(tokens[6].flag);
}

TEST(TokenCursor, SkipsAValueWithEverythingInside)
{
    std::vector<Token> tokens;
    std::string problem;
    const std::string text("\x93\x81\xa1"
                           "a\x92\x01\x02\x07\x08",
                           9);
    ASSERT_TRUE(parseTokens(text, tokens, problem)) << problem;
    TokenCursor cursor(tokens.data() + 1);
    cursor.skip();
    EXPECT_EQ(cursor.next().integer, 7);
    cursor.skip();
    EXPECT_EQ(&cursor.peek(), tokens.data() + tokens.size());
}
