#ifndef STANDIN_VOP_BUILTIN_H
#define STANDIN_VOP_BUILTIN_H

class OP_Network;
class OP_Node;
class OP_Operator;
class VOP_Node;

/// @file
/// What the host's own shader-network nodes pass on. The types themselves: addVopTypes() of builtin_types.h.

namespace standin
{

/// One output of a node; `node` is null when there is none.
struct VopSource
{
    VOP_Node* node;
    unsigned output;
};

/// What feeds an input of a node directly.
VopSource directSource(const VOP_Node& node, unsigned input);

/// What an output of a null, a "subinput" or a subnet passes on, one step; false for nodes that make something of
/// their own.
bool passesOn(const VopSource& source, VopSource& from);

/// A subnet; with an operator that comes from an asset file, one whose connectors are those that the file tells.
OP_Node* makeSubnetVop(OP_Network* net, const char* name, OP_Operator* op);

} // namespace standin

#endif
