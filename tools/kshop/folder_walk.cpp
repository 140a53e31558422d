#include "folder_walk.h"

#include <algorithm>
#include <cstring>

namespace kshop
{

namespace
{

class Walk
{
public:
    Walk(const std::vector<TemplateFacts>& list, FolderVisitor& visitor) : m_list(list), m_visitor(visitor) {}

    /// Goes through `count` entries from `index` on. A folder is one entry, whatever it holds. Returns the next index.
    std::size_t visit(std::size_t index, std::size_t count, std::size_t depth)
    {
        for (; count > 0 && index < m_list.size(); --count)
        {
            const TemplateFacts& facts = m_list[index++];
            if (isFolder(facts))
                index = visitFolder(facts, index, depth);
            else
                visitParameter(facts, depth);
        }
        return index;
    }

private:
    std::size_t visitFolder(const TemplateFacts& folder, std::size_t index, std::size_t depth)
    {
        for (const DefaultFacts& tab : folder.defaults)
        {
            m_visitor.visitTab(folder, tab, depth);
            const double held = std::clamp(tab.value, 0.0, static_cast<double>(m_list.size()));
            index = visit(index, static_cast<std::size_t>(held), depth + 1);
        }
        return index;
    }

    void visitParameter(const TemplateFacts& facts, std::size_t depth)
    {
        m_visitor.visitParameter(facts, depth);
        if (facts.children)
            Walk(*facts.children, m_visitor).visit(0, facts.children->size(), depth + 1);
    }

    const std::vector<TemplateFacts>& m_list;
    FolderVisitor& m_visitor;
};

} // namespace

bool isFolder(const TemplateFacts& facts)
{
    return facts.type && std::strcmp(facts.type, "PRM_SWITCHER") == 0;
}

void walkFolders(const std::vector<TemplateFacts>& list, FolderVisitor& visitor)
{
    Walk(list, visitor).visit(0, list.size(), 0);
}

} // namespace kshop
