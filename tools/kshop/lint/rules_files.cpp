// What metadata files hold in vain: nothing of it reaches a shader.
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <functional>

namespace kshop
{

namespace
{

void forEach(const Library& library, int reason, const std::function<void(const LeftOut&)>& tell)
{
    for (const LeftOut& item : library.leftOut)
        if (item.reason == reason)
            tell(item);
}

const char* const whole_file = "Nothing in this file counts: all its shaders look as if it were not there.";

void checkUnreadable(const Library& library, Report& report)
{
    forEach(library, KR_LEFT_OUT_UNREADABLE,
            [&report](const LeftOut& item)
            {
                report.add(item.place, "",
                           {"the file cannot be read: " + item.detail, whole_file,
                            "Make it readable, or take it away."});
            });
}

void checkSyntax(const Library& library, Report& report)
{
    forEach(
        library, KR_LEFT_OUT_SYNTAX,
        [&report](const LeftOut& item) {
            report.add(item.place, "", {"this is no TOML: " + item.detail, whole_file, "Correct this line."});
        });
}

void checkDuplicates(const Library& library, Report& report)
{
    forEach(library, KR_LEFT_OUT_TWICE,
            [&report](const LeftOut& item)
            {
                report.add(item.place, "",
                           {"this key or table is there already, further up", whole_file,
                            "Take one of the two away."});
            });
}

std::vector<std::string> namesOf(const Library& library)
{
    std::vector<std::string> names;
    for (const Shader& shader : library.shaders)
        names.push_back(shader.name);
    return names;
}

void checkShaders(const Library& library, Report& report)
{
    const std::vector<std::string> names = namesOf(library);
    forEach(library, KR_LEFT_OUT_ENTRY,
            [&](const LeftOut& item)
            {
                report.add(item.place, item.entry, "",
                           {"there is no shader " + quoted(item.entry) + suggestion(item.entry, names),
                            "The whole table counts for nothing.",
                            "Correct the name, or install the plug-in that declares it."});
            });
}

void checkParameters(const Library& library, Report& report)
{
    forEach(library, KR_LEFT_OUT_PARAMETER,
            [&](const LeftOut& item)
            {
                std::vector<std::string> names;
                for (const Shader& shader : library.shaders)
                    if (shader.name == item.entry)
                        for (const Parameter& parameter : shader.parameters)
                            names.push_back(parameter.name);
                report.add(item.place, item.entry, item.parameter,
                           {quoted(item.entry) + " has no parameter " + quoted(item.parameter) +
                                suggestion(item.parameter, names),
                            "The whole table counts for nothing.",
                            "Correct the name, or take the table away."});
            });
}

void checkValues(const Library& library, Report& report)
{
    forEach(library, KR_LEFT_OUT_VALUE,
            [&report](const LeftOut& item)
            {
                report.add(item.place, item.entry, item.parameter,
                           {fmt::format("the value of {} is {}", quoted(item.key), item.detail),
                            "The key counts as absent.", "Write a text, a boolean or a number."});
            });
}

void checkMisplaced(const Library& library, Report& report)
{
    forEach(library, KR_LEFT_OUT_MISPLACED,
            [&report](const LeftOut& item)
            {
                report.add(item.place, item.entry, "",
                           {quoted(item.key) + " stands where no metadata can stand",
                            "It counts for nothing.", "Write it below a line " + item.detail + "."});
            });
}

void checkPlugins(const Library& library, Report& report)
{
    for (const std::string& message : library.pluginMessages)
        report.add({nullptr, 0, 0}, "",
                   {printable(message),
                    "What is left out there has no node type, or not all of its parameters.",
                    "See the message; 'kshop env' shows which plug-ins are loaded."});
}

} // namespace

const std::vector<Rule>& fileRules()
{
    static const std::vector<Rule> rules = {
        {"unreadable-file", "error", "a metadata file that cannot be read", nullptr, checkUnreadable},
        {"syntax", "error", "a metadata file that is no TOML", nullptr, checkSyntax},
        {"written-twice", "error", "a key or table that is there twice", nullptr, checkDuplicates},
        {"unknown-shader", "error", "a table of a shader that nobody declares", nullptr, checkShaders},
        {"unknown-parameter", "error", "a table of a parameter that the shader does not have", nullptr,
         checkParameters},
        {"no-metadata-value", "error", "a date, list or other value that is no metadata", nullptr,
         checkValues},
        {"misplaced-value", "error", "a key that stands where no metadata can stand", nullptr,
         checkMisplaced},
        {"renderer-plugin", "error", "what the renderer could not take from its plug-ins and catalogues",
         nullptr, checkPlugins},
    };
    return rules;
}

} // namespace kshop
