#ifndef STANDIN_STARTUP_H
#define STANDIN_STARTUP_H

#include <functional>
#include <string>

/// @file
/// Watching the host start, for the programs around it. No plug-in includes this.

namespace standin
{

enum class StartupStep
{
    openingPlugin, ///< subject: path of the plug-in
    openedPlugin,
    enteringHook, ///< an entry point of a plug-in begins; subject: its name, as in "newVopOperator"
    leavingHook,
    addedOperator ///< a plug-in put an operator into a table; subject: its name
};

/// Called at each step from now on, on the thread that starts the host.
typedef std::function<void(StartupStep step, const std::string& subject)> StartupObserver;

/// Sets the one observer; an empty function ends that.
void setStartupObserver(StartupObserver observer);

} // namespace standin

#endif
