/// The publishers' side of <zelk/ipr/observe.h>.
#pragma once

#include <string>

namespace zelk::ipr
{

/// Shows `text` to the observer, if there is one. Costs one atomic load if not.
void showToObserver(const std::string& text) noexcept;

} // namespace zelk::ipr
