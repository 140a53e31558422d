#include "differences.h"
#include "renames.h"
#include "value_kinds.h"

#include <fmt/format.h>

#include <algorithm>

namespace kshop
{

namespace
{

/// Choosing is the only way to a value, unlike with a menu that helps to fill a text field.
const int exclusive_menu = 0x1000;

bool isExclusive(const Json& menu) { return (menu["type"].get<int>() & exclusive_menu) != 0; }

bool isFixed(const Json& menu) { return menu.is_object() && menu.contains("items"); }

std::vector<std::string> tokensOf(const Json& menu)
{
    std::vector<std::string> tokens;
    for (const Json& item : menu["items"])
        tokens.push_back(item[0].get<std::string>());
    return tokens;
}

std::size_t placeOf(const std::vector<std::string>& tokens, const std::string& token)
{
    return static_cast<std::size_t>(std::find(tokens.begin(), tokens.end(), token) - tokens.begin());
}

/// Goes through the items of two fixed menus.
class MenuComparison
{
public:
    MenuComparison(const Json& before, const Json& after, std::string name, Findings& findings)
        : m_old(before["menu"]),
          m_now(after["menu"]),
          m_oldTokens(tokensOf(m_old)),
          m_newTokens(tokensOf(m_now)),
          m_byNumber(storedBy(before) != Stored::text),
          m_name(std::move(name)),
          m_findings(findings)
    {
    }

    void run()
    {
        for (std::size_t i = 0; i < m_oldTokens.size(); ++i)
            compareItem(i);
        for (std::size_t k = 0; k < m_newTokens.size(); ++k)
            if (placeOf(m_oldTokens, m_newTokens[k]) == m_oldTokens.size())
                add(Severity::adds, "menu item added", nullptr, m_newTokens[k], "It can be chosen.");
        if (!m_byNumber && commonTokens(m_oldTokens, m_newTokens) != commonTokens(m_newTokens, m_oldTokens))
            add(Severity::changes, "menu order", m_oldTokens, m_newTokens,
                "The menu shows its items in another order.");
    }

private:
    void add(Severity severity, const char* what, Json before, Json after, std::string effect)
    {
        m_findings.addTo(m_name, severity, what, std::move(before), std::move(after), std::move(effect));
    }

    void compareItem(std::size_t i)
    {
        const std::size_t k = placeOf(m_newTokens, m_oldTokens[i]);
        if (k == m_newTokens.size())
            addGone(i);
        else if (m_byNumber && i != k)
            add(Severity::breaks, "menu item moved", itemJson(m_oldTokens, i), itemJson(m_newTokens, k),
                "Saved nodes keep the number, which means another item now.");
        else if (m_old["items"][i][1] != m_now["items"][k][1])
            add(Severity::changes, "menu item label", m_old["items"][i], m_now["items"][k],
                "The menu shows another label.");
    }

    void addGone(std::size_t i)
    {
        const bool breaks = m_byNumber || isExclusive(m_old) || isExclusive(m_now);
        const char* const effect =
            m_byNumber ? "Saved nodes keep the number, which means another item or none now."
            : breaks   ? "Saved nodes that use it keep a word that the menu does not have."
                       : "The field keeps the text; the menu no longer suggests it.";
        add(breaks ? Severity::breaks : Severity::changes, "menu item gone", m_oldTokens[i], nullptr, effect);
    }

    static Json itemJson(const std::vector<std::string>& tokens, std::size_t index)
    {
        return {{"index", index}, {"token", tokens[index]}};
    }

    /// Those of `tokens` that `others` have too, in order.
    static std::vector<std::string> commonTokens(const std::vector<std::string>& tokens,
                                                 const std::vector<std::string>& others)
    {
        std::vector<std::string> common;
        for (const std::string& token : tokens)
            if (placeOf(others, token) != others.size())
                common.push_back(token);
        return common;
    }

    const Json& m_old;
    const Json& m_now;
    std::vector<std::string> m_oldTokens;
    std::vector<std::string> m_newTokens;
    bool m_byNumber;
    std::string m_name;
    Findings& m_findings;
};

} // namespace

void compareMenus(const Json& before, const Json& after, const std::string& name, Findings& findings)
{
    const Json& old = before["menu"];
    const Json& now = after["menu"];
    if (old == now)
        return;
    if (!isFixed(old) || !isFixed(now))
    {
        findings.addTo(name, Severity::changes, "menu", old, now,
                       "Saved values stay; there is another choice of new ones.");
        return;
    }
    if (old["type"] != now["type"])
        findings.addTo(name, Severity::changes, "menu type", old["type"], now["type"],
                       "Choosing an item does something else with the field.");
    MenuComparison(before, after, name, findings).run();
}

} // namespace kshop
