#ifndef ZELK_SHOP_UTILS_NODES_H
#define ZELK_SHOP_UTILS_NODES_H

#include <string>

class OP_Node;
class UT_String;
class VOP_Node;

// What the node classes share.

namespace zelk
{
namespace shop
{

/// Operator of the networks in which our nodes may be created; the mask of every type.
extern const char* const network_mask;

/// First part of the address of a type's page in the online help.
extern const char* const help_root;

/// Returns "/shop/korvan_vopnet1/noise1".
std::string fullPathOf(const OP_Node& node);

/// Returns the parameter index that a parameter event carries; negative when many parameters changed at once.
int parmIndexOf(const void* eventData);

/// Whether a connector has that name. A null text equals a null name only.
bool isNamed(const char* connector, const UT_String& name);

/// Shows another level of a node's connectors (VOP_OPT_..._FLAG; 0 leaves it as it is) and moves the node so that the
/// middle of its tile stays where it was.
void showDetailAroundMiddle(VOP_Node& node, char detail);

} // namespace shop
} // namespace zelk

#endif
