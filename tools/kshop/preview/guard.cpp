#include "guard.h"

#include "request_error.h"

#include <sys/random.h>

#include <fmt/format.h>

#include <array>
#include <stdexcept>

namespace kshop
{

namespace
{

std::string header(const HttpRequest& request, const char* name)
{
    const auto found = request.headers.find(name);
    return found == request.headers.end() ? "" : found->second;
}

/// Takes the same time wherever the texts differ.
bool sameSecret(const std::string& given, const std::string& secret)
{
    unsigned difference = given.size() == secret.size() ? 0 : 1;
    for (std::size_t i = 0; i < secret.size(); ++i)
        difference |= static_cast<unsigned char>(secret[i]) ^
                      static_cast<unsigned char>(i < given.size() ? given[i] : 0);
    return difference == 0;
}

} // namespace

Guard::Guard()
{
    std::array<unsigned char, 16> bytes = {};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error("the system gives no random numbers for the preview's token");
    for (const unsigned char byte : bytes)
        m_token += fmt::format("{:02x}", byte);
}

void Guard::checkSender(const HttpRequest& request) const
{
    const std::string host = header(request, "host");
    if (host != fmt::format("127.0.0.1:{}", m_port) && host != fmt::format("localhost:{}", m_port))
        throw RequestError(403, "The preview answers at the address that it printed, and at no other.");
    if (request.headers.count("origin") != 0 && header(request, "origin") != "http://" + host)
        throw RequestError(403, "The preview answers its own page, and no other.");
}

void Guard::checkToken(const HttpRequest& request) const
{
    if (!sameSecret(header(request, "x-preview-token"), m_token))
        throw RequestError(403,
                           "The token is missing or wrong; open the address that 'kshop preview' printed.");
}

} // namespace kshop
