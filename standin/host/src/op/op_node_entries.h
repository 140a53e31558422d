#ifndef STANDIN_OP_NODE_ENTRIES_H
#define STANDIN_OP_NODE_ENTRIES_H

#include "op_archive.h"

/// @file
/// The archive entries of nodes: "<path>.init" with the type, ".def", ".parm", ".chn", ".spareparmdef" and ".userdata"
/// with the rest; then those of what is inside; then ".order" with the names of the children and ".net".

class OP_Node;

namespace standin
{

/// Appends the entries of a node and of everything inside it. Placeholders give back what they were read from.
/// @param path      what the node is called in the archive
/// @param problems  gets a sentence for each thing that no file can hold
void appendNode(OP_Node& node, const std::string& path, std::vector<ArchiveEntry>& entries,
                std::vector<std::string>& problems);

/// Appends all of that but the ".init" and ".parm" entries of the node itself: for what every session has anyway.
void appendManager(OP_Node& manager, const std::string& path, std::vector<ArchiveEntry>& entries,
                   std::vector<std::string>& problems);

/// Remembers what a placeholder would write now, and what it was read from. Once, when everything is loaded.
void rememberEntries(OP_Node& placeholder);

} // namespace standin

#endif
