#include "render_link.h"
#include "report.h"

#include <zelk/ipr/publisher.h>

#include <algorithm>
#include <cstring>

namespace zelk::ipr
{
namespace
{
using namespace std::chrono_literals;

constexpr auto pause_after_nobody = 10ms; // how old a record may be that a render which has just come up gets
constexpr auto pause_after_refusal = 1s;
constexpr auto connect_patience = 2s; // until something accepts the connection
constexpr auto answer_patience = 5s;  // until we tell that it does not answer
constexpr std::size_t batch = 64;     // records fetched at once
constexpr int batches_per_turn = 8;   // then the other links have theirs

constexpr int watched_events = ZMQ_EVENT_CONNECTED | ZMQ_EVENT_CLOSED | ZMQ_EVENT_DISCONNECTED |
                               ZMQ_EVENT_HANDSHAKE_SUCCEEDED | ZMQ_EVENT_HANDSHAKE_FAILED_NO_DETAIL |
                               ZMQ_EVENT_HANDSHAKE_FAILED_PROTOCOL | ZMQ_EVENT_HANDSHAKE_FAILED_AUTH;

std::string nextMonitorAddress()
{
    static std::atomic<std::uint64_t> count{0};
    return "inproc://monitor-" + std::to_string(++count);
}

// A machine that goes down without a word is noticed within some two minutes. (The kernel answers for a
// render that is merely stopped.)
void setKeepAlive(zmq::socket_t& socket)
{
    socket.set(zmq::sockopt::tcp_keepalive, 1);
    socket.set(zmq::sockopt::tcp_keepalive_idle, 60);
    socket.set(zmq::sockopt::tcp_keepalive_intvl, 10);
    socket.set(zmq::sockopt::tcp_keepalive_cnt, 6);
    socket.set(zmq::sockopt::tcp_maxrt, 120'000);
}
} // namespace

RenderLink::RenderLink(zmq::context_t& context, const Endpoint& endpoint, const Backlog& backlog,
                       TrafficCounters& counters)
    : m_context(&context), m_endpoint(endpoint), m_backlog(&backlog), m_counters(&counters), m_place(0)
{
    if (endpoint.problem.empty())
        return;
    m_state = State::Unusable;
    report(endpoint.problem);
}

void RenderLink::advance()
{
    followEvents();
    checkPatience();
    if (m_state == State::Unusable)
        drop(m_backlog->end());
    else if (m_state == State::Idle && m_place < m_backlog->end() && Clock::now() >= m_nextAttempt)
        connect();
    else if (m_state == State::Connected)
        passOn();
}

void RenderLink::addPollItems(std::vector<zmq::pollitem_t>& items)
{
    if (m_monitor)
        items.push_back({m_monitor.handle(), 0, ZMQ_POLLIN, 0});
    if (m_state == State::Connected)
        items.push_back(
            {m_socket.handle(), 0, static_cast<short>(m_full ? ZMQ_POLLIN | ZMQ_POLLOUT : ZMQ_POLLIN), 0});
}

RenderLink::Clock::time_point RenderLink::nextStep() const
{
    const bool waits = m_place < m_backlog->end();
    if (m_state == State::Idle && waits)
        return m_nextAttempt;
    if (m_state == State::Connecting && !m_reached)
        return m_attemptStart + connect_patience;
    if (m_state == State::Connecting && !m_warnedSilent)
        return m_attemptStart + answer_patience;
    const bool isUrgent = m_state == State::Connected && !m_full && (waits || (m_leaving && !m_asked));
    return isUrgent ? Clock::now() : Clock::time_point::max();
}

bool RenderLink::hasLeft() const
{
    const bool isIdle = m_state == State::Idle || m_state == State::Unusable;
    return m_place >= m_backlog->end() && (isIdle || m_answered);
}

void RenderLink::followEvents()
{
    // A frame with the event's number and value, and one with the address.
    zmq::message_t frame;
    while (m_monitor && m_monitor.recv(frame, zmq::recv_flags::dontwait))
    {
        std::uint16_t event = 0;
        std::memcpy(&event, frame.data(), std::min(sizeof event, frame.size()));
        while (frame.more() && m_monitor.recv(frame, zmq::recv_flags::dontwait))
            ;
        followEvent(event);
    }
}

void RenderLink::followEvent(std::uint16_t event)
{
    if (event == ZMQ_EVENT_CONNECTED)
        m_reached = true;
    else if (event == ZMQ_EVENT_HANDSHAKE_SUCCEEDED)
        m_state = State::Connected;
    else if (m_state == State::Connected)
        giveUp(m_backlog->end(), 0s);
    else if (m_reached)
        refused();
    else
        giveUp(m_attemptEnd, pause_after_nobody);
}

void RenderLink::connect()
{
    m_attemptEnd = m_backlog->end();
    m_attemptStart = Clock::now();
    m_reached = false;
    m_full = m_asked = m_answered = false;
    try
    {
        openSocket();
        m_state = State::Connecting;
    }
    catch (const zmq::error_t& error)
    {
        warnOnce(m_warnedTrouble, "The endpoint " + m_endpoint.address + " cannot be used: " + error.what() +
                                      ". Correct ZELK_IPR_ENDPOINT and start again.");
        // It may be a passing want, of file descriptors for example: there will be another attempt.
        giveUp(m_attemptEnd, pause_after_refusal);
    }
}

void RenderLink::openSocket()
{
    m_socket = zmq::socket_t(*m_context, zmq::socket_type::dealer);
    m_socket.set(zmq::sockopt::linger, 0);
    // Nothing is taken before there is a render, and nothing outlives it.
    m_socket.set(zmq::sockopt::immediate, true);
    m_socket.set(zmq::sockopt::sndhwm, records_under_way);
    m_socket.set(zmq::sockopt::reconnect_ivl, -1);
    m_socket.set(zmq::sockopt::handshake_ivl, 0); // a render that is stopped now may go on later
    m_socket.set(zmq::sockopt::ipv6, m_endpoint.ipv6);
    if (m_endpoint.isTcp())
        setKeepAlive(m_socket);
    setCurve();

    const std::string monitor = nextMonitorAddress();
    if (zmq_socket_monitor(m_socket.handle(), monitor.c_str(), watched_events) != 0)
        throw zmq::error_t();
    m_monitor = zmq::socket_t(*m_context, zmq::socket_type::pair);
    m_monitor.set(zmq::sockopt::linger, 0);
    m_monitor.connect(monitor);
    m_socket.connect(m_endpoint.address);
}

void RenderLink::setCurve()
{
    if (!m_endpoint.keys)
        return;
    m_socket.set(zmq::sockopt::curve_serverkey, m_endpoint.keys->serverPublic);
    m_socket.set(zmq::sockopt::curve_publickey, m_endpoint.keys->clientPublic);
    m_socket.set(zmq::sockopt::curve_secretkey, m_endpoint.keys->clientSecret);
}

void RenderLink::checkPatience()
{
    if (m_state != State::Connecting)
        return;
    const auto waited = Clock::now() - m_attemptStart;
    if (!m_reached && waited >= connect_patience)
    {
        warnOnce(m_warnedUnanswered,
                 "The endpoint " + m_endpoint.address +
                     " does not answer. Is its host right, and does the network let us through?");
        giveUp(m_attemptEnd, pause_after_nobody);
    }
    else if (m_reached && waited >= answer_patience)
        warnOnce(m_warnedSilent,
                 "Something at " + m_endpoint.address +
                     " has taken the connection but does not answer. Is it a render, and is it running?");
}

void RenderLink::passOn()
{
    std::vector<Record> records;
    bool isGoing = true;
    m_full = false;
    for (int i = 0; i < batches_per_turn && isGoing; ++i)
    {
        const std::uint64_t missed = m_backlog->read(m_place, batch, records);
        m_counters->overflowed += missed;
        if (missed > 0)
            warnOnce(m_warnedOverflow, "The render at " + m_endpoint.address +
                                           " does not read what it is sent: more than " +
                                           std::to_string(max_waiting_bytes >> 20) +
                                           " MiB wait, and the oldest edits are dropped. Restart the render "
                                           "to bring it up to date.");
        isGoing = !records.empty() && sendRecords(records);
    }
    askWhetherAllIsRead();
    hearAnswer();
}

bool RenderLink::sendRecords(const std::vector<Record>& records)
{
    for (const Record& record : records)
    {
        m_full = !m_socket.send(zmq::buffer(*record), zmq::send_flags::dontwait);
        if (m_full)
            return false;
        ++m_place;
        ++m_counters->sent;
    }
    return true;
}

void RenderLink::askWhetherAllIsRead()
{
    if (!m_leaving || m_asked || m_full || m_place < m_backlog->end())
        return;
    m_full = !m_socket.send(zmq::str_buffer(""), zmq::send_flags::sndmore | zmq::send_flags::dontwait);
    if (m_full)
        return;
    m_socket.send(zmq::str_buffer("read?"), zmq::send_flags::dontwait);
    m_asked = true;
}

// A render says nothing else; what a stranger might say is received all the same, and so does not pile up.
void RenderLink::hearAnswer()
{
    zmq::message_t frame;
    while (m_socket.recv(frame, zmq::recv_flags::dontwait))
        m_answered = m_asked;
}

void RenderLink::hangUp(Clock::duration pause)
{
    m_monitor.close();
    m_socket.close();
    m_state = m_state == State::Unusable ? State::Unusable : State::Idle;
    m_nextAttempt = Clock::now() + pause;
}

void RenderLink::giveUp(std::uint64_t place, Clock::duration pause)
{
    hangUp(pause);
    drop(place);
}

// Not for a socket of our own, whose render may just have ended.
void RenderLink::refused()
{
    if (m_endpoint.isTcp())
        warnOnce(m_warnedRefused,
                 "What listens at " + m_endpoint.address +
                     " has refused the connection. Is it a render, and has it the same key file in "
                     "ZELK_IPR_KEYS as this host, or neither of them one?");
    giveUp(m_attemptEnd, pause_after_refusal);
}

void RenderLink::drop(std::uint64_t place)
{
    if (place <= m_place)
        return;
    m_counters->unheard += place - m_place;
    m_place = place;
}

void RenderLink::warnOnce(bool& warned, const std::string& sentence)
{
    if (!warned)
        report(sentence);
    warned = true;
}

} // namespace zelk::ipr
