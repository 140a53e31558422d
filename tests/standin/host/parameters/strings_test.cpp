#include <UT/UT_Options.h>
#include <UT/UT_String.h>
#include <UT/UT_StringArray.h>
#include <UT/UT_StringHolder.h>
#include <UT/UT_UndoManager.h>
#include <UT/UT_WorkBuffer.h>

#include <gtest/gtest.h>

#include <clocale>

TEST(String, BorrowsUntilItIsHardened)
{
    char text[] = "abc";
    UT_String borrowed(text);
    UT_String owned(text, true);
    text[0] = 'x';
    EXPECT_STREQ(borrowed, "xbc");
    EXPECT_STREQ(owned, "abc");
    borrowed.harden();
    text[0] = 'y';
    EXPECT_STREQ(borrowed, "xbc");
    EXPECT_TRUE(borrowed.isHard());
}

TEST(String, AlwaysDeepCopiesWhatIsAssigned)
{
    char text[] = "abc";
    UT_String deep(UT_String::ALWAYS_DEEP);
    deep = text;
    text[0] = 'x';
    EXPECT_STREQ(deep, "abc");
}

TEST(String, DefaultMadeOneIsNull)
{
    const UT_String text;
    EXPECT_EQ(text.buffer(), nullptr);
    EXPECT_FALSE(text.isstring());
    EXPECT_EQ(text.toStdString(), "");
    EXPECT_FALSE(text == "");
    EXPECT_EQ(text.length(), 0u);
}

TEST(String, HardensAPartOfItself)
{
    UT_String text(std::string("one two"));
    text.harden(text.buffer() + 4);
    EXPECT_STREQ(text, "two");
}

TEST(String, TakesHoldersAndStandardStrings)
{
    const UT_StringHolder holder("held");
    UT_String text(holder);
    EXPECT_STREQ(text, "held");
    text = std::string("standard");
    EXPECT_STREQ(text, "standard");
    EXPECT_STREQ(UT_StringHolder(text), "standard");
}

TEST(String, CountsLeadingDigits)
{
    EXPECT_EQ(UT_String("42 is").toInt(), 42);
    EXPECT_EQ(UT_String(" -7").toInt(), -7);
    EXPECT_EQ(UT_String("x").toInt(), 0);
    EXPECT_EQ(UT_String("99999999999999").toInt(), 0);
}

struct QuoteRow
{
    const char* text;
    const char* literal;
};

/// A test's name has to be the same in every run.
void PrintTo(const QuoteRow& row, std::ostream* out) { *out << testing::PrintToString(row.text); }

class SmartQuotes : public testing::TestWithParam<QuoteRow>
{
};

TEST_P(SmartQuotes, MakeALiteralThatReadsBackUnchanged)
{
    EXPECT_STREQ(UT_String(GetParam().text).makeSmartQuotedString('\''), GetParam().literal);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SmartQuotes,
    testing::Values(QuoteRow{"plain", "'plain'"}, QuoteRow{"", "''"}, QuoteRow{"it's", "\"it's\""},
                    QuoteRow{"say \"x\"", "'say \"x\"'"}, QuoteRow{"it's \"x\"", "'it\\'s \"x\"'"},
                    QuoteRow{"a\\b", "'a\\\\b'"}, QuoteRow{"a\nb\t", "'a\\nb\\t'"},
                    QuoteRow{"\x01", "'\\x01'"}, QuoteRow{"gr\xC3\xBC\xC3\x9F", "'gr\xC3\xBC\xC3\x9F'"},
                    QuoteRow{"\xFF", "'\\xff'"}, QuoteRow{"\xED\xA0\x80", "'\\xed\\xa0\\x80'"}));

TEST(StringHolder, CopiesShareOneText)
{
    UT_StringHolder copy;
    {
        const UT_StringHolder text(std::string("shared text"));
        copy = text;
        EXPECT_EQ(copy.buffer(), text.buffer());
    }
    EXPECT_STREQ(copy, "shared text");
}

TEST(WorkBuffer, PrintsAndAppends)
{
    UT_WorkBuffer buffer;
    buffer.sprintf("%d-%s", 3, "x");
    buffer.append('!');
    EXPECT_STREQ(buffer.buffer(), "3-x!");
    buffer.clear();
    EXPECT_EQ(buffer.length(), 0);
}

TEST(WorkBuffer, PrintsAPointUnderEveryLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    // Where the locale is not installed the test still shows that nothing changes.
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    UT_WorkBuffer buffer;
    buffer.sprintf("%.2f", 1.5);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_STREQ(buffer.buffer(), "1.50");
}

TEST(StringArray, FindsAndSorts)
{
    UT_StringArray list;
    list.append("b");
    list.append(UT_String("a"));
    list.append(std::string("c"));
    list.sort();
    EXPECT_STREQ(list(0), "a");
    EXPECT_EQ(list.find("c"), 2);
    EXPECT_EQ(list.find("x"), -1);
}

TEST(Options, ReplaceAValueAndIterateOverAll)
{
    UT_Options options;
    options.setOptionS("a", "1").setOptionS("b", "2").setOptionS("a", "3");
    std::string joined;
    for (UT_Options::iterator it = options.begin(); !it.atEnd(); ++it)
        joined += std::string(it.name()) + options.getOptionS(it.name()).toStdString();
    EXPECT_EQ(joined, "a3b2");
    EXPECT_FALSE(options.hasOption("c"));
    EXPECT_STREQ(options.getOptionS("c"), "");
}

TEST(UndoBlocks, NestAndCarryTheirLabels)
{
    UT_UndoManager manager;
    const int outer = UTbeginUndoBlock("Outer", ANYLEVEL, &manager);
    EXPECT_EQ(manager.beginUndoBlock("Not opened", TOPLEVEL), 0);
    const int inner = UTbeginUndoBlock("Inner", ANYLEVEL, &manager);
    EXPECT_EQ(inner, outer + 1);
    EXPECT_STREQ(manager.getLabel(inner), "Inner");
    UTendUndoBlock(outer, &manager);
    EXPECT_EQ(manager.getLevel(), 0);
    UTendUndoBlock(inner, &manager);
    EXPECT_EQ(manager.getLevel(), 0);
}

TEST(UndoBlocks, CloseWithTheirScope)
{
    const int before = UTgetUndoManager()->getLevel();
    try
    {
        const UT_AutoUndoBlock block("Scope", ANYLEVEL);
        EXPECT_EQ(UTgetUndoManager()->getLevel(), before + 1);
        throw 1;
    }
    catch (int)
    {
    }
    EXPECT_EQ(UTgetUndoManager()->getLevel(), before);
}
