/// Lets in only hosts that have the right key.
#pragma once

#include <zmq.hpp>

#include <string>
#include <thread>

namespace zelk::ipr
{

/// The domain of the sockets that it guards.
extern const char gatekeeper_domain[];

/// Answers ZeroMQ's authentication requests (its ZAP protocol) of one context, on a thread of its own. It
/// must be there before a guarded socket binds and outlive it: without it, ZeroMQ lets in whoever knows the
/// render's public key.
class Gatekeeper
{
public:
    /// @param publicKey  the one key of the hosts that may connect, 40 characters of Z85
    /// Throws zmq::error_t when ZeroMQ cannot give what is needed.
    Gatekeeper(zmq::context_t& context, const std::string& publicKey);

    /// Before the context's end.
    ~Gatekeeper();
    Gatekeeper(const Gatekeeper&) = delete;
    Gatekeeper& operator=(const Gatekeeper&) = delete;

private:
    void answerRequests(const std::string& key);
    void answer(const std::string& key);

    zmq::socket_t m_requests;
    zmq::socket_t m_stop;    ///< the thread's end of a pair
    zmq::socket_t m_stopper; ///< ours
    std::thread m_thread;
};

} // namespace zelk::ipr
