#include "http_server.h"

#include <httplib.h>

#include <fcntl.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace kshop
{

namespace
{

const char* const wanted_headers[] = {"host", "origin", "content-type", "x-preview-token"};

/// Each tab of a browser may hold six connections, and one more while it waits for changes.
const std::size_t thread_count = 64;

const std::size_t longest_body = 1024 * 1024;

const time_t idle_seconds = 5;

const httplib::Headers safe_headers = {
    {"Content-Security-Policy",
     "default-src 'self'; frame-ancestors 'none'; base-uri 'none'; form-action 'none'"},
    {"X-Frame-Options", "DENY"},
    {"X-Content-Type-Options", "nosniff"},
    {"Cache-Control", "no-store"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
};

HttpRequest requestOf(const httplib::Request& given)
{
    HttpRequest request;
    request.method = given.method;
    request.path = given.path;
    request.params.insert(given.params.begin(), given.params.end());
    for (const char* name : wanted_headers)
        if (given.has_header(name))
            request.headers[name] = given.get_header_value(name);
    request.body = given.body;
    return request;
}

/// The library's own sharing of ports would let a second preview take the same one in silence.
void setSocketOptions(socket_t socket)
{
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    fcntl(socket, F_SETFD, FD_CLOEXEC);
}

/// What the library refuses by itself: a body that is too long, a request that is none.
void describeError(const httplib::Request&, httplib::Response& response)
{
    if (!response.body.empty())
        return;
    const char* sentence = response.status == 413 ? "The request is longer than 1 MB."
                                                  : "This is no request that the preview understands.";
    response.set_content(std::string("{\"error\": \"") + sentence + "\"}", "application/json");
}

class LoopbackServer : public HttpServer
{
public:
    explicit LoopbackServer(Handler handler) : m_handler(std::move(handler))
    {
        const auto answer = [this](const httplib::Request& request, httplib::Response& response)
        {
            const HttpAnswer made = m_handler(requestOf(request));
            response.status = made.status;
            response.set_content(made.body, made.contentType);
        };
        m_server.Get(".*", answer).Post(".*", answer).Put(".*", answer).Patch(".*", answer);
        m_server.Delete(".*", answer).Options(".*", answer);
        m_server.set_default_headers(safe_headers);
        m_server.set_error_handler(httplib::Server::Handler(describeError));
        m_server.set_payload_max_length(longest_body);
        m_server.set_keep_alive_timeout(idle_seconds);
        m_server.set_tcp_nodelay(true);
        m_server.set_socket_options(setSocketOptions);
        m_server.new_task_queue = [] { return new httplib::ThreadPool(thread_count); };
    }
    ~LoopbackServer() override { LoopbackServer::stop(); }

    int open(int port) override
    {
        const char* const address = "127.0.0.1";
        if (port == 0)
            return std::max(m_server.bind_to_any_port(address), 0);
        return m_server.bind_to_port(address, port) ? port : 0;
    }

    void serve() override
    {
        m_thread = std::thread([this] { m_server.listen_after_bind(); });
        // stop() finds nothing to stop before it runs.
        for (int i = 0; i < 1000 && !m_server.is_running(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    void stop() override
    {
        if (!m_thread.joinable())
            return;
        m_server.stop();
        m_thread.join();
    }

private:
    Handler m_handler;
    httplib::Server m_server;
    std::thread m_thread;
};

} // namespace

} // namespace kshop

extern "C" __attribute__((visibility("default"))) kshop::HttpServer*
kshopMakeHttpServer(kshop::HttpServer::Handler&& handler)
{
    return new kshop::LoopbackServer(std::move(handler));
}
