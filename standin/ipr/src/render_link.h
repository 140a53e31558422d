/// One publisher's connection to one endpoint.
#pragma once

#include "backlog.h"
#include "endpoint_list.h"

#include <zmq.hpp>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace zelk::ipr
{

/// Counted by the links, read by anybody.
struct TrafficCounters
{
    std::atomic<std::uint64_t> sent{0};
    std::atomic<std::uint64_t> unheard{0};
    std::atomic<std::uint64_t> overflowed{0};
};

/// Passes the records of a backlog on to whoever listens at one endpoint.
///
/// It connects when there is something to pass on, not before. Nobody there: the records that were added
/// before it looked are dropped. (So ZeroMQ's own reconnecting is off: only an attempt of our own, begun
/// after a record was added, tells whether somebody listened when it was.) A connected render gets
/// everything; when the connection ends, what still waits was meant for a render that is gone, and is
/// dropped. Belongs to the courier's thread.
class RenderLink
{
public:
    using Clock = std::chrono::steady_clock;

    RenderLink(zmq::context_t& context, const Endpoint& endpoint, const Backlog& backlog,
               TrafficCounters& counters);
    RenderLink(RenderLink&&) = default;

    /// Does what can be done without waiting.
    void advance();

    /// Number of the first record that it still needs.
    std::uint64_t place() const { return m_place; }

    /// Adds what to wait for before the next advance().
    void addPollItems(std::vector<zmq::pollitem_t>& items);

    /// When to advance although nothing happened.
    Clock::time_point nextStep() const;

    /// Nothing more will be added: from now on it asks the render, after the last record, whether it has read
    /// them all. (What is under way when a connection ends may be lost on the render's side, so it must not
    /// end before.)
    void leave() { m_leaving = true; }

    /// Whether the render has answered that, or none is there.
    bool hasLeft() const;

private:
    enum class State
    {
        Unusable,
        Idle,
        Connecting,
        Connected
    };

    void followEvents();
    void followEvent(std::uint16_t event);
    void connect();
    void openSocket();
    void setCurve();
    void checkPatience();
    void passOn();
    bool sendRecords(const std::vector<Record>& records);
    void askWhetherAllIsRead();
    void hearAnswer();
    void hangUp(Clock::duration pause);
    void giveUp(std::uint64_t place, Clock::duration pause);
    void refused();
    void drop(std::uint64_t place);
    void warnOnce(bool& warned, const std::string& sentence);

    zmq::context_t* m_context;
    Endpoint m_endpoint;
    const Backlog* m_backlog;
    TrafficCounters* m_counters;

    State m_state = State::Idle;
    zmq::socket_t m_socket;
    zmq::socket_t m_monitor;
    std::uint64_t m_place;            ///< number of the next record to pass on
    std::uint64_t m_attemptEnd = 0;   ///< records before it were added before the attempt began
    bool m_reached = false;           ///< during an attempt: something has accepted the connection
    bool m_full = false;              ///< ZeroMQ takes no more for now
    bool m_leaving = false;           ///< there are no more records to come
    bool m_asked = false;             ///< of this connection: whether all is read
    bool m_answered = false;          ///< of this connection: it is
    Clock::time_point m_attemptStart; ///< of the latest attempt
    Clock::time_point m_nextAttempt;  ///< not before

    bool m_warnedUnanswered = false;
    bool m_warnedRefused = false;
    bool m_warnedSilent = false;
    bool m_warnedOverflow = false;
    bool m_warnedTrouble = false;
};

} // namespace zelk::ipr
