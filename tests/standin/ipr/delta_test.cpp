#include <zelk/ipr/delta.h>
#include <zelk/ipr/reader.h>

#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <limits>

using namespace zelk::ipr;

namespace
{
struct ArrayDestroyer
{
    void operator()(KtArray* array) const { KrArrayDestroy(array); }
};
using OwnedArray = std::unique_ptr<KtArray, ArrayDestroyer>;

template <typename T>
OwnedArray arrayOf(std::uint8_t type, const std::vector<T>& values, std::uint8_t keys = 1)
{
    OwnedArray array(KrArrayAllocate(static_cast<std::uint32_t>(values.size() / keys), keys, type));
    if (!values.empty())
        std::memcpy(array->data, values.data(), values.size() * sizeof(T));
    return array;
}

DeltaParm parmOf(int type)
{
    DeltaParm parm = DeltaParm();
    parm.type = static_cast<std::uint8_t>(type);
    return parm;
}

DeltaParm arrayParm(KtArray* array)
{
    DeltaParm parm = parmOf(KR_TYPE_ARRAY);
    parm.value.array = array;
    return parm;
}

Delta recordOf(const DeltaParm& parm)
{
    Delta delta;
    delta.nodePath = "/shop/net/noise1";
    delta.entryName = "noise";
    delta["p"] = parm;
    return delta;
}

float floatOfBits(std::uint32_t bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Everything but the text, byte by byte.
std::string bytesOf(const DeltaParm& parm)
{
    return std::string(1, static_cast<char>(parm.type)) +
           std::string(reinterpret_cast<const char*>(&parm.value), sizeof parm.value) +
           std::string(reinterpret_cast<const char*>(&parm.matrix), sizeof parm.matrix);
}

void expectSame(const DeltaParm& read, const DeltaParm& sent)
{
    EXPECT_EQ(read.str, sent.str);
    EXPECT_EQ(read.reserved, nullptr);
    EXPECT_EQ(bytesOf(read), bytesOf(sent));
}

// Sends one value there and back.
void expectRoundTrip(const DeltaParm& parm)
{
    ReceivedDelta received;
    std::string error;
    ASSERT_TRUE(readDelta(recordOf(parm).serialize(), received, error)) << error;
    EXPECT_EQ(received.nodePath, "/shop/net/noise1");
    EXPECT_EQ(received.entryName, "noise");
    ASSERT_EQ(received.size(), 1u);
    expectSame(received["p"], parm);
}

// The array that arrives when this one is sent; it belongs to `received`.
const KtArray* sendArray(KtArray* array, ReceivedDelta& received)
{
    std::string error;
    EXPECT_TRUE(readDelta(recordOf(arrayParm(array)).serialize(), received, error)) << error;
    return received["p"].value.array;
}

template <typename T>
void expectArrayRoundTrip(int type, const std::vector<T>& values, std::uint8_t keys = 1)
{
    const OwnedArray array = arrayOf(static_cast<std::uint8_t>(type), values, keys);
    ReceivedDelta received;
    const KtArray* read = sendArray(array.get(), received);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->type, type);
    EXPECT_EQ(read->nkeys, keys);
    ASSERT_EQ(read->nelements, array->nelements);
    EXPECT_EQ(std::memcmp(read->data, array->data, values.size() * sizeof(T)), 0);
}
} // namespace

TEST(Delta, IsEmptyAtFirst)
{
    const Delta delta;
    EXPECT_TRUE(delta.empty());
    EXPECT_EQ(delta.nodePath, "");
    EXPECT_EQ(delta.entryName, "");
}

TEST(Delta, SerializesAsTheOneMapThatIsPromised)
{
    DeltaParm parm = parmOf(KR_TYPE_FLOAT);
    parm.value.flt = 1.0f;
    Delta delta = recordOf(parm);
    delta.nodePath = "/a";
    EXPECT_EQ(delta.serialize(),
              std::string("\x83\xa9node_path\xa2/a\xaa"
                          "entry_name\xa5noise\xa5parms\x81\xa1p\x82\xa4type\x04\xa5value\xca\x3f\x80\0\0",
                          58));
}

TEST(Delta, KeepsWholeNumbersOfEveryWidth)
{
    for (const int type : {KR_TYPE_BYTE, KR_TYPE_INT, KR_TYPE_UINT})
        for (const std::int32_t value : {0, 1, -1, 127, 128, 255, 65536, INT32_MAX, INT32_MIN})
        {
            DeltaParm parm = parmOf(type);
            parm.value.int_ = value;
            expectRoundTrip(parm);
        }
}

TEST(Delta, KeepsBooleans)
{
    for (const std::uint8_t value : {0, 1})
    {
        DeltaParm parm = parmOf(KR_TYPE_BOOLEAN);
        parm.value.byte_ = value;
        expectRoundTrip(parm);
    }
}

TEST(Delta, KeepsEveryBitOfAFloat)
{
    // Among them both infinities, minus zero, the smallest number, quiet and signalling NaNs with payloads.
    for (const std::uint32_t bits :
         {0x00000000u, 0x80000000u, 0x3f800000u, 0x00000001u, 0x7f7fffffu, 0x7f800000u, 0xff800000u,
          0x7fc00000u, 0xffc12345u, 0x7f812345u, 0xff800001u})
    {
        DeltaParm parm = parmOf(KR_TYPE_FLOAT);
        parm.value.uint_ = bits;
        expectRoundTrip(parm);
    }
}

TEST(Delta, KeepsSmallVectors)
{
    const struct
    {
        int type;
        int count;
    } rows[] = {
        {KR_TYPE_RGB, 3}, {KR_TYPE_VECTOR, 3}, {KR_TYPE_POINT, 3}, {KR_TYPE_RGBA, 4}, {KR_TYPE_POINT2, 2}};
    for (const auto& row : rows)
    {
        DeltaParm parm = parmOf(row.type);
        const float values[] = {0.1f, -2e30f, floatOfBits(0x7f812345u), 4.0f};
        std::memcpy(&parm.value, values, static_cast<std::size_t>(row.count) * sizeof(float));
        expectRoundTrip(parm);
    }
}

TEST(Delta, KeepsAMatrixInStoredOrder)
{
    DeltaParm parm = parmOf(KR_TYPE_MATRIX);
    for (int i = 0; i < 16; ++i)
        parm.matrix.m[i / 4][i % 4] = static_cast<float>(i) + 0.5f;
    parm.matrix.m[3][3] = std::numeric_limits<float>::quiet_NaN();
    expectRoundTrip(parm);
}

TEST(Delta, KeepsEveryByteOfATextAndOfAName)
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    for (const int type : {KR_TYPE_STRING, KR_TYPE_NODE, KR_TYPE_ENUM})
        for (const std::string& text :
             {std::string(), std::string("radial"), bytes, std::string(100000, 'x')})
        {
            DeltaParm parm = parmOf(type);
            parm.str = text;
            expectRoundTrip(parm);
        }

    Delta delta;
    delta.nodePath = delta.entryName = bytes;
    delta[bytes] = parmOf(KR_TYPE_INT);
    ReceivedDelta received;
    std::string error;
    ASSERT_TRUE(readDelta(delta.serialize(), received, error)) << error;
    EXPECT_EQ(received.nodePath, bytes);
    EXPECT_EQ(received.entryName, bytes);
    EXPECT_EQ(received.count(bytes), 1u);
}

TEST(Delta, GivesTheMarkerForTypesWithoutAValue)
{
    for (const int type : {int(KR_TYPE_POINTER), int(KR_TYPE_ARRAY), 16, 200, int(KR_TYPE_UNDEFINED)})
    {
        DeltaParm parm = parmOf(type);
        parm.str = "<unhandled>";
        expectRoundTrip(parm);
    }
}

TEST(Delta, DoesNotSendWhatTheTypeDoesNotUse)
{
    DeltaParm parm = parmOf(KR_TYPE_INT);
    parm.value.int_ = 7;
    const std::string plain = recordOf(parm).serialize();
    parm.str = "left over";
    parm.matrix.m[0][0] = 1.0f;
    EXPECT_EQ(recordOf(parm).serialize(), plain);
}

TEST(Delta, KeepsArraysOfEveryElementType)
{
    expectArrayRoundTrip<std::uint8_t>(KR_TYPE_BYTE, {0, 127, 255});
    expectArrayRoundTrip<std::int32_t>(KR_TYPE_INT, {INT32_MIN, -1, 0, INT32_MAX});
    expectArrayRoundTrip<std::uint32_t>(KR_TYPE_UINT, {0, UINT32_MAX});
    expectArrayRoundTrip<std::uint8_t>(KR_TYPE_BOOLEAN, {0, 1, 1});
    expectArrayRoundTrip<std::uint32_t>(KR_TYPE_FLOAT, {0x3f800000u, 0x7f812345u, 0xff800000u});
    expectArrayRoundTrip<KtRgb>(KR_TYPE_RGB, {{1, 2, 3}, {4, 5, 6}});
    expectArrayRoundTrip<KtRgba>(KR_TYPE_RGBA, {{1, 2, 3, 4}});
    expectArrayRoundTrip<KtVector>(KR_TYPE_VECTOR, {{1, 2, 3}});
    expectArrayRoundTrip<KtPoint>(KR_TYPE_POINT, {{1, 2, 3}});
    expectArrayRoundTrip<KtPoint2>(KR_TYPE_POINT2, {{1, 2}, {3, 4}});
    expectArrayRoundTrip<KtMatrix>(
        KR_TYPE_MATRIX, {KtMatrix{{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}}});
    expectArrayRoundTrip<std::int32_t>(KR_TYPE_ENUM, {2, 0, 1});
    expectArrayRoundTrip<float>(KR_TYPE_FLOAT, {});
}

TEST(Delta, KeepsTheMotionKeysOfAnArray)
{
    expectArrayRoundTrip<float>(KR_TYPE_FLOAT, {1, 2, 3, 4, 5, 6}, 3);
}

TEST(Delta, KeepsArraysOfTextsWhichTheReaderOwns)
{
    ReceivedDelta received;
    const OwnedArray array = arrayOf<const char*>(KR_TYPE_STRING, {"first", nullptr, "third"});
    const KtArray* read = sendArray(array.get(), received);
    ASSERT_EQ(read->nelements, 3u);
    const char* const* texts = static_cast<const char* const*>(read->data);
    EXPECT_STREQ(texts[0], "first");
    EXPECT_STREQ(texts[1], "");
    EXPECT_STREQ(texts[2], "third");
}

TEST(Delta, GivesTheMarkerForArraysThatMeanSomethingToTheSenderOnly)
{
    ReceivedDelta received;
    for (const int type : {int(KR_TYPE_POINTER), int(KR_TYPE_NODE), int(KR_TYPE_ARRAY), 99})
    {
        const OwnedArray array(KrArrayAllocate(2, 1, static_cast<std::uint8_t>(type)));
        EXPECT_EQ(sendArray(array.get(), received), nullptr);
        EXPECT_EQ(received["p"].str, "<unhandled>");
    }
}

TEST(Delta, CarriesManyParametersInTheOrderOfTheirNames)
{
    Delta delta;
    for (int i = 0; i < 1000; ++i)
        delta["p" + std::to_string(i)].value.int_ = i;
    ReceivedDelta received;
    std::string error;
    ASSERT_TRUE(readDelta(delta.serialize(), received, error)) << error;
    ASSERT_EQ(received.size(), 1000u);
    EXPECT_EQ(received["p777"].value.int_, 777);
}

TEST(Delta, CopiesBorrowTheArraysOfTheOriginal)
{
    const OwnedArray array = arrayOf<float>(KR_TYPE_FLOAT, {1, 2});
    Delta copy;
    {
        const Delta original = recordOf(arrayParm(array.get()));
        copy = original;
    }
    EXPECT_EQ(copy["p"].value.array, array.get());
    EXPECT_EQ(KrArrayGetFltFunc(copy["p"].value.array, 1, __FILE__, __LINE__), 2.0f);
}
