#include "interpreter.h"

#include <standin/python.h>

namespace py = pybind11;

namespace standin
{

namespace
{

/// Texts that only look odd give warnings, which are not for here.
class WarningsIgnored
{
public:
    WarningsIgnored() : m_guard(py::module_::import("warnings").attr("catch_warnings")())
    {
        m_guard.attr("__enter__")();
        py::module_::import("warnings").attr("simplefilter")("ignore");
    }
    WarningsIgnored(const WarningsIgnored&) = delete;
    WarningsIgnored& operator=(const WarningsIgnored&) = delete;
    // By the plain call: that of pybind11 throws, which nothing that ends may do.
    ~WarningsIgnored()
    {
        PyObject* left = PyObject_CallMethod(m_guard.ptr(), "__exit__", "OOO", Py_None, Py_None, Py_None);
        Py_XDECREF(left);
        if (!left)
            PyErr_Clear();
    }

private:
    py::object m_guard;
};

void compile(const std::string& text, PythonUse use)
{
    const py::str source(text);
    if (use == PythonUse::Statements)
        py::module_::import("builtins").attr("compile")(source, "<script>", "exec");
    else
        py::module_::import("hou._expressions").attr("check")(source);
}

PythonProblem problemOf(const py::error_already_set& raised)
{
    PythonProblem problem = {python::summaryOf(raised), 0};
    const py::object name = raised.type().attr("__name__");
    if (!raised.matches(PyExc_SyntaxError))
        return problem;
    problem.message =
        name.cast<std::string>() + ": " + py::str(raised.value().attr("msg")).cast<std::string>();
    const py::object line = raised.value().attr("lineno");
    problem.line = line.is_none() ? 0 : line.cast<int>();
    return problem;
}

} // namespace

bool compilesAsPython(const std::string& text, PythonUse use, PythonProblem& problem)
{
    const python::Session session;
    if (!session.started())
        return true;
    try
    {
        const WarningsIgnored quiet;
        compile(text, use);
        return true;
    }
    catch (const py::error_already_set& raised)
    {
        python::passOnInterrupt(raised);
        problem = problemOf(raised);
    }
    catch (const std::exception& thrown)
    {
        problem = {thrown.what(), 0};
    }
    return false;
}

} // namespace standin
