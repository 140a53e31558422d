#include "interruption.h"

#include <csignal>
#include <cstddef>
#include <iterator>

namespace kshop
{

namespace
{

const int noted_signals[] = {SIGINT, SIGTERM, SIGHUP};
struct sigaction former_actions[std::size(noted_signals)];
volatile std::sig_atomic_t signal_came = 0;

extern "C" void noteSignal(int) { signal_came = 1; }

} // namespace

Interruption::Interruption()
{
    signal_came = 0;
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

bool Interruption::came() const { return signal_came != 0; }

} // namespace kshop
