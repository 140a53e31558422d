#ifndef STANDIN_PYTHON_H
#define STANDIN_PYTHON_H

#include <string>
#include <vector>

/// @file
/// The stand-in's own door to its Python: what a program needs to run scripts and a shell inside the host.
///
/// Python is CPython inside this process. The `hou` module and its files lie in `python/` of the tree that this library
/// belongs to (`<tree>/lib/libHoudiniOP2.so`, `<tree>/python/hou`).

namespace standin
{

/// Starts Python once; later calls do nothing. Returns false, with a sentence on the error output, when Python cannot
/// start or `hou` cannot be imported. Takes no signal handlers: Ctrl-C keeps ending a program that is in C++.
bool startPython();

/// Directory that holds the `hou` package; absolute, whether or not it exists.
std::string pythonDirectory();

/// Runs a script file as `python path args...` would: as `__main__`, with `sys.argv`, its directory leading `sys.path`,
/// and `hou` there by name. The path "-" is standard input.
///
/// Returns the exit status: that of `sys.exit`, 1 after an uncaught exception (its traceback is on the error output), 2
/// when the file cannot be read, 130 after Ctrl-C. Exit handlers of the script have run and its output is flushed.
int runPythonFile(const std::string& path, const std::vector<std::string>& args);

/// What a text of Python is for: it is compiled as that.
enum class PythonUse
{
    Statements, ///< a callback
    Function    ///< a parameter's expression or menu script: an expression, or the body of a function
};

/// Why a text does not compile.
struct PythonProblem
{
    std::string message; ///< "SyntaxError: '(' was never closed"
    int line;            ///< of the text, from 1; 0 when it is not known
};

/// Whether a text compiles; nothing of it is run. Otherwise `problem` is filled. Starts Python on demand; a Python that
/// cannot start, which was said then, finds no fault.
bool compilesAsPython(const std::string& text, PythonUse use, PythonProblem& problem);

/// An interactive shell with `hou` there by name; with line editing where the terminal allows. When standard input
/// is no terminal its text is run as a script. Returns the exit status like runPythonFile().
int runPythonShell();

} // namespace standin

#endif
