#include "process.h"

#include <pthread.h>

#include <atomic>

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
    static std::mutex& mutex = *new std::mutex; // never destroyed: senders may outlive static objects
    return mutex;
}

} // namespace zelk::ipr
