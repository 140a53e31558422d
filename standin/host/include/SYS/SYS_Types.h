#pragma once
// Scalar types of the toolkit. 64-bit builds: a real is a double.
#include <cstddef>
#include <cstdint>

typedef std::int8_t int8;
typedef std::uint8_t uint8;
typedef std::int16_t int16;
typedef std::uint16_t uint16;
typedef std::int32_t int32;
typedef std::uint32_t uint32;
typedef std::int64_t int64;
typedef std::uint64_t uint64;
typedef unsigned int uint;
typedef int64 exint;
typedef float fpreal32;
typedef double fpreal64;
typedef double fpreal;
