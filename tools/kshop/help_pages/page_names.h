#ifndef KSHOP_HELP_PAGES_PAGE_NAMES_H
#define KSHOP_HELP_PAGES_PAGE_NAMES_H

#include "../operator_facts.h"

#include <map>
#include <string>
#include <vector>

namespace kshop
{

/// Which files the pages become, below one directory.
struct PageNames
{
    std::vector<std::string> pages; ///< for each type, in order
    /// Files that several types' help addresses point to, with those types by place in the list.
    std::map<std::string, std::vector<std::size_t>> shared;
};

/// A type's page stands where the last component of its help address points: "Image" is the file "Image/index.html", so
/// that any web server finds it by the address as it is; a component that ends in ".html" is that file. A type that
/// shares its address with others, or has none, has the file that its own name makes ("korvan--image/index.html"), and the
/// shared address leads to a list of those that share it.
PageNames namePages(const std::vector<OperatorFacts>& types);

/// Address of a file seen from another one, both relative to the same directory.
std::string addressFrom(const std::string& file, const std::string& target);

} // namespace kshop

#endif
