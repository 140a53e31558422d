#ifndef STANDIN_OP_NODE_DEF_H
#define STANDIN_OP_NODE_DEF_H

#include <SYS/SYS_Types.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

/// @file
/// The ".def" entry of a node: where it stands, its flags, its connectors and its wires.

class OP_Node;

namespace standin
{

/// One wire, as the node at its end describes it.
struct WireDef
{
    unsigned input = 0;
    std::string inputName; ///< empty when inputs have no names
    std::string source;    ///< name of the node that feeds it, in the same network
    int outputId = -1;     ///< key into the source's output names; -1 when only the index is known
    int output = -1;       ///< index of the source's output; -1 when only the key is known
    int rank = 0;          ///< place among the wires that leave the source, in the order of wiring
};

struct NodeDef
{
    bool hasPosition = false;
    fpreal x = 0;
    fpreal y = 0;
    std::vector<std::pair<std::string, bool>> flags;
    std::vector<std::pair<int, std::string>> outputNames; ///< by key, in the order of the outputs
    std::vector<WireDef> wires;                           ///< by input

    /// Index and name of an output by its key; -1 when there is none.
    int outputOf(int id) const;
};

/// The text of the entry; it depends on the node's state only.
std::string writeDef(OP_Node& node);

/// Takes what it understands; the rest is passed over. What is cut off or is no number gives a sentence in `problems`.
NodeDef readDef(const std::string& text, std::vector<std::string>& problems);

/// Sets position and flags. Wires are for who knows all nodes.
void applyDef(OP_Node& node, const NodeDef& def);

/// Names of visible connectors; empty for nodes whose connectors have none.
std::string inputNameOf(OP_Node& node, unsigned index);
std::string outputNameOf(OP_Node& node, unsigned index);

} // namespace standin

#endif
