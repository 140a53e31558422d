#include "interpreter.h"
#include "kept_arguments.h"

#include <standin/python.h>

#include <pybind11/eval.h>

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace py = pybind11;
namespace fs = std::filesystem;

namespace standin
{
namespace
{

const int status_uncaught = 1;
const int status_unreadable = 2;
const int status_interrupted = 130;
const int status_flush_failed = 120;

/// While this lives Ctrl-C raises KeyboardInterrupt; afterwards it does what it did before.
class InterruptsReachPython
{
public:
    InterruptsReachPython()
    {
        sigaction(SIGINT, nullptr, &m_before);
        try
        {
            py::module_ signal = py::module_::import("signal");
            signal.attr("signal")(signal.attr("SIGINT"), signal.attr("default_int_handler"));
        }
        catch (const py::error_already_set&)
        {
            // Only the main thread may choose; on another one Ctrl-C stays what it was.
        }
    }
    InterruptsReachPython(const InterruptsReachPython&) = delete;
    InterruptsReachPython& operator=(const InterruptsReachPython&) = delete;
    ~InterruptsReachPython() { sigaction(SIGINT, &m_before, nullptr); }

private:
    struct sigaction m_before;
};

py::str decoded(const std::string& bytes)
{
    py::object text = py::reinterpret_steal<py::object>(
        PyUnicode_DecodeFSDefaultAndSize(bytes.data(), static_cast<Py_ssize_t>(bytes.size())));
    if (!text)
        throw py::error_already_set();
    return text;
}

/// Gives a script its `sys.argv`, and its directory as the leading entry of `sys.path`.
void tellArguments(const KeptArguments& kept, const std::string& path, const std::vector<std::string>& args,
                   const std::string& directory)
{
    py::list argv;
    argv.append(decoded(path));
    for (const std::string& arg : args)
        argv.append(decoded(arg));
    kept.set(argv);
    kept.searchFirst(decoded(directory));
}

int exitStatusOf(const py::error_already_set& exit)
{
    const py::object code =
        exit.value() ? py::getattr(exit.value(), "code", py::none()) : py::object(py::none());
    if (code.is_none())
        return 0;
    if (PyLong_Check(code.ptr()))
        return static_cast<int>(PyLong_AsUnsignedLongMask(code.ptr()) & 0xff);
    py::print(code, py::arg("file") = py::module_::import("sys").attr("stderr"));
    return status_uncaught;
}

/// Tells the person about what a script ended with, and gives the exit status of that.
int finishWith(py::error_already_set& error)
{
    if (error.matches(PyExc_SystemExit))
        return exitStatusOf(error);
    const bool interrupted = error.matches(PyExc_KeyboardInterrupt);
    error.restore();
    PyErr_PrintEx(0);
    return interrupted ? status_interrupted : status_uncaught;
}

template <typename Function>
int statusOf(Function run)
{
    try
    {
        run();
        return 0;
    }
    catch (py::error_already_set& error)
    {
        return finishWith(error);
    }
}

void flushOutput()
{
    for (const char* name : {"stdout", "stderr"})
    {
        const py::object stream = py::getattr(py::module_::import("sys"), name, py::none());
        if (!stream.is_none() && !py::getattr(stream, "closed", py::bool_(false)).cast<bool>())
            stream.attr("flush")();
    }
}

/// What the end of a Python program does: waits for its threads, runs its exit handlers, writes what is held back.
int endProgram(int status)
{
    const py::dict modules = py::module_::import("sys").attr("modules");
    const int handlers = statusOf(
        [&]
        {
            if (modules.contains("threading"))
                modules["threading"].attr("_shutdown")();
            py::module_::import("atexit").attr("_run_exitfuncs")();
        });
    try
    {
        flushOutput();
    }
    catch (const py::error_already_set&)
    {
        return status ? status : status_flush_failed;
    }
    return status ? status : handlers;
}

/// Python refuses them too, but does not name the file.
void refuseNullBytes(const std::string& source, const std::string& path)
{
    if (source.find('\0') == std::string::npos)
        return;
    PyErr_Format(PyExc_ValueError, "%s holds a null byte, so it is no Python script. Save it as UTF-8 text.",
                 path == "-" ? "standard input" : path.c_str());
    throw py::error_already_set();
}

/// Runs the text of a program as `__main__`.
int runProgram(const std::string& source, const std::string& path, const std::vector<std::string>& args,
               const std::string& directory)
{
    const InterruptsReachPython interrupts;
    const int status = statusOf(
        [&]
        {
            const KeptArguments kept;
            tellArguments(kept, path, args, directory);
            py::dict names = python::mainNamespace();
            const bool isFile = path != "-";
            if (isFile)
                names["__file__"] = decoded(path);
            refuseNullBytes(source, path);
            // Python's own compile() knows the source's coding line.
            const py::object code =
                py::module_::import("builtins")
                    .attr("compile")(py::bytes(source), isFile ? decoded(path) : py::str("<stdin>"), "exec");
            py::object result =
                py::reinterpret_steal<py::object>(PyEval_EvalCode(code.ptr(), names.ptr(), names.ptr()));
            if (!result)
                throw py::error_already_set();
        });
    return endProgram(status);
}

/// False, with the reason in errno, when the file cannot be read.
bool readAll(const std::string& path, std::string& text)
{
    std::error_code error;
    if (fs::is_directory(path, error))
    {
        errno = EISDIR;
        return false;
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    std::ostringstream contents;
    if (file.peek() != std::ifstream::traits_type::eof())
        contents << file.rdbuf();
    text = contents.str();
    return !file.bad();
}

std::string directoryOf(const std::string& path)
{
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(path, error);
    return (error ? fs::path(path) : whole).parent_path().string();
}

int runStandardInput(const std::vector<std::string>& args)
{
    const std::string source((std::istreambuf_iterator<char>(std::cin)), std::istreambuf_iterator<char>());
    return runProgram(source, "-", args, "");
}

int runConsole()
{
    const InterruptsReachPython interrupts;
    const int status = statusOf(
        []
        {
            py::module_ sys = py::module_::import("sys");
            py::list argv;
            argv.append("");
            sys.attr("argv") = argv;
            sys.attr("path").attr("insert")(0, "");
            // Python's own set-up of line editing, completion and history; absent without the readline module.
            const py::object hook = py::getattr(sys, "__interactivehook__", py::none());
            if (!hook.is_none())
                hook();
            py::module_::import("code").attr("interact")(
                py::arg("banner") = "Python inside the host; hou is there. Ctrl-D ends.",
                py::arg("local") = python::mainNamespace(), py::arg("exitmsg") = "");
        });
    return endProgram(status);
}

} // namespace

int runPythonFile(const std::string& path, const std::vector<std::string>& args)
{
    if (path == "-")
    {
        const python::Session session;
        return session.started() ? runStandardInput(args) : status_uncaught;
    }
    std::string source;
    if (!readAll(path, source))
    {
        const std::string reason = std::strerror(errno ? errno : EIO);
        std::cerr << "Cannot read the script \"" << path << "\": " << reason
                  << ". Give the path of a Python file, or - for standard input.\n";
        return status_unreadable;
    }
    const python::Session session;
    return session.started() ? runProgram(source, path, args, directoryOf(path)) : status_uncaught;
}

int runPythonShell()
{
    const python::Session session;
    if (!session.started())
        return status_uncaught;
    return isatty(STDIN_FILENO) ? runConsole() : runStandardInput({});
}

} // namespace standin
