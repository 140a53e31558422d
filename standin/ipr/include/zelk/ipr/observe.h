/// For tools that want to see every record, whether or not a render listens.
#ifndef ZELK_IPR_OBSERVE_H
#define ZELK_IPR_OBSERVE_H

#include <zelk/ipr/export.h>

#include <functional>
#include <string>

namespace zelk
{
namespace ipr
{

typedef std::function<void(const std::string& text)> SendObserver;

/// Has `observer` called with each text that any publisher is handed, on the thread that sends, before it is
/// passed on. It replaces the former observer; an empty one ends the observation. What it throws is ignored.
/// A call that has begun on another thread may end after this function returned.
ZELK_IPR_EXPORT void setSendObserver(SendObserver observer);

} // namespace ipr
} // namespace zelk

#endif
