#include "renderer_fixture.h"

#include <memory>

namespace
{

using Array = std::unique_ptr<KtArray, decltype(&KrArrayDestroy)>;

Array makeArray(std::uint32_t elements, int type, std::uint8_t keys = 1)
{
    return Array(KrArrayAllocate(elements, keys, static_cast<std::uint8_t>(type)), &KrArrayDestroy);
}

} // namespace

TEST(Array, WorksWithoutARunningRenderer)
{
    const Array array = makeArray(2, KR_TYPE_FLOAT);
    static_cast<float*>(array->data)[1] = 2.5f;
    EXPECT_EQ(KrArrayGetFltFunc(array.get(), 0, __FILE__, __LINE__), 0.0f);
    EXPECT_EQ(KrArrayGetFltFunc(array.get(), 1, __FILE__, __LINE__), 2.5f);
}

TEST(Array, HoldsItsElementsForEachKey)
{
    const Array array = makeArray(2, KR_TYPE_INT, 3);
    static_cast<std::int32_t*>(array->data)[5] = -7;
    EXPECT_EQ(array->nelements, 2u);
    EXPECT_EQ(array->nkeys, 3u);
    EXPECT_EQ(KrArrayGetIntFunc(array.get(), 5, __FILE__, __LINE__), -7);
}

TEST(Array, ReadsEveryTypeOfElement)
{
    const Array bytes = makeArray(1, KR_TYPE_BYTE);
    *static_cast<std::uint8_t*>(bytes->data) = 200;
    EXPECT_EQ(KrArrayGetByteFunc(bytes.get(), 0, __FILE__, __LINE__), 200);

    const Array unsignedInts = makeArray(1, KR_TYPE_UINT);
    *static_cast<std::uint32_t*>(unsignedInts->data) = 4000000000u;
    EXPECT_EQ(KrArrayGetUIntFunc(unsignedInts.get(), 0, __FILE__, __LINE__), 4000000000u);

    const Array booleans = makeArray(1, KR_TYPE_BOOLEAN);
    *static_cast<bool*>(booleans->data) = true;
    EXPECT_TRUE(KrArrayGetBoolFunc(booleans.get(), 0, __FILE__, __LINE__));

    const Array colors = makeArray(1, KR_TYPE_RGB);
    *static_cast<KtRgb*>(colors->data) = {1, 2, 3};
    EXPECT_EQ(KrArrayGetRGBFunc(colors.get(), 0, __FILE__, __LINE__).b, 3.0f);

    const Array alphas = makeArray(1, KR_TYPE_RGBA);
    *static_cast<KtRgba*>(alphas->data) = {1, 2, 3, 4};
    EXPECT_EQ(KrArrayGetRGBAFunc(alphas.get(), 0, __FILE__, __LINE__).a, 4.0f);

    const Array vectors = makeArray(1, KR_TYPE_VECTOR);
    *static_cast<KtVector*>(vectors->data) = {1, 2, 3};
    EXPECT_EQ(KrArrayGetVecFunc(vectors.get(), 0, __FILE__, __LINE__).z, 3.0f);

    const Array points = makeArray(1, KR_TYPE_POINT);
    *static_cast<KtPoint*>(points->data) = {1, 2, 3};
    EXPECT_EQ(KrArrayGetPntFunc(points.get(), 0, __FILE__, __LINE__).y, 2.0f);

    const Array pairs = makeArray(1, KR_TYPE_POINT2);
    *static_cast<KtPoint2*>(pairs->data) = {1, 2};
    EXPECT_EQ(KrArrayGetPnt2Func(pairs.get(), 0, __FILE__, __LINE__).y, 2.0f);

    const Array matrices = makeArray(2, KR_TYPE_MATRIX);
    static_cast<KtMatrix*>(matrices->data)[1].m[3][0] = 9;
    EXPECT_EQ(KrArrayGetMtxFunc(matrices.get(), 1, __FILE__, __LINE__).m[3][0], 9.0f);

    const Array texts = makeArray(2, KR_TYPE_STRING);
    static_cast<const char**>(texts->data)[0] = "first";
    EXPECT_STREQ(KrArrayGetStrFunc(texts.get(), 0, __FILE__, __LINE__), "first");
    EXPECT_STREQ(KrArrayGetStrFunc(texts.get(), 1, __FILE__, __LINE__), "");

    const Array choices = makeArray(1, KR_TYPE_ENUM);
    *static_cast<std::int32_t*>(choices->data) = 2;
    EXPECT_EQ(KrArrayGetIntFunc(choices.get(), 0, __FILE__, __LINE__), 2);
}

TEST(Array, ReportsAnElementOutOfRangeWithTheCallersPlace)
{
    Renderer renderer;
    const Array array = makeArray(2, KR_TYPE_FLOAT);
    EXPECT_EQ(KrArrayGetFltFunc(array.get(), 2, "caller.cpp", 12), 0.0f);
    EXPECT_EQ(renderer.takeMessage(),
              "error: [kr] caller.cpp:12: Element 2 of an array of 2 elements does not exist. Count from 0.");
}

TEST(Array, ReportsAReaderOfAnotherTypeWithTheCallersPlace)
{
    Renderer renderer;
    const Array array = makeArray(1, KR_TYPE_FLOAT);
    EXPECT_STREQ(KrArrayGetStrFunc(array.get(), 0, "caller.cpp", 12), "");
    EXPECT_EQ(renderer.takeMessage(),
              "error: [kr] caller.cpp:12: An array of type 4 is read as type 10. Ask for the "
              "type that it has.");
}

TEST(Array, MayHaveATypeThatNobodyKnows)
{
    const Array array = makeArray(3, 200);
    EXPECT_EQ(array->type, 200);
    EXPECT_EQ(static_cast<const char*>(array->data)[3 * sizeof(KtParamValue) - 1], 0);
}

TEST(Array, DestroysANullPointerAsNothing) { KrArrayDestroy(nullptr); }
