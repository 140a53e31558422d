#ifndef KSHOP_DIFF_VALUE_KINDS_H
#define KSHOP_DIFF_VALUE_KINDS_H

#include "../interface_json.h"

namespace kshop
{

/// What a scene stores of a parameter.
enum class Stored
{
    nothing, ///< headings, separators
    look,    ///< nothing of an artist's: an open tab, a button, a text that cannot be edited
    number,  ///< with fraction
    whole,   ///< a number without fraction, an item's or a switch's too
    text,
    instances, ///< of a list: how many, and the values of each
    float_ramp,
    colour_ramp
};

/// Of a template in a description, by its type. A type that is not known counts as text.
Stored storedBy(const Json& parameter);

/// How the components of a value are named behind the token: "rgba", "xyz", "uvw"; empty: by numbers.
const char* componentNames(const Json& parameter);

bool isFolder(const Json& parameter);

} // namespace kshop

#endif
