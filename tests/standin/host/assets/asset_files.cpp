#include "asset_files.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

std::string number(std::size_t value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xff);
    return bytes;
}

std::string counted(const std::string& text) { return number(text.size()) + text; }

std::string indexBytes(const Sections& sections)
{
    std::string table = "INDX" + std::string(8, '\0') + number(sections.size());
    std::string data;
    for (const auto& section : sections)
    {
        table += counted(section.first) + number(data.size()) + number(section.second.size()) + number(1000);
        data += section.second;
    }
    return table + data;
}

std::string typeRecord(const std::string& name, const std::string& table, const std::string& extra,
                       unsigned maxInputs)
{
    const std::string place = "oplib:/" + table + "/" + name + "?" + table + "/" + name;
    std::string record = number(4) + counted(name) + counted("Label of " + name) + counted(place);
    record += counted("VOP_subnet") + counted("") + counted("") + counted(table);
    record += counted("") + counted("") + counted("") + counted(extra);
    return record + number(0) + number(maxInputs) + number(1000) + std::string("\1\0\0", 3);
}

std::string libraryBytes(const std::string& name, const std::string& table, const Sections& sections)
{
    return indexBytes(
        {{"INDEX_SECTION", number(1) + typeRecord(name, table)}, {table + "/" + name, indexBytes(sections)}});
}

std::string archiveEntry(const std::string& name, const std::string& data)
{
    char sizes[32];
    std::snprintf(sizes, sizeof(sizes), "%011o%06o%011o", 0u, static_cast<unsigned>(name.size() + 1),
                  static_cast<unsigned>(data.size()));
    return "070707"
           "000001"
           "000000"
           "000666"
           "000000"
           "000000"
           "000001"
           "000000" +
           std::string(sizes) + name + std::string(1, '\0') + data;
}

std::string contentsBytes(const std::vector<std::pair<std::string, std::string>>& entries)
{
    std::string archive;
    for (const auto& entry : entries)
        archive += archiveEntry(entry.first, entry.second);
    archive += archiveEntry("TRAILER!!!", "");
    const std::string size = number(archive.size());
    return std::string(size.rbegin(), size.rend()) + archive;
}

std::string bytesOf(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string sectionOf(const FS_IndexFile& index, const char* name)
{
    UT_WorkBuffer bytes;
    EXPECT_TRUE(index.readSection(name, bytes)) << name;
    return std::string(bytes.buffer(), static_cast<std::size_t>(bytes.length()));
}

AssetFiles::AssetFiles()
{
    std::string pattern = ::testing::TempDir() + "assets.XXXXXX";
    m_directory = ::mkdtemp(&pattern[0]);
}

AssetFiles::~AssetFiles() { std::filesystem::remove_all(m_directory); }

std::string AssetFiles::file(const std::string& name, const std::string& bytes)
{
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
}
