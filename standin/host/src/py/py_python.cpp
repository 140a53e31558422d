#include "interpreter.h"
#include "kept_arguments.h"

#include <PY/PY_Python.h>
#include <standin/host.h>

#include <pybind11/eval.h>

namespace py = pybind11;

namespace
{

using standin::python::Session;
using standin::python::Text;

py::dict namespaceOf(PY_EvaluationContext* context)
{
    return context ? py::reinterpret_borrow<py::dict>(static_cast<PyObject*>(context->globals()))
                   : standin::python::mainNamespace();
}

PY_Result errorResult(const std::string& message, const std::string& details)
{
    PY_Result result;
    result.myResultType = PY_Result::ERR;
    result.myErrValue = message;
    result.myDetailedErrValue = details;
    return result;
}

PY_Result notStarted() { return errorResult("Python is not available.", "Python is not available.\n"); }

PY_Result errorResult(const py::error_already_set& error)
{
    standin::python::passOnInterrupt(error);
    return errorResult(standin::python::summaryOf(error), standin::python::tracebackOf(error));
}

/// Runs something that may raise; its result, or the error.
template <typename Function>
PY_Result guarded(Function run)
{
    try
    {
        return run();
    }
    catch (const py::error_already_set& error)
    {
        return errorResult(error);
    }
    catch (const std::exception& error)
    {
        return errorResult(error.what(), std::string(error.what()) + "\n");
    }
}

/// Compiles and runs a text as Python itself would, so that errors name its lines.
py::object run(const char* code, const char* mode, const py::dict& names)
{
    const py::object compiled =
        py::module_::import("builtins").attr("compile")(py::bytes(code ? code : ""), "<host>", mode);
    py::object value =
        py::reinterpret_steal<py::object>(PyEval_EvalCode(compiled.ptr(), names.ptr(), names.ptr()));
    if (!value)
        throw py::error_already_set();
    return value;
}

void tell(const PY_Result& result, const char* heading)
{
    if (result.myResultType != PY_Result::ERR)
        return;
    std::string text = heading && *heading ? std::string(heading) + "\n" : std::string();
    text += result.myDetailedErrValue.toStdString();
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    standin::report(standin::Severity::Error, text);
}

/// Sets `sys.argv`, and the head of `sys.path` when it is asked for.
void tellArguments(const KeptArguments& kept, int argc, char* argv[], bool updatePath)
{
    if (argc <= 0 || !argv)
        return;
    py::list arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(py::cast(Text(argv[i])));
    kept.set(arguments);
    if (updatePath)
        kept.searchFirst(py::module_::import("os.path").attr("dirname")(arguments[0]));
}

// How a value becomes each kind of result. A conversion that fails raises Python's own sentence.

void takeNothing(PY_Result&, const py::object&) {}

void takeInt(PY_Result& result, const py::object& value)
{
    const py::object number = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    result.myIntValue = number ? PyLong_AsLong(number.ptr()) : -1;
    if (PyErr_Occurred())
        throw py::error_already_set();
}

void takeDouble(PY_Result& result, const py::object& value)
{
    result.myDoubleValue = PyFloat_AsDouble(value.ptr());
    if (PyErr_Occurred())
        throw py::error_already_set();
}

Text requireText(const py::object& value)
{
    if (!py::isinstance<py::str>(value))
        throw py::type_error(std::string("a string is needed, not ") + Py_TYPE(value.ptr())->tp_name);
    return value.cast<Text>();
}

void takeString(PY_Result& result, const py::object& value)
{
    result.myStringValue = requireText(value).value;
}

void takeStrings(PY_Result& result, const py::object& value)
{
    if (py::isinstance<py::str>(value))
        throw py::type_error("a sequence of strings is needed, not str");
    for (const py::handle item : value)
        result.myStringArray.append(
            UT_StringHolder(requireText(py::reinterpret_borrow<py::object>(item)).value));
}

struct ConversionRow
{
    PY_Result::Type type;
    void (*take)(PY_Result&, const py::object&);
};

const ConversionRow conversion_rows[] = {
    {PY_Result::NONE, takeNothing},         {PY_Result::INT, takeInt},
    {PY_Result::DOUBLE, takeDouble},        {PY_Result::STRING, takeString},
    {PY_Result::STRING_ARRAY, takeStrings},
};

PY_Result converted(const py::object& value, PY_Result::Type want)
{
    for (const ConversionRow& row : conversion_rows)
    {
        if (row.type != want)
            continue;
        PY_Result result;
        row.take(result, value);
        result.myResultType = want;
        return result;
    }
    throw py::type_error("no such type of result");
}

} // namespace

PY_Result PYrunPythonStatements(const char* code, int argc, char* argv[], PY_EvaluationContext* context,
                                bool update_path)
{
    const Session session;
    if (!session.started())
        return notStarted();
    return guarded(
        [&]
        {
            const KeptArguments kept;
            tellArguments(kept, argc, argv, update_path);
            run(code, "exec", namespaceOf(context));
            return PY_Result();
        });
}

void PYrunPythonStatementsAndExpectNoErrors(const char* code, const char* heading,
                                            PY_EvaluationContext* context)
{
    tell(PYrunPythonStatements(code, 0, nullptr, context), heading);
}

PY_Result PYrunPythonExpression(const char* code, PY_Result::Type want, PY_EvaluationContext* context)
{
    const Session session;
    if (!session.started())
        return notStarted();
    return guarded([&] { return converted(run(code, "eval", namespaceOf(context)), want); });
}

PY_Result PYrunPythonExpressionAndExpectNoErrors(const char* code, PY_Result::Type want, const char* heading,
                                                 PY_EvaluationContext* context)
{
    PY_Result result = PYrunPythonExpression(code, want, context);
    tell(result, heading);
    return result;
}

PY_EvaluationContext::PY_EvaluationContext() : myGlobals(nullptr) {}

PY_EvaluationContext::~PY_EvaluationContext()
{
    if (!myGlobals || !Py_IsInitialized())
        return;
    const Session session;
    PyObject* names = static_cast<PyObject*>(myGlobals);
    PyDict_Clear(names); // functions defined inside refer back to their namespace
    Py_DECREF(names);
}

void* PY_EvaluationContext::globals()
{
    if (!myGlobals)
        myGlobals = standin::python::freshNamespace().release().ptr();
    return myGlobals;
}
