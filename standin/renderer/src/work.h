#pragma once

namespace zelk::renderer
{

/// Tells the observer of work when it begins and, at the end of the scope, that it is over.
class Work
{
public:
    /// @param kind     KR_WORK_...
    /// @param subject  the file, which must live as long as this; empty when it concerns none
    Work(int kind, const char* subject);
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

private:
    int m_kind;
    const char* m_subject;
};

} // namespace zelk::renderer
