#include "commands.h"
#include "interface_json.h"
#include "operator_facts.h"
#include "output.h"
#include "progress.h"
#include "renderer_walk.h"
#include "startup_timings.h"
#include "text.h"

#include <fmt/format.h>

#include <algorithm>
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
    StartupTimings timings;
};

void fillListing(Listing& listing, const Session& session, const ListOptions& options)
{
    NodeSampler sampler;
    Progress progress("looking at", "types");
    for (const char* table : table_names)
    {
        listing.tables.emplace_back(table, std::vector<Entry>());
        for (OP_Operator* op : session.operators(table))
        {
            listing.tables.back().second.push_back({readOperator(*op, sampler)});
            progress.step();
        }
    }
    if (options.why)
        listing.unregistered = findUnregistered(session.operators("Vop"));
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

std::string shareText(double seconds, double total)
{
    return fmt::format("{:.1f} %", total > 0 ? 100 * seconds / total : 0);
}

std::string millisecondsText(double seconds) { return fmt::format("{:.3f} ms", 1000 * seconds); }

/// One row for each kind of phase, slowest first.
std::vector<std::vector<std::string>> kindRows(const std::vector<StartupPhase>& phases, double total)
{
    std::map<std::string, std::pair<std::size_t, double>> kinds;
    for (const StartupPhase& phase : phases)
    {
        ++kinds[phase.phase].first;
        kinds[phase.phase].second += phase.seconds;
    }
    std::vector<std::pair<std::string, std::pair<std::size_t, double>>> sorted(kinds.begin(), kinds.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.second.second > b.second.second; });
    std::vector<std::vector<std::string>> rows;
    rows.reserve(sorted.size());
    for (const auto& [phase, sum] : sorted)
        rows.push_back(
            {phase, std::to_string(sum.first), millisecondsText(sum.second), shareText(sum.second, total)});
    return rows;
}

std::string timingsPart(const StartupTimings& timings, const Style& style)
{
    const std::vector<StartupPhase> phases = timings.phases();
    const double total = timings.totalSeconds();
    double sum = 0;
    std::vector<std::vector<std::string>> rows;
    for (const StartupPhase& phase : phases)
    {
        rows.push_back({millisecondsText(phase.seconds), shareText(phase.seconds, total), phase.phase,
                        printable(phase.subject)});
        sum += phase.seconds;
    }
    return style.title("Start-up: " + millisecondsText(total)) + "\n" +
           tableText(kindRows(phases, total), "  ") + "\n" + style.title("Slowest first") + "\n" +
           tableText(rows, "  ") +
           fmt::format("  {} in all, of {}\n", millisecondsText(sum), millisecondsText(total));
}

std::string listingText(const Listing& listing, const ListOptions& options, const Style& style)
{
    std::string text;
    for (const auto& [table, entries] : listing.tables)
        text += tablePart(table, entries, style) + "\n";
    text += categoriesPart(listing, style);
    if (options.why)
        text += "\n" + unregisteredPart(listing.unregistered, style);
    if (options.timings)
        text += "\n" + timingsPart(listing.timings, style);
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

Json timingsJson(const StartupTimings& timings)
{
    Json phases = Json::array();
    for (const StartupPhase& phase : timings.phases())
        phases.push_back({{"phase", phase.phase}, {"subject", phase.subject}, {"seconds", phase.seconds}});
    return {{"total_seconds", timings.totalSeconds()}, {"phases", phases}};
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
    if (options.timings)
        result["timings"] = timingsJson(listing.timings);
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
    Listing listing;
    const Session session(global, options.timings ? &listing.timings : nullptr);
    session.showComplaints();
    if (!session.hasPlugins())
        return exit_failure;
    fillListing(listing, session, options);
    return writeOut(options.json ? jsonText(listingJson(listing, options))
                                 : listingText(listing, options, Style::forStandardOutput()));
}

} // namespace kshop
