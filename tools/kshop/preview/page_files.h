#ifndef KSHOP_PREVIEW_PAGE_FILES_H
#define KSHOP_PREVIEW_PAGE_FILES_H

#include <map>
#include <string>

namespace kshop
{

struct PageFile
{
    std::string contentType;
    std::string text;
};

/// The page: what is served besides the interface, by the path of a request. Read once, so that no request can reach
/// any other file.
class PageFiles
{
public:
    /// Reads all files of `share/kshop/preview` of this program's tree that a page may have. False, with a sentence,
    /// when the page itself is not there.
    bool read(std::string& why);

    /// Null for any other path.
    const PageFile* find(const std::string& path) const;

private:
    std::map<std::string, PageFile> m_files;
};

} // namespace kshop

#endif
