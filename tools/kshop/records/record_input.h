#ifndef KSHOP_RECORD_INPUT_H
#define KSHOP_RECORD_INPUT_H

#include <zelk/ipr/reader.h>

#include <string>

namespace kshop
{

/// Reads one line in the form of recordJson() into `delta`, whose former contents go.
///
/// Other keys are passed over. Numbers become 32-bit floats where a float belongs; null stands for NaN there, since that
/// is what recordJson() makes of it. An array whose "values" hold no list is wrong, and so is a text with a zero byte in an
/// array of texts.
///
/// False, with an empty `delta` and what is wrong in `error` (where in the line, and what belongs there), for anything else.
bool readRecordJson(const std::string& line, zelk::ipr::ReceivedDelta& delta, std::string& error);

} // namespace kshop

#endif
