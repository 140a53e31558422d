// What is no mistake, but what artists miss. One finding for each shader, naming the parameters.
#include "layout.h"
#include "rules.h"

#include <fmt/format.h>

namespace kshop
{

namespace
{

/// A shader with no more fields than this is clear without folders.
const std::size_t enough_without_folders = 8;

/// Names of fields that the shader declares and that lack a text; invisible ones need none.
std::vector<std::string> thoseWithout(const Shader& shader, const char* key)
{
    std::vector<std::string> names;
    for (const Parameter& parameter : shader.parameters)
        if (parameter.field && !parameter.keys.isSet("houdini.invisible") &&
            parameter.keys.joined(key).empty())
            names.push_back(parameter.name);
    return names;
}

void tell(const Shader& shader, const std::vector<std::string>& names, const char* what, const char* effect,
          const char* remedy, Report& report)
{
    if (!names.empty())
        report.add(shader.place, names.size() == 1 ? names[0] : "",
                   {fmt::format("{}: {}", what, listed(names)), effect, remedy});
}

void checkLabels(const Shader& shader, Report& report)
{
    tell(shader, thoseWithout(shader, "houdini.label"), "without a label",
         "The label is made from the parameter's name.", "Write a \"houdini.label\" for each.", report);
}

void checkHelp(const Shader& shader, Report& report)
{
    tell(shader, thoseWithout(shader, "desc"), "without help",
         "Resting the mouse on the field tells nothing.", "Write a \"desc\" for each.", report);
}

void checkFolders(const Shader& shader, Report& report)
{
    const Layout layout(shader);
    if (layout.folders.empty() && layout.before.size() <= enough_without_folders)
        return;
    std::vector<std::string> names;
    for (const std::string& name : layout.before)
        if (shader.findParameter(name))
            names.push_back(name);
    tell(shader, names, "in no folder", "They are shown above all tabs, or in one long list.",
         "Make a \"houdini.parm.folder.NAME\", or count them in.", report);
}

} // namespace

const std::vector<Rule>& adviceRules()
{
    static const std::vector<Rule> rules = {
        {"no-label", "advice", "parameters without a label", checkLabels, nullptr},
        {"no-help", "advice", "parameters without help", checkHelp, nullptr},
        {"no-folder", "advice", "parameters in no folder", checkFolders, nullptr},
    };
    return rules;
}

} // namespace kshop
