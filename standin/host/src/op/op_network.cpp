#include <OP/OP_Network.h>

#include "op_names.h"
#include "op_node_state.h"
#include "op_otl_instance.h"

#include <OP/OP_OperatorTable.h>
#include <standin/host.h>

#include <algorithm>
#include <exception>
#include <unordered_map>

/// The children by name, and where to begin the search for a free number.
struct OP_Network::NameIndex
{
    std::unordered_map<std::string, OP_Node*> byName;
    std::unordered_map<std::string, int> firstMaybeFree; ///< by base; below it every number is taken

    void add(const std::string& name, OP_Node* node) { byName[name] = node; }

    // The name may count as numbered in several ways: "op21" is "op" with 21, and "op2" with 1.
    void remove(const std::string& name)
    {
        byName.erase(name);
        for (std::size_t end = name.size(); end > 0 && name[end - 1] >= '0' && name[end - 1] <= '9'; --end)
            firstMaybeFree.erase(name.substr(0, end - 1));
    }

    std::string numbered(const std::string& base)
    {
        int& number = firstMaybeFree.emplace(base, 1).first->second;
        while (byName.count(base + std::to_string(number)))
            ++number;
        return base + std::to_string(number);
    }
};

namespace
{

/// The node object; null, with a complaint, when the plug-in's constructor throws.
OP_Node* construct(OP_Operator& op, OP_Network& network, const std::string& name)
{
    std::string reason = "no standard exception";
    try
    {
        return op.constructNode(&network, name.c_str());
    }
    catch (const std::exception& error)
    {
        reason = error.what();
    }
    catch (...)
    {
    }
    standin::report(standin::Severity::Error,
                    "No node of type \"" + op.getName().toStdString() + "\" was made in " +
                        network.getFullPath().toStdString() + ": its constructor threw " + reason +
                        ". This is a fault of the plug-in that registered the type.");
    return nullptr;
}

} // namespace

bool OP_OperatorFilter::allowOperatorAsChild(OP_Operator*) { return true; }

OP_Network::OP_Network(OP_Network* parent, const char* name, OP_Operator* op)
    : OP_Node(parent, name, op), myTable(nullptr), myNames(new NameIndex)
{
}

// destroyNode() has emptied the network by now; this is for networks that were deleted directly.
OP_Network::~OP_Network()
{
    while (!myChildren.empty())
    {
        OP_Node* child = myChildren.back();
        dropChild(child);
        delete child;
    }
}

OP_OperatorFilter* OP_Network::getOperatorFilter() { return nullptr; }
const char* OP_Network::getChildType() const { return getOpType(); }
OP_OpTypeId OP_Network::getChildTypeID() const { return getOpTypeID(); }
int OP_Network::isNetwork() const { return getOperatorTable() != nullptr; }
OP_Network* OP_Network::castToOPNetwork() { return this; }
const OP_Network* OP_Network::castToOPNetwork() const { return this; }
void OP_Network::finishedLoadingNetwork(bool) {}

std::string OP_Network::maskContexts() const
{
    return getOperator() ? getOperator()->getName().toStdString() : std::string();
}

// --- what may be created ----------------------------------------------------------------------------------------

bool OP_Network::allowsOperator(OP_Operator* op)
{
    for (OP_Network* network = this; op && network; network = network->getParent())
    {
        OP_OperatorFilter* filter = network->getOperatorFilter();
        if (!filter)
            continue;
        std::string mask;
        if (standin::vopnetMaskOf(*op, mask) && !standin::maskFits(mask, network->maskContexts()))
            return false;
        return filter->allowOperatorAsChild(op);
    }
    return op != nullptr;
}

// --- making and ending children ---------------------------------------------------------------------------------

OP_Node* OP_Network::createNode(const char* type, const char* name, int notify, int explicitly,
                                int loadcontents, int* aliasedScriptedOp, char*, bool)
{
    if (aliasedScriptedOp)
        *aliasedScriptedOp = 0;
    OP_Operator* op = myTable ? myTable->getOperator(type) : nullptr;
    OP_Node* node = op && allowsOperator(op) ? makeChild(op, name, notify, explicitly) : nullptr;
    const int id = node ? node->getUniqueId() : 0;
    if (node && loadcontents)
        standin::loadAssetContents(*node);
    return lookupNode(id);
}

OP_Node* OP_Network::createNodeUnfiltered(const char* type, const char* name)
{
    OP_Operator* op = myTable ? myTable->getOperator(type) : nullptr;
    return op ? makeChild(op, name, 1, 0) : nullptr;
}

OP_Node* OP_Network::createNodeOfOperator(OP_Operator& op, const char* name)
{
    const std::string base = standin::validNodeName(name ? name : "");
    return makeChild(&op, base.c_str(), 1, 0);
}

OP_Node* OP_Network::makeChild(OP_Operator* op, const char* name, int notify, int explicitly)
{
    if (isBeingDeleted())
        return nullptr;
    UT_String base;
    if (!name || !*name)
        myTable->getDefaultNodeName(op->getName(), base);
    const std::string unique = name && *name ? uniqueChildName(standin::validNodeName(name))
                                             : uniqueChildName(base.toStdString(), true);
    OP_Node* node = construct(*op, *this, unique);
    if (!node)
        return nullptr;
    node->setNameText(unique.c_str());
    node->buildParms(op->getParmTemplates());
    const int id = node->getUniqueId();
    addNode(node, notify, explicitly);
    return lookupNode(id);
}

void OP_Network::addNode(OP_Node* node, int notify, int)
{
    myChildren.push_back(node);
    myNames->add(node->getName().toStdString(), node);
    node->growInputs(node->getNumVisibleInputs());
    node->refreshParms();
    if (notify)
        opChanged(OP_CHILD_CREATED, node);
}

void OP_Network::dropChild(OP_Node* node)
{
    myChildren.erase(std::remove(myChildren.begin(), myChildren.end(), node), myChildren.end());
    myNames->remove(node->getName().toStdString());
    node->myState->parent = nullptr;
}

bool OP_Network::canDestroyNode(OP_Node* node)
{
    return node && node->getParent() && node->getOpTypeID() != MGR_OPTYPE_ID;
}

int OP_Network::destroyNode(OP_Node* node)
{
    if (getChildIndex(node) < 0 || !canDestroyNode(node) || node->isBeingDeleted())
        return 0;
    node->myState->beingDeleted = true;
    // Whoever hears of it may end this whole network meanwhile, and the node with it.
    const int id = node->getUniqueId();
    destroyChildrenOf(node);
    if (lookupNode(id))
        node->disconnectAll();
    if (lookupNode(id))
        node->opChanged(OP_NODE_DELETED);
    if (!lookupNode(id))
        return 1;
    dropChild(node);
    opChanged(OP_CHILD_DELETED, node);
    delete node;
    return 1;
}

void OP_Network::destroyChildrenOf(OP_Node* node)
{
    const int id = node->getUniqueId();
    OP_Network* network = node->castToOPNetwork();
    while (network && lookupNode(id) && network->getNchildren() > 0)
        if (!network->destroyNode(network->getChild(network->getNchildren() - 1)))
            return;
}

// --- names ------------------------------------------------------------------------------------------------------

std::string OP_Network::uniqueChildName(const std::string& base, bool always_number) const
{
    if (always_number)
        return myNames->numbered(base);
    if (!myNames->byName.count(base))
        return base;
    const standin::NumberedName parts = standin::splitNumber(base);
    if (parts.number < 0)
        return myNames->numbered(base);
    int number = parts.number;
    while (myNames->byName.count(parts.base + std::to_string(number)))
        ++number;
    return parts.base + std::to_string(number);
}

int OP_Network::renameNode(OP_Node* node, const char* name, OP_RenameAction action)
{
    if (getChildIndex(node) < 0 || !name || !standin::isValidNodeName(name))
        return 0;
    const std::string old = node->getName().toStdString();
    if (old == name)
        return 1;
    myNames->remove(old);
    const std::string unique = uniqueChildName(name);
    myNames->add(unique, node);
    node->setNameText(unique.c_str());
    if (unique != old && action != OP_RENAME_NO_EVENTS)
        node->opChanged(OP_NAME_CHANGED);
    return 1;
}

// --- children ---------------------------------------------------------------------------------------------------

int OP_Network::getNchildren() const { return static_cast<int>(myChildren.size()); }

OP_Node* OP_Network::getChild(int index) const
{
    return index >= 0 && index < getNchildren() ? myChildren[static_cast<std::size_t>(index)] : nullptr;
}

OP_Node* OP_Network::getChild(const char* name, int*) const
{
    const auto found = name ? myNames->byName.find(name) : myNames->byName.end();
    return found == myNames->byName.end() ? nullptr : found->second;
}

int OP_Network::getChildIndex(const OP_Node* node) const
{
    const auto found = std::find(myChildren.begin(), myChildren.end(), node);
    return found == myChildren.end() ? -1 : static_cast<int>(found - myChildren.begin());
}

int OP_Network::getOpsByName(const char* optype, UT_ValArray<OP_Node*>& list)
{
    int count = 0;
    for (OP_Node* child : std::vector<OP_Node*>(myChildren))
        if (optype && child->getOperator() && child->getOperator()->getName() == optype)
        {
            list.append(child);
            ++count;
        }
    return count;
}
