// The layout of the records that the plug-in shares with the renderer and the interactive-render library: both read and
// write them in memory. It is the same under either string ABI, but for the text's own size.

#include <kr.h>

#include <zelk/ipr/delta.h>

#include <cstddef>
#include <type_traits>

namespace
{

// A value: colours, vectors and points are floats in a row, which live updates write, and
// defaults are read, from `flt` on.
static_assert(sizeof(KtParamValue) == 16 && alignof(KtParamValue) == 8, "16 bytes, and pointers in them");
static_assert(sizeof(KtParamValue::byte_) == 1 && sizeof(KtParamValue::bool_) == 1, "one byte");
static_assert(sizeof(KtParamValue::int_) == 4 && sizeof(KtParamValue::uint_) == 4, "32 bits");
static_assert(sizeof(KtParamValue::flt) == 4 && sizeof(KtParamValue::pnt2) == 8, "floats");
static_assert(sizeof(KtParamValue::rgb) == 12 && sizeof(KtParamValue::vec) == 12, "three floats");
static_assert(sizeof(KtParamValue::pnt) == 12 && sizeof(KtParamValue::rgba) == 16, "three and four floats");
static_assert(sizeof(KtMatrix) == 64 && sizeof(KtMatrix::m[0]) == 16, "4 rows of 4 floats");

// An array: counts and element type, then where the elements are.
static_assert(std::is_standard_layout<KtArray>::value, "a plain record");
static_assert(offsetof(KtArray, nelements) == 0 && sizeof(KtArray::nelements) == 4, "number of elements");
static_assert(offsetof(KtArray, nkeys) == 4 && sizeof(KtArray::nkeys) == 1, "number of motion keys");
static_assert(offsetof(KtArray, type) == 5 && sizeof(KtArray::type) == 1, "type of the elements");
static_assert(offsetof(KtArray, data) == 8 && sizeof(KtArray) == 16, "the elements");

// A parameter of a change record.
using zelk::ipr::DeltaParm;
const std::size_t text_bytes = sizeof(std::string);
static_assert(text_bytes == 32 || text_bytes == 8, "the text of one of the two ABIs");
static_assert(std::is_standard_layout<DeltaParm>::value, "a plain record");
static_assert(offsetof(DeltaParm, type) == 0 && sizeof(DeltaParm::type) == 1, "type");
static_assert(offsetof(DeltaParm, value) == 8 && sizeof(DeltaParm::value) == 16, "value");
static_assert(offsetof(DeltaParm, matrix) == 24 && sizeof(DeltaParm::matrix) == 64, "matrix");
static_assert(offsetof(DeltaParm, str) == 88 && sizeof(DeltaParm) == 96 + text_bytes,
              "text, and 8 bytes more");

} // namespace
