#include <standin/scene.h>

#include "../op/op_loading.h"
#include "../op/op_node_entries.h"
#include "../op/op_otl_types.h"
#include "../op/op_tree_reader.h"

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>

#include <algorithm>
#include <map>

namespace standin
{

namespace
{

std::string pathOf(const OP_Node& node) { return node.getFullPath().toStdString(); }
std::string typeOf(const OP_Node& node) { return "\"" + node.getOperator()->getName().toStdString() + "\""; }

/// The beginning and the end of a subnet, which come with it wherever a subnet is allowed.
bool belongsToSubnet(const OP_Node& node)
{
    const OP_Operator* subnet = node.getParent()->getOperator();
    const UT_String& type = node.getOperator()->getName();
    return subnet && (subnet->getFlags() & OP_FLAG_PRIMARYSUBNET) != 0 &&
           (type == "subinput" || type == "suboutput");
}

/// The first of a node and what is inside it that the filter in force in `network` refuses; null when it takes all.
/// What has a filter of its own decides itself on what it holds, and an asset was judged by its definition.
OP_Node* findRefused(OP_Node& node, OP_Network& network)
{
    if (!network.allowsOperator(node.getOperator()) && !belongsToSubnet(node))
        return &node;
    OP_Network* inside = node.castToOPNetwork();
    if (!inside || inside->getOperatorFilter() || assetScriptOf(node.getOperator()))
        return nullptr;
    for (int i = 0; i < inside->getNchildren(); ++i)
        if (OP_Node* refused = findRefused(*inside->getChild(i), network))
            return refused;
    return nullptr;
}

/// Why a node cannot be copied into a network; empty when it can.
std::string copyObstacle(OP_Node& node, OP_Network& network)
{
    const std::string sentence = pathOf(node) + " cannot be copied into " + pathOf(network) + ": ";
    if (!OP_Network::canDestroyNode(&node))
        return pathOf(node) + " cannot be copied: every scene has it once. Copy what is inside it.";
    if (!network.getOperatorTable())
        return sentence + "that cannot contain other nodes. Choose a network.";
    if (node.getParent()->getOperatorTable() != network.getOperatorTable())
        return sentence + "it takes nodes of the " + network.getOperatorTable()->getName().toStdString() +
               " types, and " + typeOf(node) + " is none of them. Choose a network of the same kind.";
    if (const OP_Node* refused = findRefused(node, network))
        return sentence + "the type " + typeOf(*refused) +
               (refused == &node ? std::string() : " of " + pathOf(*refused)) + " is not allowed there.";
    return std::string();
}

/// The nodes that are copied from one network.
struct Group
{
    OP_Network* parent;
    std::vector<ArchiveEntry> entries;
    std::vector<std::pair<std::string, std::size_t>> nodes; ///< name, and place in the order asked for
};

Group& groupOf(OP_Network* parent, std::vector<Group>& groups)
{
    for (Group& group : groups)
        if (group.parent == parent)
            return group;
    groups.push_back({parent, {}, {}});
    return groups.back();
}

/// All is written down before anything is made: a node may be copied into itself.
std::vector<Group> writeGroups(const std::vector<OP_Node*>& nodes)
{
    std::vector<Group> groups;
    std::vector<std::string> ignored; // what no file can hold
    for (std::size_t i = 0; i < nodes.size(); ++i)
    {
        Group& group = groupOf(nodes[i]->getParent(), groups);
        const std::string name = nodes[i]->getName().toStdString();
        appendNode(*nodes[i], name, group.entries, ignored);
        group.nodes.emplace_back(name, i);
    }
    return groups;
}

void makeGroup(const Group& group, OP_Network& network, std::vector<int>& ids)
{
    TreeReader reader(group.entries);
    if (group.parent == &network)
        reader.setOutside(network);
    const int id = network.getUniqueId();
    for (const auto& node : group.nodes)
        if (OP_Node* copy = OP_Node::lookupNode(id) ? reader.makeNode(network, node.first) : nullptr)
            ids[node.second] = copy->getUniqueId();
    reader.finish();
}

} // namespace

bool copyNodes(const std::vector<OP_Node*>& nodes, OP_Network& network, std::vector<OP_Node*>& copies,
               std::string& why)
{
    std::vector<OP_Node*> wanted;
    for (OP_Node* node : nodes)
        if (std::find(wanted.begin(), wanted.end(), node) == wanted.end())
            wanted.push_back(node);
    for (OP_Node* node : wanted)
    {
        why = copyObstacle(*node, network);
        if (!why.empty())
            return false;
    }
    std::vector<int> ids(wanted.size());
    const int into = network.getUniqueId();
    {
        const LoadingScope loading;
        for (const Group& group : writeGroups(wanted))
            if (OP_Node::lookupNode(into))
                makeGroup(group, network, ids);
    }
    for (const int id : ids)
        if (OP_Node* copy = OP_Node::lookupNode(id))
            copies.push_back(copy);
    return true;
}

} // namespace standin
