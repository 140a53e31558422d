/// The form that values have in a record's text: one row for each type, used in both directions.
#pragma once

#include "tokens.h"

#include <zelk/ipr/delta.h>

#include <msgpack.hpp>

#include <string>

namespace zelk::ipr
{

class ReceivedDelta;

/// Where the packer writes to.
struct TextStream
{
    std::string& text;
    void write(const char* data, std::size_t size) { text.append(data, size); }
};
using Packer = msgpack::packer<TextStream>;

/// How one value in memory goes into a text and comes back.
struct Codec
{
    std::size_t bytes;    ///< size in memory
    const char* expected; ///< what a text must hold, for messages
    void (*pack)(Packer&, const void* cell);
    /// Reads the value at the cursor, which is left behind it. False when it is something else.
    bool (*unpack)(TokenCursor&, void* cell, ReceivedDelta& owner);
};

/// In which member of DeltaParm a single value of a type is.
enum class Place
{
    Value,
    Matrix,
    Text
};

struct WireType
{
    int code;
    const char* name;
    Place place;
    const Codec* single;  ///< a value of its own; null for Place::Text
    const Codec* element; ///< one element of an array; null when there are no such arrays
};

/// The row of a type code. Null for those that have no value of their own, and for KR_TYPE_ARRAY.
const WireType* findWireType(int code);

void packText(Packer& packer, const std::string& text);

} // namespace zelk::ipr
