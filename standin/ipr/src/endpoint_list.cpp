#include "endpoint_list.h"
#include "runtime_directory.h"

#include <zelk/ipr/endpoint.h>

#include <arpa/inet.h>
#include <sys/un.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace zelk::ipr
{
namespace
{
const std::string ipc_prefix = "ipc://";
const std::string tcp_prefix = "tcp://";

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::string trimmed(const std::string& text)
{
    const std::size_t from = text.find_first_not_of(" \t\r\n");
    const std::size_t to = text.find_last_not_of(" \t\r\n");
    return from == std::string::npos ? "" : text.substr(from, to - from + 1);
}

std::string refusal(const std::string& address, const std::string& why)
{
    return "The endpoint " + address + " cannot be used: " + why;
}

bool isIpv4Loopback(const std::string& host)
{
    in_addr address = {};
    return inet_pton(AF_INET, host.c_str(), &address) == 1 && (ntohl(address.s_addr) >> 24) == 127;
}

bool isIpv6Loopback(const std::string& host)
{
    in6_addr address = {};
    return host.size() > 2 && inet_pton(AF_INET6, host.substr(1, host.size() - 2).c_str(), &address) == 1 &&
           IN6_IS_ADDR_LOOPBACK(&address);
}

// A name other than this one may lead to another machine, whatever it leads to today.
bool isLoopback(const std::string& host)
{
    return host == "localhost" || isIpv4Loopback(host) || isIpv6Loopback(host);
}

bool isPort(const std::string& text, Role role)
{
    if (text == "*")
        return role == Role::Bind;
    const bool digits =
        !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos;
    return digits && std::stoi(text) >= 1 && std::stoi(text) <= 65535;
}

// The keys of the environment; null, and a sentence in `error` if they cannot be had.
std::shared_ptr<const Keys> environmentKeys(std::string& error)
{
    const char* file = std::getenv("ZELK_IPR_KEYS");
    if (!file || !*file)
        return nullptr;
    Keys keys;
    return readKeys(file, keys, error) ? std::make_shared<const Keys>(keys) : nullptr;
}

void checkKeysOf(Endpoint& endpoint, bool reachable)
{
    std::string error;
    endpoint.keys = environmentKeys(error);
    if (!error.empty())
        endpoint.problem = refusal(endpoint.address, error);
    else if (reachable && !endpoint.keys)
        endpoint.problem = refusal(endpoint.address,
                                   "other machines can reach it, and there are no keys. Make a key file with "
                                   "\"kshop keys\" and set ZELK_IPR_KEYS to it for hosts and renders.");
}

void checkTcp(Endpoint& endpoint, Role role)
{
    const std::string rest = endpoint.address.substr(tcp_prefix.size());
    const std::size_t colon = rest.rfind(':');
    const std::string host = rest.substr(0, colon);
    if (colon == std::string::npos || host.empty() || !isPort(rest.substr(colon + 1), role))
    {
        endpoint.problem = refusal(endpoint.address,
                                   "it has no host and port from 1 to 65535. Write it as tcp://HOST:PORT.");
        return;
    }
    endpoint.ipv6 = host.front() == '[';
    checkKeysOf(endpoint, !isLoopback(host));
}

void checkIpc(Endpoint& endpoint)
{
    endpoint.path = endpoint.address.substr(ipc_prefix.size());
    const std::size_t limit = sizeof(sockaddr_un::sun_path) - 1;
    std::string error;
    if (endpoint.path.size() > limit)
        endpoint.problem =
            refusal(endpoint.address, "a socket's path has at most " + std::to_string(limit) +
                                          " bytes. Choose a shorter one in ZELK_IPR_ENDPOINT.");
    else if (endpoint.path.empty() || endpoint.path == "*" || endpoint.path[0] == '@')
        endpoint.problem = refusal(endpoint.address, "it names no file. Write it as ipc://PATH.");
    else if (endpoint.address == defaultEndpoint() && !prepareRuntimeDirectory(runtimeDirectory(), error))
        endpoint.problem = refusal(endpoint.address, error);
}

Endpoint parseEndpoint(const std::string& address, Role role)
{
    Endpoint endpoint;
    endpoint.address = address;
    if (startsWith(address, ipc_prefix))
        checkIpc(endpoint);
    else if (startsWith(address, tcp_prefix))
        checkTcp(endpoint, role);
    else
        endpoint.problem =
            refusal(address, "its kind is unknown. Write it as ipc://PATH or tcp://HOST:PORT.");
    return endpoint;
}
} // namespace

std::vector<Endpoint> parseEndpoints(const std::string& list, Role role)
{
    std::vector<Endpoint> endpoints;
    std::istringstream items(list);
    std::string item;
    while (std::getline(items, item, ','))
    {
        const std::string address = trimmed(item);
        const auto same = [&](const Endpoint& endpoint) { return endpoint.address == address; };
        if (!address.empty() && std::none_of(endpoints.begin(), endpoints.end(), same))
            endpoints.push_back(parseEndpoint(address, role));
    }
    return endpoints;
}

} // namespace zelk::ipr
