// The layout of the records of kr.h, which plug-ins were compiled against.
#include <kr.h>

#include <cstddef>
#include <type_traits>

namespace
{
static_assert(sizeof(void*) == 8, "pointers of 64 bits");

static_assert(sizeof(KtRgb) == 12 && sizeof(KtRgba) == 16, "colours are floats in a row");
static_assert(sizeof(KtVector) == 12 && sizeof(KtPoint) == 12 && sizeof(KtPoint2) == 8, "so are places");
static_assert(offsetof(KtRgba, a) == 12 && offsetof(KtVector, z) == 8 && offsetof(KtPoint2, y) == 4,
              "in order");
static_assert(sizeof(KtMatrix) == 64 && sizeof(KtMatrix::m[0]) == 16, "4 rows of 4 floats");

static_assert(std::is_union<KtParamValue>::value && std::is_trivial<KtParamValue>::value, "plain");
static_assert(sizeof(KtParamValue) == 16 && alignof(KtParamValue) == 8, "16 bytes");
static_assert(offsetof(KtParamValue, byte_) == 0 && offsetof(KtParamValue, rgba) == 0 &&
                  offsetof(KtParamValue, mtx) == 0,
              "every member at its start");

static_assert(std::is_standard_layout<KtArray>::value && std::is_trivial<KtArray>::value, "plain");
static_assert(offsetof(KtArray, nelements) == 0 && sizeof(KtArray::nelements) == 4, "number of elements");
static_assert(offsetof(KtArray, nkeys) == 4 && sizeof(KtArray::nkeys) == 1, "number of motion keys");
static_assert(offsetof(KtArray, type) == 5 && sizeof(KtArray::type) == 1, "type of the elements");
static_assert(offsetof(KtArray, data) == 8 && sizeof(KtArray) == 16, "the elements");

static_assert(std::is_standard_layout<KtMetaDataEntry>::value, "plain");
static_assert(offsetof(KtMetaDataEntry, name) == 0 && offsetof(KtMetaDataEntry, value) == 8,
              "name and value");
static_assert(offsetof(KtMetaDataEntry, type) == 24 && sizeof(KtMetaDataEntry) == 32, "type");
} // namespace
