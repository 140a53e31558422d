/// What the user is told: one line on standard error.
#pragma once

#include <string>

namespace zelk::ipr
{

/// Prints "[zelk::ipr] SENTENCE". Any thread may call it; the renderer's own message functions belong to the
/// main thread.
void report(const std::string& sentence) noexcept;

} // namespace zelk::ipr
