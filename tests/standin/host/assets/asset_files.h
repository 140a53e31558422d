#ifndef HOST_ASSETS_ASSET_FILES_H
#define HOST_ASSETS_ASSET_FILES_H

#include "gzip.h"

#include <FS/FS_IndexFile.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// Name and bytes.
typedef std::vector<std::pair<std::string, std::string>> Sections;

/// A big-endian number of four bytes.
std::string number(std::size_t value);
/// A text with its length before it.
std::string counted(const std::string& text);

/// The bytes of an indexed file, put together by hand.
std::string indexBytes(const Sections& sections);

/// One record of a list of types, as releases of 2016 write it.
std::string typeRecord(const std::string& name, const std::string& table, const std::string& extra = "*",
                       unsigned maxInputs = 0);

/// The bytes of a library with one type and these sections.
std::string libraryBytes(const std::string& name, const std::string& table, const Sections& sections);

/// One archive entry of an asset's contents, and a whole section "Contents" of such entries.
std::string archiveEntry(const std::string& name, const std::string& data);
std::string contentsBytes(const std::vector<std::pair<std::string, std::string>>& entries);

std::string bytesOf(const std::string& path);
std::string sectionOf(const FS_IndexFile& index, const char* name);

/// A directory of its own, gone afterwards.
class AssetFiles : public ::testing::Test
{
protected:
    AssetFiles();
    ~AssetFiles() override;

    /// Writes a file there and gives its path.
    std::string file(const std::string& name, const std::string& bytes);
    std::string path(const std::string& name) const { return (m_directory / name).string(); }

private:
    std::filesystem::path m_directory;
};

#endif
