#pragma once

#include "arena.h"
#include "kr.h"

#include <cstddef>

namespace zelk::renderer
{

/// Bytes of one element of an array of that type; 16, a whole value record, for a code that is not known
/// here.
std::size_t elementSize(int type);

/// A copy of `value` with everything that it points to, except objects of the host (pointer, node), copied
/// into `arena`.
KtParamValue copyValue(Arena& arena, int type, const KtParamValue& value);

} // namespace zelk::renderer
