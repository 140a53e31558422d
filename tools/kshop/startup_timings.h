#ifndef KSHOP_STARTUP_TIMINGS_H
#define KSHOP_STARTUP_TIMINGS_H

#include <standin/startup.h>

#include <chrono>
#include <string>
#include <vector>

namespace kshop
{

/// A part of the start-up.
struct StartupPhase
{
    std::string phase;   ///< one of a fixed set of words, as in "metadata file"
    std::string subject; ///< file or type; may be empty
    double seconds;
};

/// Where the time of the host's start goes, seen from outside: every moment belongs to one phase, so that they add up to
/// the whole.
///
/// Between two types that are registered the time is the second one's: it was spent on describing and registering it, and
/// on passing over what makes no type. What is done for the renderer meanwhile is counted apart.
class StartupTimings
{
public:
    /// Begins; until finish() the renderer is watched. The host's steps are to be handed to hostStep().
    void begin();
    void hostStep(standin::StartupStep step, const std::string& subject);
    void finish();

    /// Slowest first. Moments of one phase and subject are added up.
    std::vector<StartupPhase> phases() const;
    double totalSeconds() const { return m_total; }

private:
    typedef std::chrono::steady_clock Clock;
    struct Scope
    {
        std::string phase;
        std::string subject;
    };

    static void rendererWork(int work, const char* subject, bool done, void* user);

    /// Gives the time since the last moment to a phase.
    void spend(const std::string& phase, const std::string& subject);
    void enter(std::string phase, std::string subject);
    void leave();

    Clock::time_point m_begin;
    Clock::time_point m_last;
    std::vector<Scope> m_scopes; ///< what is under way, innermost last
    std::vector<StartupPhase> m_phases;
    double m_total = 0;
};

} // namespace kshop

#endif
