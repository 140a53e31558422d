// Arrays: usable without a running renderer, so they own their memory themselves.
#include "values.h"

#include <cstdlib>
#include <cstring>

namespace
{

// What an element reader takes as its own type. An enumeration's index reads as the int that it is.
bool reads(int wanted, int stored)
{
    return stored == wanted || (wanted == KR_TYPE_INT && stored == KR_TYPE_ENUM);
}

template <typename T>
T element(const KtArray* array, std::uint32_t index, int type, const char* file, int line)
{
    T value = {};
    const std::uint64_t count = array->data ? std::uint64_t(array->nelements) * array->nkeys : 0;
    if (!reads(type, array->type))
        KrMsgError("[kr] %s:%d: An array of type %d is read as type %d. Ask for the type that it has.", file,
                   line, static_cast<int>(array->type), type);
    else if (index >= count)
        KrMsgError("[kr] %s:%d: Element %u of an array of %llu elements does not exist. Count from 0.", file,
                   line, static_cast<unsigned>(index), static_cast<unsigned long long>(count));
    else
        std::memcpy(&value, static_cast<const char*>(array->data) + index * sizeof(T), sizeof(T));
    return value;
}

} // namespace

KtArray* KrArrayAllocate(uint32_t nelements, uint8_t nkeys, uint8_t type)
{
    const std::size_t count = std::size_t(nelements) * nkeys;
    KtArray* array = static_cast<KtArray*>(std::calloc(1, sizeof(KtArray)));
    void* data = std::calloc(count > 0 ? count : 1, zelk::renderer::elementSize(type));
    if (!array || !data)
    {
        KrMsgError("[kr] No memory for an array of %llu elements. Use a smaller one.",
                   static_cast<unsigned long long>(count));
        std::free(data);
        std::free(array);
        return nullptr;
    }
    *array = {nelements, nkeys, type, data};
    return array;
}

void KrArrayDestroy(KtArray* array)
{
    if (!array)
        return;
    std::free(array->data);
    std::free(array);
}

uint8_t KrArrayGetByteFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<uint8_t>(array, index, KR_TYPE_BYTE, file, line);
}

int32_t KrArrayGetIntFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<int32_t>(array, index, KR_TYPE_INT, file, line);
}

uint32_t KrArrayGetUIntFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<uint32_t>(array, index, KR_TYPE_UINT, file, line);
}

bool KrArrayGetBoolFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    // Read as a byte: whoever filled the array may have stored any non-zero value for true.
    static_assert(sizeof(bool) == sizeof(uint8_t), "booleans are stored as bytes");
    return element<uint8_t>(array, index, KR_TYPE_BOOLEAN, file, line) != 0;
}

float KrArrayGetFltFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<float>(array, index, KR_TYPE_FLOAT, file, line);
}

KtRgb KrArrayGetRGBFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<KtRgb>(array, index, KR_TYPE_RGB, file, line);
}

KtRgba KrArrayGetRGBAFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<KtRgba>(array, index, KR_TYPE_RGBA, file, line);
}

KtVector KrArrayGetVecFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<KtVector>(array, index, KR_TYPE_VECTOR, file, line);
}

KtPoint KrArrayGetPntFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<KtPoint>(array, index, KR_TYPE_POINT, file, line);
}

KtPoint2 KrArrayGetPnt2Func(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<KtPoint2>(array, index, KR_TYPE_POINT2, file, line);
}

const char* KrArrayGetStrFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    const char* text = element<const char*>(array, index, KR_TYPE_STRING, file, line);
    return text ? text : "";
}

KtMatrix KrArrayGetMtxFunc(const KtArray* array, uint32_t index, const char* file, int line)
{
    return element<KtMatrix>(array, index, KR_TYPE_MATRIX, file, line);
}
