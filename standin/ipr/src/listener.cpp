#include <zelk/ipr/listener.h>

#include "endpoint_list.h"
#include "gatekeeper.h"

#include <zelk/ipr/endpoint.h>
#include <zelk/ipr/reader.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <zmq.hpp>

namespace zelk::ipr
{
namespace
{
using Clock = std::chrono::steady_clock;

constexpr int texts_ahead = 64; // received before they are asked for

// ZeroMQ would take the socket away from a listener that is alive.
bool isTaken(const std::string& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), std::min(path.size(), sizeof address.sun_path - 1));
    const int probe = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (probe < 0)
        return false;
    const int result = connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    const bool taken = result == 0 || errno == EAGAIN; // EAGAIN: its queue is full
    close(probe);
    return taken;
}

// Why nothing may be put there; empty if it may. ZeroMQ removes what it finds under the socket's name.
std::string objectionTo(const std::string& path)
{
    struct stat status = {};
    if (path.empty() || lstat(path.c_str(), &status) != 0)
        return "";
    if (!S_ISSOCK(status.st_mode))
        return "a file that is no socket has its name. Remove that, or choose another ZELK_IPR_ENDPOINT.";
    return isTaken(path)
               ? "a render listens there already. Stop that one, or choose another ZELK_IPR_ENDPOINT."
               : "";
}

/// While it lives, new sockets are for their owner alone.
class PrivateMask
{
public:
    PrivateMask() : m_before(umask(0177)) {}
    ~PrivateMask() { umask(m_before); }
    PrivateMask(const PrivateMask&) = delete;
    PrivateMask& operator=(const PrivateMask&) = delete;

private:
    const mode_t m_before;
};

void setCurve(zmq::socket_t& socket, const Keys& keys)
{
    socket.set(zmq::sockopt::curve_server, true);
    socket.set(zmq::sockopt::curve_secretkey, keys.serverSecret);
    socket.set(zmq::sockopt::zap_domain, gatekeeper_domain);
}
} // namespace

struct Listener::Impl
{
    zmq::context_t context{1};
    std::unique_ptr<Gatekeeper> gatekeeper;
    std::vector<zmq::socket_t> sockets;
    std::size_t turn = 0;               ///< the socket that is asked first
    std::vector<zmq::message_t> frames; ///< of the latest message

    void bind(const Endpoint& endpoint)
    {
        if (endpoint.keys && !gatekeeper)
            gatekeeper.reset(new Gatekeeper(context, endpoint.keys->clientPublic));
        zmq::socket_t socket(context, zmq::socket_type::router);
        socket.set(zmq::sockopt::linger, 0);
        socket.set(zmq::sockopt::rcvhwm, texts_ahead);
        socket.set(zmq::sockopt::maxmsgsize, static_cast<std::int64_t>(max_record_bytes));
        socket.set(zmq::sockopt::ipv6, endpoint.ipv6);
        if (endpoint.keys)
            setCurve(socket, *endpoint.keys);
        const PrivateMask mask;
        socket.bind(endpoint.address);
        sockets.push_back(std::move(socket));
    }

    // Every socket has its turn, so that a busy one does not starve the others.
    bool receiveNow(std::string& text)
    {
        for (std::size_t i = 0; i < sockets.size(); ++i)
        {
            turn = (turn + 1) % sockets.size();
            while (receiveFrames(sockets[turn]))
                if (isText())
                {
                    text.assign(static_cast<const char*>(frames[1].data()), frames[1].size());
                    return true;
                }
                else
                    answer(sockets[turn]);
        }
        return false;
    }

    // A host's name, which ZeroMQ puts first, and what the host has sent: a text is one frame.
    bool receiveFrames(zmq::socket_t& socket)
    {
        frames.clear();
        do
        {
            zmq::message_t frame;
            if (!socket.recv(frame, zmq::recv_flags::dontwait))
                return false;
            frames.push_back(std::move(frame));
        } while (frames.back().more());
        return true;
    }

    bool isText() const { return frames.size() == 2; }

    // Two frames, the first of them empty, are a host's question whether everything before was received: they
    // go back. A host that has gone meanwhile misses nothing.
    void answer(zmq::socket_t& socket)
    {
        if (frames.size() != 3 || !frames[1].empty())
            return;
        socket.send(frames[0], zmq::send_flags::sndmore | zmq::send_flags::dontwait);
        socket.send(frames[1], zmq::send_flags::sndmore | zmq::send_flags::dontwait);
        socket.send(frames[2], zmq::send_flags::dontwait);
    }

    // False when the time is over, or a signal came.
    bool wait(int timeoutMs)
    {
        std::vector<zmq_pollitem_t> items;
        for (zmq::socket_t& socket : sockets)
            items.push_back({socket.handle(), 0, ZMQ_POLLIN, 0});
        return zmq_poll(items.data(), static_cast<int>(items.size()), timeoutMs) > 0;
    }
};

Listener::Listener() = default;

Listener::~Listener() = default;

bool Listener::open(const std::string& endpoints, std::string& error)
{
    m_impl.reset();
    std::unique_ptr<Impl> impl(new Impl);
    for (const Endpoint& endpoint :
         parseEndpoints(endpoints.empty() ? configuredEndpoints() : endpoints, Role::Bind))
    {
        const std::string objection = endpoint.problem.empty() ? objectionTo(endpoint.path) : "";
        error = objection.empty() ? endpoint.problem
                                  : "The endpoint " + endpoint.address + " cannot be used: " + objection;
        if (!error.empty())
            return false;
        try
        {
            impl->bind(endpoint);
        }
        catch (const zmq::error_t& trouble)
        {
            error = "The endpoint " + endpoint.address + " cannot be used: " + trouble.what() +
                    ". Choose another one in ZELK_IPR_ENDPOINT.";
            return false;
        }
    }
    if (impl->sockets.empty())
    {
        error = "ZELK_IPR_ENDPOINT names no endpoint. Write it as ipc://PATH or tcp://HOST:PORT.";
        return false;
    }
    m_impl = std::move(impl);
    return true;
}

std::vector<std::string> Listener::endpoints() const
{
    std::vector<std::string> bound;
    if (m_impl)
        for (const zmq::socket_t& socket : m_impl->sockets)
            bound.push_back(socket.get(zmq::sockopt::last_endpoint));
    return bound;
}

bool Listener::receive(std::string& text, int timeoutMs)
{
    if (!m_impl)
        return false;
    // A socket may be ready for something that turns out to be no whole text: so there can be several waits.
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    while (!m_impl->receiveNow(text))
    {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (timeoutMs >= 0 && left <= 0)
            return false;
        if (!m_impl->wait(timeoutMs < 0 ? -1 : static_cast<int>(left)))
            return false;
    }
    return true;
}

} // namespace zelk::ipr
