#include "page_files.h"

#include <standin/host.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

struct ContentTypeRow
{
    const char* ending;
    const char* contentType;
};

// Files with another ending are not served.
const ContentTypeRow content_type_rows[] = {
    {".html", "text/html; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".svg", "image/svg+xml"},
};

const char* contentTypeOf(const fs::path& file)
{
    for (const ContentTypeRow& row : content_type_rows)
        if (file.extension() == row.ending)
            return row.contentType;
    return nullptr;
}

std::string textOf(const fs::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace

bool PageFiles::read(std::string& why)
{
    const fs::path directory = fs::path(standin::treeRoot()) / "share/kshop/preview";
    std::error_code error;
    for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error))
        if (const char* contentType = contentTypeOf(it->path()))
            m_files["/" + it->path().filename().string()] = {contentType, textOf(it->path())};
    const PageFile* page = find("/index.html");
    if (!page || page->text.empty())
    {
        why = "the preview's page is missing: there is no " + (directory / "index.html").string() +
              ". Install kshop again, with its share directory";
        return false;
    }
    m_files["/"] = *page;
    return true;
}

const PageFile* PageFiles::find(const std::string& path) const
{
    const auto found = m_files.find(path);
    return found == m_files.end() ? nullptr : &found->second;
}

} // namespace kshop
