#ifndef PY_PYTHON_H
#define PY_PYTHON_H

#include <PY/PY_EvaluationContext.h>
#include <PY/PY_Result.h>

/// @file
/// Running Python from C++.
///
/// Every function starts Python when it was not yet started, takes the interpreter lock itself, may be called from any
/// thread and lets no exception out. A null `code` is an empty one. Without a context the code runs in the
/// namespace of `__main__`.

/// Runs statements, several lines if wished.
///
/// An exception is written to the error output: `heading` (when there is one) on a line of its own, then the traceback.
void PYrunPythonStatementsAndExpectNoErrors(const char* code, const char* heading = 0,
                                            PY_EvaluationContext* context = 0);

/// Runs statements with `argv` as `sys.argv` (left alone when `argc` is 0).
///
/// @param update_path  true: the directory of argv[0] leads `sys.path` while the statements run
/// @return             type NONE, or ERR with the message and the traceback; nothing is printed
PY_Result PYrunPythonStatements(const char* code, int argc, char* argv[], PY_EvaluationContext* context = 0,
                                bool update_path = true);

/// Evaluates one expression and gives its value as `want`.
///
/// A value that is not of the wanted type (and is no number for DOUBLE, no whole number for INT) is an error, as is
/// an exception: type ERR with the message, nothing printed.
PY_Result PYrunPythonExpression(const char* code, PY_Result::Type want, PY_EvaluationContext* context = 0);

/// Like PYrunPythonExpression(), and writes an error to the error output as
/// PYrunPythonStatementsAndExpectNoErrors() does.
PY_Result PYrunPythonExpressionAndExpectNoErrors(const char* code, PY_Result::Type want,
                                                 const char* heading = 0, PY_EvaluationContext* context = 0);

#endif
