#include <UT/UT_PathSearch.h>

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace
{
const char user_directory[] = "houdini15.5";

std::string variable(const std::string& name)
{
    const char* value = std::getenv(name.c_str());
    return value ? value : "";
}

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// Reads the variable's name after a '$' at text[at], and moves `at` behind it. Empty when there is no name.
std::string nameAt(const std::string& text, std::size_t& at)
{
    std::size_t start = at + 1;
    const bool braced = start < text.size() && text[start] == '{';
    start += braced;
    std::size_t end = start;
    while (end < text.size() && isNameCharacter(text[end]))
        ++end;
    if (end == start || (braced && (end == text.size() || text[end] != '}')))
        return std::string();
    at = end + braced;
    return text.substr(start, end - start);
}

/// Expands variables and a leading tilde. An unset variable stays as typed, so that its entry is no directory.
std::string expanded(const std::string& entry)
{
    std::string result;
    std::size_t at = 0;
    if (!entry.empty() && entry[0] == '~' && (entry.size() == 1 || entry[1] == '/'))
    {
        result = variable("HOME");
        at = 1;
    }
    while (at < entry.size())
    {
        std::size_t next = at;
        const std::string name = entry[at] == '$' ? nameAt(entry, next) : std::string();
        if (!name.empty() && std::getenv(name.c_str()))
        {
            result += variable(name);
            at = next;
        }
        else
            result += entry[at++];
    }
    return result;
}

std::vector<std::string> splitPath(const std::string& text)
{
    std::vector<std::string> entries(1);
    for (const char c : text)
    {
        if (c == ':' || c == ';')
            entries.emplace_back();
        else
            entries.back() += c;
    }
    return entries;
}

bool isDirectory(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

bool isFile(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

/// An entry in the form in which it is listed: without slashes at its end.
std::string withoutSlashes(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

/// Directory above the one that holds this library; empty when it cannot be told.
std::string treeRoot()
{
    static const char here = 0;
    Dl_info info;
    if (!::dladdr(&here, &info) || !info.dli_fname)
        return std::string();
    std::error_code ignored;
    const fs::path library = fs::canonical(info.dli_fname, ignored);
    return library.parent_path().parent_path().string();
}

void defaultDirectories(UT_StringArray& list)
{
    const std::string home = variable("HOME");
    if (!home.empty() && isDirectory(fs::path(home) / user_directory))
        list.append((fs::path(home) / user_directory).string());
    const std::string root = treeRoot();
    if (!root.empty())
        list.append(root);
}

bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The files below one directory whose names end as asked, as sorted paths relative to it. A link to nowhere is
/// listed like a file, so that whoever reads the list finds it missing and can say so.
class FileLister
{
public:
    FileLister(const fs::path& directory, const std::string& extension, bool recurse)
        : m_directory(directory), m_extension(extension), m_recurse(recurse)
    {
        visit(fs::path());
        std::sort(m_files.begin(), m_files.end());
    }
    const std::vector<std::string>& files() const { return m_files; }

private:
    void visit(const fs::path& relative)
    {
        // A directory that links back to one of its parents is entered once.
        struct stat facts;
        if (::stat((m_directory / relative).c_str(), &facts) != 0 ||
            !m_entered.insert({facts.st_dev, facts.st_ino}).second)
            return;
        std::error_code error;
        fs::directory_iterator at(m_directory / relative, fs::directory_options::skip_permission_denied,
                                  error);
        for (; !error && at != fs::directory_iterator(); at.increment(error))
            take(relative / at->path().filename());
    }
    void take(const fs::path& relative)
    {
        if (endsWith(relative.filename().string(), m_extension) && !isDirectory(m_directory / relative))
            m_files.push_back(relative.string());
        else if (m_recurse && isDirectory(m_directory / relative))
            visit(relative);
    }

    const fs::path m_directory;
    const std::string m_extension;
    const bool m_recurse;
    std::set<std::pair<dev_t, ino_t>> m_entered;
    std::vector<std::string> m_files;
};
} // namespace

struct UT_PathSearch::Cache
{
    std::mutex mutex;
    bool filled = false;
    UT_StringArray entries;

    UT_StringArray get(bool again = false)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!filled || again)
            fill();
        return entries;
    }

private:
    void fill()
    {
        entries.clear();
        UT_StringArray defaults;
        defaultDirectories(defaults);
        const char* text = std::getenv("HOUDINI_PATH");
        expandPathText(text && *text ? text : "&", defaults, entries);
        filled = true;
    }
};

UT_PathSearch::UT_PathSearch() : m_cache(new Cache) {}

UT_PathSearch::~UT_PathSearch() { delete m_cache; }

const UT_PathSearch* UT_PathSearch::getInstance(UT_KnownPath path)
{
    static const UT_PathSearch houdini_path;
    return path == UT_HOUDINI_PATH ? &houdini_path : nullptr;
}

void UT_PathSearch::rehash() const { m_cache->get(true); }

int UT_PathSearch::getEntries() const { return static_cast<int>(m_cache->get().entries()); }

UT_StringHolder UT_PathSearch::getEntry(int index) const
{
    const UT_StringArray entries = m_cache->get();
    return entries.isValidIndex(index) ? entries(index) : UT_StringHolder();
}

void UT_PathSearch::expandPathText(const char* text, const UT_StringArray& defaults, UT_StringArray& list)
{
    for (const std::string& entry : splitPath(text ? text : ""))
    {
        if (entry == "&")
        {
            list.concat(defaults);
            continue;
        }
        const std::string directory = withoutSlashes(expanded(entry));
        if (!directory.empty() && isDirectory(directory))
            list.append(directory);
    }
}

namespace
{
/// Appends <entry>/<search> of every entry where `accept` holds; stops after the first when `onlyOne`.
int collect(const UT_StringArray& entries, const char* search, bool (*accept)(const fs::path&), bool onlyOne,
            UT_StringArray& list)
{
    int found = 0;
    for (const UT_StringHolder& entry : entries)
    {
        const fs::path path = fs::path(entry.buffer()) / (search ? search : "");
        if (!accept(path))
            continue;
        list.append(withoutSlashes(path.string()));
        ++found;
        if (onlyOne)
            break;
    }
    return found;
}

int first(const UT_StringArray& entries, const char* search, bool (*accept)(const fs::path&),
          UT_String& result)
{
    UT_StringArray list;
    if (collect(entries, search, accept, true, list) == 0)
        return 0;
    result.harden(list(0));
    return 1;
}
} // namespace

int UT_PathSearch::findAllDirectories(const char* search, UT_StringArray& list) const
{
    return collect(m_cache->get(), search, isDirectory, false, list);
}

int UT_PathSearch::findAllFiles(const char* search, UT_StringArray& list) const
{
    return collect(m_cache->get(), search, isFile, false, list);
}

int UT_PathSearch::findFile(UT_String& result, const char* search) const
{
    return first(m_cache->get(), search, isFile, result);
}

int UT_PathSearch::matchAllFilesInSubdirectory(const char* extension, const char* subdirectory,
                                               bool returnFullPaths, UT_StringArray& list, bool recurse,
                                               bool skipDuplicatePaths) const
{
    UT_StringArray directories;
    findAllDirectories(subdirectory, directories);
    std::set<std::string> seen;
    int found = 0;
    for (const UT_StringHolder& directory : directories)
    {
        const FileLister lister(directory.buffer(), extension ? extension : "", recurse);
        for (const std::string& file : lister.files())
        {
            if (!seen.insert(file).second && skipDuplicatePaths)
                continue;
            list.append(returnFullPaths ? (fs::path(directory.buffer()) / file).string() : file);
            ++found;
        }
    }
    return found;
}
