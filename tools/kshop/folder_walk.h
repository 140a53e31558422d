#ifndef KSHOP_FOLDER_WALK_H
#define KSHOP_FOLDER_WALK_H

#include "template_facts.h"

#include <cstddef>
#include <vector>

namespace kshop
{

bool isFolder(const TemplateFacts& facts);

/// Hears of tabs and parameters in the order in which a person sees them.
class FolderVisitor
{
public:
    virtual ~FolderVisitor() = default;
    /// What comes next with a greater depth is inside the tab.
    virtual void visitTab(const TemplateFacts& folder, const DefaultFacts& tab, std::size_t depth) = 0;
    /// The templates of a list's instances come next, one deeper.
    virtual void visitParameter(const TemplateFacts& facts, std::size_t depth) = 0;
};

/// Goes through templates, what a folder holds one level deeper than its tab. A folder that promises more than there is
/// ends with the list.
void walkFolders(const std::vector<TemplateFacts>& list, FolderVisitor& visitor);

} // namespace kshop

#endif
