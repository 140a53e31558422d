/// The render's side of the road: listen, and receive texts.
#ifndef ZELK_IPR_LISTENER_H
#define ZELK_IPR_LISTENER_H

#include <zelk/ipr/export.h>

#include <memory>
#include <string>
#include <vector>

namespace zelk
{
namespace ipr
{

/// Receives what hosts send. One thread at a time may use it.
class ZELK_IPR_EXPORT Listener
{
public:
    Listener();

    /// Closes; what was not received is lost.
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Binds one or several endpoints, separated by commas; an empty text stands for configuredEndpoints().
    ///
    /// False, with a sentence in `error` and nothing bound, when one of them cannot be bound: it is
    /// malformed, taken by another listener, in a directory that others can enter, or reachable by other
    /// machines without keys. A host that is connected through two of the endpoints sends everything twice.
    bool open(const std::string& endpoints, std::string& error);

    /// The endpoints as bound: "tcp://127.0.0.1:*" has got its port. Empty when not open.
    std::vector<std::string> endpoints() const;

    /// Waits for the next text, at most `timeoutMs` milliseconds (below 0: for ever). False when none came,
    /// when a signal interrupted the wait, and when not open. Texts of one host come in the order in which
    /// they were sent.
    bool receive(std::string& text, int timeoutMs);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace ipr
} // namespace zelk

#endif
