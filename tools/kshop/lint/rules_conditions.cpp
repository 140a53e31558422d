// "houdini.disable_when" and "houdini.hide_when", as the host reads them.
#include "rules.h"

#include "../text.h"

#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Conditional.h>
#include <UT/UT_String.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <iterator>
#include <optional>

namespace kshop
{

namespace
{

const char* const condition_keys[] = {"houdini.disable_when", "houdini.hide_when"};

typedef std::function<void(const Parameter&, const Key&, const std::string& text)> Visitor;

void forEachCondition(const Shader& shader, const Visitor& visit)
{
    for (const Parameter& parameter : shader.parameters)
        for (const char* name : condition_keys)
            if (const Key* key = parameter.keys.findText(name))
                if (const std::string text = parameter.keys.joined(name); !text.empty())
                    visit(parameter, *key, text);
}

const char* neverWord(const Key& key)
{
    return key.name == "houdini.hide_when" ? "The field is never hidden." : "The field is never greyed.";
}

void checkSyntax(const Shader& shader, Report& report)
{
    forEachCondition(shader,
                     [&report](const Parameter& parameter, const Key& key, const std::string& text)
                     {
                         PRM_Conditional condition;
                         UT_String problem;
                         if (condition.setListFromString(text.c_str(), problem))
                             return;
                         report.add(
                             key.place, parameter.name,
                             {"the condition cannot be understood: " + problem.toStdString(), neverWord(key),
                              "Write it like \"{ mode == 1 size > 0.5 } { on == 1 }\": all of a pair of "
                              "braces, or all of another."});
                     });
}

/// What is between the parentheses of "isparm(name)", "hasinput(0)" and "ninputs()"; false for a parameter.
bool isCall(const std::string& subject, const char* function, std::string& argument)
{
    const std::string start = std::string(function) + "(";
    if (subject.compare(0, start.size(), start) != 0 || subject.back() != ')')
        return false;
    argument = subject.substr(start.size(), subject.size() - start.size() - 1);
    return true;
}

/// The parameter that a term is about; empty when it is about none.
std::string parameterOf(const PRM_ConditionalTerm& term)
{
    std::string argument;
    if (isCall(term.subject, "ninputs", argument) || isCall(term.subject, "hasinput", argument))
        return "";
    return isCall(term.subject, "isparm", argument) ? argument : term.subject;
}

bool isSuffix(const std::string& rest, const TemplateFacts& field)
{
    if (field.isRamp)
        return true; // the channels of its keys
    if (field.size < 2 || rest.empty())
        return rest.empty();
    return rest.find_first_not_of("0123456789") == std::string::npos ||
           (rest.size() == 1 && std::string("xyzwrgba").find(rest) != std::string::npos);
}

bool isInstance(const std::string& subject, const std::string& token)
{
    const std::size_t number = token.find('#');
    return number != std::string::npos && subject.compare(0, number, token, 0, number) == 0;
}

/// The field that a name means: by its token, a component's, or an instance's. Null when there is none.
const TemplateFacts* findField(const std::vector<TemplateFacts>& templates, const std::string& subject)
{
    for (const TemplateFacts& facts : templates)
        if (facts.token == subject)
            return &facts;
    for (const TemplateFacts& facts : templates)
    {
        const bool starts = !facts.token.empty() && subject.compare(0, facts.token.size(), facts.token) == 0;
        if (starts && isSuffix(subject.substr(facts.token.size()), facts))
            return &facts;
        for (const TemplateFacts& child : facts.children.value_or(std::vector<TemplateFacts>()))
            if (isInstance(subject, child.token))
                return &facts;
    }
    return nullptr;
}

/// Why a name means no field.
std::string whyNone(const Shader& shader, const std::string& name)
{
    const Parameter* parameter = shader.findParameter(name);
    if (parameter && !parameter->unseen.empty())
        return fmt::format("the condition asks for {}, which is not shown: {}", quoted(name),
                           parameter->unseen);
    if (parameter)
        return fmt::format("the condition asks for {}, which has no field", quoted(name));
    return fmt::format("the condition asks for {}, which is no parameter{}", quoted(name),
                       suggestion(name, fieldNames(shader)));
}

/// Calls for each term of each condition whose text can be understood.
void forEachTerm(const Shader& shader,
                 const std::function<void(const Parameter&, const Key&, const PRM_ConditionalTerm&)>& visit)
{
    if (!shader.templates)
        return;
    forEachCondition(shader,
                     [&](const Parameter& parameter, const Key& key, const std::string& text)
                     {
                         PRM_Conditional condition;
                         UT_String problem;
                         condition.setListFromString(text.c_str(), problem);
                         for (int i = 0; i < condition.entries(); ++i)
                             visit(parameter, key, condition(i));
                     });
}

void checkNames(const Shader& shader, Report& report)
{
    forEachTerm(shader,
                [&](const Parameter& parameter, const Key& key, const PRM_ConditionalTerm& term)
                {
                    const std::string name = parameterOf(term);
                    if (name.empty() || findField(*shader.templates, name))
                        return;
                    report.add(key.place, parameter.name,
                               {whyNone(shader, name),
                                "That comparison never holds, and so its pair of braces does not either.",
                                "Name a parameter of this shader, as it is declared."});
                });
}

bool isNumber(const std::string& text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

bool isComparison(PRM_ConditionalOperator op) { return op == PRM_CONDOP_EQ || op == PRM_CONDOP_NE; }

bool isClosedMenu(const TemplateFacts& field)
{
    return field.menu && !field.menu->scripted && !field.menu->items.empty() &&
           (field.menu->type == PRM_CHOICELIST_SINGLE || field.menu->type == PRM_CHOICELIST_EXCLUSIVE);
}

bool isToggle(const TemplateFacts& field)
{
    return field.type && std::string(field.type).find("TOGGLE") != std::string::npos;
}

bool holdsNumbers(const TemplateFacts& field)
{
    static const char* const types[] = {"PRM_FLT", "PRM_INT", "PRM_RGB", "PRM_XYZ"};
    return field.type && !field.menu && !field.children &&
           std::any_of(std::begin(types), std::end(types),
                       [&field](const char* type)
                       { return std::string(field.type).compare(0, std::strlen(type), type) == 0; });
}

/// What a field can never be compared with, and what to write.
struct Mismatch
{
    std::string what;
    std::string remedy;
};

std::optional<Mismatch> mismatchWithMenu(const TemplateFacts& field, const PRM_ConditionalTerm& term)
{
    std::vector<std::string> tokens;
    for (const auto& [token, label] : field.menu->items)
        if (std::find(tokens.begin(), tokens.end(), token) == tokens.end())
            tokens.push_back(token);
    if (field.token != term.subject || std::find(tokens.begin(), tokens.end(), term.value) != tokens.end())
        return std::nullopt;
    return Mismatch{"which is not in its menu" + suggestion(term.value, tokens),
                    "Write one of the tokens: " + listed(tokens) + "."};
}

/// Of a text that is no number; numbers are compared with anything.
std::optional<Mismatch> mismatch(const TemplateFacts& field, const PRM_ConditionalTerm& term)
{
    if (isClosedMenu(field))
        return mismatchWithMenu(field, term);
    const bool isToggleWord = term.value == "on" || term.value == "off"; // which the host takes, too
    if (isToggle(field) && !isToggleWord)
        return Mismatch{"and a check box is 0 or 1", "Write 1 for on, 0 for off."};
    if (holdsNumbers(field))
        return Mismatch{"and the field holds a number", "Write a number, or name the field that is meant."};
    return std::nullopt;
}

/// A text that is no number, nor becomes one in an instance of a list.
bool isWord(const std::string& value)
{
    const bool hasSign = !value.empty() && value.front() == '+';
    return !isNumber(hasSign ? value.substr(1) : value) && value.find('#') == std::string::npos;
}

void checkValues(const Shader& shader, Report& report)
{
    forEachTerm(shader,
                [&](const Parameter& parameter, const Key& key, const PRM_ConditionalTerm& term)
                {
                    // A call is about what is there, not about the field's value.
                    const TemplateFacts* field = findField(*shader.templates, term.subject);
                    if (!field || !isComparison(term.op) || !isWord(term.value))
                        return;
                    const std::optional<Mismatch> found = mismatch(*field, term);
                    if (!found)
                        return;
                    report.add(key.place, parameter.name,
                               {fmt::format("the condition compares {} with {}, {}", quoted(term.subject),
                                            quoted(term.value), found->what),
                                term.op == PRM_CONDOP_EQ ? "That comparison never holds."
                                                         : "That comparison always holds.",
                                found->remedy});
                });
}

} // namespace

const std::vector<Rule>& conditionRules()
{
    static const std::vector<Rule> rules = {
        {"condition-syntax", "error", "a condition that cannot be understood", checkSyntax, nullptr},
        {"condition-parameter", "error", "a condition that names no parameter", checkNames, nullptr},
        {"condition-value", "warning", "a condition that compares a field with what it can never be",
         checkValues, nullptr},
    };
    return rules;
}

} // namespace kshop
