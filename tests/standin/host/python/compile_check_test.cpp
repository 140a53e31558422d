#include "python_fixture.h"

#include <standin/python.h>

#include <cstdlib>

using standin::PythonUse;

namespace
{

class CompileCheck : public PythonTest
{
protected:
    /// Line and message of the problem; empty when the text compiles.
    static std::string problemOf(const std::string& text, PythonUse use)
    {
        standin::PythonProblem problem;
        if (standin::compilesAsPython(text, use, problem))
            return "";
        return std::to_string(problem.line) + ": " + problem.message;
    }
};

} // namespace

TEST_F(CompileCheck, TakesStatements)
{
    EXPECT_EQ(problemOf("import os\nfor a in 'bc':\n    print(a)\n", PythonUse::Statements), "");
}

TEST_F(CompileCheck, TellsTheLineOfAMistake)
{
    EXPECT_EQ(problemOf("a = 1\nb = (\n", PythonUse::Statements), "2: SyntaxError: '(' was never closed");
}

TEST_F(CompileCheck, TakesAnExpressionOrTheBodyOfAFunction)
{
    EXPECT_EQ(problemOf("1 + 1", PythonUse::Function), "");
    EXPECT_EQ(problemOf("a = 1\nreturn a", PythonUse::Function), "");
    EXPECT_NE(problemOf("a = 1\nreturn a", PythonUse::Statements), "");
    EXPECT_NE(problemOf("1 +", PythonUse::Function), "");
}

TEST_F(CompileCheck, RunsNothing)
{
    EXPECT_EQ(problemOf("import os\nos.environ['COMPILE_CHECK'] = '1'", PythonUse::Statements), "");
    EXPECT_EQ(problemOf("__import__('os').environ.setdefault('COMPILE_CHECK', '1')", PythonUse::Function),
              "");
    EXPECT_EQ(std::getenv("COMPILE_CHECK"), nullptr);
}

TEST_F(CompileCheck, SurvivesBytesThatAreNoText)
{
    EXPECT_NE(problemOf("\xff", PythonUse::Statements), "");
    EXPECT_NE(problemOf(std::string("a\0b", 3), PythonUse::Statements), "");
}

TEST_F(CompileCheck, KeepsQuietAboutTextsThatOnlyLookOdd)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(problemOf("1 is 1", PythonUse::Statements), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
