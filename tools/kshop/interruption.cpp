#include "interruption.h"

#include <atomic>
#include <csignal>
#include <cstddef>
#include <iterator>

namespace kshop
{

namespace
{

const int noted_signals[] = {SIGINT, SIGTERM, SIGHUP};
struct sigaction former_actions[std::size(noted_signals)];
/// Asked for by other threads, too. Never locks, as a signal's handler must not.
std::atomic<bool> signal_came(false);
static_assert(std::atomic<bool>::is_always_lock_free, "a signal's handler must not wait");

extern "C" void noteSignal(int) { signal_came = true; }

} // namespace

Interruption::Interruption()
{
    signal_came = false;
    struct sigaction action = {};
    action.sa_handler = noteSignal; // without SA_RESTART: what waits is to wake up
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < std::size(noted_signals); ++i)
    {
        sigaction(noted_signals[i], nullptr, &former_actions[i]);
        if (former_actions[i].sa_handler != SIG_IGN)
            sigaction(noted_signals[i], &action, nullptr);
    }
}

Interruption::~Interruption()
{
    for (std::size_t i = 0; i < std::size(noted_signals); ++i)
        sigaction(noted_signals[i], &former_actions[i], nullptr);
}

bool Interruption::came() const { return signal_came; }

} // namespace kshop
