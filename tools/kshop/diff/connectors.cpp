#include "differences.h"
#include "renames.h"

#include <fmt/format.h>

namespace kshop
{

namespace
{

/// The words of inputs and of outputs.
struct SideRow
{
    const char* field;
    const char* gone;
    const char* renamed;
    const char* moved;
    const char* retyped;
    const char* relabelled;
    const char* added;
};

const SideRow side_rows[] = {
    {"inputs", "input gone", "input renamed?", "input moved", "input type", "input label", "input added"},
    {"outputs", "output gone", "output renamed?", "output moved", "output type", "output label",
     "output added"},
};

Json connectorJson(const Items& items, std::size_t index)
{
    const Json& value = items[index].value;
    return {
        {"index", index}, {"name", items[index].name}, {"label", value["label"]}, {"type", value["type"]}};
}

bool alikeConnectors(const Items& before, std::size_t i, const Items& after, std::size_t k)
{
    if (before[i].value["type"] != after[k].value["type"])
        return false;
    return before[i].value["label"] == after[k].value["label"] || haveSameNeighbours(before, i, after, k);
}

/// What becomes of a wire whose connector's name is no more.
std::string strayWire(const Items& after, std::size_t index)
{
    if (index >= after.size())
        return "Wires of saved scenes are lost: no connector has its number.";
    return fmt::format(
        "Wires of saved scenes go to '{}', which has its number now, or are lost when that is taken.",
        after[index].name);
}

void compareOne(const SideRow& side, const Items& old, std::size_t i, const Items& now, std::size_t k,
                Findings& findings)
{
    const auto add = [&](Severity severity, const char* what, const char* effect)
    { findings.add(severity, what, connectorJson(old, i), connectorJson(now, k), effect); };
    if (i != k)
        add(Severity::changes, side.moved,
            "Saved scenes find it by its name; scripts that wire by number reach another one.");
    if (old[i].value["type"] != now[k].value["type"])
        add(Severity::breaks, side.retyped,
            "Wires of saved scenes stay and carry another type, also where a person could not make them.");
    if (old[i].value["label"] != now[k].value["label"])
        add(Severity::changes, side.relabelled, "The tile shows another label.");
}

void compareSide(const SideRow& side, const Json& before, const Json& after, Findings& findings)
{
    const Items old = itemsOf(before, "name");
    const Items now = itemsOf(after, "name");
    const Pairing pairing = pairItems(old, now, alikeConnectors);
    for (std::size_t i = 0; i < old.size(); ++i)
    {
        const auto same = pairing.same.find(i);
        const auto renamed = pairing.renamed.find(i);
        if (same != pairing.same.end())
            compareOne(side, old, i, now, same->second, findings);
        else if (renamed != pairing.renamed.end())
            findings.add(Severity::breaks, side.renamed, connectorJson(old, i),
                         connectorJson(now, renamed->second), strayWire(now, i));
        else
            findings.add(Severity::breaks, side.gone, connectorJson(old, i), nullptr, strayWire(now, i));
    }
    for (const std::size_t k : pairing.added)
        findings.add(Severity::adds, side.added, nullptr, connectorJson(now, k), "It can be wired.");
}

} // namespace

void compareConnectors(const Json& before, const Json& after, Findings& findings)
{
    for (const SideRow& side : side_rows)
        compareSide(side, before[side.field], after[side.field], findings);
}

} // namespace kshop
