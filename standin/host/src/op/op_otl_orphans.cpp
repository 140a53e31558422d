#include "op_otl_orphans.h"

#include "op_loading.h"
#include "op_node_entries.h"
#include "op_placeholder.h"
#include "op_tree_reader.h"

#include <OP/OP_Director.h>
#include <OP/OP_Operator.h>
#include <standin/host.h>

#include <algorithm>

namespace standin
{

Orphans::Orphans(const std::vector<OP_Operator*>& types)
{
    const LoadingScope loading;
    std::vector<int> networks{OPgetDirector()->getUniqueId()};
    while (!networks.empty())
    {
        OP_Node* node = OP_Node::lookupNode(networks.back());
        networks.pop_back();
        OP_Network* network = node ? node->castToOPNetwork() : nullptr;
        if (!network)
            continue;
        std::vector<int> found;
        for (int i = 0; i < network->getNchildren(); ++i)
        {
            OP_Node* child = network->getChild(i);
            if (std::count(types.begin(), types.end(), child->getOperator()))
                found.push_back(child->getUniqueId());
            else
                networks.push_back(child->getUniqueId());
        }
        if (!found.empty())
            takeOut(network->getUniqueId(), found);
    }
}

void Orphans::takeOut(int network, const std::vector<int>& nodes)
{
    Group group{network, {}, {}};
    std::vector<std::string> problems;
    for (const int id : nodes)
    {
        OP_Node& node = *OP_Node::lookupNode(id);
        const std::string name = node.getName().toStdString();
        m_paths.push_back(node.getFullPath().toStdString());
        appendNode(node, name, group.entries, problems);
        for (unsigned i = 0; i < node.nOutputs(); ++i)
        {
            const OP_Node* target = node.getOutput(i);
            for (unsigned input = 0; input < target->nInputs(); ++input)
                if (target->getInput(input) == &node)
                    group.wires.push_back(
                        {name,
                         static_cast<unsigned>(target->getInputReferenceConst(input)->getNodeOutputIndex()),
                         target->getUniqueId(), input});
        }
    }
    for (const std::string& problem : problems)
        report(Severity::Warning, problem + ".");
    for (const int id : nodes)
        if (OP_Node* node = OP_Node::lookupNode(id))
            node->getParent()->destroyNode(node);
    m_groups.push_back(group);
}

void Orphans::restore()
{
    const LoadingScope loading;
    for (const Group& group : m_groups)
    {
        OP_Node* node = OP_Node::lookupNode(group.network);
        OP_Network* network = node ? node->castToOPNetwork() : nullptr;
        if (!network)
            continue;
        TreeReader reader(group.entries);
        reader.setOutside(*network);
        for (const std::string& path : reader.topNodes())
            if (OP_Node::lookupNode(group.network))
                reader.makeNode(*network, path);
        reader.finish();
        rewire(group);
    }
}

void Orphans::rewire(const Group& group)
{
    for (const WireOut& wire : group.wires)
    {
        OP_Node* network = OP_Node::lookupNode(group.network);
        OP_Node* target = OP_Node::lookupNode(wire.target);
        OP_Node* source = network ? network->castToOPNetwork()->getChild(wire.source.c_str()) : nullptr;
        if (!source || !target)
            continue;
        if (Placeholder* placeholder = placeholderOf(source))
            placeholder->needOutput(wire.output, std::string());
        target->setInput(wire.input, source, wire.output);
    }
}

} // namespace standin
