#include "startup_timings.h"

#include <kr_observe.h>

#include <algorithm>
#include <map>
#include <utility>

namespace kshop
{

namespace
{

struct WorkRow
{
    int work;
    const char* phase;
};

const WorkRow work_rows[] = {
    {KR_WORK_START, "renderer start"},
    {KR_WORK_PLUGIN, "renderer plug-in"},
    {KR_WORK_METADATA, "metadata file"},
    {KR_WORK_END, "renderer end"},
};

const char* phaseOf(int work)
{
    for (const WorkRow& row : work_rows)
        if (row.work == work)
            return row.phase;
    return "renderer";
}

double secondsOf(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

} // namespace

void StartupTimings::begin()
{
    m_begin = m_last = Clock::now();
    m_scopes = {{"host", ""}};
    KrWorkSetObserver(rendererWork, this);
}

void StartupTimings::finish()
{
    KrWorkSetObserver(nullptr, nullptr);
    leave();
    m_total = secondsOf(m_last - m_begin);
}

void StartupTimings::spend(const std::string& phase, const std::string& subject)
{
    const Clock::time_point now = Clock::now();
    m_phases.push_back({phase, subject, secondsOf(now - m_last)});
    m_last = now;
}

void StartupTimings::enter(std::string phase, std::string subject)
{
    spend(m_scopes.back().phase, m_scopes.back().subject);
    m_scopes.push_back({std::move(phase), std::move(subject)});
}

void StartupTimings::leave()
{
    spend(m_scopes.back().phase, m_scopes.back().subject);
    m_scopes.pop_back();
}

void StartupTimings::hostStep(standin::StartupStep step, const std::string& subject)
{
    switch (step)
    {
    case standin::StartupStep::openingPlugin:
        return enter("host plug-in", subject);
    case standin::StartupStep::enteringHook:
        return enter("entry point", subject);
    case standin::StartupStep::openedPlugin:
    case standin::StartupStep::leavingHook:
        return leave();
    case standin::StartupStep::addedOperator:
        return spend("type", subject);
    }
}

void StartupTimings::rendererWork(int work, const char* subject, bool done, void* user)
{
    StartupTimings& self = *static_cast<StartupTimings*>(user);
    if (done)
        self.leave();
    else
        self.enter(phaseOf(work), subject);
}

std::vector<StartupPhase> StartupTimings::phases() const
{
    std::map<std::pair<std::string, std::string>, double> sums;
    for (const StartupPhase& moment : m_phases)
        sums[{moment.phase, moment.subject}] += moment.seconds;
    std::vector<StartupPhase> result;
    result.reserve(sums.size());
    for (const auto& [key, seconds] : sums)
        result.push_back({key.first, key.second, seconds});
    std::stable_sort(result.begin(), result.end(),
                     [](const StartupPhase& a, const StartupPhase& b) { return a.seconds > b.seconds; });
    return result;
}

} // namespace kshop
