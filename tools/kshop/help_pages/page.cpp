#include "page.h"

#include "../folder_walk.h"
#include "../parameter_words.h"
#include "../text.h"
#include "html.h"

#include <VOP/VOP_Types.h>

#include <fmt/format.h>

#include <algorithm>
#include <map>

namespace kshop
{

namespace
{

std::string code(const std::string& text) { return text.empty() ? "" : "<code>" + escaped(text) + "</code>"; }

std::string menuHtml(const TemplateFacts& facts)
{
    if (!facts.menu)
        return "";
    if (facts.menu->scripted)
        return fmt::format("made by a {} script", escaped(facts.menu->language));
    std::vector<std::string> items;
    for (const auto& [token, label] : facts.menu->items)
        items.push_back(token == label ? code(token) : code(token) + " " + escaped(label));
    return joined(items, "<br>");
}

std::string helpHtml(const TemplateFacts& facts)
{
    std::vector<std::string> lines;
    if (facts.help)
        lines.push_back(escaped(*facts.help));
    if (facts.disableWhen)
        lines.push_back("<span class=\"faint\">Greyed out when " + code(*facts.disableWhen) + "</span>");
    if (facts.hideWhen)
        lines.push_back("<span class=\"faint\">Hidden when " + code(*facts.hideWhen) + "</span>");
    return joined(lines, "<br>");
}

/// Puts parameters into one table for each tab, under a heading that names the tabs around it.
class ParameterSections : private FolderVisitor
{
public:
    explicit ParameterSections(const std::vector<TemplateFacts>& list) { walkFolders(list, *this); }

    std::string html()
    {
        finishTable();
        return m_html.empty() ? "<p>It has none.</p>\n" : m_html;
    }

private:
    void visitTab(const TemplateFacts& folder, const DefaultFacts& tab, std::size_t depth) override
    {
        (void)folder;
        finishTable();
        m_tabs.resize(depth);
        m_tabs.push_back(tab.text.value_or(""));
    }

    void visitParameter(const TemplateFacts& facts, std::size_t depth) override
    {
        if (m_listDepth > 0 && depth >= m_listDepth)
        {
            m_rows.push_back(rowOf(facts, depth - m_listDepth + 1));
            return;
        }
        m_listDepth = 0;
        if (depth < m_tabs.size())
        {
            finishTable();
            m_tabs.resize(depth);
        }
        m_rows.push_back(rowOf(facts, 0));
        m_listDepth = facts.children ? depth + 1 : 0;
    }

    static std::string rowOf(const TemplateFacts& facts, std::size_t inList)
    {
        const std::string label = (inList ? "<span class=\"faint\">each</span> " : "") + escaped(facts.label);
        return "<tr>" + cell(label) + cell(code(facts.token)) + cell(escaped(kindText(facts))) +
               cell(escaped(defaultText(facts))) + cell(escaped(rangeText(facts))) + cell(menuHtml(facts)) +
               cell(helpHtml(facts)) + "</tr>";
    }

    void finishTable()
    {
        m_listDepth = 0;
        if (m_rows.empty())
            return;
        const bool isFirst = m_html.empty();
        if (!m_tabs.empty() || !isFirst)
            m_html +=
                "<h3>" + escaped(m_tabs.empty() ? "Outside the tabs" : joined(m_tabs, " / ")) + "</h3>\n";
        m_html += table({"Label", "Token", "Type", "Default", "Range", "Menu", "Help"}, m_rows);
        m_rows.clear();
    }

    std::string m_html;
    std::vector<std::string> m_tabs;
    std::vector<std::string> m_rows;
    std::size_t m_listDepth = 0; ///< depth of the templates of the list that is open; 0: none is
};

std::string connectorsHtml(const char* title, const std::vector<ConnectorFacts>& connectors)
{
    std::vector<std::string> rows;
    rows.reserve(connectors.size());
    for (const ConnectorFacts& connector : connectors)
        rows.push_back("<tr>" + cell(std::to_string(rows.size())) + cell(escaped(connector.label)) +
                       cell(code(connector.name)) +
                       cell(escaped(VOPgetTypeName(static_cast<VOP_Type>(connector.type)))) + "</tr>");
    return fmt::format("<h2>{}</h2>\n", title) +
           (rows.empty() ? "<p>It has none.</p>\n" : table({"Number", "Label", "Name", "Type"}, rows));
}

std::string categoryOf(const OperatorFacts& facts) { return facts.tabMenu.value_or(""); }

} // namespace

std::string typePage(const OperatorFacts& facts, const std::string& index)
{
    const std::string menu = categoryOf(facts);
    return document(facts.label,
                    "<p><a href=\"" + escaped(index) + "\">All nodes</a></p>\n<h1>" + escaped(facts.label) +
                        "</h1>\n<p>Node type " + code(facts.name) +
                        (menu.empty() ? "" : ", in the tab menu under " + escaped(menu)) +
                        ".</p>\n<h2>Parameters</h2>\n" + ParameterSections(facts.templates).html() +
                        connectorsHtml("Inputs", facts.inputs) + connectorsHtml("Outputs", facts.outputs));
}

std::string listPage(const std::string& title, const std::vector<PageLink>& links)
{
    std::map<std::string, std::string> lists;
    for (const PageLink& link : links)
        lists[categoryOf(*link.facts)] += "<li><a href=\"" + escaped(link.address) + "\">" +
                                          escaped(link.facts->label) + "</a> " + code(link.facts->name) +
                                          "</li>\n";
    std::string body = "<h1>" + escaped(title) + "</h1>\n";
    for (const auto& [category, list] : lists)
        body +=
            (category.empty() ? "" : "<h2>" + escaped(category) + "</h2>\n") + "<ul>\n" + list + "</ul>\n";
    return document(title, body);
}

} // namespace kshop
