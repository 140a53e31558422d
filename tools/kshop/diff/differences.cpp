#include "differences.h"

#include "renames.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace kshop
{

namespace
{

const char* const severity_names[] = {"breaks", "changes", "adds"};

struct TypeFieldRow
{
    const char* field;
    const char* what;
    const char* effect;
};

// Nothing of these is in a scene.
const TypeFieldRow type_field_rows[] = {
    {"label", "label", "The tab menu shows another name, and new nodes get one made from it."},
    {"icon", "icon", "The tile and the tab menu show another icon."},
    {"class", "class", "Another class of the plug-in makes its nodes."},
    {"tab_menu", "tab menu", "It stands in another place of the tab menu."},
    {"help_url", "help address", "The help button opens another page."},
    {"min_inputs", "fewest inputs", "The host asks for another number of wires."},
    {"max_inputs", "most inputs", "The host allows another number of wires."},
    {"num_outputs", "number of outputs", "The host counts its outputs differently."},
    {"vopnet_mask", "network mask",
     "New nodes can be made in other networks; those of scenes stay where they are."},
    {"flags", "flags", "The host treats its nodes differently."},
};

void compareTypeFields(const Json& before, const Json& after, Findings& findings)
{
    for (const TypeFieldRow& row : type_field_rows)
        if (before[row.field] != after[row.field])
            findings.add(Severity::changes, row.what, before[row.field], after[row.field], row.effect);
}

const Json& operatorsOf(const Json& description, const std::string& table)
{
    static const Json none = Json::array();
    const Json& tables = description["tables"];
    const auto found = tables.find(table);
    return found == tables.end() ? none : *found;
}

std::vector<std::string> tableNames(const Json& before, const Json& after)
{
    std::vector<std::string> names;
    for (const Json* description : {&before, &after})
        for (const auto& [name, operators] : (*description)["tables"].items())
            if (std::find(names.begin(), names.end(), name) == names.end())
                names.push_back(name);
    return names;
}

/// Types are alike when an artist would take one for the other: by their label.
bool alikeTypes(const Items& before, std::size_t i, const Items& after, std::size_t k)
{
    return before[i].value["label"] == after[k].value["label"] &&
           before[i].value["outputs"] == after[k].value["outputs"];
}

void compareOperators(const Json& before, const Json& after, Findings& findings)
{
    compareTypeFields(before, after, findings);
    compareConnectors(before, after, findings);
    compareParameters(before["templates"], after["templates"], findings);
}

void compareTable(const std::string& table, const Json& before, const Json& after,
                  std::vector<Difference>& differences)
{
    const Items old = itemsOf(before, "name");
    const Items now = itemsOf(after, "name");
    const Pairing pairing = pairItems(old, now, alikeTypes);
    for (std::size_t i = 0; i < old.size(); ++i)
    {
        const std::string& name = old[i].name;
        Findings findings(differences, table, name);
        if (const auto same = pairing.same.find(i); same != pairing.same.end())
            compareOperators(old[i].value, now[same->second].value, findings);
        else if (const auto renamed = pairing.renamed.find(i); renamed != pairing.renamed.end())
            findings.add(Severity::breaks, "type renamed?", name, now[renamed->second].name,
                         "Nodes of the old type are placeholders in saved scenes.");
        else
            findings.add(Severity::breaks, "type gone", name, nullptr,
                         "Its nodes are placeholders in saved scenes.");
    }
    for (const std::size_t k : pairing.added)
        Findings(differences, table, now[k].name)
            .add(Severity::adds, "type added", nullptr, now[k].name, "The tab menu offers it.");
}

} // namespace

const char* severityName(Severity severity) { return severity_names[static_cast<std::size_t>(severity)]; }

void Findings::add(Severity severity, const char* what, Json before, Json after, std::string effect)
{
    m_all.push_back({severity, m_table, m_type, std::nullopt, what, std::move(before), std::move(after),
                     std::move(effect)});
}

void Findings::addTo(const std::string& parameter, Severity severity, const char* what, Json before,
                     Json after, std::string effect)
{
    m_all.push_back(
        {severity, m_table, m_type, parameter, what, std::move(before), std::move(after), std::move(effect)});
}

std::vector<Difference> findDifferences(const Json& before, const Json& after)
{
    std::vector<Difference> differences;
    for (const std::string& table : tableNames(before, after))
        compareTable(table, operatorsOf(before, table), operatorsOf(after, table), differences);
    return differences;
}

} // namespace kshop
