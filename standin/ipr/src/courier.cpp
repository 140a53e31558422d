#include "courier.h"
#include "backlog.h"
#include "render_link.h"
#include "report.h"

#include <zelk/ipr/reader.h>

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <system_error>

namespace zelk::ipr
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

struct Courier::Shared
{
    Shared() : wakeDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {
        if (wakeDescriptor < 0)
            throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    ~Shared() { close(wakeDescriptor); }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    void wake() const
    {
        const std::uint64_t one = 1;
        static_cast<void>(!write(wakeDescriptor, &one, sizeof one)); // fails only when it is awake anyway
    }

    Backlog backlog{max_waiting_bytes};
    TrafficCounters counters;
    const int wakeDescriptor;

    mutable std::mutex mutex; ///< guards what follows
    mutable std::condition_variable changed;
    bool stopping = false;
    bool finished = false;
    Clock::time_point deadline; ///< of the stop
};

/// What runs on the thread.
class Courier::Worker
{
public:
    Worker(Shared& shared, const std::string& endpoints) : m_shared(shared), m_context(1)
    {
        for (const Endpoint& endpoint : parseEndpoints(endpoints, Role::Connect))
            m_links.emplace_back(m_context, endpoint, m_shared.backlog, m_shared.counters);
    }

    void run()
    {
        std::uint64_t seen = passOn();
        while (!isDone())
        {
            sleep(seen);
            seen = passOn();
        }
    }

private:
    // Returns the end of what the links have seen.
    std::uint64_t passOn()
    {
        const std::uint64_t seen = m_shared.backlog.end();
        std::uint64_t passed = seen;
        for (RenderLink& link : m_links)
        {
            link.advance();
            passed = std::min(passed, link.place());
        }
        m_shared.backlog.release(passed);
        return seen;
    }

    bool isDone()
    {
        const std::lock_guard<std::mutex> lock(m_shared.mutex);
        if (m_shared.stopping && !m_leaving)
        {
            m_leaving = true;
            for (RenderLink& link : m_links)
                link.leave();
        }
        const auto hasLeft = [](const RenderLink& link) { return link.hasLeft(); };
        return m_leaving &&
               (std::all_of(m_links.begin(), m_links.end(), hasLeft) || Clock::now() >= m_shared.deadline);
    }

    Clock::time_point nextStep() const
    {
        Clock::time_point next = Clock::time_point::max();
        for (const RenderLink& link : m_links)
            next = std::min(next, link.nextStep());
        const std::lock_guard<std::mutex> lock(m_shared.mutex);
        return m_shared.stopping ? std::min(next, m_shared.deadline) : next;
    }

    void sleep(std::uint64_t seen)
    {
        m_items.assign(1, {nullptr, m_shared.wakeDescriptor, ZMQ_POLLIN, 0});
        for (RenderLink& link : m_links)
            link.addPollItems(m_items);
        const long timeout = m_shared.backlog.fallAsleep(seen) ? millisecondsUntil(nextStep()) : 0;
        zmq_poll(m_items.data(), static_cast<int>(m_items.size()),
                 timeout); // interrupted or not, we look around
        m_shared.backlog.wakeUp();
        std::uint64_t count = 0;
        static_cast<void>(!read(m_shared.wakeDescriptor, &count, sizeof count));
    }

    // Rounded up, so that the step is due when we wake.
    static long millisecondsUntil(Clock::time_point time)
    {
        if (time == Clock::time_point::max())
            return -1;
        const auto left =
            std::chrono::duration_cast<milliseconds>(time - Clock::now() + milliseconds(1)).count();
        return time <= Clock::now() ? 0 : static_cast<long>(left);
    }

    Shared& m_shared;
    zmq::context_t m_context; ///< outlives the links
    std::vector<RenderLink> m_links;
    std::vector<zmq::pollitem_t> m_items;
    bool m_leaving = false;
};

namespace
{
/// While it lives, threads that are started take no signals: those are for the host's own.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t m_before;
};
} // namespace

Courier::Courier(const std::string& endpoints) : m_shared(std::make_shared<Shared>())
{
    const SignalsBlocked blocked;
    m_thread = std::thread(
        [shared = m_shared, endpoints]
        {
            try
            {
                Worker(*shared, endpoints).run();
            }
            catch (const std::exception& error)
            {
                report(std::string("Edits reach no render any more: ") + error.what() +
                       ". Save and restart the host.");
            }
            shared->backlog.close();
            shared->backlog.release(shared->backlog.end());
            const std::lock_guard<std::mutex> lock(shared->mutex);
            shared->finished = true;
            shared->changed.notify_all();
        });
}

Courier::~Courier() { stop(milliseconds(exit_grace_ms)); }

void Courier::post(std::string text)
{
    if (text.size() > max_record_bytes)
    {
        if (m_shared->counters.overflowed++ == 0)
            report("An edit of " + std::to_string(text.size()) +
                   " bytes is longer than any render takes, and is dropped. "
                   "Give the parameter a smaller value.");
        return;
    }
    if (m_shared->backlog.add(std::move(text)))
        m_shared->wake();
}

bool Courier::flush(milliseconds timeout) const
{
    return m_shared->backlog.waitUntilEmpty(Clock::now() + timeout);
}

Traffic Courier::traffic() const
{
    const TrafficCounters& counters = m_shared->counters;
    return {counters.sent, counters.unheard, counters.overflowed};
}

void Courier::stop(milliseconds grace)
{
    if (!m_thread.joinable())
        return;
    m_shared->backlog.close();
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    m_shared->stopping = true;
    m_shared->deadline = Clock::now() + grace;
    m_shared->wake();
    // A name server may keep ZeroMQ busy for longer; that thread then ends with the process.
    const auto patience = m_shared->deadline + milliseconds(500);
    const bool finished = m_shared->changed.wait_until(lock, patience, [this] { return m_shared->finished; });
    lock.unlock();
    if (finished)
        m_thread.join();
    else
        m_thread.detach();
}

} // namespace zelk::ipr
