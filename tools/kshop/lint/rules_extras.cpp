// Extra parameters: houdini.parm.KIND.NAME and the keys below it.
#include "known_keys.h"
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace kshop
{

namespace
{

const std::vector<std::string>& kinds()
{
    static const std::vector<std::string> words = {"folder", "heading", "separator",  "toggle",
                                                   "menu",   "button",  "ramp_float", "ramp_rgb"};
    return words;
}

bool isExtraKey(const std::string& name)
{
    return name == "houdini.parm" || name.compare(0, 13, "houdini.parm.") == 0;
}

void checkKey(const Shader& shader, Report& report)
{
    for (const Key& key : shader.keys)
        if (isExtraKey(key.name) && splitText(key.name, '.', false).size() < 4)
            report.add(key.place, "",
                       {fmt::format("{} names no extra parameter", quoted(key.name)), "It makes nothing.",
                        "Write houdini.parm.KIND.NAME, as in \"houdini.parm.folder.main\"."});
}

void checkKind(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
        if (std::find(kinds().begin(), kinds().end(), extra.kind) == kinds().end())
            report.add(extra.key->place, extra.name,
                       {fmt::format("there is no kind of extra parameter {}{}", quoted(extra.kind),
                                    suggestion(extra.kind, kinds())),
                        "Nothing is shown, but it takes a place in the list: a folder counts it.",
                        "Write one of " + listed(kinds()) + "."});
}

std::string firstFour(const std::vector<std::string>& words)
{
    return words[0] + "." + words[1] + "." + words[2] + "." + words[3];
}

/// Whether the word is a sub-key, or a continuation of one.
bool isSubKey(const std::string& word)
{
    std::string base, digits;
    if (findKnownKey(KeyOwner::Extra, word))
        return true;
    const KnownKey* row =
        splitContinuation(word, base, digits) ? findKnownKey(KeyOwner::Extra, base) : nullptr;
    return row && row->type == KR_TYPE_STRING;
}

void checkSubKeys(const Shader& shader, Report& report)
{
    for (const Key& key : shader.keys)
    {
        const std::vector<std::string> words = splitText(key.name, '.', false);
        if (!isExtraKey(key.name) || words.size() < 5)
            continue;
        const std::string owner = firstFour(words);
        if (words.size() > 5 || !isSubKey(words[4]))
            report.add(key.place, words[3],
                       {fmt::format("nobody reads the key {}{}", quoted(key.name),
                                    suggestion(words[4], knownKeyNames(KeyOwner::Extra))),
                        "It changes nothing.",
                        "Write one of " + listed(knownKeyNames(KeyOwner::Extra)) +
                            " behind the extra parameter's key."});
        else if (!shader.keys.find(owner))
            report.add(key.place, words[3],
                       {fmt::format("{} stands without {}", quoted(key.name), quoted(owner)),
                        "There is no extra parameter that it could belong to: it changes nothing.",
                        "Write the extra parameter's own key, or correct this one."});
    }
}

void checkToggle(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
        if (extra.kind == "toggle" && extra.key->type == KR_TYPE_STRING && extra.key->text != "on" &&
            extra.key->text != "off")
            report.add(extra.key->place, extra.name,
                       {fmt::format("a check box is on or off at first, not {}", quoted(extra.key->text)),
                        "It is off.", "Write \"on\" or \"off\"."});
}

void checkNames(const Shader& shader, Report& report)
{
    std::set<std::string> names;
    for (const Parameter& parameter : shader.parameters)
        if (parameter.unseen.empty() && !shader.isPartOfRamp(parameter.name))
        {
            names.insert(parameter.name);
            if (parameter.isArray)
                names.insert(parameter.name + "_group");
        }
    for (const Extra& extra : shader.extras)
        if (!names.insert(extra.name).second)
            report.add(
                extra.key->place, extra.name,
                {fmt::format("there is another parameter called {}", quoted(extra.name)),
                 "Scripts, conditions and the order mean one of the two, and the other cannot be reached.",
                 "Give the extra parameter another name."});
}

} // namespace

const std::vector<Rule>& extraRules()
{
    static const std::vector<Rule> rules = {
        {"extra-key", "error", "a \"houdini.parm\" key that names no extra parameter", checkKey, nullptr},
        {"extra-kind", "error", "an unknown kind of extra parameter", checkKind, nullptr},
        {"extra-sub-key", "warning", "a key of an extra parameter that nobody reads", checkSubKeys, nullptr},
        {"toggle-default", "warning", "a check box that is neither on nor off", checkToggle, nullptr},
        {"extra-name", "error", "an extra parameter with the name of another one", checkNames, nullptr},
    };
    return rules;
}

} // namespace kshop
