#include <CH/CH_Manager.h>

#include <SYS/SYS_SequentialThreadIndex.h>

#include <cstdlib>

typedef std::lock_guard<std::mutex> Lock;

CH_Manager::CH_Manager() : m_time(0), m_rate(24) {}

fpreal CH_Manager::getEvalTime() const { return getEvalTime(SYSgetSTID()); }

fpreal CH_Manager::getEvalTime(int thread) const
{
    const Lock lock(m_mutex);
    const auto found = m_threadTimes.find(thread);
    return found == m_threadTimes.end() ? m_time : found->second;
}

void CH_Manager::setEvalTime(fpreal time)
{
    const Lock lock(m_mutex);
    m_time = time;
}

fpreal CH_Manager::getSamplesPerSec() const
{
    const Lock lock(m_mutex);
    return m_rate;
}

void CH_Manager::setSamplesPerSec(fpreal rate)
{
    const Lock lock(m_mutex);
    if (rate > 0)
        m_rate = rate;
}

fpreal CH_Manager::getSample(fpreal time) const { return time * getSamplesPerSec() + 1; }

fpreal CH_Manager::getTime(fpreal sample) const { return (sample - 1) / getSamplesPerSec(); }

void CH_Manager::setVariable(const char* name, const char* value)
{
    const Lock lock(m_mutex);
    if (name)
        m_variables[name] = value ? value : "";
}

void CH_Manager::unsetVariable(const char* name)
{
    const Lock lock(m_mutex);
    if (name)
        m_variables.erase(name);
}

std::vector<std::string> CH_Manager::getVariableNames() const
{
    const Lock lock(m_mutex);
    std::vector<std::string> names;
    for (const auto& variable : m_variables)
        names.push_back(variable.first);
    return names;
}

bool CH_Manager::getVariable(const char* name, std::string& value) const
{
    {
        const Lock lock(m_mutex);
        const auto found = m_variables.find(name);
        if (found != m_variables.end())
        {
            value = found->second;
            return true;
        }
    }
    const char* fromEnvironment = std::getenv(name);
    if (fromEnvironment)
        value = fromEnvironment;
    return fromEnvironment != nullptr;
}

CH_Manager* CHgetManager()
{
    static CH_Manager manager;
    return &manager;
}

fpreal CHgetEvalTime() { return CHgetManager()->getEvalTime(); }

fpreal CHgetEvalTime(int thread) { return CHgetManager()->getEvalTime(thread); }

CH_AutoEvalTime::CH_AutoEvalTime(int thread, fpreal time) : m_thread(thread), m_hadTime(false), m_previous(0)
{
    CH_Manager& manager = *CHgetManager();
    const Lock lock(manager.m_mutex);
    const auto added = manager.m_threadTimes.emplace(thread, time);
    if (added.second)
        return;
    m_hadTime = true;
    m_previous = added.first->second;
    added.first->second = time;
}

CH_AutoEvalTime::~CH_AutoEvalTime()
{
    CH_Manager& manager = *CHgetManager();
    const Lock lock(manager.m_mutex);
    if (m_hadTime)
        manager.m_threadTimes[m_thread] = m_previous;
    else
        manager.m_threadTimes.erase(m_thread);
}
