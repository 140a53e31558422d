#include "python_fixture.h"

namespace
{

using EvaluationContext = PythonTest;

TEST_F(EvaluationContext, SharesNamesBetweenItsRuns)
{
    run("x = 5");
    EXPECT_EQ(evaluate("x + 1"), "6");
}

TEST_F(EvaluationContext, SharesNothingWithAnotherOne)
{
    run("x = 5");
    PY_EvaluationContext other;
    const PY_Result result = PYrunPythonExpression("x", PY_Result::INT, &other);
    EXPECT_STREQ(result.myErrValue, "NameError: name 'x' is not defined");
}

TEST_F(EvaluationContext, ReleasesWhatItHolds)
{
    run("import gc, weakref\nclass Thing: pass");
    {
        PY_EvaluationContext passing;
        PYrunPythonStatements("class Thing: pass\nthing = Thing()\ndef f(): return thing\n"
                              "import builtins, weakref\nbuiltins._watch = weakref.ref(thing)",
                              0, nullptr, &passing);
        EXPECT_EQ(evaluate("__import__('builtins')._watch() is None"), "False");
    }
    EXPECT_EQ(evaluate("__import__('builtins')._watch() is None"), "True");
}

} // namespace
