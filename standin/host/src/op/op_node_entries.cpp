#include "op_node_entries.h"

#include "op_node_def.h"
#include "op_node_parms.h"
#include "op_placeholder.h"
#include "op_spare_template.h"
#include "op_user_data.h"

#include <OP/OP_Network.h>

#include <algorithm>
#include <iterator>

namespace standin
{

namespace
{

typedef std::vector<std::string> Problems;

std::string initText(OP_Node& node, Problems&)
{
    const OP_Operator* op = node.getOperator();
    return "type = " + (op ? op->getName().toStdString() : std::string()) + "\nmatchesdef = 0\n";
}

int childCount(OP_Node& node)
{
    const OP_Network* network = node.castToOPNetwork();
    return network ? network->getNchildren() : 0;
}

bool holdsNodes(OP_Node& node) { return node.isNetwork() || childCount(node) > 0; }

std::string orderText(OP_Node& node, Problems&)
{
    if (!holdsNodes(node))
        return std::string();
    std::string text = std::to_string(childCount(node)) + "\n";
    for (int i = 0; i < childCount(node); ++i)
        text += node.castToOPNetwork()->getChild(i)->getName().toStdString() + "\n";
    return text;
}

struct EntryRow
{
    const char* suffix;
    std::string (*write)(OP_Node& node, Problems& problems); ///< no entry where that is empty
    bool ofPlaceholders;                                     ///< a placeholder can write it too
    bool behindChildren;
};

const EntryRow entry_rows[] = {
    {"init", &initText, false, false},
    {"def", [](OP_Node& node, Problems&) { return writeDef(node); }, true, false},
    {"parm", [](OP_Node& node, Problems&) { return writeParms(node); }, false, false},
    {"chn", [](OP_Node& node, Problems&) { return writeChannels(node); }, false, false},
    {"spareparmdef", [](OP_Node& node, Problems&) { return writeSpareParms(node); }, false, false},
    {"userdata", [](OP_Node& node, Problems& problems) { return writeUserData(node, problems); }, true,
     false},
    {"order", &orderText, true, true},
    {"net", [](OP_Node& node, Problems&) { return std::string(holdsNodes(node) ? "1\n" : ""); }, false, true},
};

const EntryRow* findRow(const std::string& suffix)
{
    const auto row = std::find_if(std::begin(entry_rows), std::end(entry_rows),
                                  [&](const EntryRow& one) { return suffix == one.suffix; });
    return row == std::end(entry_rows) ? nullptr : row;
}

std::string textIn(const std::map<std::string, std::string>& texts, const char* key)
{
    const auto found = texts.find(key);
    return found == texts.end() ? std::string() : found->second;
}

/// What a placeholder was read from, unless it was changed since.
std::string keptText(OP_Node& node, const Placeholder& placeholder, const EntryRow& row, Problems& problems)
{
    if (!row.ofPlaceholders)
        return textIn(placeholder.parts, row.suffix);
    const std::string now = row.write(node, problems);
    return now == textIn(placeholder.asLoaded, row.suffix) ? textIn(placeholder.parts, row.suffix) : now;
}

void appendRow(OP_Node& node, const std::string& path, const EntryRow& row,
               std::vector<ArchiveEntry>& entries, Problems& problems)
{
    const Placeholder* placeholder = placeholderOf(&node);
    const std::string text =
        placeholder ? keptText(node, *placeholder, row, problems) : row.write(node, problems);
    if (!text.empty())
        entries.push_back({path + "." + row.suffix, text});
}

/// What a placeholder has that nobody here writes.
void appendUnknown(const Placeholder& placeholder, const std::string& path,
                   std::vector<ArchiveEntry>& entries)
{
    for (const auto& part : placeholder.parts)
        if (!findRow(part.first))
            entries.push_back({path + "." + part.first, part.second});
    for (const ArchiveEntry& other : placeholder.others)
        entries.push_back({path + other.name, other.data});
}

void appendRows(OP_Node& node, const std::string& path, bool isManager, std::vector<ArchiveEntry>& entries,
                Problems& problems)
{
    for (const EntryRow& row : entry_rows)
        if (!row.behindChildren && !(isManager && std::string(row.suffix) == "parm"))
            appendRow(node, path, row, entries, problems);
    if (const Placeholder* placeholder = placeholderOf(&node))
        appendUnknown(*placeholder, path, entries);
    for (int i = 0; i < childCount(node); ++i)
    {
        OP_Node& child = *node.castToOPNetwork()->getChild(i);
        appendRows(child, path + "/" + child.getName().toStdString(), false, entries, problems);
    }
    for (const EntryRow& row : entry_rows)
        if (row.behindChildren)
            appendRow(node, path, row, entries, problems);
}

} // namespace

void appendNode(OP_Node& node, const std::string& path, std::vector<ArchiveEntry>& entries,
                std::vector<std::string>& problems)
{
    appendRows(node, path, false, entries, problems);
}

void appendManager(OP_Node& manager, const std::string& path, std::vector<ArchiveEntry>& entries,
                   std::vector<std::string>& problems)
{
    appendRows(manager, path, true, entries, problems);
}

void rememberEntries(OP_Node& node)
{
    Placeholder& placeholder = *placeholderOf(&node);
    std::vector<std::string> ignored;
    for (const EntryRow& row : entry_rows)
        if (row.ofPlaceholders)
            placeholder.asLoaded[row.suffix] = row.write(node, ignored);
}

} // namespace standin
