#include "gatekeeper.h"

#include <array>
#include <vector>

namespace zelk::ipr
{
namespace
{
// Places of the frames in a request.
enum
{
    Version,
    RequestId,
    Domain,
    Address,
    Identity,
    Mechanism,
    Credentials,
    FrameCount
};

std::vector<std::string> receiveFrames(zmq::socket_t& socket)
{
    std::vector<std::string> frames;
    zmq::message_t frame;
    do
    {
        if (!socket.recv(frame, zmq::recv_flags::none))
            break;
        frames.push_back(frame.to_string());
    } while (frame.more());
    return frames;
}

void sendFrames(zmq::socket_t& socket, const std::vector<std::string>& frames)
{
    for (std::size_t i = 0; i < frames.size(); ++i)
        socket.send(zmq::buffer(frames[i]),
                    i + 1 < frames.size() ? zmq::send_flags::sndmore : zmq::send_flags::none);
}

bool mayEnter(const std::vector<std::string>& request, const std::string& key)
{
    return request.size() == FrameCount && request[Mechanism] == "CURVE" &&
           request[Domain] == gatekeeper_domain && request[Credentials] == key;
}
} // namespace

const char gatekeeper_domain[] = "korvan";

Gatekeeper::Gatekeeper(zmq::context_t& context, const std::string& publicKey)
    : m_requests(context, zmq::socket_type::rep),
      m_stop(context, zmq::socket_type::pair),
      m_stopper(context, zmq::socket_type::pair)
{
    m_requests.set(zmq::sockopt::linger, 0);
    m_stopper.set(zmq::sockopt::linger, 0);
    m_requests.bind("inproc://zeromq.zap.01");
    m_stop.bind("inproc://gatekeeper-stop");
    m_stopper.connect("inproc://gatekeeper-stop");

    std::array<std::uint8_t, 32> key = {};
    zmq_z85_decode(key.data(), publicKey.c_str());
    m_thread = std::thread([this, bytes = std::string(key.begin(), key.end())] { answerRequests(bytes); });
}

Gatekeeper::~Gatekeeper()
{
    zmq_send(m_stopper.handle(), "stop", 4, 0); // a pair with nothing in it takes that at once
    m_thread.join();
}

void Gatekeeper::answerRequests(const std::string& key)
{
    for (;;)
    {
        zmq_pollitem_t items[] = {{m_requests.handle(), 0, ZMQ_POLLIN, 0},
                                  {m_stop.handle(), 0, ZMQ_POLLIN, 0}};
        if (zmq_poll(items, 2, -1) < 0)
            continue; // a signal
        if (items[1].revents != 0)
            return;
        answer(key);
    }
}

void Gatekeeper::answer(const std::string& key)
try
{
    const std::vector<std::string> request = receiveFrames(m_requests);
    const std::string id = request.size() > RequestId ? request[RequestId] : "";
    const bool admitted = mayEnter(request, key);
    sendFrames(m_requests, {"1.0", id, admitted ? "200" : "400", admitted ? "OK" : "unknown key", "", ""});
}
catch (const std::exception&)
{
    // Without an answer nobody is admitted; the next request has its own.
}

} // namespace zelk::ipr
