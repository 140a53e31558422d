#include <standin/host.h>

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <UT/UT_UndoManager.h>
#include <VOP/VOP_Node.h>

#include <set>

namespace standin
{

namespace
{

std::string textOf(const UT_String& text) { return text.toStdString(); }
std::string pathOf(const OP_Node& node) { return node.getFullPath().toStdString(); }
std::string quoted(const std::string& text) { return "\"" + text + "\""; }

// --- creating ---------------------------------------------------------------------------------------------------

/// The network whose filter is in force in another one; null when none is.
OP_Network* filterOwner(OP_Network& network)
{
    for (OP_Network* owner = &network; owner; owner = owner->getParent())
        if (owner->getOperatorFilter())
            return owner;
    return nullptr;
}

std::string refusal(OP_Network& network, const OP_Operator& op)
{
    const OP_Network* owner = filterOwner(network);
    std::string mask;
    std::string sentence = "The node type " + quoted(textOf(op.getName())) + " cannot be created in " +
                           pathOf(network) + ": " + (owner ? pathOf(*owner) : "the network") +
                           " does not allow it.";
    if (vopnetMaskOf(op, mask) && mask != "*")
        sentence += " It is made for networks of type " + quoted(mask) + ".";
    return sentence;
}

/// Why a type cannot be created in a network; empty when it can.
std::string creationObstacle(OP_Network& network, const std::string& type, const std::string& name)
{
    const OP_OperatorTable* table = network.getOperatorTable();
    if (!table)
        return pathOf(network) + " cannot contain other nodes, so no " + quoted(type) +
               " can be created in it.";
    OP_Operator* op = table->getOperator(type.c_str());
    if (!op)
        return "There is no node type " + quoted(type) + " among the " + textOf(table->getName()) +
               " types that " + pathOf(network) +
               " takes. Type names are written in full, with their namespace.";
    if (!network.allowsOperator(op))
        return refusal(network, *op);
    if (!name.empty() && !isValidNodeName(name))
        return quoted(name) + " is no node name: use letters, digits, '_', '.' and '-'.";
    return std::string();
}

// --- wiring -----------------------------------------------------------------------------------------------------

std::string connectorText(OP_Node& node, bool isInput, unsigned index)
{
    std::string text = std::string(isInput ? "input " : "output ") + std::to_string(index);
    UT_String name;
    std::string type;
    if (VOP_Node* vop = node.castToVOPNode())
    {
        const int i = static_cast<int>(index);
        isInput ? vop->getInputName(name, i) : vop->getOutputName(name, i);
        type = VOPgetTypeName(isInput ? vop->getInputType(i) : vop->getOutputType(i));
    }
    if (name.isstring())
        text += " " + quoted(textOf(name));
    if (!type.empty())
        text += " (" + type + ")";
    return text + " of " + pathOf(node);
}

std::string missingConnector(const OP_Node& node, const char* kind, unsigned index, unsigned count)
{
    return pathOf(node) + " has no " + kind + " " + std::to_string(index) + ": it has " +
           (count ? std::to_string(count) + ", counted from 0." : "none.");
}

/// True when `goal` is `start` or anywhere upstream of it.
bool isUpstream(const OP_Node& start, const OP_Node& goal)
{
    std::set<const OP_Node*> seen{&start};
    std::vector<const OP_Node*> queue{&start};
    for (std::size_t next = 0; next < queue.size(); ++next)
        for (unsigned i = 0; i < queue[next]->nInputs(); ++i)
        {
            const OP_Node* input = queue[next]->getInput(i);
            if (input && seen.insert(input).second)
                queue.push_back(input);
        }
    return seen.count(&goal) != 0;
}

/// The types that an input takes, its own first.
std::vector<VOP_Type> acceptedTypes(VOP_Node& node, unsigned input)
{
    std::vector<VOP_Type> accepted{node.getInputType(static_cast<int>(input))};
    VOP_VopTypeArray allowed;
    node.getAllowedInputTypes(input, allowed);
    for (const VOP_Type type : allowed)
        if (type != accepted.front())
            accepted.push_back(type);
    return accepted;
}

bool contains(const std::vector<VOP_Type>& types, VOP_Type type)
{
    for (const VOP_Type candidate : types)
        if (candidate == type)
            return true;
    return false;
}

std::string listTypes(const std::vector<VOP_Type>& types)
{
    std::string text;
    for (const VOP_Type type : types)
        text += (text.empty() ? "" : ", ") + std::string(VOPgetTypeName(type));
    return text;
}

} // namespace

OP_Node* createNodeByUser(OP_Network& network, const std::string& type, const std::string& name,
                          std::string& why, bool runScripts, bool exactType)
{
    why = creationObstacle(network, type, name);
    if (!why.empty())
        return nullptr;
    OP_Node* node = network.createNode(type.c_str(), name.empty() ? nullptr : name.c_str(), 1, 1, 1, nullptr,
                                       nullptr, exactType);
    if (!node)
    {
        why = "The node type " + quoted(type) + " gave no node.";
        return nullptr;
    }
    // A script that fails without deleting the node leaves a node that can be used.
    const int id = node->getUniqueId();
    if (runScripts)
    {
        // Making a node cannot be undone, so what its script does to it must not be undone by itself.
        const UT_AutoDisableUndos noUndos;
        node->runCreateScript();
    }
    node = OP_Node::lookupNode(id);
    if (node)
        node->moveToGoodPosition();
    else
        why = "The creation script of " + quoted(type) + " deleted the node.";
    return OP_Node::lookupNode(id);
}

std::vector<TabEntry> tabMenu(OP_Network& network)
{
    std::vector<TabEntry> entries;
    const OP_OperatorTable* table = network.getOperatorTable();
    if (!table)
        return entries;
    for (OP_Operator* op : operatorsOf(*table))
    {
        UT_String subMenu;
        if (network.allowsOperator(op))
            entries.push_back({textOf(op->getName()), textOf(op->getEnglish()),
                               op->getOpTabSubMenuPath(subMenu) ? textOf(subMenu) : std::string()});
    }
    return entries;
}

bool canConnect(OP_Node& from, unsigned output, OP_Node& to, unsigned input, std::string& why)
{
    why.clear();
    const unsigned outputs = from.getNumVisibleOutputs();
    const unsigned inputs = to.getNumVisibleInputs();
    if (from.getParent() != to.getParent())
        why =
            "Cannot connect " + pathOf(from) + " to " + pathOf(to) + ": the two are not in the same network.";
    else if (output >= outputs)
        why = missingConnector(from, "output", output, outputs);
    else if (input >= inputs)
        why = missingConnector(to, "input", input, inputs);
    else if (isUpstream(from, to))
        why = "Cannot connect " + connectorText(from, false, output) + " to " +
              connectorText(to, true, input) + ": that would make a circle.";
    else if (from.castToVOPNode() && to.castToVOPNode())
    {
        const std::vector<VOP_Type> accepted = acceptedTypes(*to.castToVOPNode(), input);
        if (!contains(accepted, from.castToVOPNode()->getOutputType(static_cast<int>(output))))
            why = "Cannot connect " + connectorText(from, false, output) + " to " +
                  connectorText(to, true, input) + ": the input takes " + listTypes(accepted) + ".";
    }
    return why.empty();
}

} // namespace standin
