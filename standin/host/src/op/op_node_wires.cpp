#include <OP/OP_Network.h>

#include "op_node_state.h"

#include <algorithm>
#include <cstdint>

namespace
{

void redraw(int nodeId)
{
    if (OP_Node* node = OP_Node::lookupNode(nodeId))
        node->triggerUIChanged(OP_UICHANGE_CONNECTIONS);
}

int idOf(const OP_Node* node) { return node ? node->getUniqueId() : 0; }

} // namespace

OP_Node* OP_Node::getInput(unsigned idx, bool) const
{
    const OP_Input* slot = getInputReferenceConst(idx);
    return slot ? slot->getNode() : nullptr;
}

OP_Input* OP_Node::getInputReference(unsigned idx, bool grow)
{
    if (grow && idx < maxInputs())
        growInputs(idx + 1);
    return getInputReferenceConst(idx);
}

OP_Input* OP_Node::getInputReferenceConst(unsigned idx) const
{
    return idx < getInputsArraySize() ? myState->inputs[idx].get() : nullptr;
}

void OP_Node::growInputs(unsigned count)
{
    while (getInputsArraySize() < count)
        myState->inputs.emplace_back(new OP_Input);
}

unsigned OP_Node::nInputs() const
{
    unsigned count = getInputsArraySize();
    while (count > 0 && !myState->inputs[count - 1]->getNode())
        --count;
    return count;
}

unsigned OP_Node::getInputsArraySize() const { return static_cast<unsigned>(myState->inputs.size()); }

unsigned OP_Node::nConnectedInputs(bool) const
{
    const auto& inputs = myState->inputs;
    return static_cast<unsigned>(std::count_if(
        inputs.begin(), inputs.end(), [](const std::unique_ptr<OP_Input>& i) { return i->getNode(); }));
}

unsigned OP_Node::nOutputs(int output_idx) const
{
    if (output_idx < 0)
        return static_cast<unsigned>(myState->outputs.size());
    unsigned count = 0;
    for (const State::Wire& wire : myState->outputs)
        if (wire.node->myState->inputs[wire.input]->myOutputIndex == output_idx)
            ++count;
    return count;
}

OP_Node* OP_Node::getOutput(unsigned idx, int output_idx) const
{
    if (output_idx < 0)
        return idx < myState->outputs.size() ? myState->outputs[idx].node : nullptr;
    for (const State::Wire& wire : myState->outputs)
        if (wire.node->myState->inputs[wire.input]->myOutputIndex == output_idx && idx-- == 0)
            return wire.node;
    return nullptr;
}

// --- counts and labels that come from the operator --------------------------------------------------------------

unsigned OP_Node::minInputs() const { return getOperator() ? getOperator()->getMinSources() : 0; }
unsigned OP_Node::maxInputs() const { return getOperator() ? getOperator()->getMaxSources() : 0; }
unsigned OP_Node::maxOutputs() const { return getOperator() ? getOperator()->maxOutputs() : 0; }

unsigned OP_Node::getNumVisibleInputs() const
{
    // A node with room for any number shows what is used, and one free connector.
    const unsigned most = maxInputs();
    return most < OP_MULTI_INPUT_MAX ? most : nInputs() + 1;
}

unsigned OP_Node::getNumVisibleOutputs() const { return maxOutputs(); }
unsigned OP_Node::orderedInputs() const { return 0; }
bool OP_Node::hasUnorderedInputs() const { return getOperator() && getOperator()->getIsUnordered(); }

const char* OP_Node::inputLabel(unsigned idx) const
{
    const char* label = getOperator() ? getOperator()->inputLabel(idx) : nullptr;
    return label ? label : "Input";
}

const char* OP_Node::outputLabel(unsigned) const { return "Output"; }

// --- making and cutting wires -----------------------------------------------------------------------------------

void OP_Node::detachSlot(unsigned idx)
{
    OP_Input& slot = *myState->inputs[idx];
    if (!slot.myNode)
        return;
    auto& wires = slot.myNode->myState->outputs;
    wires.erase(std::remove_if(wires.begin(), wires.end(),
                               [&](const State::Wire& wire)
                               { return wire.node == this && wire.input == idx; }),
                wires.end());
    slot.myNode = nullptr;
    slot.myOutputIndex = 0;
}

/// Returns whether that changed anything.
bool OP_Node::connectSlot(unsigned idx, OP_Node* op, unsigned outputIdx)
{
    growInputs(idx + 1);
    OP_Input& slot = *myState->inputs[idx];
    if (slot.myNode == op && (!op || slot.myOutputIndex == static_cast<int>(outputIdx)))
        return false;
    detachSlot(idx);
    if (op)
    {
        slot.myNode = op;
        slot.myOutputIndex = static_cast<int>(outputIdx);
        op->myState->outputs.push_back({this, idx});
    }
    return true;
}

/// Moves the wires behind a free unordered input down by one and returns the end of the range that changed.
unsigned OP_Node::closeGap(unsigned idx)
{
    const unsigned end = nInputs();
    if (!hasUnorderedInputs() || idx < orderedInputs() || idx >= end)
        return idx + 1;
    for (unsigned i = idx; i + 1 < end; ++i)
    {
        const OP_Input& next = *myState->inputs[i + 1];
        OP_Node* node = next.myNode;
        const unsigned output = static_cast<unsigned>(next.myOutputIndex);
        detachSlot(i + 1);
        connectSlot(i, node, output);
    }
    return end;
}

OP_ERROR OP_Node::setInput(unsigned idx, OP_Node* op, unsigned outputIdx)
{
    if (idx >= maxInputs())
        return UT_ERROR_ABORT;
    if (op && (outputIdx >= op->maxOutputs() || op->getParent() != getParent() || op->isBeingDeleted() ||
               isBeingDeleted()))
        return UT_ERROR_ABORT;

    const int source = idOf(getInput(idx));
    if (!connectSlot(idx, op, outputIdx))
        return UT_ERROR_NONE;
    const int newSource = idOf(op);
    const unsigned end = op ? idx + 1 : closeGap(idx);
    growInputs(getNumVisibleInputs());

    const std::shared_ptr<State> state = myState;
    for (unsigned i = idx; i < end && state->alive; ++i)
        opChanged(OP_INPUT_REWIRED, reinterpret_cast<void*>(static_cast<std::intptr_t>(i)));
    if (state->alive)
        opChanged(OP_INPUT_CHANGED);
    for (const int id : {state->id, source, newSource})
        redraw(id);
    return UT_ERROR_NONE;
}

/// Cuts all wires. What this node feeds hears of it, the node itself does not: it is about to go.
void OP_Node::disconnectAll()
{
    const std::shared_ptr<State> state = myState;
    for (unsigned i = 0; state->alive && i < state->inputs.size(); ++i)
    {
        const int source = idOf(getInput(i));
        detachSlot(i);
        redraw(source);
    }
    while (state->alive && !state->outputs.empty())
    {
        const State::Wire wire = state->outputs.front();
        const int id = wire.node->getUniqueId();
        wire.node->setInput(wire.input, nullptr);
        // A class may refuse to be disconnected, but a wire to a node that is gone cannot stay.
        if (state->alive && lookupNode(id) && wire.node->getInput(wire.input) == this)
            wire.node->detachSlot(wire.input);
    }
}
