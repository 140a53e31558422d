#include <zelk/ipr/publisher.h>

#include "courier.h"
#include "observer.h"
#include "process.h"
#include "report.h"

#include <zelk/ipr/endpoint.h>

#include <atomic>
#include <exception>

namespace zelk::ipr
{

struct Publisher::Impl
{
    bool fromEnvironment = false;
    std::string endpoints;

    std::atomic<Courier*> courier{nullptr};   ///< null before the first record
    std::atomic<std::uint64_t> generation{0}; ///< the fork generation that the courier belongs to
    std::atomic<bool> closed{false};

    /// The running courier; null when there is none of this process.
    Courier* current() const
    {
        Courier* running = courier.load(std::memory_order_acquire);
        return running && generation.load(std::memory_order_relaxed) == forkGeneration() ? running : nullptr;
    }

    /// The running courier, started if need be; null when it cannot be, or after the end.
    Courier* start()
    {
        const std::uint64_t ours = forkGeneration(); // first of all: from now on a fork waits for the lock
        const std::lock_guard<std::mutex> lock(processMutex());
        if (Courier* running = current())
            return running;
        if (closed)
            return nullptr;
        // A courier of another generation has no thread here, and its locks may be held for ever: it is left
        // alone.
        courier = nullptr;
        generation = ours;
        try
        {
            courier = new Courier(fromEnvironment ? configuredEndpoints() : endpoints);
        }
        catch (const std::exception& error)
        {
            closed = true;
            report(std::string("Edits cannot be sent to a render: ") + error.what() +
                   ". Free some memory or threads and restart the host.");
        }
        return courier;
    }
};

Publisher::Publisher() : m_impl(new Impl) { m_impl->fromEnvironment = true; }

Publisher::Publisher(const std::string& endpoints) : m_impl(new Impl) { m_impl->endpoints = endpoints; }

Publisher::~Publisher()
{
    close();
    delete m_impl->current();
}

void Publisher::send(std::string text) const noexcept
{
    showToObserver(text);
    try
    {
        Courier* courier = m_impl->current();
        if (!courier && !m_impl->closed)
            courier = m_impl->start();
        if (courier)
            courier->post(std::move(text));
    }
    catch (const std::exception&)
    {
        // There is no memory for the record: it is dropped, as if nobody listened.
    }
}

bool Publisher::flush(int timeoutMs) const noexcept
{
    const Courier* courier = m_impl->current();
    return !courier || courier->flush(std::chrono::milliseconds(timeoutMs));
}

Traffic Publisher::traffic() const noexcept
{
    const Courier* courier = m_impl->current();
    return courier ? courier->traffic() : Traffic{0, 0, 0};
}

void Publisher::close() noexcept
{
    m_impl->closed = true;
    Courier* courier = m_impl->current();
    if (courier)
        courier->stop(std::chrono::milliseconds(exit_grace_ms));
}

DeltaPublisher::DeltaPublisher() = default;

DeltaPublisher& DeltaPublisher::instance()
{
    // Never destroyed, since other objects may still send while they are; what waits gets its time when this
    // one is.
    static DeltaPublisher& publisher = *new DeltaPublisher;
    struct Closer
    {
        ~Closer() { publisher.close(); }
    };
    static const Closer closer;
    return publisher;
}

} // namespace zelk::ipr
