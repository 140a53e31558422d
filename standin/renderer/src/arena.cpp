#include "arena.h"

namespace zelk::renderer
{

namespace
{
constexpr std::size_t block_bytes = 64 * 1024;

constexpr std::size_t aligned(std::size_t bytes)
{
    const std::size_t step = alignof(std::max_align_t);
    return (bytes + step - 1) / step * step;
}
} // namespace

void* Arena::allocate(std::size_t bytes)
{
    const std::size_t wanted = aligned(bytes + (bytes == 0));
    if (wanted > block_bytes / 4)
        return m_blocks.emplace_back(std::make_unique<std::byte[]>(wanted)).get();
    if (wanted > m_left)
    {
        m_free = m_blocks.emplace_back(std::make_unique<std::byte[]>(block_bytes)).get();
        m_left = block_bytes;
    }
    void* memory = m_free;
    m_free += wanted;
    m_left -= wanted;
    return memory;
}

const char* Arena::keep(std::string_view text)
{
    char* copy = static_cast<char*>(allocate(text.size() + 1));
    text.copy(copy, text.size()); // unlike memcpy(), fine with the null pointer of an empty text
    return copy;
}

const char* Arena::share(std::string_view text)
{
    const auto known = m_shared.find(text);
    if (known != m_shared.end())
        return known->data();
    const char* copy = keep(text);
    m_shared.emplace(copy, text.size());
    return copy;
}

} // namespace zelk::renderer
