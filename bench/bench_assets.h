#ifndef BENCH_ASSETS_H
#define BENCH_ASSETS_H

#include <filesystem>
#include <string>
#include <vector>

/// @file
/// Asset files of the benchmarks: types with contents of any size, whose nodes have the entries, the line lengths and
/// the share of numbers that saved networks have, so that they compress about as well.

namespace bench
{

struct AssetType
{
    std::string name;
    std::string contents; ///< as assetContents() gives them
    bool compressed;      ///< stored as "Contents.gz"
};

/// Contents of about so many bytes, at least one child: Korvan nodes, and a last one of the type `lastChild`.
std::string assetContents(std::size_t bytes, const std::string& lastChild);

std::string gzip(const std::string& bytes);

/// Writes an asset file of types for the table "Vop". The contents of the last type are the end of the file. Returns
/// their size as stored. Throws std::runtime_error when it cannot be written.
std::size_t writeAssetFile(const std::filesystem::path& file, const std::vector<AssetType>& types);

} // namespace bench

#endif
