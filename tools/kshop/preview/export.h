#ifndef KSHOP_PREVIEW_EXPORT_H
#define KSHOP_PREVIEW_EXPORT_H

#include <string>

class OP_Node;

namespace kshop
{

/// A script for hou that makes a node of this type in a network of its own and sets all that differs from the default.
std::string pythonExport(const OP_Node& node);

/// What differs from the default, as lines for a .mtd file: "houdini.expression" where an expression stands. A plain
/// value cannot be written there, since defaults are the renderer plug-in's; it becomes a remark.
std::string metadataExport(const OP_Node& node);

} // namespace kshop

#endif
