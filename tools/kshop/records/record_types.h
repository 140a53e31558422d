#ifndef KSHOP_RECORD_TYPES_H
#define KSHOP_RECORD_TYPES_H

#include <zelk/ipr/delta.h>

#include <cstddef>

namespace kshop
{

/// What a value is made of.
enum class Form
{
    none, ///< there are no such values
    byte,
    signed_integer,
    unsigned_integer,
    flag,
    floats,
    text
};

/// The form of one type's values, alone and as elements of an array.
struct RecordType
{
    int code; ///< KR_TYPE_...
    const char* word;
    Form single;  ///< the host's value; Form::text is kept in DeltaParm::str
    Form element; ///< the renderer's value; Form::none: there are no such arrays
    int floats;   ///< how many, for Form::floats; else 0
};

/// The row of a type code. Never null: a code of a newer renderer has the row of "unknown", whose value is a text.
const RecordType& recordType(int code);

/// Bytes that one element of an array takes in memory; 0 when there are no such arrays.
std::size_t elementBytes(const RecordType& type);

/// Where the value of a parameter is kept, unless it is a text.
void* valueCell(zelk::ipr::DeltaParm& parm);
const void* valueCell(const zelk::ipr::DeltaParm& parm);

} // namespace kshop

#endif
