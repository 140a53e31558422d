#include "wire.h"

#include <zelk/ipr/reader.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace zelk::ipr
{
namespace
{
template <typename T>
T load(const void* cell)
{
    T value;
    std::memcpy(&value, cell, sizeof value);
    return value;
}

template <typename T>
void store(void* cell, const T& value)
{
    std::memcpy(cell, &value, sizeof value);
}

template <typename T>
void packInteger(Packer& packer, const void* cell)
{
    packer.pack(load<T>(cell));
}

template <typename T>
bool unpackInteger(TokenCursor& cursor, void* cell, ReceivedDelta&)
{
    const Token& token = cursor.next();
    if (token.kind != TokenKind::Integer || token.integer < std::int64_t(std::numeric_limits<T>::min()) ||
        token.integer > std::int64_t(std::numeric_limits<T>::max()))
        return false;
    store(cell, static_cast<T>(token.integer));
    return true;
}

// A byte, since a sender may store any value but zero for true.
void packFlag(Packer& packer, const void* cell) { packer.pack(load<std::uint8_t>(cell) != 0); }

bool unpackFlag(TokenCursor& cursor, void* cell, ReceivedDelta&)
{
    const Token& token = cursor.next();
    if (token.kind == TokenKind::Flag)
        store(cell, static_cast<std::uint8_t>(token.flag));
    return token.kind == TokenKind::Flag;
}

// Other writers know only doubles, or write whole numbers as integers.
bool unpackFloat(const Token& token, void* cell)
{
    if (token.kind == TokenKind::Float)
        store(cell, token.floatBits);
    else if (token.kind == TokenKind::Double)
        store(cell, static_cast<float>(token.real));
    else if (token.kind == TokenKind::Integer)
        store(cell, static_cast<float>(token.integer));
    else
        return false;
    return true;
}

template <int count>
void packFloats(Packer& packer, const void* cell)
{
    if (count > 1)
        packer.pack_array(count);
    for (int i = 0; i < count; ++i)
        packer.packFloatBits(load<std::uint32_t>(static_cast<const char*>(cell) + i * sizeof(float)));
}

template <int count>
bool unpackFloats(TokenCursor& cursor, void* cell, ReceivedDelta&)
{
    if (count > 1 && (cursor.peek().kind != TokenKind::List || cursor.next().size != count))
        return false;
    for (int i = 0; i < count; ++i)
        if (!unpackFloat(cursor.next(), static_cast<char*>(cell) + i * sizeof(float)))
            return false;
    return true;
}

void packPointedText(Packer& packer, const void* cell)
{
    const char* text = load<const char*>(cell);
    const auto size = static_cast<std::uint32_t>(text ? std::strlen(text) : 0);
    packer.pack_str(size);
    packer.pack_str_body(text, size);
}

bool unpackPointedText(TokenCursor& cursor, void* cell, ReceivedDelta& owner)
{
    const Token& token = cursor.next();
    if (token.kind != TokenKind::Text || token.text().find('\0') != std::string_view::npos)
        return false;
    store(cell, owner.keepText(std::string(token.text())));
    return true;
}

template <typename T>
constexpr Codec integer_codec(const char* expected)
{
    return {sizeof(T), expected, packInteger<T>, unpackInteger<T>};
}

template <int count>
constexpr Codec floats_codec(const char* expected)
{
    return {count * sizeof(float), expected, packFloats<count>, unpackFloats<count>};
}

constexpr Codec byte_codec = integer_codec<std::uint8_t>("an integer from 0 to 255");
constexpr Codec int_codec = integer_codec<std::int32_t>("a signed 32-bit integer");
constexpr Codec uint_codec = integer_codec<std::uint32_t>("an unsigned 32-bit integer");
constexpr Codec flag_codec = {1, "a boolean", packFlag, unpackFlag};
constexpr Codec float_codec = floats_codec<1>("a number");
constexpr Codec float2_codec = floats_codec<2>("a list of 2 numbers");
constexpr Codec float3_codec = floats_codec<3>("a list of 3 numbers");
constexpr Codec float4_codec = floats_codec<4>("a list of 4 numbers");
constexpr Codec matrix_codec = floats_codec<16>("a list of 16 numbers");
constexpr Codec text_codec = {sizeof(const char*), "a text without zero bytes", packPointedText,
                              unpackPointedText};

// A single value comes from the host as the host evaluates it: signed 32 bits for every whole number, and an
// item's name for an enumeration. The elements of an array are the renderer's own.
const WireType wire_types[] = {
    {KR_TYPE_BYTE, "byte", Place::Value, &int_codec, &byte_codec},
    {KR_TYPE_INT, "int", Place::Value, &int_codec, &int_codec},
    {KR_TYPE_UINT, "uint", Place::Value, &int_codec, &uint_codec},
    {KR_TYPE_BOOLEAN, "boolean", Place::Value, &flag_codec, &flag_codec},
    {KR_TYPE_FLOAT, "float", Place::Value, &float_codec, &float_codec},
    {KR_TYPE_RGB, "rgb", Place::Value, &float3_codec, &float3_codec},
    {KR_TYPE_RGBA, "rgba", Place::Value, &float4_codec, &float4_codec},
    {KR_TYPE_VECTOR, "vector", Place::Value, &float3_codec, &float3_codec},
    {KR_TYPE_POINT, "point", Place::Value, &float3_codec, &float3_codec},
    {KR_TYPE_POINT2, "point2", Place::Value, &float2_codec, &float2_codec},
    {KR_TYPE_STRING, "string", Place::Text, nullptr, &text_codec},
    {KR_TYPE_NODE, "node", Place::Text, nullptr, nullptr},
    {KR_TYPE_MATRIX, "matrix", Place::Matrix, &matrix_codec, &matrix_codec},
    {KR_TYPE_ENUM, "enum", Place::Text, nullptr, &int_codec},
};
} // namespace

const WireType* findWireType(int code)
{
    const WireType* row = std::find_if(std::begin(wire_types), std::end(wire_types),
                                       [code](const WireType& type) { return type.code == code; });
    return row == std::end(wire_types) ? nullptr : row;
}

void Packer::packFloatBits(std::uint32_t bits)
{
    const char bytes[] = {'\xca', static_cast<char>(bits >> 24), static_cast<char>(bits >> 16),
                          static_cast<char>(bits >> 8), static_cast<char>(bits)};
    m_stream.write(bytes, sizeof bytes);
}

void Packer::packText(const std::string& text)
{
    pack_str(static_cast<std::uint32_t>(text.size()));
    pack_str_body(text.data(), static_cast<std::uint32_t>(text.size()));
}

} // namespace zelk::ipr
