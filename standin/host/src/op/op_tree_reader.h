#ifndef STANDIN_OP_TREE_READER_H
#define STANDIN_OP_TREE_READER_H

#include "op_archive.h"
#include "op_node_def.h"

#include <map>
#include <string>
#include <vector>

class OP_Network;
class OP_Node;

namespace standin
{

/// Makes nodes from archive entries, in the order of the host: all nodes; then flags, parameters and user data of each;
/// then the wires, of which those whose output does not exist are dropped; then everything is drawn anew. Hold a
/// LoadingScope from the first make to the end of finish().
///
/// It never stops half-way: what cannot be understood is left out, with a sentence that names the node.
class TreeReader
{
public:
    explicit TreeReader(const std::vector<ArchiveEntry>& entries);

    /// Names of the nodes at the top of the archive, in its order.
    std::vector<std::string> topNodes() const;
    /// Data of the entry of that name; empty when there is none.
    std::string entry(const std::string& name) const;
    /// True when the archive has something at that path.
    bool has(const std::string& path) const { return m_items.count(path) != 0; }

    /// Makes the node at a path, and all inside it, in a network. An unknown type gives a placeholder. Null when
    /// listeners deleted it at once.
    OP_Node* makeNode(OP_Network& network, const std::string& path);
    /// Makes only what is inside the node at a path.
    void makeChildren(OP_Network& network, const std::string& path);
    /// Gives a node that is there already the flags, user data and parameters of the one at a path.
    void takeOver(OP_Node& node, const std::string& path);
    /// Wires of nodes at the top that come from no node of the archive are looked for among this network's.
    void setOutside(OP_Network& network);

    void finish();

    /// A sentence for each thing that was left out.
    const std::vector<std::string>& problems() const { return m_problems; }
    /// Paths of the placeholders that were made, by missing type ("Vop type \"x\"").
    const std::map<std::string, std::vector<std::string>>& missingTypes() const { return m_missing; }

private:
    struct Item
    {
        std::map<std::string, std::string> parts; ///< entries by suffix
        std::vector<ArchiveEntry> others;         ///< of what is inside and is no node
        std::vector<std::string> children;        ///< paths
        NodeDef def;
        int id = 0; ///< of the node that was made; 0 before
    };

    struct Pending
    {
        std::string path; ///< of the node at the wire's end
        WireDef wire;
    };

    void sortEntry(const ArchiveEntry& entry);
    void findChildren();
    bool isNode(const std::string& path) const;
    void putInOrder(const std::string& path, Item& item);
    OP_Node* construct(OP_Network& network, const std::string& path, const Item& item);
    void fill(OP_Node& node, Item& item);
    void fillPlaceholder(OP_Node& node, Item& item);
    void wire();
    /// From which outputs a wire may come: those that its source shows now, or any that its type could have.
    enum class Outputs
    {
        visible,
        any
    };
    bool connect(const Pending& pending, Outputs allowed);
    std::vector<Pending> connectPossible(const std::vector<Pending>& wires);
    OP_Node* sourceOf(const Pending& pending) const;
    int outputOf(const Pending& pending, OP_Node& source) const;
    void finishNode(OP_Node& node, const Item& item);
    void complain(const OP_Node& node, const std::vector<std::string>& sentences);

    std::map<std::string, Item> m_items;        ///< by path; "" is what belongs to no node
    std::vector<std::string> m_paths;           ///< in the order of the archive
    std::map<std::string, std::string> m_loose; ///< entries without a suffix
    std::vector<std::string> m_made;            ///< paths of the nodes that were made
    int m_outside = 0;
    std::vector<std::string> m_problems;
    std::map<std::string, std::vector<std::string>> m_missing;
};

} // namespace standin

#endif
