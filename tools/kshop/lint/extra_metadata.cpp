#include "extra_metadata.h"

#include "../running_renderer.h"

#include <UT/UT_PathSearch.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

std::vector<std::string> thoseNotLoaded(const std::vector<std::string>& files)
{
    const std::vector<std::string> loaded = findRendererFiles().metadataFiles;
    std::vector<std::string> missing;
    for (const std::string& file : files)
    {
        std::error_code error;
        const bool known =
            std::any_of(loaded.begin(), loaded.end(),
                        [&](const std::string& other) { return fs::equivalent(file, other, error); });
        if (!known)
            missing.push_back(file);
    }
    return missing;
}

std::string makeDirectory()
{
    const char* temporary = std::getenv("TMPDIR");
    const std::string parent = temporary && *temporary ? temporary : "/tmp";
    std::string pattern = parent + "/kshop-metadata-XXXXXX";
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error(
            fmt::format("no directory can be made in {}: {}; set TMPDIR to one that can be written", parent,
                        std::strerror(errno)));
    return fs::absolute(pattern).string();
}

} // namespace

ExtraMetadata::ExtraMetadata(const std::vector<std::string>& files)
{
    const std::vector<std::string> missing = thoseNotLoaded(files);
    if (missing.empty())
        return;
    m_directory = makeDirectory();
    const fs::path links = fs::path(m_directory) / "korvan" / "metadata";
    fs::create_directories(links);
    // Numbered, so that they are loaded in the order in which they are named.
    for (std::size_t i = 0; i < missing.size(); ++i)
        fs::create_symlink(fs::absolute(missing[i]), links / fmt::format("{:06}.mtd", i));
    const char* path = std::getenv("HOUDINI_PATH");
    setenv("HOUDINI_PATH", fmt::format("{};{}", path && *path ? path : "&", m_directory).c_str(), 1);
    UT_PathSearch::getInstance(UT_HOUDINI_PATH)->rehash();
}

ExtraMetadata::~ExtraMetadata()
{
    std::error_code error;
    if (!m_directory.empty())
        fs::remove_all(m_directory, error);
}

} // namespace kshop
