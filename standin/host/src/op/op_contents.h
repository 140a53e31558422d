#ifndef STANDIN_OP_CONTENTS_H
#define STANDIN_OP_CONTENTS_H

#include <string>

class OP_Network;
class OP_Node;

/// @file
/// The "Contents" section of an asset: a little-endian 32-bit count of the bytes that follow, then an archive with the
/// entries "node_type", those of the asset's own node under `rootName`, and those of everything inside it.

namespace standin
{

/// The bytes of a "Contents" section, not compressed. The same nodes give the same bytes.
/// @param rootName  what the asset's own node is called in it, as in "noise1" or "hdaroot"
std::string writeContents(OP_Node& asset, const std::string& rootName);

/// Makes the nodes of a "Contents" section inside `into`: all of them first, then values, then wires. `into` itself
/// stays as it is; what it holds already stays too, and names that are taken get another number. No filter is asked, no
/// creation script runs, no parameter events are sent and nothing is recorded for undo. Types that are unknown become
/// placeholders.
/// @param why  a sentence without the file's name, as in "it ends at byte 12, inside ..."
/// False, and nothing made, when the bytes are cut off or hold no such archive.
bool readContents(OP_Network& into, const std::string& bytes, std::string& why);

} // namespace standin

#endif
