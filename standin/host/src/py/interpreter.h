#ifndef STANDIN_PY_INTERPRETER_H
#define STANDIN_PY_INTERPRETER_H

#include "text.h"

#include <pybind11/pybind11.h>

#include <string>

/// @file
/// The interpreter inside the process: started on demand, never ended. What lives in it (modules, compiled expressions)
/// is reachable from it until the process goes.

namespace standin
{
namespace python
{

/// Starts Python on demand and holds the interpreter lock. Not started() when that failed; then nothing of Python may be
/// touched (the sentence was printed at the first try).
class Session
{
public:
    Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    bool started() const { return m_started; }

private:
    bool m_started;
    PyGILState_STATE m_state;
};

/// The dictionary of `__main__`, with `hou` in it. Needs a Session.
pybind11::dict mainNamespace();

/// A new dictionary with builtins and `hou`. Needs a Session.
pybind11::dict freshNamespace();

/// "NameError: name 'x' is not defined", and the traceback with its line ends. Need a Session.
std::string summaryOf(const pybind11::error_already_set& error);
std::string tracebackOf(const pybind11::error_already_set& error);

/// Keeps a Ctrl-C that arrived inside something whose errors are only noted: it interrupts the script around it.
void passOnInterrupt(const pybind11::error_already_set& error);

} // namespace python
} // namespace standin

#endif
