#include "process.h"

#include <pthread.h>

#include <atomic>
#include <new>
#include <type_traits>

namespace zelk::ipr
{
namespace
{
std::atomic<std::uint64_t> fork_generation{0};

void beforeFork() { processMutex().lock(); }
void inParent() { processMutex().unlock(); }
void inChild()
{
    ++fork_generation;
    processMutex().unlock();
}
} // namespace

std::uint64_t forkGeneration() noexcept
{
    static const int registered = pthread_atfork(beforeFork, inParent, inChild);
    static_cast<void>(registered); // fails for want of memory only
    return fork_generation.load(std::memory_order_relaxed);
}

std::mutex& processMutex() noexcept
{
    // Never destroyed, since senders may outlive static objects: a mutex with a constant beginning and no end
    // of its own.
    static std::aligned_storage<sizeof(std::mutex), alignof(std::mutex)>::type storage;
    static std::mutex& mutex = *new (&storage) std::mutex;
    return mutex;
}

} // namespace zelk::ipr
