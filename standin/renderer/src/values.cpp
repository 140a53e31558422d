#include "values.h"

#include <cstring>

namespace zelk::renderer
{

// What plug-ins were compiled against.
static_assert(sizeof(KtParamValue) == 16, "value record");
static_assert(offsetof(KtArray, nelements) == 0 && offsetof(KtArray, nkeys) == 4 &&
                  offsetof(KtArray, type) == 5 && offsetof(KtArray, data) == 8,
              "array record");
static_assert(sizeof(KtMatrix) == 16 * sizeof(float), "matrix");

namespace
{
const char* copyText(Arena& arena, const char* text) { return text ? arena.keep(text) : nullptr; }

const KtMatrix* copyMatrix(Arena& arena, const KtMatrix* matrix)
{
    if (!matrix)
        return nullptr;
    void* copy = arena.allocate(sizeof(KtMatrix));
    std::memcpy(copy, matrix, sizeof(KtMatrix));
    return static_cast<const KtMatrix*>(copy);
}

KtArray* copyArray(Arena& arena, const KtArray* array)
{
    if (!array)
        return nullptr;
    KtArray* copy = static_cast<KtArray*>(arena.allocate(sizeof(KtArray)));
    *copy = *array;
    const std::size_t count = array->data ? std::size_t(array->nelements) * array->nkeys : 0;
    const std::size_t bytes = count * elementSize(array->type);
    copy->data = arena.allocate(bytes);
    if (array->data)
        std::memcpy(copy->data, array->data, bytes);
    if (array->type == KR_TYPE_STRING)
        for (std::size_t i = 0; i < count; ++i)
        {
            const char*& text = static_cast<const char**>(copy->data)[i];
            text = copyText(arena, text);
        }
    if (array->type == KR_TYPE_ARRAY)
        for (std::size_t i = 0; i < count; ++i)
        {
            KtArray*& inner = static_cast<KtArray**>(copy->data)[i];
            inner = copyArray(arena, inner);
        }
    return copy;
}
} // namespace

std::size_t elementSize(int type)
{
    static const std::size_t sizes[] = {
        sizeof(std::uint8_t), sizeof(std::int32_t), sizeof(std::uint32_t), sizeof(bool),
        sizeof(float),        sizeof(KtRgb),        sizeof(KtRgba),        sizeof(KtVector),
        sizeof(KtPoint),      sizeof(KtPoint2),     sizeof(const char*),   sizeof(void*),
        sizeof(void*),        sizeof(KtArray*),     sizeof(KtMatrix),      sizeof(std::int32_t),
    };
    return type >= KR_TYPE_BYTE && type <= KR_TYPE_ENUM ? sizes[type] : sizeof(KtParamValue);
}

KtParamValue copyValue(Arena& arena, int type, const KtParamValue& value)
{
    KtParamValue copy = value;
    if (type == KR_TYPE_STRING)
        copy.str = copyText(arena, value.str);
    else if (type == KR_TYPE_MATRIX)
        copy.mtx = copyMatrix(arena, value.mtx);
    else if (type == KR_TYPE_ARRAY)
        copy.array = copyArray(arena, value.array);
    return copy;
}

} // namespace zelk::renderer
