#include "interface_text.h"

#include "folder_walk.h"
#include "parameter_words.h"

#include <VOP/VOP_Types.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace kshop
{

namespace
{

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
class ParameterLines : private FolderVisitor
{
public:
    explicit ParameterLines(const std::vector<TemplateFacts>& list) { walkFolders(list, *this); }
    const std::vector<Line>& lines() const { return m_lines; }

private:
    void visitTab(const TemplateFacts& folder, const DefaultFacts& tab, std::size_t depth) override
    {
        const std::string title = "[" + printable(tab.text.value_or("")) + "]";
        m_lines.push_back({depth, {title, printable(folder.token), "folder", "", ""}, detailLines(folder)});
    }

    void visitParameter(const TemplateFacts& facts, std::size_t depth) override
    {
        m_lines.push_back({depth,
                           {printable(facts.label), printable(facts.token), kindText(facts),
                            defaultText(facts), rangeText(facts)},
                           detailLines(facts)});
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
