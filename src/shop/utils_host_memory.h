#ifndef ZELK_SHOP_UTILS_HOST_MEMORY_H
#define ZELK_SHOP_UTILS_HOST_MEMORY_H

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace zelk
{
namespace shop
{

/// Makes an object that the host keeps by raw pointer for the whole process.
///
/// The host copies the address, not the object, and never frees it, so neither do we: operators,
/// descriptions, and the names, defaults, menus, ranges, spare data and conditions of parameter templates.
/// Going through these functions keeps such objects findable and gives the leak checker one family of names
/// to ignore.
template <typename T, typename... Args>
T* leakForHost(Args&&... args)
{
    return new T(std::forward<Args>(args)...);
}

/// Makes `size` default-constructed objects in a row, kept like the above.
template <typename T>
T* leakArrayForHost(std::size_t size)
{
    return new T[size]();
}

/// Makes a process-long list. The host's end marker, a default-constructed T, is added here so that no caller
/// can forget it.
template <typename T>
T* leakListForHost(const std::vector<T>& items)
{
    T* list = leakArrayForHost<T>(items.size() + 1);
    std::copy(items.begin(), items.end(), list);
    return list;
}

/// Process-long copy of a text made on the fly. Texts held by a description are passed as they are: it lives
/// as long.
inline const char* leakTextForHost(const std::string& text) { return ::strdup(text.c_str()); }

} // namespace shop
} // namespace zelk

#endif
