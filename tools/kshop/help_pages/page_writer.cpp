#include "page_writer.h"

#include "html.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

/// Whether an earlier run made the file.
bool isOwn(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string head(1024, '\0');
    stream.read(&head[0], static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(stream.gcount()));
    return head.find(page_mark) != std::string::npos;
}

/// Whether somebody else's file is where a page belongs.
bool isInTheWay(const fs::path& file)
{
    std::error_code error;
    const fs::file_status status = fs::symlink_status(file, error);
    if (!fs::exists(status))
        return false;
    return !fs::is_regular_file(status) || !isOwn(file);
}

std::string foreignFile(const fs::path& directory, const Pages& pages)
{
    for (const auto& [name, text] : pages)
        if (isInTheWay(directory / name))
            return (directory / name).string();
    return "";
}

/// Writes beside the file first, so that a full disk leaves the old page. 0, or the error number.
int writeFile(const fs::path& file, const std::string& text)
{
    const std::string beside = file.string() + ".writing";
    std::FILE* stream = std::fopen(beside.c_str(), "wb");
    if (!stream)
        return errno;
    const bool written = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    int error = written ? 0 : errno;
    if (std::fclose(stream) != 0 && error == 0)
        error = errno;
    if (error == 0 && std::rename(beside.c_str(), file.c_str()) != 0)
        error = errno;
    if (error != 0)
        std::remove(beside.c_str());
    return error;
}

bool writePage(const fs::path& file, const std::string& text, std::string& why)
{
    std::error_code made;
    fs::create_directories(file.parent_path(), made);
    const int error = made ? made.value() : writeFile(file, text);
    if (error != 0)
        why = fmt::format("{} cannot be written: {}. Choose another directory, or make room in this one.",
                          file.string(), std::strerror(error));
    return error == 0;
}

} // namespace

bool writePages(const std::string& directory, const Pages& pages, std::string& why)
{
    const std::string foreign = foreignFile(directory, pages);
    if (!foreign.empty())
    {
        why = fmt::format(
            "{} was not made by 'kshop help-pages' and stays; nothing was written. Choose another "
            "directory, or take that file away.",
            foreign);
        return false;
    }
    for (const auto& [name, text] : pages)
        if (!writePage(fs::path(directory) / name, text, why))
            return false;
    return true;
}

} // namespace kshop
