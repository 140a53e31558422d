#ifndef BENCH_LIBRARY_H
#define BENCH_LIBRARY_H

#include <string>
#include <vector>

/// @file
/// The made-up shader library of the benchmarks: any number of shaders with forty parameters each, in a mix of types and
/// metadata as production shaders have it. The renderer plug-in declares it; the benchmark writes the same metadata as
/// a file.

namespace bench
{

/// Environment variables by which the benchmark tells the renderer plug-in what to declare.
const char* const count_variable = "KORVAN_BENCH_SHADERS";     ///< number of shaders
const char* const metadata_variable = "KORVAN_BENCH_METADATA"; ///< "declared": with their metadata

const int parms_per_shader = 40;

/// One metadata item; `kind` tells which member counts.
struct Item
{
    enum Kind
    {
        text,
        boolean,
        number
    };
    std::string key;
    Kind kind;
    std::string textValue;
    double numberValue; ///< also of a boolean
};

struct Parm
{
    std::string name;
    int type; ///< KR_TYPE_...
    std::vector<Item> items;
};

std::string shaderName(int index);

/// The same for every shader.
const std::vector<Parm>& parms();
const std::vector<Item>& shaderItems();

/// The metadata of `count` shaders from number `first` on, as the text of a .mtd file.
std::string metadataFileText(int first, int count);

} // namespace bench

#endif
