#include "utils_nodes.h"

#include <OP/OP_Node.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Node.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace zelk
{
namespace shop
{

const char* const network_mask = "korvan_vopnet";
const char* const help_root = "https://docs.korvan.example/houdini/";

void setText(UT_String& target, const char* text) { target.harden(text); }

std::string fullPathOf(const OP_Node& node)
{
    UT_String path;
    node.getFullPath(path);
    return path.buffer();
}

int parmIndexOf(const void* eventData)
{
    return static_cast<int>(reinterpret_cast<std::intptr_t>(eventData));
}

namespace
{

/// A null text equals a null name only.
bool isNamed(const char* connector, const UT_String& name)
{
    const char* text = name.buffer();
    return connector && text ? std::string(connector) == text : connector == text;
}

} // namespace

int findInputByLabel(const VOP_Node& node, const UT_String& name)
{
    const unsigned count = node.getNumVisibleInputs();
    for (unsigned i = 0; i < count; ++i)
        if (isNamed(node.inputLabel(i), name))
            return static_cast<int>(i);
    return -1;
}

unsigned inputSlotCount(const OP_Node& node) { return node.getInputsArraySize(); }

unsigned wireCount(const OP_Node& node, int output) { return node.nOutputs(output); }

OP_Node* firstReader(const OP_Node& node, int output) { return node.getOutput(0, output); }

const char* LabelText::keep(const std::string& label)
{
    const std::size_t size = std::min(label.size(), sizeof m_text - 1);
    std::copy(label.begin(), label.begin() + static_cast<std::ptrdiff_t>(size), m_text);
    m_text[size] = '\0';
    return m_text;
}

NodeWatch::NodeWatch(OP_Node& node) : m_node(&node) { m_node->addOpInterest(this, onEvent); }

NodeWatch::~NodeWatch()
{
    if (m_node)
        m_node->removeOpInterest(this, onEvent);
}

void NodeWatch::onEvent(OP_Node*, void* self, OP_EventType type, void*)
{
    if (type == OP_NODE_DELETED)
        static_cast<NodeWatch*>(self)->m_node = nullptr;
}

bool showDetailAroundMiddle(VOP_Node& node, char detail)
{
    const NodeWatch life(node);
    const fpreal before = node.getH();
    if (detail)
        node.setExtraFlag(detail, 1);
    if (life.isOver())
        return false;
    const fpreal y = node.getY(), after = node.getH(), x = node.getX();
    node.setXYWithBoundsChecks(x, y - 0.5 * (before - after));
    return !life.isOver();
}

} // namespace shop
} // namespace zelk
