#ifndef STANDIN_PY_MODULE_H
#define STANDIN_PY_MODULE_H

#include "text.h"

#include <pybind11/pybind11.h>

#include <stdexcept>
#include <string>

class OP_Network;
class OP_Node;

/// @file
/// `_hou`: the plain functions that the `hou` package is made of. They take and give numbers, texts, tuples and
/// dictionaries; nodes are their unique numbers (0 for none), parameters their tokens. Nothing of it is for people.

namespace standin
{
namespace python
{

/// Makes the module object. Needs the interpreter lock.
pybind11::module_ makeHouModule();

// What each subject adds to it.
void bindSession(pybind11::module_& module);
void bindTypes(pybind11::module_& module);
void bindNodes(pybind11::module_& module);
void bindWires(pybind11::module_& module);
void bindParms(pybind11::module_& module);
void bindMultiParms(pybind11::module_& module);
void bindSpareParms(pybind11::module_& module);
void bindScenes(pybind11::module_& module);
void bindUndos(pybind11::module_& module);
void bindAssets(pybind11::module_& module);

/// An exception of the `hou` package on its way to Python.
class HouError : public std::runtime_error
{
public:
    /// @param kind  name of the class, such as "OperationFailed"
    HouError(const char* kind, const std::string& message) : std::runtime_error(message), m_kind(kind) {}
    const char* kind() const { return m_kind; }

private:
    const char* m_kind;
};

/// Raises hou.OperationFailed with that sentence.
[[noreturn]] void fail(const std::string& message);

/// The living node with that number; raises hou.ObjectWasDeleted when there is none.
OP_Node& nodeOf(int id);

/// Number of a node; 0 for null.
int idOf(const OP_Node* node);

std::string pathOf(const OP_Node& node);

} // namespace python
} // namespace standin

#endif
