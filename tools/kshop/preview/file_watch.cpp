#include "file_watch.h"

#include "../renderer_walk.h"

#include <standin/host.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

FileStamp stampOf(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return {0, 0, 0};
    const std::int64_t nanoseconds =
        status.st_mtim.tv_sec * std::int64_t(1000000000) + status.st_mtim.tv_nsec;
    return {status.st_ino, status.st_size, nanoseconds};
}

void addFile(FileStamps& stamps, const std::string& path) { stamps[path] = stampOf(path); }

/// A directory of host plug-ins, or one of them.
void addPlugins(FileStamps& stamps, const std::string& place)
{
    std::error_code error;
    if (!fs::is_directory(place, error))
        return addFile(stamps, place);
    for (fs::directory_iterator it(place, error), end; !error && it != end; it.increment(error))
        if (it->path().extension() == ".so")
            addFile(stamps, it->path().string());
}

void addCatalogues(FileStamps& stamps)
{
    const char* files = std::getenv("KORVAN_CATALOGUE");
    std::istringstream stream(files ? files : "");
    for (std::string file; std::getline(stream, file, ':');)
        if (!file.empty())
            addFile(stamps, file);
}

} // namespace

FileStamps stampFiles(const std::string& dso)
{
    FileStamps stamps;
    const RendererFiles files = findRendererFiles();
    for (const std::string& file : files.metadataFiles)
        addFile(stamps, file);
    for (const std::string& file : files.plugins)
        addFile(stamps, file);
    if (dso.empty())
        for (const std::string& place : standin::pluginSearchPath())
            addPlugins(stamps, place);
    else
        addPlugins(stamps, dso);
    addCatalogues(stamps);
    return stamps;
}

bool FileWatch::hasSettledChange()
{
    const FileStamps now = stampFiles(m_dso);
    const bool settled = now == m_last;
    m_last = now;
    if (!settled || now == m_loaded)
        return false;
    m_loaded = now;
    return true;
}

} // namespace kshop
