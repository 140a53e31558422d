#include "op_contents.h"

#include "op_loading.h"
#include "op_node_entries.h"
#include "op_tree_reader.h"

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>

#include <standin/host.h>

#include <cstdint>

namespace standin
{

namespace
{

constexpr std::size_t count_size = 4;

std::string countBytes(std::size_t count)
{
    std::string bytes;
    for (std::size_t i = 0; i < count_size; ++i)
        bytes += static_cast<char>(count >> (8 * i) & 0xFF);
    return bytes;
}

std::size_t readCount(const std::string& bytes)
{
    std::size_t count = 0;
    for (std::size_t i = count_size; i > 0; --i)
        count = count << 8 | static_cast<unsigned char>(bytes[i - 1]);
    return count;
}

std::string tableNameOf(const OP_Node& node)
{
    const OP_Operator* op = node.getOperator();
    return op && op->getTable() ? op->getTable()->getName().toStdString() : std::string();
}

} // namespace

std::string writeContents(OP_Node& asset, const std::string& rootName)
{
    std::vector<ArchiveEntry> entries{{"node_type", tableNameOf(asset) + "\n"}};
    std::vector<std::string> problems;
    appendNode(asset, rootName, entries, problems);
    for (const std::string& problem : problems)
        report(Severity::Warning, problem + ".");
    const std::string archive = writeArchive(entries);
    return countBytes(archive.size()) + archive;
}

bool readContents(OP_Network& into, const std::string& bytes, std::string& why)
{
    if (bytes.size() < count_size)
    {
        why = "it ends at byte " + std::to_string(bytes.size()) + ", before the size of its archive";
        return false;
    }
    const std::size_t count = readCount(bytes);
    const std::size_t there = bytes.size() - count_size;
    if (count != there)
    {
        why = "its archive should have " + std::to_string(count) + " bytes, but " + std::to_string(there) +
              " follow";
        return false;
    }
    std::vector<ArchiveEntry> entries;
    if (!readArchive(bytes.substr(count_size), entries, why))
        return false;
    TreeReader reader(entries);
    const std::vector<std::string> top = reader.topNodes();
    if (top.size() != 1)
    {
        why = "it should hold one node at the top, but holds " + std::to_string(top.size());
        return false;
    }
    const LoadingScope loading;
    reader.makeChildren(into, top.front());
    reader.finish();
    return true;
}

} // namespace standin
