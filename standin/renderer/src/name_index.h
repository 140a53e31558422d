#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace zelk::renderer
{

/// Finds the position of a name in a list that only grows: node entries, parameters, metadata keys.
///
/// The names are not copied; they must outlive the index. Asking again for the name that was found last costs
/// one comparison, short lists are searched as they are, long ones through a hash table. A look-up allocates
/// nothing.
class NameIndex
{
public:
    /// What find() returns for a name that is not in the list.
    static constexpr std::uint32_t npos = 0xffffffff;

    /// Appends `name`; its position is the number of names added before. The caller has made sure that it is
    /// new.
    void add(std::string_view name);

    /// Position of `name`, or npos.
    std::uint32_t find(std::string_view name) const;

private:
    struct Row
    {
        const char* text;
        std::uint32_t length;
        std::uint32_t hash;
    };

    bool isAt(std::uint32_t position, std::string_view name) const;
    std::uint32_t findByScan(std::string_view name) const;
    std::uint32_t findByHash(std::string_view name) const;
    void rehash();
    void enter(std::uint32_t position);

    std::vector<Row> m_rows;
    std::vector<std::uint32_t>
        m_slots; // a power of two of them, npos where free; empty while the list is short
    mutable std::uint32_t m_last = 0;
};

} // namespace zelk::renderer
