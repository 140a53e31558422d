#ifndef KSHOP_PREVIEW_HTTP_SERVER_H
#define KSHOP_PREVIEW_HTTP_SERVER_H

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace kshop
{

struct HttpRequest
{
    std::string method;
    std::string path;                          ///< escapes replaced, without the query
    std::map<std::string, std::string> params; ///< of the query
    std::map<std::string, std::string>
        headers; ///< only those in `wanted_headers`, under their lower-case names
    std::string body;
};

struct HttpAnswer
{
    int status = 200;
    std::string contentType;
    std::string body;
};

/// A web server on the loopback address. Each connection has a thread, up to a limit; the handler is called from them.
class HttpServer
{
public:
    using Handler = std::function<HttpAnswer(const HttpRequest& request)>;

    virtual ~HttpServer() {}

    /// Takes a port, any free one for 0. Its number, or 0 when it cannot be had.
    virtual int open(int port) = 0;
    /// Begins to answer, in threads of its own.
    virtual void serve() = 0;
    /// Ends when the requests under way are answered.
    virtual void stop() = 0;
};

/// Makes one. Null, with a sentence in `why`, when its module cannot be loaded: it stands in a file of its own, since the
/// libraries behind it would cost every other command a part of its start.
std::unique_ptr<HttpServer> loadHttpServer(HttpServer::Handler&& handler, std::string& why);

/// What that module exports, by this name.
using MakeHttpServer = HttpServer* (*)(HttpServer::Handler&& handler);
constexpr const char* make_http_server_name = "kshopMakeHttpServer";

} // namespace kshop

#endif
