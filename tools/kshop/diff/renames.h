#ifndef KSHOP_DIFF_RENAMES_H
#define KSHOP_DIFF_RENAMES_H

#include "../interface_json.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// @file
/// Finding again, in a second list of named things, those of a first one.

namespace kshop
{

struct Item
{
    std::string name;
    const Json& value;
};
typedef std::vector<Item> Items;

/// The elements of a list with their names. Of several with one name the first counts, as it does for the host; those
/// without a name are left out.
Items itemsOf(const Json& list, const char* nameField);

/// True when the item `i` of the first list may have become the item `k` of the second.
typedef std::function<bool(const Items& before, std::size_t i, const Items& after, std::size_t k)> Alike;

/// Who became whom, as indices. What is in neither map of the first list is gone.
struct Pairing
{
    std::map<std::size_t, std::size_t> same;
    std::map<std::size_t, std::size_t> renamed; ///< a guess
    std::vector<std::size_t> added;
};

/// Pairs by name, and what is left by `alike`, in order, each at most once.
Pairing pairItems(const Items& before, const Items& after, const Alike& alike);

/// True when both items have the same neighbours: those before them have one name, or both are first, and the same
/// behind them.
bool haveSameNeighbours(const Items& before, std::size_t i, const Items& after, std::size_t k);

} // namespace kshop

#endif
