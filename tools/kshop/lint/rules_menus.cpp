// Menus: of enumerations, of text fields, of extra parameters.
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace kshop
{

namespace
{

const char* const menu_words[] = {"single", "exclusive", "replace", "toggle", "append", "wild"};
const char* const source_words[] = {"menu", "python", "hscript"};

template <std::size_t N>
bool isOneOf(const char* const (&words)[N], const std::string& word)
{
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

template <std::size_t N>
std::vector<std::string> listOf(const char* const (&words)[N])
{
    return {std::begin(words), std::end(words)};
}

/// "menu:WORD:SOURCE" on a text, taken apart; absent parts are empty.
struct MenuType
{
    bool isMenu;
    std::string word, source;
    bool hasKnownWord() const { return isMenu && isOneOf(menu_words, word); }
};

MenuType menuTypeOf(const Parameter& parameter)
{
    const std::string type = parameter.keys.joined("houdini.type");
    if (parameter.type != KR_TYPE_STRING || type.compare(0, 5, "menu:") != 0)
        return {false, "", ""};
    const std::vector<std::string> fields = splitText(type, ':', false);
    return {true, fields.size() > 1 ? fields[1] : "", fields.size() > 2 ? fields[2] : ""};
}

bool isShown(const Shader& shader, const Parameter& parameter)
{
    return shader.isWanted && parameter.unseen.empty() && !shader.isPartOfRamp(parameter.name);
}

/// The place of a key, or of the table when there is none.
const KtPlace& placeOf(const Parameter& parameter, const char* key)
{
    const Key* found = parameter.keys.find(key);
    return found ? found->place : parameter.place;
}

void checkOdd(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        const Key* key = parameter.keys.findText("houdini.menu");
        const std::vector<std::string> items = splitText(parameter.keys.joined("houdini.menu"), ';', true);
        if (!key || items.size() % 2 == 0)
            continue;
        report.add(key->place, parameter.name,
                   {fmt::format("the menu has {} items, and each token needs a label", items.size()),
                    items.size() == 1
                        ? "The menu is empty."
                        : fmt::format("The last item, {}, is not in the menu.", quoted(items.back())),
                    "Write \"token;label;token;label\", without a semicolon at the end."});
    }
    for (const Extra& extra : shader.extras)
    {
        const std::vector<std::string> items = splitText(extra.key->text, ';', false);
        if (extra.kind == "menu" && items.size() % 2 != 0)
            report.add(extra.key->place, extra.name,
                       {fmt::format("the menu has {} items, and each token needs a label", items.size()),
                        "The parameter list ends here: neither the menu nor anything behind it is shown.",
                        "Write \"token;label;token;label\"; an empty label is not possible here."});
    }
}

void checkEmpty(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        if (!isShown(shader, parameter) || !parameter.keys.joined("houdini.menu").empty())
            continue;
        const MenuType type = menuTypeOf(parameter);
        if (parameter.type == KR_TYPE_ENUM && !parameter.isArray && parameter.items.empty())
            report.add(parameter.place, parameter.name,
                       {"the enumeration has no items, and there is no \"houdini.menu\"",
                        "The menu is empty: nothing can be chosen.", "Write a \"houdini.menu\"."});
        else if (type.hasKnownWord() && type.source == "menu")
            report.add(placeOf(parameter, "houdini.type"), parameter.name,
                       {"the type asks for the menu of \"houdini.menu\", and there is none",
                        "The menu is empty: nothing can be chosen.", "Write a \"houdini.menu\"."});
        else if (type.hasKnownWord() && isOneOf(source_words, type.source) &&
                 parameter.keys.joined("houdini.menu_script").empty())
            report.add(
                placeOf(parameter, "houdini.type"), parameter.name,
                {"the type asks for a script that makes the menu, and there is no \"houdini.menu_script\"",
                 "The menu is empty: nothing can be chosen.", "Write a \"houdini.menu_script\"."});
    }
    for (const Extra& extra : shader.extras)
        if (extra.kind == "menu" && splitText(extra.key->text, ';', false).empty())
            report.add(extra.key->place, extra.name,
                       {"the menu has no items", "It is empty: nothing can be chosen.",
                        "Write \"token;label;token;label\"."});
}

void tellRepeats(const TemplateFacts& field, const KtPlace& place, const std::string& parameter,
                 Report& report)
{
    std::set<std::string> seen, told;
    for (const auto& [token, label] : field.menu->items)
        if (!seen.insert(token).second && told.insert(token).second)
            report.add(place, parameter,
                       {fmt::format("the menu has the token {} more than once", quoted(token)),
                        "All these items mean the first of them: the others cannot be chosen apart.",
                        "Give each item a token of its own."});
}

void checkRepeats(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
        if (parameter.field && parameter.field->menu)
            tellRepeats(*parameter.field, placeOf(parameter, "houdini.menu"), parameter.name, report);
    for (const Extra& extra : shader.extras)
        if (extra.kind == "menu" && extra.field && extra.field->menu)
            tellRepeats(*extra.field, extra.key->place, extra.name, report);
}

void checkWord(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
        if (const MenuType type = menuTypeOf(parameter); type.isMenu && !type.hasKnownWord())
            report.add(placeOf(parameter, "houdini.type"), parameter.name,
                       {fmt::format("there is no kind of menu {}{}", quoted(type.word),
                                    suggestion(type.word, listOf(menu_words))),
                        "The field is a plain text without a menu.",
                        "Write one of " + listed(listOf(menu_words)) + "."});
}

void checkSource(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
        if (const MenuType type = menuTypeOf(parameter);
            type.hasKnownWord() && !isOneOf(source_words, type.source))
            report.add(placeOf(parameter, "houdini.type"), parameter.name,
                       {type.source.empty() ? std::string("the type does not say where the menu comes from")
                                            : fmt::format("a menu cannot come from {}{}", quoted(type.source),
                                                          suggestion(type.source, listOf(source_words))),
                        "The field is a plain text without a menu.",
                        fmt::format("Write \"menu:{}:menu\", or python or hscript in place of the last word.",
                                    type.word)});
}

/// The field's own default, when it has one that a menu can have.
const std::string* tokenByDefault(const TemplateFacts& field)
{
    const bool plain = field.menu && !field.menu->scripted && !field.menu->items.empty() &&
                       !field.defaults.empty() && field.defaults[0].meaning == 0 && field.defaults[0].text;
    return plain ? &*field.defaults[0].text : nullptr;
}

bool hasToken(const MenuFacts& menu, const std::string& token)
{
    return std::any_of(menu.items.begin(), menu.items.end(),
                       [&token](const auto& item) { return item.first == token; });
}

void checkTextDefault(const Parameter& parameter, Report& report)
{
    const MenuType type = menuTypeOf(parameter);
    const std::string* token = tokenByDefault(*parameter.field);
    if ((type.word != "single" && type.word != "exclusive") || !token ||
        hasToken(*parameter.field->menu, *token))
        return;
    report.add(
        placeOf(parameter, "houdini.menu"), parameter.name,
        {fmt::format("the default, {}, is not in the menu", quoted(*token)),
         "A new node shows a value that is no item, and once it is changed nobody can choose it again.",
         "Add it to the menu, or have the default changed where the shader is declared."});
}

void checkEnumDefault(const Parameter& parameter, Report& report)
{
    const int count = parameter.field->menu ? static_cast<int>(parameter.field->menu->items.size()) : 0;
    const int index = parameter.value ? parameter.value->int_ : 0;
    if (parameter.isArray || count == 0 || (index >= 0 && index < count))
        return;
    report.add(placeOf(parameter, "houdini.menu"), parameter.name,
               {fmt::format("the default is item {}, counted from 0, and the menu has {}", index,
                            countText(static_cast<std::size_t>(count), "item")),
                "A new node shows no item, and the default cannot be chosen.",
                "Add the item to the menu, or have the default changed where the shader is declared."});
}

void checkDefault(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        if (!parameter.field || !parameter.keys.joined("houdini.expression").empty())
            continue;
        if (parameter.type == KR_TYPE_ENUM)
            checkEnumDefault(parameter, report);
        else if (parameter.type == KR_TYPE_STRING)
            checkTextDefault(parameter, report);
    }
}

/// An enumeration's menu stands for its items in their order; one that is shorter or longer means other things.
void checkLength(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        const Key* key = parameter.keys.findText("houdini.menu");
        if (parameter.type != KR_TYPE_ENUM || !key || parameter.items.empty() || !parameter.field ||
            !parameter.field->menu)
            continue;
        for (const auto& [token, label] : parameter.field->menu->items)
            if (std::find(parameter.items.begin(), parameter.items.end(), token) == parameter.items.end())
                report.add(key->place, parameter.name,
                           {fmt::format("the menu has the token {}, which the enumeration does not have{}",
                                        quoted(token), suggestion(token, parameter.items)),
                            "The renderer does not know the item that the artist chooses.",
                            "Write the enumeration's own names as tokens: " + listed(parameter.items) + "."});
    }
}

} // namespace

const std::vector<Rule>& menuRules()
{
    static const std::vector<Rule> rules = {
        {"odd-menu", "error", "a menu with a token that has no label", checkOdd, nullptr},
        {"empty-menu", "warning", "a menu without items", checkEmpty, nullptr},
        {"repeated-token", "warning", "a token that a menu has more than once", checkRepeats, nullptr},
        {"menu-kind", "error", "an unknown word behind \"menu:\"", checkWord, nullptr},
        {"menu-source", "error", "an unknown source or language of a menu", checkSource, nullptr},
        {"menu-default", "warning", "a default that is not in the menu", checkDefault, nullptr},
        {"menu-enumeration", "warning", "a menu's token that the enumeration does not have", checkLength,
         nullptr},
    };
    return rules;
}

} // namespace kshop
