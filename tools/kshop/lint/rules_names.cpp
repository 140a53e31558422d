// Names that collide, and words that have no meaning where they stand.
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

namespace kshop
{

namespace
{

void checkTypes(const Library& library, Report& report)
{
    std::map<std::string, const Shader*> owners;
    for (const Shader& shader : library.shaders)
    {
        if (!shader.isWanted)
            continue;
        if (library.handWritten.count(shader.type) != 0)
            report.add(shader.place, shader.name, "",
                       {fmt::format("{} is the type of a node that is written by hand", quoted(shader.type)),
                        "The shader has no node type.", "Set \"houdini.skip\" on the shader, or rename it."});
        const auto [owner, isFirst] = owners.emplace(shader.type, &shader);
        if (!isFirst)
            report.add(shader.place, shader.name, "",
                       {fmt::format("its type name {} is taken by {}", quoted(shader.type),
                                    quoted(owner->second->name)),
                        "The shader has no node type.",
                        "Rename one of the two, or set \"houdini.skip\" on one."});
    }
}

bool isInstanceOf(const std::string& name, const std::string& array)
{
    if (name.size() <= array.size() + 1 || name.compare(0, array.size() + 1, array + "_") != 0)
        return false;
    const std::string rest = name.substr(array.size() + 1);
    return rest == "group" || rest.find_first_not_of("0123456789") == std::string::npos;
}

void checkTokens(const Shader& shader, Report& report)
{
    for (const Parameter& array : shader.parameters)
    {
        if (!array.isArray || !array.field)
            continue;
        for (const Parameter& other : shader.parameters)
            if (other.field && isInstanceOf(other.name, array.name))
                report.add(other.place, other.name,
                           {fmt::format("the array {} makes a field called {}, too", quoted(array.name),
                                        quoted(other.name)),
                            "Scripts and conditions mean one of the two, and the other cannot be reached.",
                            "Have one of them renamed, or hide one with \"houdini.skip\"."});
    }
}

void checkLod(const Shader& shader, Report& report)
{
    const Key* key = shader.keys.findText("houdini.lod");
    const std::string text = shader.keys.joined("houdini.lod");
    if (key && !text.empty() && !std::strchr("HhMmLl", text[0]))
        report.add(key->place, "",
                   {fmt::format("there is no level of detail {}", quoted(text)),
                    "It counts as absent: the tile is as detailed as the number of inputs suggests.",
                    "Write high, medium or low."});
}

void checkShaderType(const Shader& shader, Report& report)
{
    const std::vector<std::string> words = {"light_filter", "atmosphere", "volume"};
    const Key* key = shader.keys.findText("houdini.shader_type");
    const std::string text = shader.keys.joined("houdini.shader_type");
    if (key && !text.empty() && std::find(words.begin(), words.end(), text) == words.end())
        report.add(key->place, "",
                   {fmt::format("there is no shader type {}{}", quoted(text), suggestion(text, words)),
                    "It counts as absent: the main output is a plain one, which fits no output node's input "
                    "for such "
                    "shaders.",
                    "Write one of " + listed(words) + ", or take the line away."});
}

// --- Keys that do nothing where they stand -----------------------------------------------------------------

bool startsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

bool knowsFieldType(const Parameter& parameter, const std::string& type)
{
    if (parameter.type == KR_TYPE_STRING)
        return startsWith(type, "file:") || startsWith(type, "menu:") || startsWith(type, "opfilter");
    return parameter.type == KR_TYPE_INT && type == "visibility";
}

const char* fieldTypesOf(const Parameter& parameter)
{
    if (parameter.type == KR_TYPE_STRING)
        return "On a text write \"file:...\", \"menu:...\" or \"opfilter...\".";
    return parameter.type == KR_TYPE_INT ? "On an integer write \"visibility\"." : "Take the line away.";
}

void checkFieldType(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        const Key* key = parameter.keys.findText("houdini.type");
        const std::string type = parameter.keys.joined("houdini.type");
        if (key && !type.empty() && !knowsFieldType(parameter, type))
            report.add(key->place, parameter.name,
                       {fmt::format("{} is no kind of field for this parameter", quoted(type)),
                        "The field is the usual one of the parameter's type.", fieldTypesOf(parameter)});
    }
}

std::string menuSource(const Parameter& parameter)
{
    const std::vector<std::string> fields = splitText(parameter.keys.joined("houdini.type"), ':', false);
    const bool isMenu = parameter.type == KR_TYPE_STRING && fields.size() > 2 && fields[0] == "menu";
    return isMenu ? fields[2] : "";
}

bool takesMenu(const Parameter& parameter)
{
    return parameter.type == KR_TYPE_ENUM || menuSource(parameter) == "menu";
}

bool takesScript(const Parameter& parameter)
{
    const std::string source = menuSource(parameter);
    return source == "python" || source == "hscript";
}

bool takesCaps(const Parameter& parameter)
{
    return parameter.type == KR_TYPE_ENUM && parameter.keys.joined("houdini.menu").empty();
}

bool takesRange(const Parameter& parameter)
{
    static const std::set<int> types = {KR_TYPE_BYTE,   KR_TYPE_INT,   KR_TYPE_UINT,   KR_TYPE_FLOAT,
                                        KR_TYPE_RGB,    KR_TYPE_RGBA,  KR_TYPE_VECTOR, KR_TYPE_POINT,
                                        KR_TYPE_POINT2, KR_TYPE_MATRIX};
    return types.count(parameter.type) != 0;
}

struct UseRow
{
    const char* key;
    bool (*isUsed)(const Parameter&);
    const char* message;
    const char* remedy;
};

const UseRow use_rows[] = {
    {"houdini.menu", takesMenu, "\"houdini.menu\" stands on a parameter that shows no such menu",
     "On a text write \"houdini.type\" = \"menu:single:menu\", too; else take the line away."},
    {"houdini.menu_script", takesScript, "\"houdini.menu_script\" stands on a parameter that asks for none",
     "Write \"houdini.type\" = \"menu:single:python\", too, or take the line away."},
    {"houdini.no_menu_caps", takesCaps,
     "\"houdini.no_menu_caps\" stands on a parameter that does not show an enumeration's own names",
     "Take the line away: labels of \"houdini.menu\" are shown as they are."},
    {"min", takesRange, "\"min\" stands on a parameter that has no range", "Take the line away."},
    {"max", takesRange, "\"max\" stands on a parameter that has no range", "Take the line away."},
    {"softmin", takesRange, "\"softmin\" stands on a parameter that has no range", "Take the line away."},
    {"softmax", takesRange, "\"softmax\" stands on a parameter that has no range", "Take the line away."},
};

void checkUse(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
        for (const UseRow& row : use_rows)
            if (const Key* key = parameter.keys.find(row.key); key && !row.isUsed(parameter))
                report.add(key->place, parameter.name, {row.message, "It changes nothing.", row.remedy});
}

} // namespace

const std::vector<Rule>& nameRules()
{
    static const std::vector<Rule> rules = {
        {"type-name", "error", "two entries that make one node type", nullptr, checkTypes},
        {"field-name", "warning", "a parameter with the name of an array's field", checkTokens, nullptr},
        {"level-of-detail", "warning", "an unknown level of detail", checkLod, nullptr},
        {"shader-type", "warning", "an unknown shader type", checkShaderType, nullptr},
        {"field-type", "warning", "a \"houdini.type\" that the parameter's type does not know",
         checkFieldType, nullptr},
        {"no-use", "warning", "a key that does nothing on a parameter of this type", checkUse, nullptr},
    };
    return rules;
}

} // namespace kshop
