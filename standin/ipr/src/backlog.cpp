#include "backlog.h"

#include <algorithm>

namespace zelk::ipr
{
namespace
{
// The text, and what the text, its owner and the queue take besides.
std::size_t memoryOf(const std::string& text) { return text.capacity() + 96; }

// A text that grew may own twice what it needs. Giving that back costs a copy, which only long texts are
// worth.
constexpr std::size_t tolerated_slack = 1u << 20;
} // namespace

bool Backlog::add(std::string text)
{
    if (text.capacity() - text.size() > tolerated_slack)
        text.shrink_to_fit();
    const std::size_t bytes = memoryOf(text);
    auto record = std::make_shared<const std::string>(std::move(text));
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_closed || bytes > m_limitBytes)
        return false;
    m_records.push_back(std::move(record));
    m_bytes += bytes;
    while (m_bytes > m_limitBytes)
        removeOldest();
    const bool mustWake = m_asleep;
    m_asleep = false; // the first one wakes for all
    return mustWake;
}

std::uint64_t Backlog::end() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_first + m_records.size();
}

std::uint64_t Backlog::read(std::uint64_t& place, std::size_t count, std::vector<Record>& records) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::uint64_t missed = m_first > place ? m_first - place : 0;
    place += missed;
    const auto from = std::min<std::uint64_t>(place - m_first, m_records.size());
    const auto to = std::min<std::uint64_t>(from + count, m_records.size());
    records.assign(m_records.begin() + std::ptrdiff_t(from), m_records.begin() + std::ptrdiff_t(to));
    return missed;
}

void Backlog::release(std::uint64_t place)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    while (m_first < place && !m_records.empty())
        removeOldest();
    if (m_records.empty())
        m_emptied.notify_all();
}

bool Backlog::fallAsleep(std::uint64_t seen)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_asleep = m_first + m_records.size() == seen;
    return m_asleep;
}

void Backlog::wakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_asleep = false;
}

bool Backlog::waitUntilEmpty(std::chrono::steady_clock::time_point deadline) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_emptied.wait_until(lock, deadline, [this] { return m_records.empty(); });
}

void Backlog::close()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_closed = true;
}

std::size_t Backlog::bytes() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bytes;
}

void Backlog::removeOldest()
{
    m_bytes -= memoryOf(*m_records.front());
    m_records.pop_front();
    ++m_first;
}

} // namespace zelk::ipr
