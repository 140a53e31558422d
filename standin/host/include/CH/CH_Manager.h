#pragma once
#include <SYS/SYS_Types.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

/// Time of the session. Time is in seconds; time 0 is frame 1: frame = time * rate + 1. The rate is 24 at
/// first.
class CH_Manager
{
public:
    CH_Manager();

    /// The time at which the calling thread (or thread number `thread`) evaluates: that of the evaluation
    /// under way, else the session's.
    fpreal getEvalTime() const;
    fpreal getEvalTime(int thread) const;
    /// Sets the session's time.
    void setEvalTime(fpreal time);

    fpreal getSamplesPerSec() const;
    /// Ignores what is not above 0. The time in seconds stays.
    void setSamplesPerSec(fpreal rate);
    /// Frame of a time, and time of a frame.
    fpreal getSample(fpreal time) const;
    fpreal getTime(fpreal sample) const;

    /// Session-wide variables ($HIP, $JOB): those set here, then the environment's.
    void setVariable(const char* name, const char* value);
    void unsetVariable(const char* name);
    bool getVariable(const char* name, std::string& value) const;
    /// Names of those that were set here, sorted.
    std::vector<std::string> getVariableNames() const;

private:
    friend class CH_AutoEvalTime;

    CH_Manager(const CH_Manager&);
    CH_Manager& operator=(const CH_Manager&);

    mutable std::mutex m_mutex;
    fpreal m_time;
    fpreal m_rate;
    std::map<int, fpreal> m_threadTimes; // only of threads that evaluate right now
    std::map<std::string, std::string> m_variables;
};

CH_Manager* CHgetManager();

/// Evaluation time of the calling thread.
fpreal CHgetEvalTime();
fpreal CHgetEvalTime(int thread);

/// Makes the evaluation time of a thread another one for as long as this lives.
class CH_AutoEvalTime
{
public:
    CH_AutoEvalTime(int thread, fpreal time);
    ~CH_AutoEvalTime();

private:
    CH_AutoEvalTime(const CH_AutoEvalTime&);
    CH_AutoEvalTime& operator=(const CH_AutoEvalTime&);

    int m_thread;
    bool m_hadTime;
    fpreal m_previous;
};
