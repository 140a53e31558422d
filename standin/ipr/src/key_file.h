/// Files of keys: what keys.h makes, and endpoints use.
#pragma once

#include <string>

namespace zelk::ipr
{

/// Two CURVE pairs, each key as 40 characters of Z85.
struct Keys
{
    std::string serverPublic; ///< the render's
    std::string serverSecret;
    std::string clientPublic; ///< the hosts'
    std::string clientSecret;
};

/// Reads a file of keys. False, with a sentence in `error`, when it is missing, malformed, or open to others.
bool readKeys(const std::string& path, Keys& keys, std::string& error);

} // namespace zelk::ipr
