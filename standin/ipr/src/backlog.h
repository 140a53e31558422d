/// Records that wait to be passed on.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace zelk::ipr
{

using Record = std::shared_ptr<const std::string>;

/// A queue with several readers, each with a place of its own: records have numbers, counted from 0 in the
/// order in which they were added. When it holds more than its limit, the oldest records go. All operations
/// may be called by any thread.
class Backlog
{
public:
    explicit Backlog(std::size_t limitBytes) : m_limitBytes(limitBytes) {}

    /// Adds one record; after close(), or when it alone is longer than the limit, it is dropped. True when
    /// the worker sleeps and must be woken.
    bool add(std::string text);

    /// Number of the next record to be added.
    std::uint64_t end() const;

    /// Copies at most `count` records from number `place` on, which moves to the oldest one if it is gone.
    /// Returns how many it moved over, that is, how many the reader has missed.
    std::uint64_t read(std::uint64_t& place, std::size_t count, std::vector<Record>& records) const;

    /// Removes the records before number `place`: every reader is through with them.
    void release(std::uint64_t place);

    /// Says that the worker goes to sleep. False, and it must not, when a record was added after number
    /// `seen`.
    bool fallAsleep(std::uint64_t seen);
    void wakeUp();

    /// Waits until nothing waits any more, at most until `deadline`.
    bool waitUntilEmpty(std::chrono::steady_clock::time_point deadline) const;

    /// From now on records are dropped; those that wait stay.
    void close();

    /// Memory taken by what waits.
    std::size_t bytes() const;

private:
    void removeOldest();

    const std::size_t m_limitBytes;
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_emptied;
    std::deque<Record> m_records;
    std::uint64_t m_first = 0; ///< number of the oldest record that waits
    std::size_t m_bytes = 0;
    bool m_asleep = false;
    bool m_closed = false;
};

} // namespace zelk::ipr
