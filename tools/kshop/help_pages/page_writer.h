#ifndef KSHOP_HELP_PAGES_PAGE_WRITER_H
#define KSHOP_HELP_PAGES_PAGE_WRITER_H

#include <map>
#include <string>

namespace kshop
{

/// The text of each file, by its name below the directory.
typedef std::map<std::string, std::string> Pages;

/// Writes the pages, making directories as needed. Files of an earlier run are written over; nothing else is: when a
/// file that no earlier run made stands in the way, nothing is written at all.
///
/// @param why  a sentence with the file and the remedy, when false is returned
bool writePages(const std::string& directory, const Pages& pages, std::string& why);

} // namespace kshop

#endif
