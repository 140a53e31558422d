/// Where hosts and renders meet.
///
/// | environment variable | meaning                                                                      |
/// |----------------------|------------------------------------------------------------------------------|
/// | ZELK_IPR_ENDPOINT    | endpoints, separated by commas: ipc://PATH or tcp://HOST:PORT                |
/// | ZELK_IPR_KEYS        | key file (keys.h) for every tcp endpoint; loopback hosts can do without      |
///
/// A render may bind all its machine's addresses, tcp://*:PORT; a host names the machine.
#ifndef ZELK_IPR_ENDPOINT_H
#define ZELK_IPR_ENDPOINT_H

#include <zelk/ipr/export.h>

#include <string>

namespace zelk
{
namespace ipr
{

/// The endpoint that is used when ZELK_IPR_ENDPOINT is unset or empty: a socket in the user's runtime
/// directory, which is XDG_RUNTIME_DIR, or else /tmp/korvan-UID. Whoever uses it first makes the latter, with
/// mode 0700, and refuses a directory that is another user's or that others can enter. Asking touches
/// nothing.
ZELK_IPR_EXPORT std::string defaultEndpoint();

/// ZELK_IPR_ENDPOINT, or the default.
ZELK_IPR_EXPORT std::string configuredEndpoints();

} // namespace ipr
} // namespace zelk

#endif
