#include <CH/CH_Expression.h>
#include <CH/CH_Manager.h>
#include <SYS/SYS_SequentialThreadIndex.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace
{
/// Knows the channel "x" (2) and the variable $NAME ("joe"), at frame 25.
class Surroundings : public CH_ExprContext
{
public:
    Surroundings() : CH_ExprContext(1, 1) {}
    bool getVariable(const char* name, CH_ExprValue& value) override
    {
        value = CH_ExprValue(std::string("joe"));
        return std::string(name) == "NAME";
    }
    bool getChannel(const char* path, bool asText, CH_ExprValue& value, std::string& error) override
    {
        if (std::string(path) != "x")
            return CH_ExprContext::getChannel(path, asText, value, error);
        value = asText ? CH_ExprValue(std::string("two")) : CH_ExprValue(2.0);
        return true;
    }
};

std::string valueOf(const std::string& text)
{
    Surroundings surroundings;
    CH_ExprValue value;
    std::string error;
    if (!CH_Expression(text).evaluate(surroundings, value, error))
        return "error: " + error;
    return value.isText ? "text: " + value.text : value.asText();
}

struct Row
{
    const char* text;
    const char* value;
};

/// A test's name has to be the same in every run.
void PrintTo(const Row& row, std::ostream* out) { *out << testing::PrintToString(row.text); }
} // namespace

class ExpressionValue : public testing::TestWithParam<Row>
{
};

TEST_P(ExpressionValue, IsWhatTheLanguageSays)
{
    EXPECT_EQ(valueOf(GetParam().text), GetParam().value) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Arithmetic, ExpressionValue,
                         testing::Values(Row{"1 + 2 * 3", "7"}, Row{"(1 + 2) * 3", "9"}, Row{"-2 ^ 2", "-4"},
                                         Row{"7 % 4", "3"}, Row{"2 - 3 - 4", "-5"}, Row{"1e3", "1000"},
                                         Row{".5", "0.5"}, Row{"--1", "1"}, Row{"!0 + !3", "1"},
                                         Row{"1 / 0", "error: column 4: division by zero"}));

INSTANTIATE_TEST_SUITE_P(Comparison, ExpressionValue,
                         testing::Values(Row{"1 < 2 && 2 <= 2", "1"}, Row{"1 == 1.0", "1"},
                                         Row{"\"a\" == \"a\"", "1"}, Row{"\"a\" < \"b\"", "1"},
                                         Row{"\"10\" == 10", "1"}, Row{"0 || 0", "0"}, Row{"1 != 2", "1"},
                                         Row{"3 >= 4", "0"}, Row{"0 && 1 / 0", "0"}));

INSTANTIATE_TEST_SUITE_P(NamesAndFunctions, ExpressionValue,
                         testing::Values(Row{"ch(\"x\") * 2", "4"}, Row{"chf('x')", "2"},
                                         Row{"chs(\"x\")", "text: two"}, Row{"$F", "25"}, Row{"$FF", "25"},
                                         Row{"$T", "1"}, Row{"${F} + 1", "26"}, Row{"$NAME", "text: joe"},
                                         Row{"\"hi $NAME `1 + 1`\"", "text: hi joe 2"},
                                         Row{"'hi $NAME'", "text: hi $NAME"}, Row{"$NAME + 1", "text: joe1"},
                                         Row{"if(1 > 2, 10, 20)", "20"}, Row{"max(1, 5)", "5"},
                                         Row{"clamp(7, 0, 5)", "5"}, Row{"fit(5, 0, 10, 100, 200)", "150"},
                                         Row{"sin(90)", "1"}, Row{"int(2.9)", "2"},
                                         Row{"toupper(\"ab\")", "text: AB"}, Row{"strlen(\"abc\")", "3"}));

INSTANTIATE_TEST_SUITE_P(
    Mistakes, ExpressionValue,
    testing::Values(
        Row{"", "error: column 1: a value is missing"}, Row{"1 +", "error: column 4: a value is missing"},
        Row{"1 2", "error: column 3: '2' is not expected here"},
        Row{"(1", "error: column 3: a closing ) is missing"},
        Row{"\"abc", "error: column 1: the text has no closing \""},
        Row{"hello",
            "error: column 1: 'hello' is not a value; a text stands in quotes, a variable begins with '$'"},
        Row{"1 + nope(3)", "error: column 5: there is no function nope()"},
        Row{"max(1)", "error: column 1: max() takes 2 arguments, not 1"},
        Row{"1 + $NOPE", "error: column 5: there is no variable $NOPE"},
        Row{"ch(\"y\")", "error: column 1: there is no channel \"y\""},
        Row{"sqrt(-1)", "error: column 1: the result is no finite number"},
        Row{"2x", "error: column 2: 'x' does not belong to a number"},
        Row{"${F", "error: column 4: the name of the variable has no closing }"},
        Row{"1,5", "error: column 2: ',' is not expected here"}));

TEST(Expression, DeepNestingIsRefusedAndDoesNotExhaustTheStack)
{
    EXPECT_EQ(valueOf(std::string(50, '(') + "1" + std::string(50, ')')), "1");
    EXPECT_NE(valueOf(std::string(100000, '(')).find("nested too deeply"), std::string::npos);
    EXPECT_NE(valueOf(std::string(100000, '-') + "1").find("nested too deeply"), std::string::npos);
    std::string sum = "1";
    for (int i = 0; i < 100000; ++i)
        sum += "+1";
    EXPECT_NE(valueOf(sum).find("too long"), std::string::npos);
}

TEST(Expression, KnowsWhetherItUsesTheTime)
{
    EXPECT_TRUE(CH_Expression("1 + $F").usesTime());
    EXPECT_TRUE(CH_Expression("\"a$T\"").usesTime());
    EXPECT_FALSE(CH_Expression("1 + $FPS").usesTime());
}

namespace
{
std::string expanded(const char* text)
{
    Surroundings surroundings;
    std::string result;
    std::string error;
    const bool good = CHexpandString(text, surroundings, result, error);
    return good ? result : result + "|" + error;
}
} // namespace

class Expansion : public testing::TestWithParam<Row>
{
};

TEST_P(Expansion, ReplacesVariablesAndBackquotes)
{
    EXPECT_EQ(expanded(GetParam().text), GetParam().value) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Expansion,
    testing::Values(Row{"a$NAME.x", "ajoe.x"}, Row{"${NAME}1", "joe1"}, Row{"$UNKNOWN/x", "$UNKNOWN/x"},
                    Row{"\\$NAME", "$NAME"}, Row{"`1+2`3", "33"}, Row{"\\`1\\`", "`1`"},
                    Row{"cost: $", "cost: $"}, Row{"`1+2", "`1+2"}, Row{"img.$F4.exr", "img.0025.exr"},
                    Row{"c:\\dir\\x", "c:\\dir\\x"}, Row{"${NAME", "${NAME"}, Row{"", ""},
                    Row{"a`oops`b$NAME",
                        "abjoe|in `oops`: column 1: 'oops' is not a value; a text stands in quotes, a "
                        "variable begins with '$'"}));

TEST(Numbers, AreReadAndPrintedTheSameUnderEveryLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    fpreal value = 0;
    const bool read = CHreadNumber(" 1.5 ", value);
    const std::string printed = CHprintNumber(0.25);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_TRUE(read);
    EXPECT_EQ(value, 1.5);
    EXPECT_EQ(printed, "0.25");
}

TEST(Numbers, AreWholeTextsOfDigits)
{
    fpreal value = 7;
    for (const char* text : {"", " ", "1 2", "1,5", "0x10", "nan", "inf", "abc", "+-1"})
        EXPECT_FALSE(CHreadNumber(text, value)) << text;
    EXPECT_FALSE(CHreadNumber(nullptr, value));
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(CHreadNumber("+3", value));
    EXPECT_EQ(CHprintNumber(1e20), "1e+20");
    EXPECT_EQ(CHprintNumber(-0.0), "0");
}

TEST(SessionVariables, AreAskedBeforeTheEnvironment)
{
    ::setenv("PARM_TEST_VARIABLE", "outside", 1);
    std::string value;
    EXPECT_TRUE(CHgetManager()->getVariable("PARM_TEST_VARIABLE", value));
    EXPECT_EQ(value, "outside");
    CHgetManager()->setVariable("PARM_TEST_VARIABLE", "inside");
    EXPECT_TRUE(CHgetManager()->getVariable("PARM_TEST_VARIABLE", value));
    EXPECT_EQ(value, "inside");
    CHgetManager()->unsetVariable("PARM_TEST_VARIABLE");
    ::unsetenv("PARM_TEST_VARIABLE");
    EXPECT_FALSE(CHgetManager()->getVariable("PARM_TEST_VARIABLE", value));
}

TEST(SessionTime, IsFrameOneAtTimeZero)
{
    CH_Manager manager;
    EXPECT_EQ(manager.getSample(0), 1);
    EXPECT_EQ(manager.getTime(25), 1);
    manager.setSamplesPerSec(10);
    EXPECT_EQ(manager.getSample(1), 11);
    manager.setSamplesPerSec(-1);
    EXPECT_EQ(manager.getSamplesPerSec(), 10);
}

TEST(SessionTime, OfAnEvaluationUnderWayGoesFirst)
{
    const fpreal before = CHgetEvalTime();
    {
        const CH_AutoEvalTime outer(SYSgetSTID(), 5);
        {
            const CH_AutoEvalTime inner(SYSgetSTID(), 6);
            EXPECT_EQ(CHgetEvalTime(), 6);
        }
        EXPECT_EQ(CHgetEvalTime(), 5);
    }
    EXPECT_EQ(CHgetEvalTime(), before);
}
