/// What concerns the whole process: forks, and the one lock that is held across them.
#pragma once

#include <cstdint>
#include <mutex>

namespace zelk::ipr
{

/// How often this process and its ancestors have forked since the first call. Threads and sockets of another
/// generation are not ours: they stayed in the parent.
std::uint64_t forkGeneration() noexcept;

/// Guards what must be whole in a forked child: who starts a thread or replaces the observer holds it, for a
/// short time. A fork waits for it, so the child finds it free.
std::mutex& processMutex() noexcept;

} // namespace zelk::ipr
