#ifndef KSHOP_LINT_LAYOUT_H
#define KSHOP_LINT_LAYOUT_H

#include "model.h"

#include <string>
#include <vector>

namespace kshop
{

/// One tab of a folder, with what the host puts into it.
struct Tab
{
    std::string title;
    int wanted;                     ///< entries that it asks for
    std::vector<std::string> names; ///< what it gets
};

struct Folder
{
    std::string name;
    std::vector<Tab> tabs;
};

/// Which field stands where, as the host reads the list: a tab takes the entries that follow, and a folder or an array
/// inside is one entry, whatever it holds.
struct Layout
{
    explicit Layout(const Shader& shader);

    std::vector<Folder> folders; ///< those that the metadata makes, in the order of the list
    std::vector<std::string>
        before; ///< values outside of any folder, as long as a folder follows, or there is none
    std::vector<std::string> after; ///< values behind the last folder
};

} // namespace kshop

#endif
