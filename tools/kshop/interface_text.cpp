#include "interface_text.h"

#include <CH/CH_ExprLanguage.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Range.h>
#include <VOP/VOP_Types.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

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

std::string menuTypeText(int type)
{
    for (const MenuTypeRow& row : menu_type_rows)
        if (row.type == type)
            return row.word;
    return fmt::format("menu type {}", type);
}

bool isFolder(const TemplateFacts& facts)
{
    return facts.type && std::strcmp(facts.type, "PRM_SWITCHER") == 0;
}

std::string kindText(const TemplateFacts& facts)
{
    const KindRow* row = findKind(facts);
    if (!row)
        return facts.type ? facts.type : "nothing";
    const bool counted = row->defaults == DefaultStyle::numbers && facts.size > 1 &&
                         (std::strcmp(row->word, "float") == 0 || std::strcmp(row->word, "integer") == 0);
    return counted ? fmt::format("{} x {}", facts.size, row->word) : row->word;
}

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

bool isHard(int flag) { return (flag & PRM_RANGE_PRM) != 0; }

/// One end of a range; empty for a free end.
std::string endText(int flag, double value, const char* hard, const char* soft)
{
    if (flag == PRM_RANGE_FREE)
        return "";
    return (isHard(flag) ? hard : soft) + numberText(value);
}

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

/// What stands below a parameter's row, one line each.
std::vector<std::string> menuLines(const MenuFacts& menu)
{
    if (menu.scripted)
        return {fmt::format("menu by {}: {}", menu.language, printable(menu.script))};
    std::vector<std::string> items;
    for (const auto& [token, label] : menu.items)
        items.push_back(token == label ? printable(token)
                                       : fmt::format("{} ({})", printable(token), printable(label)));
    return {fmt::format("{}: {}", menuTypeText(menu.type), joined(items, ", "))};
}

std::vector<std::string> spareLines(const SpareFacts& spare)
{
    std::vector<std::string> lines;
    for (const auto& [token, value] : spare.values)
    {
        const std::string script =
            token == "script_callback" ? fmt::format(" ({})", spare.callbackLanguage) : "";
        lines.push_back(fmt::format("{}{}: {}", printable(token), script, printable(value)));
    }
    return lines;
}

void append(std::vector<std::string>& lines, const std::vector<std::string>& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

void appendText(std::vector<std::string>& lines, const char* title, const std::optional<std::string>& text)
{
    if (text)
        lines.push_back(title + printable(*text));
}

std::vector<std::string> detailLines(const TemplateFacts& facts)
{
    std::vector<std::string> lines;
    appendText(lines, "", facts.help);
    if (facts.menu)
        append(lines, menuLines(*facts.menu));
    appendText(lines, "disabled when ", facts.disableWhen);
    appendText(lines, "hidden when ", facts.hideWhen);
    if (facts.invisible)
        lines.emplace_back("never shown");
    if (facts.joinNext)
        lines.emplace_back("on one row with the next");
    if (facts.spare && !isFolder(facts))
        append(lines, spareLines(*facts.spare));
    return lines;
}

/// A row of the parameter list, and what stands below it.
struct Line
{
    std::size_t depth;
    std::array<std::string, 5> cells; ///< label, token, kind, default, range
    std::vector<std::string> details;
};

/// Puts a list of templates into rows, what a folder holds one level deeper than its tab.
class ParameterLines
{
public:
    explicit ParameterLines(const std::vector<TemplateFacts>& list) { addEntries(list, 0, list.size(), 0); }
    const std::vector<Line>& lines() const { return m_lines; }

private:
    /// Adds `count` entries from `index` on. A folder is one entry, whatever it holds. Returns the next index.
    std::size_t addEntries(const std::vector<TemplateFacts>& list, std::size_t index, std::size_t count,
                           std::size_t depth)
    {
        for (; count > 0 && index < list.size(); --count)
        {
            const TemplateFacts& facts = list[index++];
            if (isFolder(facts))
                index = addFolder(facts, list, index, depth);
            else
                addParameter(facts, depth);
        }
        return index;
    }

    std::size_t addFolder(const TemplateFacts& folder, const std::vector<TemplateFacts>& list,
                          std::size_t index, std::size_t depth)
    {
        for (const DefaultFacts& tab : folder.defaults)
        {
            const std::string title = "[" + printable(tab.text.value_or("")) + "]";
            m_lines.push_back(
                {depth, {title, printable(folder.token), "folder", "", ""}, detailLines(folder)});
            const double held = std::clamp(tab.value, 0.0, static_cast<double>(list.size()));
            index = addEntries(list, index, static_cast<std::size_t>(held), depth + 1);
        }
        return index;
    }

    void addParameter(const TemplateFacts& facts, std::size_t depth)
    {
        m_lines.push_back({depth,
                           {printable(facts.label), printable(facts.token), kindText(facts),
                            defaultText(facts), rangeText(facts)},
                           detailLines(facts)});
        if (facts.children)
            addEntries(*facts.children, 0, facts.children->size(), depth + 1);
    }

    std::vector<Line> m_lines;
};

const std::size_t indent_step = 2;
// A cell that is wider than this does not push the column of the others.
const std::size_t widest_column = 32;

std::array<std::size_t, 5> columnWidths(const std::vector<Line>& lines)
{
    std::array<std::size_t, 5> widths = {};
    for (const Line& line : lines)
        for (std::size_t i = 0; i < line.cells.size(); ++i)
        {
            const std::size_t needed = width(line.cells[i]) + (i == 0 ? indent_step * line.depth : 0);
            widths[i] = std::max(widths[i], std::min(needed, widest_column));
        }
    return widths;
}

std::string lineText(const Line& line, const std::array<std::size_t, 5>& widths, const Style& style)
{
    const std::size_t indent = indent_step * (line.depth + 2);
    const std::size_t labelWidth = widths[0] - std::min(widths[0], indent_step * line.depth);
    std::string text = std::string(indent, ' ') + style.title(padded(line.cells[0], labelWidth)) + "  " +
                       style.faint(padded(line.cells[1], widths[1]));
    std::string rest;
    for (std::size_t i = 2; i < line.cells.size(); ++i)
        rest += "  " + padded(line.cells[i], widths[i]);
    rest.erase(rest.find_last_not_of(' ') + 1);
    text += rest + "\n";
    for (const std::string& detail : line.details)
        text += std::string(indent + 2 * indent_step, ' ') + style.faint(detail) + "\n";
    return text;
}

std::string parametersText(const std::vector<TemplateFacts>& templates, const Style& style)
{
    if (templates.empty())
        return "  No parameters\n";
    const std::vector<Line> lines = ParameterLines(templates).lines();
    const std::array<std::size_t, 5> widths = columnWidths(lines);
    std::string text = "  Parameters\n";
    for (const Line& line : lines)
        text += lineText(line, widths, style);
    return text;
}

std::string connectorsText(const char* title, const std::vector<ConnectorFacts>& connectors)
{
    std::vector<std::vector<std::string>> rows;
    rows.reserve(connectors.size());
    for (const ConnectorFacts& connector : connectors)
        rows.push_back(
            {std::to_string(rows.size()), printable(connector.label), printable(connector.name),
             fmt::format("{} ({})", VOPgetTypeName(static_cast<VOP_Type>(connector.type)), connector.type)});
    return fmt::format("  {}\n", countText(connectors.size(), title)) + tableText(rows, "    ");
}

std::string factsText(const OperatorFacts& facts)
{
    std::vector<std::vector<std::string>> rows;
    if (facts.tabMenu)
        rows.push_back({"tab menu", printable(*facts.tabMenu)});
    rows.push_back({"icon", printable(facts.icon)});
    if (facts.helpUrl)
        rows.push_back({"help", printable(*facts.helpUrl)});
    rows.push_back({"class", printable(facts.className)});
    if (facts.vopnetMask)
        rows.push_back({"lives in", printable(*facts.vopnetMask)});
    return tableText(rows, "  ");
}

} // namespace

std::string interfaceText(const OperatorFacts& facts, const Style& style)
{
    std::string text =
        style.title(printable(facts.name)) + "  " + quoted(facts.label) + "\n" + factsText(facts);
    text += parametersText(facts.templates, style);
    if (!facts.connectorsKnown)
        return text + "  Connectors unknown: no network admits a node of this type\n";
    return text + connectorsText("input", facts.inputs) + connectorsText("output", facts.outputs);
}

} // namespace kshop
