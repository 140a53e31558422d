#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zelk::renderer
{

/// Memory that lives as long as the running renderer: texts, values and arrays of all entries.
///
/// Everything is freed at once with the arena, so nothing in it may need a destructor. Not thread-safe.
class Arena
{
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// Zeroed memory, aligned for any type; not null even for 0 bytes.
    void* allocate(std::size_t bytes);

    /// A copy of `text` with a terminating zero.
    const char* keep(std::string_view text);

    /// Like keep(), but equal texts get the same address: for words that many entries have in common.
    const char* share(std::string_view text);

private:
    std::vector<std::unique_ptr<std::byte[]>> m_blocks;
    std::byte* m_free = nullptr;
    std::size_t m_left = 0;
    std::unordered_set<std::string_view> m_shared;
};

} // namespace zelk::renderer
