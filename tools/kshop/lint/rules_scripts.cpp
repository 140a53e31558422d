// Callbacks, menu scripts and expressions.
#include "rules.h"

#include "../text.h"

#include <CH/CH_Expression.h>
#include <standin/python.h>

#include <fmt/format.h>

namespace kshop
{

namespace
{

const std::string prefix_python = "python:";
const std::string prefix_hscript = "hscript:";

bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

struct Script
{
    const Key& key;
    std::string parameter;
    std::string text;
};

/// The callback of an extra parameter: its sub-key, or the argument of a button.
const Key* callbackKeyOf(const Shader& shader, const Extra& extra)
{
    const Key* key = shader.keys.findText(extra.key->name + ".callback");
    if (key && !shader.keys.joined(key->name).empty())
        return key;
    return extra.kind == "button" ? extra.key : nullptr;
}

std::vector<Script> callbacksOf(const Shader& shader)
{
    std::vector<Script> scripts;
    for (const Parameter& parameter : shader.parameters)
        if (const Key* key = parameter.keys.findText("houdini.callback"))
            scripts.push_back({*key, parameter.name, parameter.keys.joined(key->name)});
    for (const Extra& extra : shader.extras)
        if (const Key* key = callbackKeyOf(shader, extra))
            scripts.push_back(
                {*key, extra.name, key == extra.key ? key->text : shader.keys.joined(key->name)});
    return scripts;
}

/// Scripts of menus; `\n` in the text is a line break.
std::vector<Script> pythonMenusOf(const Shader& shader)
{
    std::vector<Script> scripts;
    for (const Parameter& parameter : shader.parameters)
    {
        const std::vector<std::string> type = splitText(parameter.keys.joined("houdini.type"), ':', false);
        const Key* key = parameter.keys.findText("houdini.menu_script");
        if (!key || type.size() < 3 || type[0] != "menu" || type[2] != "python")
            continue;
        std::string text = parameter.keys.joined(key->name);
        for (std::size_t at = 0; (at = text.find("\\n", at)) != std::string::npos; ++at)
            text.replace(at, 2, "\n");
        scripts.push_back({*key, parameter.name, text});
    }
    return scripts;
}

std::vector<Script> expressionsOf(const Shader& shader)
{
    std::vector<Script> scripts;
    for (const Parameter& parameter : shader.parameters)
        if (const Key* key = parameter.keys.findText("houdini.expression"))
            scripts.push_back({*key, parameter.name, parameter.keys.joined(key->name)});
    return scripts;
}

void checkLanguage(const Shader& shader, Report& report)
{
    for (const Script& script : callbacksOf(shader))
        if (!script.text.empty() && !startsWith(script.text, prefix_python) &&
            !startsWith(script.text, prefix_hscript))
            report.add(script.key.place, script.parameter,
                       {"the callback does not say its language", "It is run as hscript.",
                        "Write \"python:\" or \"hscript:\" in front."});
}

void checkPrefix(const Shader& shader, Report& report)
{
    for (const Script& script : expressionsOf(shader))
        if (startsWith(script.text, prefix_hscript))
            report.add(
                script.key.place, script.parameter,
                {"the expression begins with \"hscript:\", which only callbacks know",
                 "The word is taken for a part of the expression, which then has no value: the field is 0 or "
                 "empty.",
                 "Take \"hscript:\" out; an expression without \"python:\" is the host's own."});
}

void checkExpressions(const Shader& shader, Report& report)
{
    for (const Script& script : expressionsOf(shader))
    {
        if (startsWith(script.text, prefix_python) || startsWith(script.text, prefix_hscript))
            continue;
        const CH_Expression expression(script.text);
        if (!expression.parseError().empty())
            report.add(
                script.key.place, script.parameter,
                {"the expression cannot be understood: " + expression.parseError(),
                 "Where it cannot be, the field is 0 or empty. The host knows more of its language than this "
                 "check does.",
                 "Correct it, or write \"python:\" in front of an expression in Python."});
    }
}

void compile(const Script& script, const std::string& text, standin::PythonUse use, const char* what,
             const char* effect, Report& report)
{
    standin::PythonProblem problem;
    if (text.empty() || standin::compilesAsPython(text, use, problem))
        return;
    const std::string line = problem.line > 0 ? fmt::format(", in line {} of it", problem.line) : "";
    report.add(
        script.key.place, script.parameter,
        {fmt::format("under Python 3 the {} does not compile{}: {}", what, line, printable(problem.message)),
         fmt::format("{} The licensed host has Python 2.7, which may take it.", effect),
         "Write it so that both take it, as in print(\"text\")."});
}

void checkPython(const Shader& shader, Report& report)
{
    for (const Script& script : callbacksOf(shader))
        if (startsWith(script.text, prefix_python))
            compile(script, script.text.substr(prefix_python.size()), standin::PythonUse::Statements,
                    "callback", "It does nothing but show a traceback.", report);
    for (const Script& script : pythonMenusOf(shader))
        compile(script, script.text, standin::PythonUse::Function, "menu script", "The menu is empty.",
                report);
    for (const Script& script : expressionsOf(shader))
        if (startsWith(script.text, prefix_python))
            compile(script, script.text.substr(prefix_python.size()), standin::PythonUse::Function,
                    "expression", "The field is 0 or empty.", report);
}

} // namespace

const std::vector<Rule>& scriptRules()
{
    static const std::vector<Rule> rules = {
        {"callback-language", "warning", "a callback that does not say its language", checkLanguage, nullptr},
        {"expression-prefix", "error", "\"hscript:\" in front of an expression", checkPrefix, nullptr},
        {"expression-syntax", "advice", "an expression that cannot be understood", checkExpressions, nullptr},
        {"python-syntax", "advice", "a script that does not compile under Python 3", checkPython, nullptr},
    };
    return rules;
}

} // namespace kshop
