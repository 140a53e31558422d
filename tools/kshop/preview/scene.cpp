#include "scene.h"

#include "../operator_facts.h"
#include "../text.h"
#include "request_error.h"

#include <OP/OP_Director.h>
#include <OP/OP_Operator.h>
#include <standin/host.h>

#include <fmt/format.h>

#include <algorithm>

namespace kshop
{

namespace
{

std::vector<std::string> namesOf(const std::vector<OP_Operator*>& types)
{
    std::vector<std::string> names;
    names.reserve(types.size());
    for (const OP_Operator* op : types)
        names.push_back(op->getName().toStdString());
    return names;
}

RequestError noSuchType(const std::string& type, const std::vector<OP_Operator*>& types)
{
    const std::string hint = didYouMean(type, namesOf(types));
    return RequestError(404, fmt::format("There is no shader type {}{}", kshop::quoted(type),
                                         hint.empty() ? "." : "; " + hint));
}

} // namespace

PreviewScene::PreviewScene(const Session& session) : m_types(session.operators("Vop")) {}

OP_Operator* PreviewScene::findType(const std::string& type) const
{
    const auto found =
        std::find_if(m_types.begin(), m_types.end(),
                     [&type](const OP_Operator* op) { return op->getName().toStdString() == type; });
    return found == m_types.end() ? nullptr : *found;
}

OP_Node* PreviewScene::findNode(const std::string& type) const
{
    for (const Entry& entry : m_entries)
        if (entry.type == type)
            return OP_Node::lookupNode(entry.nodeId);
    return nullptr;
}

OP_Node& PreviewScene::node(const std::string& type)
{
    if (OP_Node* node = findNode(type))
        return *node;
    OP_Operator* op = findType(type);
    if (!op)
        throw noSuchType(type, m_types);
    return makeNode(*op);
}

OP_Node& PreviewScene::makeNode(OP_Operator& op)
{
    const std::string type = op.getName().toStdString();
    std::string why;
    OP_Node* node = standin::createNodeByUser(containerFor(op), type, "", why);
    if (!node)
        throw RequestError(500, why);
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(),
                                   [&type](const Entry& entry) { return entry.type == type; }),
                    m_entries.end());
    m_entries.push_back({type, node->getUniqueId()});
    return *node;
}

OP_Network& PreviewScene::containerFor(OP_Operator& op)
{
    std::string mask;
    standin::vopnetMaskOf(op, mask);
    OP_Node* known = OP_Node::lookupNode(m_containers[mask]);
    OP_Network* container = known ? known->castToOPNetwork() : makeContainer(mask);
    if (!container)
        throw RequestError(500,
                           fmt::format("No network takes a node of type {}.", op.getName().toStdString()));
    m_containers[mask] = container->getUniqueId();
    return *container;
}

std::vector<std::string> PreviewScene::typesWithNodes() const
{
    std::vector<std::string> types;
    for (const Entry& entry : m_entries)
        if (OP_Node::lookupNode(entry.nodeId))
            types.push_back(entry.type);
    return types;
}

std::string PreviewScene::typeOf(const OP_Node& node) const
{
    for (const Entry& entry : m_entries)
        if (entry.nodeId == node.getUniqueId())
            return entry.type;
    return "";
}

} // namespace kshop
