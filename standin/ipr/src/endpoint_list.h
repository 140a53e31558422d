/// The endpoints of a list, each checked before anything is opened.
#pragma once

#include "key_file.h"

#include <memory>
#include <string>
#include <vector>

namespace zelk::ipr
{

enum class Role
{
    Bind,
    Connect
};

struct Endpoint
{
    std::string address;              ///< as ZeroMQ takes it
    std::string path;                 ///< of the socket; empty for tcp
    bool ipv6 = false;                ///< the host is a bracketed IPv6 address
    std::shared_ptr<const Keys> keys; ///< null: neither encrypted nor checked
    std::string problem;              ///< sentence that says why it cannot be used; empty if it can

    bool isTcp() const { return path.empty(); }
};

/// Splits a list at its commas, and leaves out blanks, empty items and repetitions. Keys are those of
/// ZELK_IPR_KEYS. The default endpoint's directory is made if need be.
std::vector<Endpoint> parseEndpoints(const std::string& list, Role role);

} // namespace zelk::ipr
