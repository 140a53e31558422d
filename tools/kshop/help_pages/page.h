#ifndef KSHOP_HELP_PAGES_PAGE_H
#define KSHOP_HELP_PAGES_PAGE_H

#include "../operator_facts.h"

#include <string>
#include <vector>

namespace kshop
{

/// The help page of one type: parameters by folder, inputs, outputs.
///
/// @param index  address of the page that lists all, seen from this one
std::string typePage(const OperatorFacts& facts, const std::string& index);

/// A line of a list of pages.
struct PageLink
{
    std::string address; ///< seen from the list
    const OperatorFacts* facts;
};

/// A page that leads to others, by sub-menu of the tab menu.
///
/// @param title  plain text
std::string listPage(const std::string& title, const std::vector<PageLink>& links);

} // namespace kshop

#endif
