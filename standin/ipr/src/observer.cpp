#include "observer.h"
#include "process.h"

#include <zelk/ipr/observe.h>

#include <atomic>
#include <memory>
#include <mutex>

namespace zelk::ipr
{
namespace
{
std::atomic<bool> observed{false};

// Never destroyed: records may be sent while static objects are.
std::shared_ptr<const SendObserver>& currentObserver()
{
    static auto& observer = *new std::shared_ptr<const SendObserver>;
    return observer;
}

std::shared_ptr<const SendObserver> exchangeObserver(std::shared_ptr<const SendObserver> next)
{
    const std::lock_guard<std::mutex> lock(processMutex());
    currentObserver().swap(next);
    observed = currentObserver() != nullptr;
    return next; // destroyed by the caller, without the lock
}

std::shared_ptr<const SendObserver> copyObserver()
{
    const std::lock_guard<std::mutex> lock(processMutex());
    return currentObserver();
}
} // namespace

void setSendObserver(SendObserver observer)
{
    forkGeneration(); // from now on a fork waits for the lock
    exchangeObserver(observer ? std::make_shared<const SendObserver>(std::move(observer)) : nullptr);
}

void showToObserver(const std::string& text) noexcept
{
    if (!observed.load(std::memory_order_acquire))
        return;
    try
    {
        if (const auto observer = copyObserver())
            (*observer)(text);
    }
    catch (...)
    {
        // A tool's trouble must not reach the host, which only edits a parameter.
    }
}

} // namespace zelk::ipr
