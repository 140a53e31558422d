#ifndef KSHOP_PREVIEW_GUARD_H
#define KSHOP_PREVIEW_GUARD_H

#include "http_server.h"

#include <string>

namespace kshop
{

/// Who may ask the preview. Other pages in the person's browser can reach a server on this machine, and so can other
/// people's programs; neither knows the token, and a browser cannot hide a page's origin.
class Guard
{
public:
    /// Draws a token of 128 bits. Throws std::runtime_error when the system has no random numbers.
    Guard();

    const std::string& token() const { return m_token; }
    /// The port is known only when it is open.
    void setPort(int port) { m_port = port; }

    /// Throws RequestError when the request comes by another name of this machine, or from another page.
    void checkSender(const HttpRequest& request) const;
    /// Throws RequestError without the token.
    void checkToken(const HttpRequest& request) const;

private:
    std::string m_token;
    int m_port = 0;
};

} // namespace kshop

#endif
