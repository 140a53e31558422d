#include "interface_json.h"

namespace kshop
{

namespace
{

Json orNull(const std::optional<std::string>& text) { return text ? Json(*text) : Json(nullptr); }

Json toJson(const DefaultFacts& facts)
{
    return {{"value", facts.value}, {"string", orNull(facts.text)}, {"meaning", facts.meaning}};
}

Json toJson(const ConnectorFacts& facts)
{
    return {{"name", facts.name}, {"label", facts.label}, {"type", facts.type}};
}

Json toJson(const RendererMessage& message)
{
    return {{"severity", severityWord(message.severity)}, {"text", message.text}};
}

template <typename T>
Json listJson(const std::vector<T>& items)
{
    Json list = Json::array();
    for (const T& item : items)
        list.push_back(toJson(item));
    return list;
}

Json menuJson(const std::optional<MenuFacts>& menu)
{
    if (!menu)
        return nullptr;
    if (menu->scripted)
        return {{"type", menu->type}, {"script", menu->script}, {"language", menu->language}};
    Json items = Json::array();
    for (const auto& [token, label] : menu->items)
        items.push_back(Json::array({token, label}));
    return {{"type", menu->type}, {"items", items}};
}

Json rangeJson(const std::optional<RangeFacts>& range)
{
    if (!range)
        return nullptr;
    return {
        {"min_flag", range->minFlag}, {"min", range->min}, {"max_flag", range->maxFlag}, {"max", range->max}};
}

Json spareJson(const std::optional<SpareFacts>& spare)
{
    if (!spare)
        return nullptr;
    Json values = Json::object();
    for (const auto& [token, value] : spare->values)
        values[token] = value;
    return values;
}

} // namespace

Json toJson(const TemplateFacts& facts)
{
    return {{"type", facts.type ? Json(facts.type) : Json(nullptr)},
            {"extended", facts.extended},
            {"size", facts.size},
            {"token", facts.token},
            {"label", facts.label},
            {"defaults", listJson(facts.defaults)},
            {"menu", menuJson(facts.menu)},
            {"range", rangeJson(facts.range)},
            {"callback", facts.callback},
            {"spare", spareJson(facts.spare)},
            {"callback_language", facts.spare ? Json(facts.spare->callbackLanguage) : Json(nullptr)},
            {"parm_group", facts.parmGroup},
            {"export_level", facts.exportLevel},
            {"help", orNull(facts.help)},
            {"disable_when", orNull(facts.disableWhen)},
            {"hide_when", orNull(facts.hideWhen)},
            {"invisible", facts.invisible},
            {"join_next", facts.joinNext},
            {"children", facts.children ? listJson(*facts.children) : Json(nullptr)}};
}

Json toJson(const OperatorFacts& facts)
{
    return {{"name", facts.name},
            {"label", facts.label},
            {"icon", facts.icon},
            {"class", facts.className},
            {"tab_menu", orNull(facts.tabMenu)},
            {"help_url", orNull(facts.helpUrl)},
            {"min_inputs", facts.minInputs},
            {"max_inputs", facts.maxInputs},
            {"num_outputs", facts.numOutputs},
            {"vopnet_mask", orNull(facts.vopnetMask)},
            {"flags", facts.flags},
            {"inputs", listJson(facts.inputs)},
            {"outputs", listJson(facts.outputs)},
            {"templates", listJson(facts.templates)}};
}

Json interfaceJson(const std::vector<TableFacts>& tables, const std::vector<RendererMessage>& messages)
{
    Json tablesJson = Json::object();
    for (const auto& [name, operators] : tables)
        tablesJson[name] = listJson(operators);
    return {{"tables", tablesJson}, {"messages", listJson(messages)}};
}

std::string jsonText(const Json& value)
{
    return value.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace kshop
