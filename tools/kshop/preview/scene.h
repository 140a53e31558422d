#ifndef KSHOP_PREVIEW_SCENE_H
#define KSHOP_PREVIEW_SCENE_H

#include "../session.h"

#include <map>
#include <string>
#include <vector>

class OP_Network;
class OP_Node;
class OP_Operator;

namespace kshop
{

/// The nodes that a preview shows: at most one of each shader-network type, each in a container that takes it.
///
/// They are ordinary nodes of the running host, so scripts may change and delete them. A node that is gone is made
/// afresh when it is asked for again.
class PreviewScene
{
public:
    explicit PreviewScene(const Session& session);

    /// What plug-ins registered for shader networks, in table order.
    const std::vector<OP_Operator*>& types() const { return m_types; }

    /// The node of a type, made when there is none yet. Throws RequestError for a type that there is not, and when no
    /// network takes such a node.
    OP_Node& node(const std::string& type);
    /// Null when there is none at present.
    OP_Node* findNode(const std::string& type) const;
    bool hasType(const std::string& type) const { return findType(type) != nullptr; }

    /// The types that have a node at present, in the order of their making.
    std::vector<std::string> typesWithNodes() const;
    /// Type of a node of this scene; empty for any other.
    std::string typeOf(const OP_Node& node) const;

private:
    struct Entry
    {
        std::string type;
        int nodeId;
    };

    OP_Operator* findType(const std::string& type) const;
    OP_Node& makeNode(OP_Operator& op);
    OP_Network& containerFor(OP_Operator& op);

    std::vector<OP_Operator*> m_types;
    std::vector<Entry> m_entries;
    std::map<std::string, int> m_containers; ///< node number by network mask
};

} // namespace kshop

#endif
