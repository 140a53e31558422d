// Folders: their pairs, their counts, and what becomes of the fields that follow.
#include "layout.h"
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>

namespace kshop
{

namespace
{

std::vector<std::string> itemsOf(const Extra& extra) { return splitText(extra.key->text, ';', false); }

bool endsList(const Extra& extra)
{
    const std::size_t count = itemsOf(extra).size();
    return (extra.kind == "folder" && (count == 0 || count % 2 != 0)) ||
           (extra.kind == "menu" && count % 2 != 0);
}

const char* const ends_here = "The parameter list ends here: nothing that follows is shown.";
const char* const example = "Write \"Label;count;Label;count\".";

void checkPairs(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
        if (extra.kind == "folder" && itemsOf(extra).size() % 2 != 0)
            report.add(extra.key->place, extra.name,
                       {fmt::format("the folder has {}, and each tab needs a label and a count",
                                    countText(itemsOf(extra).size(), "item")),
                        ends_here, example});
}

void checkEmpty(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
        if (extra.kind == "folder" && itemsOf(extra).empty())
            report.add(extra.key->place, extra.name, {"the folder has no tabs", ends_here, example});
}

/// Why a count is none; empty when it is one.
std::string whyNoCount(const std::string& text)
{
    char* end = nullptr;
    const long count = std::strtol(text.c_str(), &end, 10);
    if (*end != '\0' || end == text.c_str())
        return fmt::format("{} is no number; {} is taken", quoted(text), count);
    return count <= 0 ? fmt::format("the count is {}", count) : "";
}

void checkCounts(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
    {
        const std::vector<std::string> items = itemsOf(extra);
        if (extra.kind != "folder" || items.size() % 2 != 0)
            continue;
        for (std::size_t tab = 0; tab < items.size(); tab += 2)
            if (const std::string why = whyNoCount(items[tab + 1]); !why.empty())
                report.add(extra.key->place, extra.name,
                           {fmt::format("tab {}: {}", quoted(items[tab]), why),
                            "The tab holds so many of the fields that follow, and a tab with none is empty.",
                            "Write how many fields the tab holds."});
    }
}

std::string contentsText(const Folder& folder)
{
    std::string text;
    for (const Tab& tab : folder.tabs)
        text += fmt::format("{}Tab {} holds {}.", text.empty() ? "" : " ", quoted(tab.title),
                            tab.names.empty() ? "nothing" : listed(tab.names));
    return text;
}

/// Fields that are not shown, because the list ended before them.
std::vector<std::string> hiddenFields(const Shader& shader)
{
    std::vector<std::string> names;
    for (const Parameter& parameter : shader.parameters)
        if (parameter.unseen.empty() && !shader.isPartOfRamp(parameter.name) && !parameter.field)
            names.push_back(parameter.name);
    for (const Extra& extra : shader.extras)
        if (!extra.field && !endsList(extra))
            names.push_back(extra.name);
    return names;
}

const Extra* extraThatEnds(const Shader& shader)
{
    const auto found = std::find_if(shader.extras.begin(), shader.extras.end(), endsList);
    return found == shader.extras.end() ? nullptr : &*found;
}

void checkShort(const Shader& shader, Report& report)
{
    if (extraThatEnds(shader)) // then they all are, and that is told
        return;
    for (const Folder& folder : Layout(shader).folders)
    {
        const auto isShort = [](const Tab& tab) { return static_cast<int>(tab.names.size()) < tab.wanted; };
        const auto tab = std::find_if(folder.tabs.begin(), folder.tabs.end(), isShort);
        const Extra* extra = shader.findExtra(folder.name);
        if (!extra || tab == folder.tabs.end())
            continue;
        const std::size_t left = tab->names.size();
        report.add(extra->key->place, extra->name,
                   {fmt::format("tab {} asks for {}, and {} left for it", quoted(tab->title),
                                countText(static_cast<std::size_t>(tab->wanted), "field"),
                                left == 0 ? "none is" : fmt::format("{} {}", left, left == 1 ? "is" : "are")),
                    contentsText(folder),
                    "Correct the counts. An array, and a folder with all that is in it, counts as one."});
    }
}

void checkMissed(const Shader& shader, Report& report)
{
    const Layout layout(shader);
    const Extra* extra = layout.folders.empty() ? nullptr : shader.findExtra(layout.folders.back().name);
    if (!extra || layout.after.empty())
        return;
    report.add(
        extra->key->place, extra->name,
        {fmt::format("{} behind the last tab: {}",
                     layout.after.size() == 1 ? "a field stands"
                                              : fmt::format("{} fields stand", layout.after.size()),
                     listed(layout.after)),
         "They are shown below the tabs, whichever tab is chosen. " + contentsText(layout.folders.back()),
         "Raise the last count, or put them in front of the folder by \"houdini.order\"."});
}

void checkHidden(const Shader& shader, Report& report)
{
    const Extra* extra = extraThatEnds(shader);
    if (!shader.templates || !extra)
        return;
    const std::vector<std::string> names = hiddenFields(shader);
    if (!names.empty())
        report.add(extra->key->place, extra->name,
                   {fmt::format("{} hidden behind it: {}",
                                names.size() == 1 ? "a field is" : fmt::format("{} fields are", names.size()),
                                listed(names)),
                    "They are not shown at all, and scripts cannot set them.",
                    fmt::format("Correct the {} in front of them.", extra->kind)});
}

} // namespace

const std::vector<Rule>& folderRules()
{
    static const std::vector<Rule> rules = {
        {"odd-folder", "error", "a folder with a tab that has no count", checkPairs, nullptr},
        {"empty-folder", "error", "a folder without tabs", checkEmpty, nullptr},
        {"folder-count", "error", "a count that is no number above 0", checkCounts, nullptr},
        {"folder-short", "error", "a tab that asks for more fields than follow", checkShort, nullptr},
        {"folder-misses", "warning", "fields behind the last tab", checkMissed, nullptr},
        {"hidden-parameters", "error", "fields behind a folder or menu that ends the list", checkHidden,
         nullptr},
    };
    return rules;
}

} // namespace kshop
