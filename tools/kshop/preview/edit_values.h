#ifndef KSHOP_PREVIEW_EDIT_VALUES_H
#define KSHOP_PREVIEW_EDIT_VALUES_H

#include "../interface_json.h"

#include <cstdint>
#include <string>
#include <vector>

class OP_Node;
class PRM_Parm;

/// @file
/// Reading the members of a request. What is missing or of the wrong kind throws RequestError with a sentence.

namespace kshop
{

const Json& member(const Json& object, const char* name);
std::string textMember(const Json& object, const char* name);
std::int64_t wholeMember(const Json& object, const char* name);

/// A JSON value as the text that a person would type for a parameter: a number, true and false as 1 and 0, a text as it
/// is; for a menu that holds texts, an item's place becomes its token. False, with a sentence in `why`, when it is none
/// of these or the parameter takes no such value.
bool valueText(OP_Node& node, const PRM_Parm& parm, const Json& value, std::string& text, std::string& why);

struct RampKey
{
    double position;
    std::vector<double> value; ///< one number, or three of a colour
    int interpolation;         ///< place in the interpolation menu
};

/// The keys of a ramp edit. `parts` is 1 or 3.
std::vector<RampKey> rampKeys(const Json& keys, std::size_t parts);

} // namespace kshop

#endif
