// Ramps, and the three arrays that each stands for.
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace kshop
{

namespace
{

bool isRamp(const Extra& extra) { return extra.kind == "ramp_float" || extra.kind == "ramp_rgb"; }

std::vector<std::string> wordsOf(const Extra& ramp) { return splitText(ramp.key->text, ' ', false); }

void checkCount(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
        if (isRamp(extra) && wordsOf(extra).size() != 3)
            report.add(extra.key->place, extra.name,
                       {fmt::format("a ramp names three parameters, and this one {}",
                                    wordsOf(extra).empty() ? "none" : std::to_string(wordsOf(extra).size())),
                        "The ramp stands beside the arrays that it should replace.",
                        "Write \"positions values interpolations\", separated by blanks."});
}

std::vector<std::string> arraysOf(const Shader& shader)
{
    std::vector<std::string> names;
    for (const Parameter& parameter : shader.parameters)
        if (parameter.isArray)
            names.push_back(parameter.name);
    return names;
}

void checkNames(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
    {
        if (!isRamp(extra) || wordsOf(extra).size() != 3)
            continue;
        std::set<std::string> seen;
        for (const std::string& word : wordsOf(extra))
        {
            if (!shader.findParameter(word))
                report.add(
                    extra.key->place, extra.name,
                    {fmt::format("the ramp names {}, which is no parameter of the shader{}", quoted(word),
                                 suggestion(word, arraysOf(shader))),
                     "That part of the ramp stands for nothing, and the array that was meant is still shown.",
                     "Correct the name."});
            else if (!seen.insert(word).second)
                report.add(extra.key->place, extra.name,
                           {fmt::format("the ramp names {} twice", quoted(word)),
                            "Two parts of the ramp are one array, and another one is missing.",
                            "Name the positions, the values and the interpolations."});
        }
    }
}

struct PartRow
{
    const char* what;
    std::vector<int> types; ///< of the array's elements
    const char* typeWords;
    bool mayBeOne; ///< need not be an array
};

/// What the three words of a ramp stand for.
std::vector<PartRow> partsOf(const Extra& ramp)
{
    const PartRow positions = {"positions", {KR_TYPE_FLOAT}, "an array of floats", false};
    const PartRow interpolations = {"interpolations",
                                    {KR_TYPE_INT, KR_TYPE_UINT, KR_TYPE_BYTE, KR_TYPE_ENUM, KR_TYPE_STRING},
                                    "an array of integers or names",
                                    true};
    if (ramp.kind == "ramp_float")
        return {positions, {"values", {KR_TYPE_FLOAT}, "an array of floats", false}, interpolations};
    return {
        positions,
        {"values", {KR_TYPE_RGB, KR_TYPE_RGBA, KR_TYPE_VECTOR, KR_TYPE_POINT}, "an array of colours", false},
        interpolations};
}

/// One interpolation for all keys may stand in place of an array of them.
bool fits(const Parameter& parameter, const PartRow& part)
{
    return (parameter.isArray || part.mayBeOne) &&
           std::find(part.types.begin(), part.types.end(), parameter.type) != part.types.end();
}

void checkTypes(const Shader& shader, Report& report)
{
    for (const Extra& extra : shader.extras)
    {
        const std::vector<std::string> words = wordsOf(extra);
        if (!isRamp(extra) || words.size() != 3)
            continue;
        const std::vector<PartRow> parts = partsOf(extra);
        for (std::size_t i = 0; i < words.size(); ++i)
        {
            const Parameter* parameter = shader.findParameter(words[i]);
            if (parameter && !fits(*parameter, parts[i]))
                report.add(
                    extra.key->place, extra.name,
                    {fmt::format("the ramp's {} are {}, which is not {}", parts[i].what, quoted(words[i]),
                                 parts[i].typeWords),
                     "Its field is gone, and the ramp that stands there instead cannot hold its values.",
                     "Name the positions, the values and the interpolations, in this order."});
        }
    }
}

void checkSeveral(const Shader& shader, Report& report)
{
    std::vector<const Extra*> ramps;
    for (const Extra& extra : shader.extras)
        if (isRamp(extra) && wordsOf(extra).size() == 3)
            ramps.push_back(&extra);
    for (const Extra* ramp : ramps)
        if (ramp != ramps.back())
            report.add(
                ramp->key->place, ramp->name,
                {"the shader has several ramps, and this is not the last one",
                 fmt::format("Scripts that ask for a ramp's arrays (getMetaDataCacheStr) hear of {} only.",
                             quoted(ramps.back()->name)),
                 "Leave one ramp in the shader, or do without such scripts."});
}

} // namespace

const std::vector<Rule>& rampRules()
{
    static const std::vector<Rule> rules = {
        {"ramp-arguments", "error", "a ramp that does not name three parameters", checkCount, nullptr},
        {"ramp-parameter", "error", "a ramp that names what is no parameter, or one twice", checkNames,
         nullptr},
        {"ramp-type", "error", "a ramp over parameters of other types", checkTypes, nullptr},
        {"several-ramps", "warning", "a ramp that is not the shader's last one", checkSeveral, nullptr},
    };
    return rules;
}

} // namespace kshop
