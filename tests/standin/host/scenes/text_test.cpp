#include "op/op_text.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

TEST(SceneText, QuotesSoThatEveryTextComesBack)
{
    std::string all;
    for (int c = 1; c < 256; ++c)
        all += static_cast<char>(c);
    for (const std::string& text :
         {all, std::string(), std::string("\"\\\\n\"{ } ( ) [ ]"), std::string("\u00e9\n\t")})
    {
        std::string why;
        const std::vector<standin::Line> lines =
            standin::readLines("a " + standin::quoteText(text) + " b", why);
        EXPECT_EQ(why, "");
        ASSERT_EQ(lines.size(), 1u);
        ASSERT_EQ(lines[0].size(), 3u);
        EXPECT_EQ(lines[0][1].text, text);
        EXPECT_TRUE(lines[0][1].quoted);
    }
}

TEST(SceneText, NamesTheLineOfATextWithoutEnd)
{
    std::string why;
    standin::readLines("one\ntwo \"three\nfour", why);
    EXPECT_EQ(why, "the text that begins in line 2 has no end");
}

TEST(SceneText, PrintsNumbersThatReadBackTheSame)
{
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double number : {0.0, 0.1, 1.0 / 3, 1e300, -5e-324, 123456789012.0, infinite, -infinite})
    {
        double read = 7;
        EXPECT_TRUE(standin::readNumber(standin::printNumber(number), read));
        EXPECT_EQ(read, number);
    }
    double read = 7;
    EXPECT_TRUE(standin::readNumber(standin::printNumber(std::nan("")), read));
    EXPECT_TRUE(std::isnan(read));
    for (const char* word : {"", "1x", "x", "1,5", "- 1"})
        EXPECT_FALSE(standin::readNumber(word, read)) << word;
}
