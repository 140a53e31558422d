#ifndef STANDIN_OP_NODE_PARMS_H
#define STANDIN_OP_NODE_PARMS_H

#include <string>
#include <vector>

/// @file
/// The ".parm" and ".chn" entries of a node: the values of its parameters, and the expressions among them. A
/// multi-parameter's value is its number of instances; it stands before the parameters of its instances.

class OP_Node;

namespace standin
{

std::string writeParms(const OP_Node& node);
/// Empty when the node has no expressions.
std::string writeChannels(const OP_Node& node);

/// Sets the values without telling the node. Parameters that the node does not have are left out with one sentence in
/// `problems` for all of them, and so is what cannot be understood, with a sentence each.
void readParms(OP_Node& node, const std::string& text, std::vector<std::string>& problems);
/// Sets the expressions in the same way; values come first.
void readChannels(OP_Node& node, const std::string& text, std::vector<std::string>& problems);

} // namespace standin

#endif
