#include "commands.h"
#include "interruption.h"
#include "output.h"
#include "records/record_file.h"
#include "text.h"

#include <zelk/ipr/endpoint.h>
#include <zelk/ipr/publisher.h>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace kshop
{

namespace
{

using Clock = std::chrono::steady_clock;

/// How long a wait may last before signals are looked at.
const int longest_wait_ms = 100;

/// The longest pause between two records, a year: a clock cannot count for ever.
const double longest_period_seconds = 365.0 * 24 * 60 * 60;

/// What may be handed over before it is waited for. Far below what a publisher keeps, so that none is dropped for a
/// render that reads slowly.
const std::size_t most_waiting_bytes = zelk::ipr::max_waiting_bytes / 4;

/// The moments at which records may go.
class Pace
{
public:
    /// @param rate  records a second; 0: as fast as they are taken
    explicit Pace(double rate)
        : m_period(rate > 0 ? std::min(1 / rate, longest_period_seconds) : 0), m_next(Clock::now())
    {
    }

    /// Waits for the next moment; false when a signal came before.
    bool wait(const Interruption& interruption)
    {
        while (!interruption.came())
        {
            const auto left = m_next - Clock::now();
            if (left <= Clock::duration::zero())
            {
                goOn();
                return true;
            }
            std::this_thread::sleep_for(
                std::min<Clock::duration>(left, std::chrono::milliseconds(longest_wait_ms)));
        }
        return false;
    }

private:
    // A sleep that lasted a little too long is made up for, so that the rate is met; a pause is not, for that would
    // be a burst.
    void goOn()
    {
        const auto longest_lag = std::chrono::milliseconds(10);
        m_next = std::max(m_next, Clock::now() - longest_lag) +
                 std::chrono::duration_cast<Clock::duration>(m_period);
    }

    std::chrono::duration<double> m_period;
    Clock::time_point m_next;
};

/// Waits until everything was passed on or dropped; false when a signal came before.
bool flush(const zelk::ipr::Publisher& publisher, const Interruption& interruption)
{
    while (!interruption.came())
        if (publisher.flush(longest_wait_ms))
            return true;
    return false;
}

/// Sends the records in order; false when a signal came before the last one was passed on.
bool sendAll(const zelk::ipr::Publisher& publisher, const std::vector<std::string>& records, double rate,
             const Interruption& interruption)
{
    Pace pace(rate);
    std::size_t waiting = 0;
    for (const std::string& record : records)
    {
        waiting += record.size();
        if (waiting > most_waiting_bytes)
        {
            if (!flush(publisher, interruption))
                return false;
            waiting = record.size();
        }
        if (!pace.wait(interruption))
            return false;
        publisher.send(record);
    }
    return flush(publisher, interruption);
}

std::string trafficText(const zelk::ipr::Traffic& traffic)
{
    std::string text =
        fmt::format("{} sent, {} heard by nobody", countText(traffic.sent, "record"), traffic.unheard);
    if (traffic.overflowed > 0)
        text += fmt::format(", {} dropped because a render did not read", traffic.overflowed);
    return text;
}

} // namespace

int runReplay(const ReplayOptions& options)
{
    std::vector<std::string> records;
    if (!readRecordFile(options.file, records))
        return exit_failure;
    const std::string endpoints =
        options.endpoints.empty() ? zelk::ipr::configuredEndpoints() : options.endpoints;
    const Interruption interruption;
    zelk::ipr::Publisher publisher(endpoints);
    const bool complete = sendAll(publisher, records, options.rate, interruption);
    publisher.close();
    const zelk::ipr::Traffic traffic = publisher.traffic();
    if (writeOut(trafficText(traffic) + "\n") != exit_ok)
        return exit_failure;
    if (!complete)
    {
        complain("interrupted; not all records were sent");
        return exit_failure;
    }
    if (!records.empty() && traffic.sent + traffic.unheard + traffic.overflowed == 0)
    {
        complain("no endpoint is named, and nothing was sent; write it as ipc://PATH or tcp://HOST:PORT");
        return exit_failure;
    }
    if (traffic.unheard + traffic.overflowed == 0)
        return exit_ok;
    complain(fmt::format("not every record was heard at {}; start a render, or 'kshop listen', there first",
                         endpoints));
    return exit_failure;
}

} // namespace kshop
