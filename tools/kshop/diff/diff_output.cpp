#include "differences.h"

#include <fmt/format.h>

#include <algorithm>

namespace kshop
{

namespace
{

/// Long values, such as menus and orders, are for programs.
const std::size_t longest_value = 60;

std::string valueText(const Json& value)
{
    if (value.is_string())
        return kshop::quoted(value.get<std::string>());
    return printable(value.dump(-1, ' ', false, Json::error_handler_t::replace));
}

/// A connector is shown by its number, name and type, a list of defaults by its values.
std::string shortText(const Json& value)
{
    if (value.is_object() && value.contains("index") && value.contains("name"))
        return fmt::format("{} {}", value["index"].dump(), valueText(value["name"]));
    if (value.is_array() && !value.empty() && value[0].is_object() && value[0].contains("meaning"))
    {
        std::vector<std::string> words;
        for (const Json& one : value)
            words.push_back(one["string"].is_null() ? valueText(one["value"]) : valueText(one["string"]));
        return joined(words, " ");
    }
    return valueText(value);
}

std::string changeText(const Difference& difference)
{
    std::string before = shortText(difference.before);
    std::string after = shortText(difference.after);
    if (difference.before.is_null() && difference.after.is_string())
        return after;
    if (difference.after.is_null() && difference.before.is_string())
        return before;
    if (width(before) > longest_value || width(after) > longest_value)
        return "";
    return fmt::format("{} -> {}", before, after);
}

std::string differenceText(const Difference& difference, const Style& style)
{
    const std::string subject = difference.parameter ? printable(*difference.parameter) + ": " : "";
    const std::string change = changeText(difference);
    const bool typed = difference.before.is_object() && difference.after.is_object() &&
                       difference.before.contains("type") &&
                       difference.before["type"] != difference.after["type"];
    const std::string types = typed ? fmt::format(" (type {} -> {})", difference.before["type"].dump(),
                                                  difference.after["type"].dump())
                                    : "";
    return fmt::format("  {}  {}{}{}{}\n           {}\n", padded(severityName(difference.severity), 7),
                       subject, difference.what, change.empty() ? "" : ": " + change, types,
                       style.faint(printable(difference.effect)));
}

std::size_t countOf(const std::vector<Difference>& differences, Severity severity)
{
    return static_cast<std::size_t>(std::count_if(differences.begin(), differences.end(),
                                                  [severity](const Difference& one)
                                                  { return one.severity == severity; }));
}

std::string summary(const std::vector<Difference>& differences)
{
    if (differences.empty())
        return "No differences.\n";
    return fmt::format("{}: {} could break a scene, {} an artist sees, {} new.\n",
                       countText(differences.size(), "difference"), countOf(differences, Severity::breaks),
                       countOf(differences, Severity::changes), countOf(differences, Severity::adds));
}

} // namespace

Json differencesJson(const std::vector<Difference>& differences)
{
    Json list = Json::array();
    for (const Difference& one : differences)
        list.push_back({{"severity", severityName(one.severity)},
                        {"table", one.table},
                        {"type", one.type},
                        {"parameter", one.parameter ? Json(*one.parameter) : Json(nullptr)},
                        {"what", one.what},
                        {"old", one.before},
                        {"new", one.after},
                        {"effect", one.effect}});
    Json result = Json::object();
    result["differences"] = std::move(list);
    return result;
}

std::string differencesText(const std::vector<Difference>& differences, const Style& style)
{
    std::string text;
    const Difference* last = nullptr;
    for (const Difference& one : differences)
    {
        if (!last || last->table != one.table || last->type != one.type)
            text += fmt::format("{}{}\n", last ? "\n" : "",
                                style.title(fmt::format("{} {}", printable(one.table), printable(one.type))));
        text += differenceText(one, style);
        last = &one;
    }
    return text + (last ? "\n" : "") + summary(differences);
}

} // namespace kshop
