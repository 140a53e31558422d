#include "differences.h"
#include "renames.h"
#include "value_kinds.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace kshop
{

namespace
{

struct FieldRow
{
    const char* field;
    const char* what;
    const char* effect;
};

// Nothing of these is in a scene.
const FieldRow field_rows[] = {
    {"label", "label", "The parameter pane shows another label."},
    {"extended", "extended type", "The parameter pane shows its label or its menu differently."},
    {"range", "range", "Saved values stay, also outside it; the slider and what can be entered change."},
    {"callback", "callback", "Editing it runs something else."},
    {"spare", "spare data",
     "Editing it runs another script, or scripts that read its spare data see another."},
    {"callback_language", "callback language", "Its script runs in another language."},
    {"parm_group", "parameter group", "The host groups it differently."},
    {"export_level", "export level", "The host exports it differently."},
    {"help", "help", "Its help says something else."},
    {"disable_when", "disable condition", "It is greyed out at other times."},
    {"hide_when", "hide condition", "It is hidden at other times."},
    {"invisible", "invisible", "It appears, or is shown no more."},
    {"join_next", "join with next", "It shares a row, or no longer does."},
};

bool holdsArtistsValue(const Json& parameter)
{
    const Stored stored = storedBy(parameter);
    return stored != Stored::nothing && stored != Stored::look;
}

bool alikeParameters(const Items& before, std::size_t i, const Items& after, std::size_t k)
{
    const Json& old = before[i].value;
    const Json& now = after[k].value;
    if (old["type"] != now["type"] || old["size"] != now["size"])
        return false;
    return old["label"] == now["label"] || haveSameNeighbours(before, i, after, k);
}

// --- one parameter ----------------------------------------------------------------------------------------------

/// What becomes of saved values when a parameter is of another type; empty when they stay as they are.
std::string lossByType(const Json& before, const Json& after)
{
    const Stored old = storedBy(before);
    const Stored now = storedBy(after);
    if (old == Stored::number && now == Stored::whole)
        return "Saved values lose their fractions.";
    const bool sameNumbers = old == Stored::whole && now == Stored::number;
    if (old != now && !sameNumbers)
        return "Saved values do not fit; nodes of saved scenes do not get them back as they were.";
    if (after["size"] != 1 && std::string(componentNames(before)) != componentNames(after))
        return "Saved values stay; expressions and scripts that name a component no longer find it.";
    return "";
}

void compareTypes(const Json& before, const Json& after, const std::string& name, Findings& findings)
{
    if (before["type"] == after["type"])
        return;
    const bool concerned = holdsArtistsValue(before);
    const std::string loss = concerned ? lossByType(before, after) : "";
    findings.addTo(name, loss.empty() ? Severity::changes : Severity::breaks, "type", before["type"],
                   after["type"],
                   !loss.empty() ? loss
                   : concerned   ? "Saved values stay; the parameter pane shows it differently."
                                 : "It held nothing that an artist had entered.");
}

void compareSizes(const Json& before, const Json& after, const std::string& name, Findings& findings)
{
    if (isFolder(before) || before["size"] == after["size"])
        return;
    const bool shrinks = after["size"] < before["size"];
    findings.addTo(name, holdsArtistsValue(before) ? Severity::breaks : Severity::changes, "size",
                   before["size"], after["size"],
                   shrinks
                       ? "Saved nodes lose the components that are no more."
                       : "Saved nodes keep defaults in the new components, and components have other names.");
}

/// Titles of a folder's tabs.
Json tabsOf(const Json& folder)
{
    Json tabs = Json::array();
    for (const Json& tab : folder["defaults"])
        tabs.push_back(tab["string"]);
    return tabs;
}

void compareDefaults(const Json& before, const Json& after, const std::string& name, Findings& findings)
{
    if (isFolder(before) != isFolder(after) || before["defaults"] == after["defaults"])
        return;
    if (!isFolder(before))
        findings.addTo(
            name, Severity::changes, "default", before["defaults"], after["defaults"],
            "Saved nodes keep their own values, set or not; new nodes start with the new default.");
    else if (tabsOf(before) != tabsOf(after))
        findings.addTo(name, Severity::changes, "tabs", tabsOf(before), tabsOf(after),
                       "The folder has other tabs; a saved node may open with another one.");
}

void compareFields(const Json& before, const Json& after, const std::string& name, Findings& findings)
{
    for (const FieldRow& row : field_rows)
        if (before[row.field] != after[row.field])
            findings.addTo(name, Severity::changes, row.what, before[row.field], after[row.field],
                           row.effect);
}

void compareList(const Json& before, const Json& after, const std::string& prefix, Findings& findings);

void compareChildren(const Json& before, const Json& after, const std::string& name, Findings& findings)
{
    if (before["children"].is_array() && after["children"].is_array())
        compareList(before["children"], after["children"], name + "/", findings);
}

void compareOne(const Json& before, const Json& after, const std::string& name, Findings& findings)
{
    compareTypes(before, after, name, findings);
    compareSizes(before, after, name, findings);
    compareDefaults(before, after, name, findings);
    compareMenus(before, after, name, findings);
    compareFields(before, after, name, findings);
    compareChildren(before, after, name, findings);
}

// --- a list of them ---------------------------------------------------------------------------------------------

void addGone(const Item& item, const std::string& name, Findings& findings)
{
    if (holdsArtistsValue(item.value))
        findings.addTo(name, Severity::breaks, "parameter gone", item.name, nullptr,
                       "Saved nodes lose its value, and scripts and expressions that name it fail.");
    else
        findings.addTo(name, Severity::changes, "parameter gone", item.name, nullptr,
                       "It held nothing that an artist had entered; scripts that name it fail.");
}

void addRenamed(const Item& item, const std::string& name, const std::string& newName, Findings& findings)
{
    findings.addTo(name, holdsArtistsValue(item.value) ? Severity::breaks : Severity::changes,
                   "parameter renamed?", item.name, newName,
                   "Scenes know parameters by their token: the value of the old one is lost.");
}

void compareList(const Json& before, const Json& after, const std::string& prefix, Findings& findings)
{
    const Items old = itemsOf(before, "token");
    const Items now = itemsOf(after, "token");
    const Pairing pairing = pairItems(old, now, alikeParameters);
    for (std::size_t i = 0; i < old.size(); ++i)
    {
        const std::string name = prefix + old[i].name;
        if (const auto same = pairing.same.find(i); same != pairing.same.end())
            compareOne(old[i].value, now[same->second].value, name, findings);
        else if (const auto renamed = pairing.renamed.find(i); renamed != pairing.renamed.end())
            addRenamed(old[i], name, now[renamed->second].name, findings);
        else
            addGone(old[i], name, findings);
    }
    for (const std::size_t k : pairing.added)
        findings.addTo(prefix + now[k].name, Severity::adds, "parameter added", nullptr, now[k].name,
                       "Saved nodes get it with its default.");
}

// --- where they stand -------------------------------------------------------------------------------------------

/// The tabs that each parameter stands in, outermost first.
class Places
{
public:
    explicit Places(const Json& list) { visit(list, 0, list.size(), Json::array()); }

    /// The tabs around a parameter of that token.
    const Json& of(const std::string& token) const { return m_places.at(token); }

private:
    std::size_t visit(const Json& list, std::size_t index, std::size_t count, const Json& tabs)
    {
        for (; count > 0 && index < list.size(); --count)
        {
            const Json& parameter = list[index++];
            m_places.emplace(parameter["token"].get<std::string>(), tabs);
            if (isFolder(parameter))
                index = visitTabs(parameter, list, index, tabs);
        }
        return index;
    }

    std::size_t visitTabs(const Json& folder, const Json& list, std::size_t index, const Json& tabs)
    {
        for (const Json& tab : folder["defaults"])
        {
            Json inside = tabs;
            inside.push_back(tab["string"]);
            const double held = tab["value"].is_number() ? tab["value"].get<double>() : 0;
            const double most = static_cast<double>(list.size());
            index = visit(list, index, static_cast<std::size_t>(std::clamp(held, 0.0, most)), inside);
        }
        return index;
    }

    std::map<std::string, Json> m_places;
};

/// The tokens of `items` that `others` have too, in order.
std::vector<std::string> commonTokens(const Items& items, const Items& others)
{
    std::set<std::string> known;
    for (const Item& item : others)
        known.insert(item.name);
    std::vector<std::string> common;
    for (const Item& item : items)
        if (known.count(item.name))
            common.push_back(item.name);
    return common;
}

void comparePlaces(const Json& before, const Json& after, Findings& findings)
{
    const Items old = itemsOf(before, "token");
    const Items now = itemsOf(after, "token");
    const Places oldPlaces(before);
    const Places newPlaces(after);
    const std::vector<std::string> oldOrder = commonTokens(old, now);
    const std::vector<std::string> newOrder = commonTokens(now, old);
    for (const std::string& token : oldOrder)
        if (oldPlaces.of(token) != newPlaces.of(token))
            findings.addTo(token, Severity::changes, "folder", oldPlaces.of(token), newPlaces.of(token),
                           "It stands under other tabs.");
    if (oldOrder != newOrder)
        findings.add(Severity::changes, "order of parameters", oldOrder, newOrder,
                     "The parameter pane shows them in another order.");
}

} // namespace

void compareParameters(const Json& before, const Json& after, Findings& findings)
{
    compareList(before, after, "", findings);
    comparePlaces(before, after, findings);
}

} // namespace kshop
