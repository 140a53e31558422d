#include "html.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace kshop
{

const char* const page_mark = "<meta name=\"generator\" content=\"kshop help-pages\">";

namespace
{

const char* const style_sheet = R"(
:root { color-scheme: light dark; --faint: #666; --line: #ccc; --head: #f2f2f2; }
@media (prefers-color-scheme: dark) { :root { --faint: #aaa; --line: #444; --head: #2a2a2a; } }
body { font: 16px/1.5 system-ui, sans-serif; margin: 2rem auto; max-width: 70rem; padding: 0 1rem; }
table { border-collapse: collapse; margin: 0.5rem 0 1.5rem; width: 100%; }
th, td { border: 1px solid var(--line); padding: 0.3rem 0.6rem; text-align: left; vertical-align: top; }
th { background: var(--head); }
code { font-family: ui-monospace, monospace; overflow-wrap: break-word; }
.faint { color: var(--faint); }
.scroll { overflow-x: auto; }
)";

std::string markupEscaped(const std::string& text)
{
    std::string result;
    for (const char c : text)
    {
        switch (c)
        {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

bool isPlainInAddress(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x80 && (std::isalnum(byte) != 0 || (c != '\0' && std::strchr("-._~+", c)));
}

} // namespace

std::string escaped(std::string_view text)
{
    std::string result;
    for (std::size_t begin = 0; begin <= text.size();)
    {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        result += (begin ? "<br>" : "") + markupEscaped(printable(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return result;
}

std::string addressOf(std::string_view text)
{
    std::string result;
    for (const char c : text)
        result +=
            isPlainInAddress(c) ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    return result;
}

std::string cell(const std::string& html, const char* element)
{
    return fmt::format("<{0}>{1}</{0}>", element, html);
}

std::string table(const std::vector<std::string>& headings, const std::vector<std::string>& rows)
{
    std::string head;
    for (const std::string& heading : headings)
        head += cell(escaped(heading), "th");
    return "<div class=\"scroll\"><table>\n<tr>" + head + "</tr>\n" + joined(rows, "\n") +
           "\n</table></div>\n";
}

std::string document(const std::string& title, const std::string& body)
{
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n" +
           std::string(page_mark) + "\n<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
           escaped(title) + "</title>\n<style>" + style_sheet + "</style>\n</head>\n<body>\n" + body +
           "</body>\n</html>\n";
}

} // namespace kshop
