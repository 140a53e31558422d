#include "page_names.h"

#include "html.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace kshop
{

namespace
{

const char* const index_name = "index.html";

bool endsWith(const std::string& text, const std::string& ending)
{
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

/// %XX made the byte again; what is none stays.
std::string decoded(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const bool code = text[i] == '%' && i + 2 < text.size() &&
                          std::isxdigit(static_cast<unsigned char>(text[i + 1])) != 0 &&
                          std::isxdigit(static_cast<unsigned char>(text[i + 2])) != 0;
        result += code ? static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16)) : text[i];
        i += code ? 2 : 0;
    }
    return result;
}

/// What can be a file's name on any system, and hides nothing.
bool isSafe(const std::string& name)
{
    if (name.empty() || name[0] == '.' || name.size() > 200)
        return false;
    return std::none_of(
        name.begin(), name.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '/' || c == '\\' || c == ':'; });
}

std::string fileOf(const std::string& name)
{
    return endsWith(name, ".html") || endsWith(name, ".htm") ? name : name + "/" + index_name;
}

/// The file that a help address points to; empty when it points to none.
std::string fileOfAddress(const std::string& address)
{
    std::string path = address.substr(0, address.find_first_of("?#"));
    const std::size_t scheme = path.find("://");
    if (scheme != std::string::npos)
        path.erase(0, scheme + 3);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos && scheme != std::string::npos)
        return ""; // a host without a page
    const std::string name = decoded(slash == std::string::npos ? path : path.substr(slash + 1));
    return isSafe(name) && name != index_name ? fileOf(name) : "";
}

/// "korvan::image" makes "korvan--image".
std::string fileOfType(const std::string& type)
{
    std::string name;
    for (const char c : type)
        name +=
            std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == '-' ? c : '-';
    return fileOf(isSafe(name) ? name : "type-" + name);
}

/// The first of "NAME/index.html", "NAME-2/index.html", ... that is free.
std::string freeFile(const std::string& file, const std::set<std::string>& taken)
{
    std::string name = file;
    for (int i = 2; taken.count(name) != 0; ++i)
        name = file.substr(0, file.find('/')) + "-" + std::to_string(i) + "/" + index_name;
    return name;
}

} // namespace

PageNames namePages(const std::vector<OperatorFacts>& types)
{
    std::map<std::string, std::vector<std::size_t>> wanted;
    for (std::size_t i = 0; i < types.size(); ++i)
        wanted[fileOfAddress(types[i].helpUrl.value_or(""))].push_back(i);
    PageNames names;
    names.pages.resize(types.size());
    std::set<std::string> taken = {index_name};
    for (const auto& [file, users] : wanted)
    {
        if (file.empty())
            continue;
        taken.insert(file);
        if (users.size() == 1)
            names.pages[users[0]] = file;
        else
            names.shared[file] = users;
    }
    for (std::size_t i = 0; i < types.size(); ++i)
        if (names.pages[i].empty())
            names.pages[i] = *taken.insert(freeFile(fileOfType(types[i].name), taken)).first;
    return names;
}

std::string addressFrom(const std::string& file, const std::string& target)
{
    std::string address = file.find('/') == std::string::npos ? "" : "../";
    const std::size_t slash = target.find('/');
    if (slash == std::string::npos)
        return address + addressOf(target);
    return address + addressOf(target.substr(0, slash)) + "/" + addressOf(target.substr(slash + 1));
}

} // namespace kshop
