/// The thread that carries a publisher's records to the renders.
#pragma once

#include "endpoint_list.h"

#include <zelk/ipr/publisher.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

namespace zelk::ipr
{

/// Its thread lives as long as it does; the two share what is needed, so that a thread which does not come to
/// an end in time can be left behind.
class Courier
{
public:
    /// Starts the thread. Throws std::exception when that is not possible.
    explicit Courier(const std::string& endpoints);
    ~Courier();
    Courier(const Courier&) = delete;
    Courier& operator=(const Courier&) = delete;

    void post(std::string text);

    /// See Publisher::flush().
    bool flush(std::chrono::milliseconds timeout) const;

    Traffic traffic() const;

    /// Ends the thread, which may pass on for at most `grace` what waits by now. Later records are dropped.
    void stop(std::chrono::milliseconds grace);

private:
    struct Shared;
    class Worker;

    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
};

} // namespace zelk::ipr
