#include <OP/OP_Node.h>

#include "op_names.h"
#include "op_node_state.h"

#include <OP/OP_Director.h>

#include <cstdint>
#include <unordered_map>

namespace
{

// Never destroyed: nodes may outlive every static object.
std::unordered_map<int, OP_Node*>& livingNodes()
{
    static auto* nodes = new std::unordered_map<int, OP_Node*>;
    return *nodes;
}

int nextNodeId()
{
    static int last = 0;
    return ++last;
}

const OP_Node* stepInto(const OP_Node* node, const std::string& step)
{
    if (step == ".")
        return node;
    if (step == "..")
        return node->getParent();
    const OP_Network* network = node->castToOPNetwork();
    return network ? network->getChild(step.c_str()) : nullptr;
}

} // namespace

OP_Node::OP_Node(OP_Network* parent, const char* name, OP_Operator* op) : myState(new State)
{
    myState->id = nextNodeId();
    myState->parent = parent;
    myState->op = op;
    setNameText(name);
    livingNodes()[myState->id] = this;
}

OP_Node::~OP_Node()
{
    myState->alive = false;
    livingNodes().erase(myState->id);
    for (unsigned i = 0; i < getInputsArraySize(); ++i)
        detachSlot(i);
    // Nodes that were destroyed in the regular way feed nothing any more. For the others: no events, for half of
    // this object is gone already.
    for (const State::Wire& wire : std::vector<State::Wire>(myState->outputs))
        wire.node->detachSlot(wire.input);
    if (getParent() && getParent()->getChildIndex(this) >= 0)
        getParent()->dropChild(this);
}

int OP_Node::setName(const UT_String& name, OP_RenameAction action)
{
    return getParent() ? getParent()->renameNode(this, name, action) : 0;
}

void OP_Node::doGetFullPath(UT_WorkBuffer& str) const
{
    const OP_Node* parent = getParent();
    // The root is "/" and ends with the separator, everything else does not.
    if (parent && parent->getParent())
        parent->doGetFullPath(str);
    str.append("/");
    if (parent)
        str.append(getName().nonNullBuffer());
}

void OP_Node::getFullPath(UT_String& path) const
{
    UT_WorkBuffer buffer;
    doGetFullPath(buffer);
    path.harden(buffer.buffer());
}

UT_StringHolder OP_Node::getFullPath() const
{
    UT_WorkBuffer buffer;
    doGetFullPath(buffer);
    return UT_StringHolder(buffer.buffer());
}

OP_Network* OP_Node::getParent() const { return myState->parent; }
OP_Operator* OP_Node::getOperator() const { return myState->op; }
const char* OP_Node::getOpType() const { return ""; }
OP_OpTypeId OP_Node::getOpTypeID() const { return INVALID_OPTYPE_ID; }
int OP_Node::isNetwork() const { return 0; }

VOP_Node* OP_Node::castToVOPNode() { return nullptr; }
const VOP_Node* OP_Node::castToVOPNode() const { return nullptr; }
SHOP_Node* OP_Node::castToSHOPNode() { return nullptr; }
const SHOP_Node* OP_Node::castToSHOPNode() const { return nullptr; }
OP_Network* OP_Node::castToOPNetwork() { return nullptr; }
const OP_Network* OP_Node::castToOPNetwork() const { return nullptr; }

int OP_Node::getUniqueId() const { return myState->id; }

OP_Node* OP_Node::lookupNode(int id)
{
    const auto found = livingNodes().find(id);
    return found == livingNodes().end() ? nullptr : found->second;
}

int OP_Node::isBeingDeleted() const { return myState->beingDeleted; }

OP_Node* OP_Node::findNode(const char* path) const
{
    if (!path || !*path)
        return nullptr;
    const OP_Node* node = path[0] == '/' ? OPgetDirector() : this;
    for (const std::string& step : standin::splitWords(path, "/"))
        if (!(node = stepInto(node, step)))
            return nullptr;
    return const_cast<OP_Node*>(node);
}

VOP_Node* OP_Node::findVOPNode(const char* path) const { return CAST_VOPNODE(findNode(path)); }

OP_Parameters* OP_Node::findRelative(const char* path) { return path && *path ? findNode(path) : this; }

void OP_Node::parmChanged(int index)
{
    opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(static_cast<std::intptr_t>(index)));
}

void* OP_Node::parmData() { return static_cast<OP_Node*>(this); }
int OP_Node::connectedInputCount() const { return static_cast<int>(nConnectedInputs()); }
bool OP_Node::isInputConnected(int index) const
{
    return index >= 0 && getInput(static_cast<unsigned>(index));
}

void OP_Node::getDescriptiveName(UT_String& name) const { name.harden(""); }

OP_NodeFlags& OP_Node::flags() { return myState->flags; }
const OP_NodeFlags& OP_Node::flags() const { return myState->flags; }
int OP_Node::setExtraFlag(char, int) { return 0; }
int OP_Node::getExtraFlag(char) { return 0; }

void OP_Node::setUserData(const UT_String& name, const UT_String& value, bool)
{
    myState->userData[name.toStdString()] = value.toStdString();
}

bool OP_Node::getUserData(const UT_String& name, UT_String& value) const
{
    const auto found = myState->userData.find(name.toStdString());
    if (found == myState->userData.end())
        return false;
    value.harden(found->second.c_str());
    return true;
}

bool OP_Node::getUserData(const UT_String& name, UT_StringHolder& value) const
{
    const auto found = myState->userData.find(name.toStdString());
    if (found == myState->userData.end())
        return false;
    value = UT_StringHolder(found->second);
    return true;
}

bool OP_Node::hasUserData(const UT_String& name) const
{
    return myState->userData.count(name.toStdString()) != 0;
}

bool OP_Node::deleteUserData(const UT_String& name, bool)
{
    return myState->userData.erase(name.toStdString()) != 0;
}

void OP_Node::getUserDataNames(UT_StringArray& names) const
{
    for (const auto& entry : myState->userData)
        names.append(UT_StringHolder(entry.first));
}
