#ifndef ZELK_SHOP_UTILS_ROWS_H
#define ZELK_SHOP_UTILS_ROWS_H

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace zelk
{
namespace shop
{

/// Returns the first row of a table whose `field` equals `key`; null when there is none. Tables have a dozen rows: a walk
/// is as fast as anything.
template <typename Row, std::size_t N, typename Field, typename Key>
const Row* findRow(const Row (&rows)[N], Field Row::*field, const Key& key)
{
    const Row* row =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return key == r.*field; });
    return row == std::end(rows) ? nullptr : row;
}

} // namespace shop
} // namespace zelk

#endif
