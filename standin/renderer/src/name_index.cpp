#include "name_index.h"

#include <cstring>
#include <functional>

namespace zelk::renderer
{

namespace
{
constexpr std::size_t longest_scanned_list = 8;

std::uint32_t hashOf(std::string_view name)
{
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
}
} // namespace

void NameIndex::add(std::string_view name)
{
    if (m_rows.empty())
        m_rows.reserve(longest_scanned_list / 2);
    m_rows.push_back({name.data(), static_cast<std::uint32_t>(name.size()), hashOf(name)});
    if (m_rows.size() <= longest_scanned_list)
        return;
    if (m_slots.size() < 2 * m_rows.size())
        rehash();
    else
        enter(static_cast<std::uint32_t>(m_rows.size() - 1));
}

std::uint32_t NameIndex::find(std::string_view name) const
{
    if (m_last < m_rows.size() && isAt(m_last, name))
        return m_last;
    const std::uint32_t found = m_slots.empty() ? findByScan(name) : findByHash(name);
    if (found != npos)
        m_last = found;
    return found;
}

bool NameIndex::isAt(std::uint32_t position, std::string_view name) const
{
    const Row& row = m_rows[position];
    return row.length == name.size() && std::memcmp(row.text, name.data(), name.size()) == 0;
}

std::uint32_t NameIndex::findByScan(std::string_view name) const
{
    for (std::uint32_t position = 0; position < m_rows.size(); ++position)
        if (isAt(position, name))
            return position;
    return npos;
}

std::uint32_t NameIndex::findByHash(std::string_view name) const
{
    const std::uint32_t hash = hashOf(name);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask; m_slots[slot] != npos; slot = (slot + 1) & mask)
        if (m_rows[m_slots[slot]].hash == hash && isAt(m_slots[slot], name))
            return m_slots[slot];
    return npos;
}

void NameIndex::rehash()
{
    std::size_t size = 32;
    while (size < 4 * m_rows.size())
        size *= 2;
    m_slots.assign(size, npos);
    for (std::uint32_t position = 0; position < m_rows.size(); ++position)
        enter(position);
}

void NameIndex::enter(std::uint32_t position)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = m_rows[position].hash & mask;
    while (m_slots[slot] != npos)
        slot = (slot + 1) & mask;
    m_slots[slot] = position;
}

} // namespace zelk::renderer
