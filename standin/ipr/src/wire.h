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

/// The library's packer, but for floats: it would make an integer of each that has no fraction, and lose the
/// minus of a zero.
class Packer : public msgpack::packer<TextStream>
{
public:
    explicit Packer(TextStream& stream) : msgpack::packer<TextStream>(stream), m_stream(stream) {}

    /// As 32 bits, whatever they mean.
    void packFloatBits(std::uint32_t bits);

    void packText(const std::string& text);

private:
    TextStream& m_stream;
};

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

} // namespace zelk::ipr
