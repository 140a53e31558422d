#include "module.h"

#include <OP/OP_Node.h>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

/// Gives the error's text to its class in the package, which knows how to say it. By value, as pybind11 calls it.
void raiseInPython(std::exception_ptr pending) // NOLINT(performance-unnecessary-value-param)
{
    try
    {
        if (pending)
            std::rethrow_exception(pending);
    }
    catch (const HouError& error)
    {
        py::object made = py::module_::import("hou._errors").attr("_new")(error.kind(), Text(error.what()));
        PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(made.ptr())), made.ptr());
    }
}

} // namespace

py::module_ makeHouModule()
{
    // Python keeps the definition for as long as the module lives.
    static py::module_::module_def definition;
    py::module_ module =
        py::module_::create_extension_module("_hou", "The host, in plain functions.", &definition);
    py::register_exception_translator(&raiseInPython);
    bindSession(module);
    bindTypes(module);
    bindNodes(module);
    bindWires(module);
    bindParms(module);
    bindMultiParms(module);
    bindSpareParms(module);
    bindScenes(module);
    bindUndos(module);
    bindAssets(module);
    return module;
}

void fail(const std::string& message) { throw HouError("OperationFailed", message); }

OP_Node& nodeOf(int id)
{
    OP_Node* node = OP_Node::lookupNode(id);
    if (!node)
        throw HouError("ObjectWasDeleted", "The node no longer exists.");
    return *node;
}

int idOf(const OP_Node* node) { return node ? node->getUniqueId() : 0; }

std::string pathOf(const OP_Node& node) { return node.getFullPath().toStdString(); }

} // namespace python
} // namespace standin
