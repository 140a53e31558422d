#include "interpreter.h"

#include "module.h"

#include <standin/host.h>
#include <standin/python.h>

#include <dlfcn.h>

#include <filesystem>
#include <mutex>

namespace py = pybind11;
namespace fs = std::filesystem;

namespace standin
{
namespace
{

/// Path of the shared object that holds an address; empty when it cannot be told.
fs::path libraryOf(const void* address)
{
    Dl_info info;
    if (!dladdr(address, &info) || !info.dli_fname)
        return fs::path();
    std::error_code error;
    const fs::path path = fs::canonical(info.dli_fname, error);
    return error ? fs::path(info.dli_fname) : path;
}

/// The directory that the interpreter library was installed to.
///
/// Left to itself Python would look beside the first `python3` of the PATH, which may be another installation whose
/// modules do not fit the library that is linked. Empty when the standard library is not found above the library.
fs::path pythonHome()
{
    const std::string package =
        "python" + std::to_string(PY_MAJOR_VERSION) + "." + std::to_string(PY_MINOR_VERSION);
    const fs::path library = libraryOf(reinterpret_cast<const void*>(&Py_IsInitialized));
    for (fs::path at = library.parent_path(); at.has_relative_path(); at = at.parent_path())
    {
        std::error_code error;
        if (fs::exists(at / "lib" / package / "os.py", error))
            return at;
    }
    return fs::path();
}

std::string statusText(const PyStatus& status) { return status.err_msg ? status.err_msg : "unknown reason"; }

/// Texts are UTF-8 whatever the locale, and the host's locale stays as it is.
PyStatus preInitialize()
{
    PyPreConfig config;
    PyPreConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    config.configure_locale = 0;
    config.coerce_c_locale = 0;
    config.utf8_mode = 1;
    return Py_PreInitialize(&config);
}

PyStatus initialize()
{
    PyStatus status = preInitialize();
    if (PyStatus_Exception(status))
        return status;
    PyConfig config;
    PyConfig_InitPythonConfig(&config);
    config.parse_argv = 0;
    config.install_signal_handlers = 0; // Ctrl-C belongs to Python only while a script runs
    const std::string home = pythonHome().string();
    if (!home.empty())
        status = PyConfig_SetBytesString(&config, &config.home, home.c_str());
    if (!PyStatus_Exception(status))
        status = Py_InitializeFromConfig(&config);
    PyConfig_Clear(&config);
    return status;
}

/// Makes `_hou` and `hou` importable and imports them, so that a broken installation is told at once.
void importHou()
{
    py::module_ sys = py::module_::import("sys");
    sys.attr("path").attr("insert")(0, pythonDirectory());
    sys.attr("modules")["_hou"] = python::makeHouModule();
    py::module_::import("__main__").attr("hou") = py::module_::import("hou");
}

bool importHouOrTell()
{
    try
    {
        importHou();
        return true;
    }
    catch (const py::error_already_set& error)
    {
        report(Severity::Error, "[PY] The Python module hou could not be loaded from \"" + pythonDirectory() +
                                    "\" (" + python::summaryOf(error) +
                                    "). Install the directory \"python\" beside \"lib\".");
        return false;
    }
}

bool startNow()
{
    if (!Py_IsInitialized())
    {
        const PyStatus status = initialize();
        if (PyStatus_Exception(status))
        {
            report(Severity::Error,
                   "[PY] Python could not be started: " + statusText(status) +
                       ". Check PYTHONPATH, and that Python's standard library is installed.");
            return false;
        }
        const bool imported = importHouOrTell();
        PyEval_SaveThread(); // from here on every use takes the lock, on whichever thread it is
        return imported;
    }
    const PyGILState_STATE state = PyGILState_Ensure();
    const bool imported = importHouOrTell();
    PyGILState_Release(state);
    return imported;
}

} // namespace

bool startPython()
{
    static std::once_flag once;
    static bool started = false;
    std::call_once(once, [] { started = startNow(); });
    return started;
}

std::string pythonDirectory()
{
    const fs::path library = libraryOf(reinterpret_cast<const void*>(&startPython));
    return (library.parent_path().parent_path() / "python").string();
}

namespace python
{

Session::Session() : m_started(startPython()), m_state(PyGILState_UNLOCKED)
{
    if (m_started)
        m_state = PyGILState_Ensure();
}

Session::~Session()
{
    if (m_started)
        PyGILState_Release(m_state);
}

py::dict mainNamespace() { return py::module_::import("__main__").attr("__dict__"); }

py::dict freshNamespace()
{
    py::dict names;
    names["__builtins__"] = py::module_::import("builtins");
    names["__name__"] = "__main__";
    names["hou"] = py::module_::import("hou");
    return names;
}

namespace
{

std::string formatted(const py::error_already_set& error, bool whole)
{
    // A __str__ of a script's own exception may fail while it is formatted; the type's name is then all there is.
    try
    {
        py::module_ traceback = py::module_::import("traceback");
        const py::object trace = error.trace() ? error.trace() : py::object(py::none());
        const py::object lines = whole
                                     ? traceback.attr("format_exception")(error.type(), error.value(), trace)
                                     : traceback.attr("format_exception_only")(error.type(), error.value());
        return py::str("").attr("join")(lines).cast<Text>().value;
    }
    catch (const py::error_already_set&)
    {
        return std::string(reinterpret_cast<PyTypeObject*>(error.type().ptr())->tp_name) + "\n";
    }
}

} // namespace

std::string summaryOf(const py::error_already_set& error)
{
    std::string text = formatted(error, false);
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    // The lines before the last quote the source of a syntax error.
    const bool syntax = error.matches(PyExc_SyntaxError);
    const std::size_t end = text.rfind('\n');
    return syntax && end != std::string::npos ? text.substr(end + 1) : text;
}

std::string tracebackOf(const py::error_already_set& error) { return formatted(error, true); }

void passOnInterrupt(const py::error_already_set& error)
{
    if (error.matches(PyExc_KeyboardInterrupt))
        PyErr_SetInterrupt();
}

} // namespace python
} // namespace standin
