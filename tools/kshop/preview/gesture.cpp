#include "gesture.h"

#include <UT/UT_UndoManager.h>

namespace kshop
{

namespace
{

/// Empty for an edit that stands alone; a name of the wrong kind is none.
std::string gestureOf(const Json& edit)
{
    const auto found = edit.find("gesture");
    return found != edit.end() && found->is_string() ? found->get<std::string>() : "";
}

} // namespace

Gesture::Gesture() = default;
Gesture::~Gesture() = default;

void Gesture::follow(const Json& edit)
{
    const std::string name = gestureOf(edit);
    if (!name.empty() && name == m_name)
        return;
    m_step.reset(); // before the next one opens, which would nest otherwise
    if (!name.empty())
        m_step = std::make_unique<UT_AutoUndoBlock>("Drag", ANYLEVEL);
    m_name = name;
}

} // namespace kshop
