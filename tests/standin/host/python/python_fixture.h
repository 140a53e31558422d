#ifndef TESTS_STANDIN_HOST_PYTHON_FIXTURE_H
#define TESTS_STANDIN_HOST_PYTHON_FIXTURE_H

#include <PY/PY_Python.h>
#include <standin/host.h>

#include <gtest/gtest.h>

#include <string>

/// Complaints of the host that nobody took make the test fail.
class PythonTest : public testing::Test
{
protected:
    void SetUp() override { standin::takeMessages(); }
    void TearDown() override
    {
        for (const standin::Message& message : standin::takeMessages())
            ADD_FAILURE() << "unclaimed message: " << message.text;
    }

    /// The one message reported since the last call; fails when there is none or more than one.
    static std::string takeMessage()
    {
        const std::vector<standin::Message> messages = standin::takeMessages();
        EXPECT_EQ(messages.size(), 1u);
        return messages.empty() ? "" : messages.front().text;
    }

    /// Value of an expression as text ("repr" of anything), in the namespace of `context`.
    std::string evaluate(const std::string& code)
    {
        const PY_Result result =
            PYrunPythonExpression(("repr((" + code + "))").c_str(), PY_Result::STRING, &context);
        return result.myResultType == PY_Result::ERR ? result.myErrValue.toStdString()
                                                     : result.myStringValue.toStdString();
    }

    void run(const std::string& code)
    {
        const PY_Result result = PYrunPythonStatements(code.c_str(), 0, nullptr, &context);
        ASSERT_NE(result.myResultType, PY_Result::ERR) << result.myDetailedErrValue.toStdString();
    }

    /// Class and sentence of what a statement raises; empty when it raises nothing.
    std::string errorOf(const std::string& code)
    {
        const PY_Result result = PYrunPythonStatements(code.c_str(), 0, nullptr, &context);
        return result.myErrValue.toStdString();
    }

    PY_EvaluationContext context;
};

#endif
