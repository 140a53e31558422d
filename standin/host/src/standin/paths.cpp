#include "paths.h"

#include "../op/op_names.h"

#include <UT/UT_PathSearch.h>
#include <standin/host.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>

namespace fs = std::filesystem;

namespace standin
{

namespace
{

constexpr const char* plugin_directory = "dso";

std::vector<std::string> houdiniPathEntries()
{
    std::vector<std::string> entries;
    const UT_PathSearch* path = UT_PathSearch::getInstance(UT_HOUDINI_PATH);
    entries.reserve(static_cast<std::size_t>(path->getEntries()));
    for (int i = 0; i < path->getEntries(); ++i)
        entries.push_back(path->getEntry(i).toStdString());
    return entries;
}

std::string replaceAll(std::string text, char what, const std::string& by)
{
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, 1, by);
    return text;
}

/// The plug-in directories that one entry of a path text stands for.
std::vector<std::string> expandEntry(const std::string& entry)
{
    if (entry == "&")
        return expandEntry("@/^");
    const std::string text = expandPath(replaceAll(entry, '^', plugin_directory));
    if (text.find('@') == std::string::npos)
        return {text};
    std::vector<std::string> expanded;
    for (const std::string& directory : houdiniPathEntries())
        expanded.push_back(replaceAll(text, '@', directory));
    return expanded;
}

std::string absolute(const fs::path& path)
{
    std::error_code failure;
    const fs::path whole = fs::weakly_canonical(path, failure);
    return failure ? path.string() : whole.string();
}

std::vector<std::string> sharedObjectsIn(const std::string& directory)
{
    std::vector<std::string> files;
    std::error_code failure;
    for (fs::directory_iterator entry(directory, failure), end; !failure && entry != end;
         entry.increment(failure))
        if (entry->path().extension() == ".so" && !entry->is_directory(failure))
            files.push_back(entry->path().string());
    std::sort(files.begin(), files.end());
    return files;
}

/// Length of the variable name at the start of a text.
std::size_t nameLength(const std::string& text, std::size_t begin)
{
    std::size_t end = begin;
    while (end < text.size() && (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '_'))
        ++end;
    return end - begin;
}

} // namespace

std::string expandPath(const std::string& text)
{
    std::string result;
    std::size_t at = 0;
    if (!text.empty() && text[0] == '~' && (text.size() == 1 || text[1] == '/') && std::getenv("HOME"))
    {
        result = std::getenv("HOME");
        at = 1;
    }
    while (at < text.size())
    {
        const bool braced = text.compare(at, 2, "${") == 0;
        const std::size_t begin = at + (braced ? 2 : 1);
        const std::size_t length = text[at] == '$' ? nameLength(text, begin) : 0;
        const std::size_t end = begin + length + (braced ? 1 : 0);
        const bool closed = !braced || (end <= text.size() && text[end - 1] == '}');
        const char* value = length && closed ? std::getenv(text.substr(begin, length).c_str()) : nullptr;
        if (value)
        {
            result += value;
            at = end;
        }
        else
            result += text[at++];
    }
    return result;
}

std::vector<std::string> pluginPathEntries()
{
    const char* variable = std::getenv("HOUDINI_DSO_PATH");
    std::vector<std::string> entries;
    for (const std::string& entry : splitWords(variable && *variable ? variable : "&", ":;"))
        for (const std::string& path : expandEntry(entry))
            entries.push_back(path);
    return entries;
}

std::vector<std::string> pluginFiles(const std::vector<std::string>& entries)
{
    std::vector<std::string> files;
    for (const std::string& entry : entries)
    {
        std::error_code failure;
        const bool isFile = fs::is_regular_file(entry, failure);
        for (const std::string& path : isFile ? std::vector<std::string>{entry} : sharedObjectsIn(entry))
            if (std::find(files.begin(), files.end(), absolute(path)) == files.end())
                files.push_back(absolute(path));
    }
    return files;
}

std::string treeRoot()
{
    Dl_info info;
    if (!dladdr(reinterpret_cast<const void*>(&treeRoot), &info) || !info.dli_fname)
        return std::string();
    return fs::path(absolute(info.dli_fname)).parent_path().parent_path().string();
}

} // namespace standin
