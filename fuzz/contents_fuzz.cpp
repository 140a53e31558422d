// Bytes as the contents of an asset: the filter's verdict is held against a plain scan word by word.
//
// First byte: bit 0 compressed, bit 1 the section goes through the index file's own bytes, bit 2 compressed contents are
// taken as they are instead of packed here, bit 3 the whole input is an index file.
#include "asset_contents.h"
#include "fuzzing.h"
#include "gzip.h"

#include "shop_contents.h"

#include <FS/FS_IndexFile.h>
#include <FS/FS_Reader.h>
#include <UT/UT_IGZStream.h>
#include <UT/UT_IStream.h>

#include <kr_observe.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <unistd.h>

using zelk::shop::isKorvanAsset;

namespace
{
enum Choice
{
    compressed = 1,
    through_file = 2,
    packed_already = 4,
    whole_index = 8
};

bool assetAcceptsByWords(const FS_IndexFile& asset)
{
    const bool packed = asset.hasSection("Contents.gz");
    const std::unique_ptr<FS_Reader> reader(asset.getSectionReader(packed ? "Contents.gz" : "Contents"));
    if (!reader || !reader->getStream())
        return false;
    if (!packed)
        return acceptsByWords(*reader->getStream(), true);
    UT_IGZStream inflated(*reader->getStream());
    return acceptsByWords(inflated, false);
}

void hold(const FS_IndexFile& asset)
{
    require(isKorvanAsset(asset) == assetAcceptsByWords(asset),
            "the filter finds what a scan by words finds");
}

// A file of this process, in memory where the system has such a place.
std::string writtenFile(const std::string& bytes)
{
    static const bool has_shm = std::filesystem::is_directory("/dev/shm");
    const std::filesystem::path folder = has_shm ? "/dev/shm" : std::filesystem::temp_directory_path();
    const std::string path = (folder / ("korvan_contents_" + std::to_string(::getpid()))).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

void holdFile(const std::string& bytes)
{
    const std::string path = writtenFile(bytes);
    const FS_IndexFile file(path.c_str());
    hold(file);
    for (int i = 0; i < file.getNumSections(); ++i)
    {
        const std::unique_ptr<FS_Reader> reader(file.getSectionReader(file.getSectionName(i)));
        if (reader && reader->getStream())
            hold(FS_IndexFile(reader.get()));
    }
    std::filesystem::remove(path);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    KrMsgSetConsoleFlags(0);
    Input input(data, size);
    const unsigned choice = input.byte();
    std::string bytes = input.rest();
    if (choice & whole_index)
    {
        holdFile(bytes);
        return 0;
    }
    if ((choice & compressed) && !(choice & packed_already))
        bytes = gzip(bytes);
    FS_IndexFile asset;
    asset.addSection(choice & compressed ? "Contents.gz" : "Contents", bytes.data(),
                     static_cast<int>(bytes.size()));
    if (choice & through_file)
        holdFile(asset.toBytes());
    else
        hold(asset);
    return 0;
}
