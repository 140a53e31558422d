#ifndef KSHOP_HELP_PAGES_HTML_H
#define KSHOP_HELP_PAGES_HTML_H

#include <string>
#include <string_view>
#include <vector>

/// @file
/// Text as HTML. What comes from shaders goes through escaped(), whatever it holds.

namespace kshop
{

/// The text with markup characters escaped, line ends as <br>, other control characters and bytes that are no UTF-8 made
/// visible.
std::string escaped(std::string_view text);

/// A component of an address: everything but letters, digits and "-._~+" as %XX.
std::string addressOf(std::string_view text);

/// A cell of a table; its text is HTML.
std::string cell(const std::string& html, const char* element = "td");

/// A table with one row of headings; the cells of `rows` are HTML.
std::string table(const std::vector<std::string>& headings, const std::vector<std::string>& rows);

/// A whole document. It needs no other file.
///
/// @param title  plain text
/// @param body   HTML
std::string document(const std::string& title, const std::string& body);

/// What every document() holds, and hardly another file.
extern const char* const page_mark;

} // namespace kshop

#endif
