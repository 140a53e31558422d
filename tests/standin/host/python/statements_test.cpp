#include "python_fixture.h"

#include <thread>

namespace
{

using Statements = PythonTest;
using Expressions = PythonTest;

TEST_F(Statements, RunSeveralLines)
{
    PYrunPythonStatementsAndExpectNoErrors("total = 0\nfor i in range(4):\n    total += i\n", nullptr,
                                           &context);
    EXPECT_EQ(evaluate("total"), "6");
}

TEST_F(Statements, FindHouByName)
{
    PYrunPythonStatementsAndExpectNoErrors("path = hou.root().path()", nullptr, &context);
    EXPECT_EQ(evaluate("path"), "'/'");
}

TEST_F(Statements, ReportHeadingAndTracebackOfAnException)
{
    PYrunPythonStatementsAndExpectNoErrors("x = 1\nraise ValueError('no such colour')",
                                           "Error running callback:", &context);
    const std::string text = takeMessage();
    EXPECT_EQ(text.find("Error running callback:\nTraceback (most recent call last):"), 0u) << text;
    EXPECT_NE(text.find("line 2"), std::string::npos) << text;
    EXPECT_NE(text.find("ValueError: no such colour"), std::string::npos) << text;
}

TEST_F(Statements, ReportASyntaxError)
{
    PYrunPythonStatementsAndExpectNoErrors("if", "Heading:", &context);
    EXPECT_NE(takeMessage().find("SyntaxError"), std::string::npos);
}

TEST_F(Statements, DoNotEndTheProcessWithSysExit)
{
    PYrunPythonStatementsAndExpectNoErrors("import sys\nsys.exit(3)", nullptr, &context);
    EXPECT_NE(takeMessage().find("SystemExit: 3"), std::string::npos);
}

TEST_F(Statements, ReportAnExceptionThatCannotBePrinted)
{
    const PY_Result result = PYrunPythonStatements("class E(Exception):\n"
                                                   "    def __str__(self): raise KeyError('again')\n"
                                                   "raise E()",
                                                   0, nullptr, &context);
    EXPECT_EQ(result.myResultType, PY_Result::ERR);
    EXPECT_NE(result.myErrValue.toStdString().find("E"), std::string::npos);
}

TEST_F(Statements, TakeANullTextForAnEmptyOne)
{
    EXPECT_EQ(PYrunPythonStatements(nullptr, 0, nullptr).myResultType, PY_Result::NONE);
}

TEST_F(Statements, SeeTheirArgumentsAndLeaveThemAsTheyWere)
{
    run("import sys\nbefore = list(getattr(sys, 'argv', [])), list(sys.path)");
    char script[] = "/somewhere/script.py";
    char option[] = "-v";
    char* argv[] = {script, option};
    PYrunPythonStatements("import sys\nseen = list(sys.argv), sys.path[0]", 2, argv, &context);
    EXPECT_EQ(evaluate("seen"), "(['/somewhere/script.py', '-v'], '/somewhere')");
    EXPECT_EQ(evaluate("(list(sys.argv), list(sys.path)) == before"), "True");
}

TEST_F(Statements, RunOnAnyThread)
{
    std::thread other([this] { PYrunPythonStatementsAndExpectNoErrors("x = 7", nullptr, &context); });
    other.join();
    EXPECT_EQ(evaluate("x"), "7");
}

TEST_F(Expressions, GiveTheWantedType)
{
    EXPECT_EQ(PYrunPythonExpression("6 * 7", PY_Result::INT).myIntValue, 42);
    EXPECT_DOUBLE_EQ(PYrunPythonExpression("3 / 2", PY_Result::DOUBLE).myDoubleValue, 1.5);
    EXPECT_STREQ(PYrunPythonExpression("'a' * 3", PY_Result::STRING).myStringValue, "aaa");
    const PY_Result list = PYrunPythonExpression("['x', 'y']", PY_Result::STRING_ARRAY);
    ASSERT_EQ(list.myStringArray.entries(), 2);
    EXPECT_STREQ(list.myStringArray(1), "y");
}

TEST_F(Expressions, AreAnErrorWhenTheValueIsOfAnotherType)
{
    EXPECT_EQ(PYrunPythonExpression("'1'", PY_Result::INT).myResultType, PY_Result::ERR);
    EXPECT_EQ(PYrunPythonExpression("1.5", PY_Result::INT).myResultType, PY_Result::ERR);
    EXPECT_EQ(PYrunPythonExpression("1", PY_Result::STRING).myResultType, PY_Result::ERR);
    EXPECT_EQ(PYrunPythonExpression("'ab'", PY_Result::STRING_ARRAY).myResultType, PY_Result::ERR);
    EXPECT_EQ(PYrunPythonExpression("2 ** 80", PY_Result::INT).myResultType, PY_Result::ERR);
}

TEST_F(Expressions, GiveTheirErrorWithoutPrintingIt)
{
    const PY_Result result = PYrunPythonExpression("nowhere", PY_Result::INT);
    EXPECT_STREQ(result.myErrValue, "NameError: name 'nowhere' is not defined");
    EXPECT_NE(result.myDetailedErrValue.toStdString().find("Traceback"), std::string::npos);
}

TEST_F(Expressions, ReportTheirErrorWhenNoneIsExpected)
{
    PYrunPythonExpressionAndExpectNoErrors("1 / 0", PY_Result::INT, "Heading:");
    EXPECT_NE(takeMessage().find("ZeroDivisionError"), std::string::npos);
}

} // namespace
