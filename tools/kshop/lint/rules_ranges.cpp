// Bounds, sliders, and the defaults between them.
#include "rules.h"

#include "../text.h"

#include <PRM/PRM_Range.h>

#include <fmt/format.h>

#include <cmath>

namespace kshop
{

namespace
{

const double largest_byte = 255;

/// The place of the first of these keys that there is, else of the table.
const KtPlace& placeOf(const Parameter& parameter, std::initializer_list<const char*> keys)
{
    for (const char* key : keys)
        if (const Key* found = parameter.keys.find(key))
            return found->place;
    return parameter.place;
}

/// A number key that means a bound: not NaN.
const Key* boundOf(const Parameter& parameter, const char* name)
{
    const Key* key = parameter.keys.find(name);
    return key && key->type == KR_TYPE_FLOAT && !std::isnan(key->number) ? key : nullptr;
}

bool isInverted(const Key* low, const Key* high) { return low && high && low->number > high->number; }

void checkHard(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        const Key* low = boundOf(parameter, "min");
        const Key* high = boundOf(parameter, "max");
        if (isInverted(low, high))
            report.add(
                low->place, parameter.name,
                {fmt::format("\"min\" is {} and \"max\" is {}", numberText(low->number),
                             numberText(high->number)),
                 "No value is between them: the field cannot hold what is typed, and the slider is inverted.",
                 "Exchange or correct the two."});
    }
}

/// Has a range: that of a strip of buttons says nothing, and what is never shown needs none.
bool hasRange(const Parameter& parameter)
{
    return parameter.field && parameter.field->range && !parameter.field->menu && !parameter.field->invisible;
}

std::string endText(const Parameter& parameter, const char* hard, const char* soft, double value)
{
    if (boundOf(parameter, hard))
        return fmt::format("{} by \"{}\"", numberText(value), hard);
    if (boundOf(parameter, soft))
        return fmt::format("{} by \"{}\"", numberText(value), soft);
    return numberText(value) + ", as nothing is said";
}

/// Fields of several components keep a range, but are drawn without a slider.
bool hasSlider(const Parameter& parameter) { return hasRange(parameter) && parameter.field->size == 1; }

std::string effectOfEnds(const Parameter& parameter, bool inverted)
{
    if (!hasSlider(parameter))
        return "The field has no slider of its own, but its range is empty.";
    return inverted ? "It is inverted: dragging it to the right makes the value smaller."
                    : "It has no length: dragging it changes nothing.";
}

void checkEffective(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        if (!hasRange(parameter) || isInverted(boundOf(parameter, "min"), boundOf(parameter, "max")))
            continue;
        const RangeFacts& range = *parameter.field->range;
        if (!(range.min >= range.max))
            continue;
        report.add(placeOf(parameter, {"min", "softmin", "max", "softmax"}), parameter.name,
                   {fmt::format("the {} goes from {} to {}", hasSlider(parameter) ? "slider" : "range",
                                endText(parameter, "min", "softmin", range.min),
                                endText(parameter, "max", "softmax", range.max)),
                    effectOfEnds(parameter, range.min > range.max),
                    "Write \"softmin\" and \"softmax\" that fit the bounds."});
    }
}

void checkClamped(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        const bool isByte = parameter.type == KR_TYPE_BYTE;
        const Key* high = boundOf(parameter, "max");
        if (isByte && high && high->number > largest_byte)
            report.add(high->place, parameter.name,
                       {fmt::format("\"max\" is {}, and a byte ends at 255", numberText(high->number)),
                        "The bound is 255.", "Write 255 or less."});
        const Key* low = boundOf(parameter, "min");
        if ((isByte || parameter.type == KR_TYPE_UINT) && low && low->number < 0)
            report.add(low->place, parameter.name,
                       {fmt::format("\"min\" is {}, and {} begins at 0", numberText(low->number),
                                    isByte ? "a byte" : "an unsigned integer"),
                        "The bound is 0.", "Write 0 or more."});
    }
}

/// The first component of the default that is outside of the range, as far as an end of it has one of these flags;
/// null when all are inside.
const DefaultFacts* firstOutside(const TemplateFacts& field, int flag)
{
    for (const DefaultFacts& one : field.defaults)
    {
        const bool below = field.range->minFlag == flag && one.value < field.range->min;
        const bool above = field.range->maxFlag == flag && one.value > field.range->max;
        if (below || above)
            return &one;
    }
    return nullptr;
}

bool hasPlainDefault(const Parameter& parameter)
{
    return hasRange(parameter) && parameter.value && parameter.keys.joined("houdini.expression").empty() &&
           parameter.field->range->min <= parameter.field->range->max;
}

std::string rangeText(const RangeFacts& range)
{
    return fmt::format("{} to {}", numberText(range.min), numberText(range.max));
}

void checkHardDefault(const Shader& shader, Report& report)
{
    for (const Parameter& parameter : shader.parameters)
    {
        if (!hasPlainDefault(parameter))
            continue;
        const DefaultFacts* outside = firstOutside(*parameter.field, PRM_RANGE_RESTRICTED);
        if (outside)
            report.add(placeOf(parameter, {"min", "max"}), parameter.name,
                       {fmt::format("the default, {}, is outside of the bounds, {}",
                                    numberText(outside->value), rangeText(*parameter.field->range)),
                        "Once the value is changed, the default cannot be typed again.",
                        "Widen the bounds, or have the default changed where the shader is declared."});
    }
}

/// Folded: a library without any metadata has this for every other parameter.
void checkSoftDefault(const Shader& shader, Report& report)
{
    std::vector<std::string> names;
    KtPlace place = shader.place;
    for (const Parameter& parameter : shader.parameters)
        if (hasSlider(parameter) && hasPlainDefault(parameter) &&
            !firstOutside(*parameter.field, PRM_RANGE_RESTRICTED) &&
            firstOutside(*parameter.field, PRM_RANGE_UI))
        {
            if (names.empty())
                place = placeOf(parameter, {"softmin", "softmax", "min", "max"});
            names.push_back(parameter.name);
        }
    if (!names.empty())
        report.add(place, names.size() == 1 ? names[0] : "",
                   {fmt::format("the slider does not reach the default of {}", listed(names)),
                    "It stands at its end, and the first touch makes the value jump.",
                    "Write \"softmin\" and \"softmax\" around the default; without them a slider goes from 0 "
                    "to 1."});
}

} // namespace

const std::vector<Rule>& rangeRules()
{
    static const std::vector<Rule> rules = {
        {"min-above-max", "error", "a hard minimum above the hard maximum", checkHard, nullptr},
        {"slider-range", "warning", "a slider without length, or an inverted one", checkEffective, nullptr},
        {"type-range", "warning", "a bound that the type does not have", checkClamped, nullptr},
        {"default-range", "warning", "a default outside of the hard bounds", checkHardDefault, nullptr},
        {"default-slider", "advice", "a default that the slider does not reach", checkSoftDefault, nullptr},
    };
    return rules;
}

} // namespace kshop
