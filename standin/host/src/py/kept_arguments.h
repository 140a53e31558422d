#pragma once

#include <pybind11/pybind11.h>

namespace py = pybind11;

/// What a script may make of `sys.argv` and `sys.path` is taken back when this goes. Hidden, as what it holds of pybind11 is.
class __attribute__((visibility("hidden"))) KeptArguments
{
public:
    KeptArguments() : m_sys(py::module_::import("sys"))
    {
        m_argv = py::getattr(m_sys, "argv", py::list());
        m_path = m_sys.attr("path").attr("copy")();
    }
    KeptArguments(const KeptArguments&) = delete;
    KeptArguments& operator=(const KeptArguments&) = delete;
    // By the plain calls: those of pybind11 throw, which nothing that ends may do.
    ~KeptArguments()
    {
        if (PyObject_SetAttrString(m_sys.ptr(), "argv", m_argv.ptr()) != 0 ||
            PyObject_SetAttrString(m_sys.ptr(), "path", m_path.ptr()) != 0)
            PyErr_Clear();
    }

    void set(const py::list& argv) const { m_sys.attr("argv") = argv; }
    void searchFirst(const py::object& directory) const { m_sys.attr("path").attr("insert")(0, directory); }

private:
    py::module_ m_sys;
    py::object m_argv;
    py::object m_path;
};
