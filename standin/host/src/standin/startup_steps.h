#ifndef STANDIN_STARTUP_STEPS_H
#define STANDIN_STARTUP_STEPS_H

#include <standin/startup.h>

namespace standin
{

/// Tells the observer, if there is one.
void tellStartup(StartupStep step, const std::string& subject);

/// The same, without making a text when nobody listens.
void tellStartup(StartupStep step, const char* subject);

} // namespace standin

#endif
