#include "startup_steps.h"

#include <utility>

namespace standin
{

namespace
{

StartupObserver& theObserver()
{
    static auto* observer = new StartupObserver; // plug-ins may register as long as the process lives
    return *observer;
}

} // namespace

void setStartupObserver(StartupObserver observer) { theObserver() = std::move(observer); }

void tellStartup(StartupStep step, const std::string& subject)
{
    if (theObserver())
        theObserver()(step, subject);
}

void tellStartup(StartupStep step, const char* subject)
{
    if (theObserver())
        theObserver()(step, subject);
}

} // namespace standin
