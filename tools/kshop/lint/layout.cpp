#include "layout.h"

#include <algorithm>
#include <cstring>

namespace kshop
{

namespace
{

bool isType(const TemplateFacts& facts, const char* type)
{
    return facts.type && std::strcmp(facts.type, type) == 0;
}

bool isFolder(const TemplateFacts& facts) { return isType(facts, "PRM_SWITCHER"); }

/// False for what only decorates the pane.
bool isValue(const TemplateFacts& facts)
{
    return facts.type && !isType(facts, "PRM_HEADING") && !isType(facts, "PRM_SEPARATOR") && !isFolder(facts);
}

class Reader
{
public:
    Reader(const Shader& shader, Layout& layout)
        : m_shader(shader), m_list(*shader.templates), m_layout(layout)
    {
    }

    void readAll()
    {
        std::vector<std::string> outside;
        while (m_next < m_list.size())
        {
            const bool makesFolder = isFolder(m_list[m_next]) && !isFrame(m_list[m_next]);
            const bool value = isValue(m_list[m_next]) || isFrame(m_list[m_next]);
            const std::string name = take();
            if (makesFolder)
                std::move(outside.begin(), outside.end(), std::back_inserter(m_layout.before));
            if (makesFolder)
                outside.clear();
            else if (value)
                outside.push_back(name);
        }
        (m_layout.folders.empty() ? m_layout.before : m_layout.after) = outside;
    }

private:
    /// The frame that the plug-in puts around an array.
    bool isFrame(const TemplateFacts& facts) const
    {
        return isFolder(facts) && !m_shader.findExtra(facts.token);
    }

    /// Takes one entry with all that is in it; its name, of an array the parameter's.
    std::string take()
    {
        const TemplateFacts& facts = m_list[m_next++];
        if (!isFolder(facts))
            return facts.token;
        if (isFrame(facts))
        {
            m_next += m_next < m_list.size();
            return facts.token.substr(0, facts.token.rfind("_group"));
        }
        const std::size_t place = m_layout.folders.size();
        m_layout.folders.push_back({facts.token, {}});
        std::vector<Tab> tabs;
        for (const DefaultFacts& one : facts.defaults)
            tabs.push_back(takeTab(one));
        m_layout.folders[place].tabs = tabs;
        return facts.token;
    }

    Tab takeTab(const DefaultFacts& one)
    {
        Tab tab = {one.text.value_or(""), static_cast<int>(one.value), {}};
        for (int i = 0; i < tab.wanted && m_next < m_list.size(); ++i)
            tab.names.push_back(take());
        return tab;
    }

    const Shader& m_shader;
    const std::vector<TemplateFacts>& m_list;
    Layout& m_layout;
    std::size_t m_next = 0;
};

} // namespace

Layout::Layout(const Shader& shader)
{
    if (shader.templates)
        Reader(shader, *this).readAll();
}

} // namespace kshop
