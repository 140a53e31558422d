// The words of "houdini.order".
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace kshop
{

namespace
{

const char* const key_name = "houdini.order";

std::vector<std::string> wordsOf(const Shader& shader)
{
    return splitText(shader.keys.joined(key_name), ' ', false);
}

/// Why a word moves nothing; empty when it names a field.
std::string whyNothing(const Shader& shader, const std::string& word, const std::vector<std::string>& names)
{
    if (std::find(names.begin(), names.end(), word) != names.end())
        return "";
    const Parameter* parameter = shader.findParameter(word);
    if (parameter && !parameter->unseen.empty())
        return fmt::format("names {}, which is not shown: {}", quoted(word), parameter->unseen);
    if (parameter)
        return fmt::format("names {}, for which a ramp stands", quoted(word));
    if (word.find_first_of("\n\t\r,;") != std::string::npos)
        return fmt::format("has the word {}, which names nothing: only blanks separate words", quoted(word));
    return fmt::format("names {}, which is no parameter{}", quoted(word), suggestion(word, names));
}

void checkNames(const Shader& shader, Report& report)
{
    const Key* key = shader.keys.findText(key_name);
    if (!key || !shader.isWanted)
        return;
    const std::vector<std::string> names = fieldNames(shader);
    std::set<std::string> told;
    for (const std::string& word : wordsOf(shader))
    {
        const std::string why = whyNothing(shader, word, names);
        if (!why.empty() && told.insert(word).second)
            report.add(
                key->place, shader.findParameter(word) ? word : "",
                {"the order " + why,
                 "The word moves nothing. A parameter that was meant stands behind all that are listed, and "
                 "folders take others in its stead.",
                 "Correct the word, or take it out."});
    }
}

void checkRepeats(const Shader& shader, Report& report)
{
    const Key* key = shader.keys.findText(key_name);
    if (!key || !shader.isWanted)
        return;
    std::set<std::string> seen, told;
    for (const std::string& word : wordsOf(shader))
        if (!seen.insert(word).second && told.insert(word).second)
            report.add(key->place, word,
                       {fmt::format("the order names {} more than once", quoted(word)),
                        "Only its last place counts.", "Take the others out."});
}

} // namespace

const std::vector<Rule>& orderRules()
{
    static const std::vector<Rule> rules = {
        {"order-unknown", "warning", "a word of \"houdini.order\" that names no field", checkNames, nullptr},
        {"order-repeated", "warning", "a word that \"houdini.order\" has more than once", checkRepeats,
         nullptr},
    };
    return rules;
}

} // namespace kshop
