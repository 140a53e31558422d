/// The host's side of the road to a render: hand over a text and carry on.
#ifndef ZELK_IPR_PUBLISHER_H
#define ZELK_IPR_PUBLISHER_H

#include <zelk/ipr/export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace zelk
{
namespace ipr
{

/// What may wait for renders that read too slowly, in bytes, all endpoints together. Beyond it the oldest
/// records go. Besides, at most records_under_way records for each endpoint are with ZeroMQ.
const std::size_t max_waiting_bytes = 128u << 20;
const int records_under_way = 8;

/// How long the end of the process may take while records wait to be passed on, in milliseconds.
const int exit_grace_ms = 2000;

/// What became of the records so far, counted once for each endpoint.
struct Traffic
{
    std::uint64_t sent;       ///< passed on to a connected render
    std::uint64_t unheard;    ///< dropped because nobody listened
    std::uint64_t overflowed; ///< dropped because a render did not read, or because a record was too long
};

/// Sends records to the renders that listen at some endpoints; each render gets every record.
///
/// A render binds, a publisher connects. The first send() starts one thread, which does all the work; a
/// process that sends nothing has none. A record is dropped when nobody listens at the time of sending; a
/// render that listens gets all that is sent from then on, in order. Problems are reported on standard error,
/// each once. After fork() the child has a road of its own; what waited in the parent stays the parent's.
class ZELK_IPR_EXPORT Publisher
{
public:
    /// @param endpoints  one or several, separated by commas: ipc://PATH or tcp://HOST:PORT
    explicit Publisher(const std::string& endpoints);

    /// Gives what waits the time of `exit_grace_ms`, then drops it.
    ~Publisher();

    Publisher(const Publisher&) = delete;
    Publisher& operator=(const Publisher&) = delete;

    /// Sends one serialised record. Returns at once, throws nothing, and may be called by several threads.
    void send(std::string text) const noexcept;

    /// Waits until every record so far was passed on or dropped. False when `timeoutMs` passed before.
    bool flush(int timeoutMs) const noexcept;

    Traffic traffic() const noexcept;

    /// What the destructor does, earlier: records sent afterwards are dropped.
    void close() noexcept;

protected:
    /// Takes its endpoints from the environment when it first sends.
    Publisher();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

/// The process's publisher. Its endpoints are those of ZELK_IPR_ENDPOINT; see endpoint.h.
class ZELK_IPR_EXPORT DeltaPublisher : public Publisher
{
public:
    /// Valid until the process ends, also while static objects are destroyed; it is closed when they are.
    static DeltaPublisher& instance();

private:
    DeltaPublisher();
};

} // namespace ipr
} // namespace zelk

#endif
