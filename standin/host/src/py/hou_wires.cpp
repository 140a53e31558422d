#include "module.h"

#include <OP/OP_Node.h>
#include <VOP/VOP_Node.h>
#include <standin/host.h>

#include <pybind11/pybind11.h>

#include <algorithm>
#include <vector>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

/// (name, label, type word) of each visible connector; nodes without typed connectors have labels only.
py::list inputFacts(int id)
{
    OP_Node& node = nodeOf(id);
    VOP_Node* vop = node.castToVOPNode();
    py::list facts;
    for (unsigned i = 0; i < node.getNumVisibleInputs(); ++i)
    {
        const Text label(node.inputLabel(i));
        UT_String name;
        if (vop)
            vop->getInputName(name, static_cast<int>(i));
        facts.append(py::make_tuple(vop ? Text(name.nonNullBuffer()) : label, label,
                                    Text(vop ? VOPgetTypeName(vop->getInputType(static_cast<int>(i))) : "")));
    }
    return facts;
}

py::list outputFacts(int id)
{
    OP_Node& node = nodeOf(id);
    VOP_Node* vop = node.castToVOPNode();
    py::list facts;
    for (unsigned i = 0; i < node.getNumVisibleOutputs(); ++i)
    {
        const Text label(node.outputLabel(i));
        UT_String name;
        if (vop)
            vop->getOutputName(name, static_cast<int>(i));
        facts.append(
            py::make_tuple(vop ? Text(name.nonNullBuffer()) : label, label,
                           Text(vop ? VOPgetTypeName(vop->getOutputType(static_cast<int>(i))) : "")));
    }
    return facts;
}

/// (source, output) per input up to the last connected one; source 0 where nothing is connected.
py::list inputWires(int id)
{
    const OP_Node& node = nodeOf(id);
    py::list wires;
    for (unsigned i = 0; i < node.nInputs(); ++i)
    {
        const OP_Input* slot = node.getInputReferenceConst(i);
        wires.append(slot ? py::make_tuple(idOf(slot->getNode()), slot->getNodeOutputIndex())
                          : py::make_tuple(0, 0));
    }
    return wires;
}

/// The nodes downstream, each once.
std::vector<OP_Node*> targetsOf(const OP_Node& node)
{
    std::vector<OP_Node*> targets;
    for (unsigned i = 0; i < node.nOutputs(); ++i)
    {
        OP_Node* target = node.getOutput(i);
        if (target && std::find(targets.begin(), targets.end(), target) == targets.end())
            targets.push_back(target);
    }
    return targets;
}

/// (target, input, output) per wire that leaves the node.
py::list outputWires(int id)
{
    const OP_Node& node = nodeOf(id);
    py::list wires;
    for (OP_Node* target : targetsOf(node))
        for (unsigned i = 0; i < target->nInputs(); ++i)
        {
            const OP_Input* slot = target->getInputReferenceConst(i);
            if (slot && slot->getNode() == &node)
                wires.append(py::make_tuple(idOf(target), i, slot->getNodeOutputIndex()));
        }
    return wires;
}

void connectNodes(int id, unsigned input, int sourceId, unsigned output)
{
    OP_Node& node = nodeOf(id);
    OP_Node& source = nodeOf(sourceId);
    std::string why;
    if (!canConnect(source, output, node, input, why))
        fail(why);
    if (node.setInput(input, &source, output) >= UT_ERROR_ABORT)
        fail("\"" + pathOf(source) + "\" cannot be connected to \"" + pathOf(node) + "\".");
}

void disconnectInput(int id, unsigned input)
{
    if (nodeOf(id).setInput(input, nullptr) >= UT_ERROR_ABORT)
        fail("Input " + std::to_string(input) + " of the node cannot be disconnected.");
}

/// Slots may be more than what is shown: a wire beyond the visible inputs can be taken off all the same.
unsigned inputSlots(int id)
{
    const OP_Node& node = nodeOf(id);
    return std::max(node.getInputsArraySize(), node.getNumVisibleInputs());
}

} // namespace

void bindWires(py::module_& module)
{
    module.def("input_facts", &inputFacts);
    module.def("output_facts", &outputFacts);
    module.def("input_wires", &inputWires);
    module.def("output_wires", &outputWires);
    module.def("connect", &connectNodes);
    module.def("disconnect", &disconnectInput);
    module.def("input_slots", &inputSlots);
    module.def("visible_inputs", [](int id) { return nodeOf(id).getNumVisibleInputs(); });
    module.def("visible_outputs", [](int id) { return nodeOf(id).getNumVisibleOutputs(); });
}

} // namespace python
} // namespace standin
