#include "commands.h"
#include "interface_json.h"
#include "operator_facts.h"
#include "output.h"
#include "renderer_walk.h"
#include "text.h"

#include <fmt/format.h>

#include <map>

namespace kshop
{

namespace
{

const char* const no_category = "no category";

/// What the list shows of one type.
struct Entry
{
    OperatorFacts facts;
    std::string category() const { return facts.tabMenu.value_or(no_category); }
};

struct Listing
{
    std::vector<std::pair<std::string, std::vector<Entry>>> tables;
    std::vector<UnregisteredEntry> unregistered;
};

Listing makeListing(const Session& session, const ListOptions& options)
{
    Listing listing;
    NodeSampler sampler;
    for (const char* table : table_names)
    {
        listing.tables.emplace_back(table, std::vector<Entry>());
        for (OP_Operator* op : session.operators(table))
            listing.tables.back().second.push_back({readOperator(*op, sampler)});
    }
    if (options.why)
        listing.unregistered = findUnregistered(session.operators("Vop"));
    return listing;
}

std::string connectorCounts(const OperatorFacts& facts, const std::vector<ConnectorFacts>& connectors)
{
    return facts.connectorsKnown ? std::to_string(connectors.size()) : "?";
}

std::string tablePart(const std::string& table, const std::vector<Entry>& entries, const Style& style)
{
    std::vector<std::vector<std::string>> rows = {{"type", "label", "tab menu", "in", "out"}};
    for (const Entry& entry : entries)
        rows.push_back({printable(entry.facts.name), printable(entry.facts.label),
                        printable(entry.facts.tabMenu.value_or("-")),
                        connectorCounts(entry.facts, entry.facts.inputs),
                        connectorCounts(entry.facts, entry.facts.outputs)});
    const std::string title = fmt::format("{}: {}", table, countText(entries.size(), "type"));
    return style.title(title) + "\n" + (entries.empty() ? "" : tableText(rows, "  "));
}

/// Types of all tables by category; those without one come last.
std::string categoriesPart(const Listing& listing, const Style& style)
{
    std::map<std::string, std::size_t> counts;
    std::size_t all = 0;
    for (const auto& [table, entries] : listing.tables)
        for (const Entry& entry : entries)
        {
            ++counts[entry.category()];
            ++all;
        }
    std::vector<std::vector<std::string>> rows;
    for (const auto& [category, count] : counts)
        if (category != no_category)
            rows.push_back({printable(category), std::to_string(count)});
    if (counts.count(no_category))
        rows.push_back({no_category, std::to_string(counts[no_category])});
    return style.title("By category: " + countText(all, "type")) + "\n" + tableText(rows, "  ");
}

std::string unregisteredPart(const std::vector<UnregisteredEntry>& entries, const Style& style)
{
    const std::string count = std::to_string(entries.size());
    std::string text = style.title("Renderer entries without a node type: " + count) + "\n";
    std::vector<std::vector<std::string>> rows;
    rows.reserve(entries.size());
    for (const UnregisteredEntry& entry : entries)
        rows.push_back({printable(entry.name), printable(entry.reason)});
    return text + tableText(rows, "  ");
}

std::string listingText(const Listing& listing, const ListOptions& options, const Style& style)
{
    std::string text;
    for (const auto& [table, entries] : listing.tables)
        text += tablePart(table, entries, style) + "\n";
    text += categoriesPart(listing, style);
    if (options.why)
        text += "\n" + unregisteredPart(listing.unregistered, style);
    return text;
}

Json entryJson(const OperatorFacts& facts)
{
    const Json unknown;
    return {{"name", facts.name},
            {"label", facts.label},
            {"tab_menu", facts.tabMenu ? Json(*facts.tabMenu) : unknown},
            {"inputs", facts.connectorsKnown ? Json(facts.inputs.size()) : unknown},
            {"outputs", facts.connectorsKnown ? Json(facts.outputs.size()) : unknown}};
}

Json listingJson(const Listing& listing, const ListOptions& options)
{
    Json result = {{"tables", Json::object()}};
    for (const auto& [table, entries] : listing.tables)
    {
        Json list = Json::array();
        for (const Entry& entry : entries)
            list.push_back(entryJson(entry.facts));
        result["tables"][table] = list;
    }
    if (!options.why)
        return result;
    result["unregistered"] = Json::array();
    for (const UnregisteredEntry& entry : listing.unregistered)
        result["unregistered"].push_back({{"name", entry.name}, {"reason", entry.reason}});
    return result;
}

} // namespace

int runList(const GlobalOptions& global, const ListOptions& options)
{
    const Session session(global);
    session.showComplaints();
    if (!session.hasPlugins())
        return exit_failure;
    const Listing listing = makeListing(session, options);
    return writeOut(options.json ? jsonText(listingJson(listing, options))
                                 : listingText(listing, options, Style::forStandardOutput()));
}

} // namespace kshop
