#include "parameter_words.h"

#include "text.h"

#include <CH/CH_ExprLanguage.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Range.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace kshop
{

namespace
{

/// How a default reads.
enum class DefaultStyle
{
    none,
    numbers,
    text,
    onOff,
    instances,
    points
};

struct KindRow
{
    const char* type;
    const char* word;
    DefaultStyle defaults;
};

// A type without a row is shown by the name of its constant.
const KindRow kind_rows[] = {
    {"PRM_INT", "integer", DefaultStyle::numbers},
    {"PRM_FLT", "float", DefaultStyle::numbers},
    {"PRM_RGB", "colour", DefaultStyle::numbers},
    {"PRM_RGBA", "colour with alpha", DefaultStyle::numbers},
    {"PRM_XYZ", "vector", DefaultStyle::numbers},
    {"PRM_TOGGLE", "check box", DefaultStyle::onOff},
    {"PRM_JOINED_TOGGLE", "joined check box", DefaultStyle::onOff},
    {"PRM_BUTTONSTRIP", "button strip", DefaultStyle::numbers},
    {"PRM_CALLBACK", "button", DefaultStyle::none},
    {"PRM_SWITCHER", "folder", DefaultStyle::none},
    {"PRM_STRING", "text", DefaultStyle::text},
    {"PRM_FILE", "file", DefaultStyle::text},
    {"PRM_PICFILE", "image file", DefaultStyle::text},
    {"PRM_LABEL", "read-only text", DefaultStyle::text},
    {"PRM_HEADING", "heading", DefaultStyle::none},
    {"PRM_SEPARATOR", "separator", DefaultStyle::none},
    {"PRM_MULTITYPE_LIST", "list", DefaultStyle::instances},
    {"PRM_MULTITYPE_RAMP_FLT", "float ramp", DefaultStyle::points},
    {"PRM_MULTITYPE_RAMP_RGB", "colour ramp", DefaultStyle::points},
};

const KindRow* findKind(const TemplateFacts& facts)
{
    const auto* row = std::find_if(std::begin(kind_rows), std::end(kind_rows),
                                   [&facts](const KindRow& r)
                                   { return facts.type && std::strcmp(r.type, facts.type) == 0; });
    return row == std::end(kind_rows) ? nullptr : row;
}

struct MenuTypeRow
{
    int type;
    const char* word;
};

const MenuTypeRow menu_type_rows[] = {
    {PRM_CHOICELIST_REPLACE, "choosing replaces the text"},
    {PRM_CHOICELIST_TOGGLE, "choosing switches an item on or off"},
    {PRM_CHOICELIST_APPEND, "choosing appends"},
    {PRM_CHOICELIST_WILD, "choosing puts a pattern"},
    {PRM_CHOICELIST_EXCLUSIVE, "one of these"},
    {PRM_CHOICELIST_SINGLE, "one of these"},
};

} // namespace

std::string menuTypeText(int type)
{
    for (const MenuTypeRow& row : menu_type_rows)
        if (row.type == type)
            return row.word;
    return fmt::format("menu type {}", type);
}

namespace
{

} // namespace

std::string kindText(const TemplateFacts& facts)
{
    const KindRow* row = findKind(facts);
    if (!row)
        return facts.type ? facts.type : "nothing";
    const bool counted = row->defaults == DefaultStyle::numbers && facts.size > 1 &&
                         (std::strcmp(row->word, "float") == 0 || std::strcmp(row->word, "integer") == 0);
    return counted ? fmt::format("{} x {}", facts.size, row->word) : row->word;
}

namespace
{

bool isExpression(const DefaultFacts& value) { return value.text && value.meaning != CH_STRING_LITERAL; }

std::string expressionText(const DefaultFacts& value)
{
    const char* language = value.meaning == CH_PYTHON_EXPRESSION ? "python" : "hscript";
    return fmt::format("= {} ({})", printable(*value.text), language);
}

std::string valueText(const DefaultFacts& value, DefaultStyle style)
{
    if (isExpression(value))
        return expressionText(value);
    if (value.text || style == DefaultStyle::text)
        return quoted(value.text.value_or(""));
    if (style == DefaultStyle::onOff)
        return value.value != 0 ? "on" : "off";
    return numberText(value.value);
}

} // namespace

std::string defaultText(const TemplateFacts& facts)
{
    const KindRow* row = findKind(facts);
    const DefaultStyle style = row ? row->defaults : DefaultStyle::numbers;
    if (style == DefaultStyle::none || facts.defaults.empty())
        return "";
    if (style == DefaultStyle::instances)
        return numberText(facts.defaults[0].value) + " at first";
    if (style == DefaultStyle::points)
        return numberText(facts.defaults[0].value) + " points";
    std::vector<std::string> values;
    for (const DefaultFacts& value : facts.defaults)
        values.push_back(valueText(value, style));
    return joined(values, " ");
}

namespace
{

bool isHard(int flag) { return (flag & PRM_RANGE_PRM) != 0; }

/// One end of a range; empty for a free end.
std::string endText(int flag, double value, const char* hard, const char* soft)
{
    if (flag == PRM_RANGE_FREE)
        return "";
    return (isHard(flag) ? hard : soft) + numberText(value);
}

} // namespace

std::string rangeText(const TemplateFacts& facts)
{
    if (!facts.range)
        return "";
    const RangeFacts& range = *facts.range;
    const bool bothEnds = range.minFlag != PRM_RANGE_FREE && range.maxFlag != PRM_RANGE_FREE;
    if (bothEnds && isHard(range.minFlag) == isHard(range.maxFlag))
        return fmt::format("{}{} to {}", isHard(range.minFlag) ? "" : "slider ", numberText(range.min),
                           numberText(range.max));
    const std::string low = endText(range.minFlag, range.min, "at least ", "slider from ");
    const std::string high = endText(range.maxFlag, range.max, "at most ", "slider to ");
    return bothEnds ? low + ", " + high : low + high;
}

} // namespace kshop
