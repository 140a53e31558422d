#ifndef STANDIN_OP_PLACEHOLDER_H
#define STANDIN_OP_PLACEHOLDER_H

#include "op_archive.h"

#include <map>
#include <string>
#include <vector>

/// @file
/// Nodes whose type nobody knows. They stand in scenes for what a plug-in or an asset that is missing would have made,
/// and are saved as they were read.

class OP_Network;
class OP_Node;
class OP_Operator;

namespace standin
{

/// What such a node keeps of the file that it came from.
class Placeholder
{
public:
    virtual ~Placeholder() {}

    /// The entries as read, by suffix: ".parm" and whatever else there was.
    std::map<std::string, std::string> parts;
    /// Entries of what is inside it and is no node, names from the node's own path on: "/note1.postitinit".
    std::vector<ArchiveEntry> others;
    /// The entries that the node itself can write, as it would have written them when it was loaded. As long as it
    /// writes the same, nothing changed, and what was read is saved.
    std::map<std::string, std::string> asLoaded;

    /// Names of the connectors; empty texts where the file has none.
    std::vector<std::string> inputNames;
    std::vector<std::string> outputNames;

    /// Sees to it that there is such a connector.
    void needInput(unsigned index, const std::string& name);
    void needOutput(unsigned index, const std::string& name);
};

/// Null for any other node.
Placeholder* placeholderOf(const OP_Node* node);

/// Makes a placeholder inside a network, whatever that network takes.
/// @param type        the type that is missing
/// @param holdsNodes  there are nodes inside it, or there may be
/// Null only when the network is about to be deleted.
OP_Node* createPlaceholder(OP_Network& network, const std::string& type, const std::string& name,
                           bool holdsNodes);

} // namespace standin

#endif
