#include "renames.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace kshop
{

namespace
{

/// The name `step` places further; empty beyond either end.
std::string neighbour(const Items& items, std::size_t index, int step)
{
    if (step < 0 ? index == 0 : index + 1 >= items.size())
        return "";
    return items[step < 0 ? index - 1 : index + 1].name;
}

} // namespace

Items itemsOf(const Json& list, const char* nameField)
{
    Items items;
    std::set<std::string> seen;
    for (const Json& value : list)
    {
        const std::string name = value[nameField].get<std::string>();
        if (!name.empty() && seen.insert(name).second)
            items.push_back({name, value});
    }
    return items;
}

Pairing pairItems(const Items& before, const Items& after, const Alike& alike)
{
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t k = 0; k < after.size(); ++k)
        places.emplace(after[k].name, k);
    Pairing pairing;
    std::set<std::size_t> free;
    for (std::size_t k = 0; k < after.size(); ++k)
        free.insert(k);
    std::vector<std::size_t> left;
    for (std::size_t i = 0; i < before.size(); ++i)
    {
        const auto found = places.find(before[i].name);
        if (found == places.end())
        {
            left.push_back(i);
            continue;
        }
        pairing.same.emplace(i, found->second);
        free.erase(found->second);
    }
    for (const std::size_t i : left)
    {
        const auto found =
            std::find_if(free.begin(), free.end(), [&](std::size_t k) { return alike(before, i, after, k); });
        if (found == free.end())
            continue;
        pairing.renamed.emplace(i, *found);
        free.erase(found);
    }
    pairing.added.assign(free.begin(), free.end());
    return pairing;
}

bool haveSameNeighbours(const Items& before, std::size_t i, const Items& after, std::size_t k)
{
    return neighbour(before, i, -1) == neighbour(after, k, -1) &&
           neighbour(before, i, 1) == neighbour(after, k, 1);
}

} // namespace kshop
