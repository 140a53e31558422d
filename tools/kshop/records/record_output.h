#ifndef KSHOP_RECORD_OUTPUT_H
#define KSHOP_RECORD_OUTPUT_H

#include "../text.h"

#include <zelk/ipr/delta.h>

#include <string>

namespace kshop
{

/// The record as one line of JSON, newline included:
///
///     {"node_path": TEXT, "entry_name": TEXT, "parms": {NAME: {"type": CODE, "value": VALUE}}}
///
/// CODE is a number, KR_TYPE_.... VALUE is a number, a boolean, a text, a list of numbers, or for an array
/// {"element_type": CODE, "values": [VALUE...]}, with "key_count" between them when the array has not exactly one
/// motion key. Floats are written so that they can be read back to the bit, but for NaN and the infinities, which JSON does
/// not know: they are null. Bytes that are no UTF-8 become U+FFFD. The same under every locale.
std::string recordJson(const zelk::ipr::Delta& delta);

/// The record for people, newline included: a line for each parameter, or a single one that says that there is none.
/// Of long arrays only the beginning is shown.
std::string recordText(const zelk::ipr::Delta& delta, const Style& style);

} // namespace kshop

#endif
