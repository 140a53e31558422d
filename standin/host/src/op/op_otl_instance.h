#ifndef STANDIN_OP_OTL_INSTANCE_H
#define STANDIN_OP_OTL_INSTANCE_H

#include <OP/OP_Operator.h>

#include <string>

/// @file
/// Nodes of types that come from asset files.

class OP_Node;

namespace standin
{

/// Makes what the type's file holds for the inside of each of its nodes; nothing for other types. What cannot be read is
/// reported, and the node stays without it. The node may be gone afterwards, as after any change.
void loadAssetContents(OP_Node& node);

/// The uncompressed "Contents" section of a type. False, with a sentence, when it is damaged or beyond reason; true and
/// empty when there is none.
bool readAssetContents(OP_Operator& op, std::string& bytes, std::string& why);

} // namespace standin

#endif
