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

    explicit HttpServer(Handler handler);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    /// Takes a port, any free one for 0. Its number, or 0 when it cannot be had.
    int open(int port);
    /// Begins to answer, in threads of its own.
    void serve();
    /// Ends when the requests under way are answered.
    void stop();

private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace kshop

#endif
