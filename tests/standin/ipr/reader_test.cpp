#include <zelk/ipr/reader.h>

#include <gmock/gmock.h>
#include <msgpack.hpp>

#include <cstdlib>
#include <random>

using namespace zelk::ipr;
using testing::HasSubstr;

namespace
{
using Packer = msgpack::packer<msgpack::sbuffer>;

// A text made piece by piece, by the format's own library.
class Text
{
public:
    Text() : packer(m_buffer) {}

    /// "p": {"type": TYPE, "value": ...}; the value follows.
    Text& record(int type)
    {
        packer.pack_map(3).pack("node_path").pack("/n").pack("entry_name").pack("noise");
        packer.pack("parms").pack_map(1).pack("p").pack_map(2).pack("type").pack(type).pack("value");
        return *this;
    }

    std::string bytes() const { return std::string(m_buffer.data(), m_buffer.size()); }

private:
    msgpack::sbuffer m_buffer;

public:
    Packer packer;
};

std::string sentenceFor(const std::string& text)
{
    ReceivedDelta delta;
    delta.nodePath = "former";
    std::string error;
    EXPECT_FALSE(readDelta(text, delta, error));
    EXPECT_TRUE(delta.empty());
    EXPECT_EQ(delta.nodePath, "");
    EXPECT_EQ(delta.entryName, "");
    EXPECT_EQ(error.find("This is no change record: "), 0u) << error;
    EXPECT_EQ(error.back(), '.');
    return error;
}

template <typename T>
std::string sentenceForValue(int type, const T& value)
{
    Text text;
    text.record(type).packer.pack(value);
    return sentenceFor(text.bytes());
}

// One parameter of each kind, and a text of each length that the format tells apart.
std::string richRecord(ReceivedDelta& owner)
{
    Delta delta;
    delta.nodePath = "/shop/net/image1";
    delta.entryName = "zelk__image";
    for (int type = 0; type <= 16; ++type)
    {
        DeltaParm& parm = delta["parm" + std::to_string(type)];
        parm.type = static_cast<std::uint8_t>(type);
        parm.str = std::string(static_cast<std::size_t>(type) * 20, 't');
    }
    delta["parm13"].value.array = owner.makeArray(5, 2, KR_TYPE_RGB);
    DeltaParm& texts = delta["texts"];
    texts.type = KR_TYPE_ARRAY;
    texts.value.array = owner.makeArray(3, 1, KR_TYPE_STRING);
    return delta.serialize();
}

// Changes, removes, inserts or doubles some bytes.
std::string mutated(std::string text, std::mt19937& random)
{
    const auto below = [&](std::size_t bound)
    { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random); };
    for (std::size_t changes = 1 + below(4); changes > 0 && !text.empty(); --changes)
    {
        const std::size_t at = below(text.size());
        switch (below(5))
        {
        case 0:
            text[at] = static_cast<char>(below(256));
            break;
        case 1:
            text.erase(at, 1 + below(8));
            break;
        case 2:
            text.insert(at, 1, static_cast<char>(below(256)));
            break;
        case 3:
            text.insert(at, text.substr(at, below(32)));
            break;
        default:
            text.resize(at);
        }
    }
    return text;
}
} // namespace

TEST(Reader, SurvivesTenThousandDamagedRecords)
{
    const char* given = std::getenv("IPR_TEST_SEED");
    const unsigned seed = given ? static_cast<unsigned>(std::atoi(given)) : 20260101u;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    ReceivedDelta owner;
    const std::string good = richRecord(owner);
    int refused = 0;
    for (int i = 0; i < 10000; ++i)
    {
        const std::string text = mutated(good, random);
        ReceivedDelta delta;
        std::string error;
        if (readDelta(text, delta, error))
        {
            // What is taken for a record must be one: its own text says the same.
            ReceivedDelta again;
            const std::string second = delta.serialize();
            ASSERT_TRUE(readDelta(second, again, error)) << error;
            ASSERT_EQ(again.serialize(), second);
            continue;
        }
        ++refused;
        ASSERT_FALSE(error.empty());
        ASSERT_TRUE(delta.empty());
    }
    EXPECT_GT(refused, 5000);
}

TEST(Reader, RefusesEveryBeginningOfARecord)
{
    ReceivedDelta owner;
    const std::string good = richRecord(owner);
    for (std::size_t size = 0; size < good.size(); ++size)
        sentenceFor(good.substr(0, size));
}

TEST(Reader, RefusesWhatFollowsARecord)
{
    ReceivedDelta owner;
    EXPECT_THAT(sentenceFor(richRecord(owner) + "x"), HasSubstr("something follows the record at byte"));
}

TEST(Reader, RefusesTextsThatPromiseMoreThanTheyHold)
{
    EXPECT_THAT(sentenceFor(std::string("\xdf\xff\xff\xff\xff", 5)), HasSubstr("the text ends at byte"));
    EXPECT_THAT(sentenceFor(std::string("\xdd\xff\xff\xff\xff\x01", 6)), HasSubstr("the text ends at byte"));
    EXPECT_THAT(sentenceFor(std::string("\xdb\xff\xff\xff\xff"
                                        "ab",
                                        7)),
                HasSubstr("the text ends at byte"));
}

TEST(Reader, RefusesDeepNesting)
{
    EXPECT_THAT(sentenceFor(std::string(1000000, '\x91')), HasSubstr("nested more than 8 levels deep"));
}

TEST(Reader, RefusesMoreValuesThanAnyRecordHas)
{
    std::string text("\xdd\x01\x00\x00\x00", 5);
    text.append(0x1000000, '\x01');
    EXPECT_THAT(sentenceFor(text), HasSubstr("more than 8000000 values"));
}

TEST(Reader, RefusesATextLongerThanAnyRecord)
{
    EXPECT_THAT(sentenceFor(std::string(max_record_bytes + 1, '\x01')),
                HasSubstr("67108865 bytes, more than any record"));
}

TEST(Reader, NamesWhatIsMissing)
{
    EXPECT_THAT(sentenceFor("\x80"), HasSubstr("record: the key \"node_path\" is missing"));
    Text text;
    text.packer.pack_map(3).pack("node_path").pack("/n").pack("entry_name").pack("e");
    text.packer.pack("parms").pack_map(1).pack("p").pack_map(1).pack("value").pack(1);
    EXPECT_THAT(sentenceFor(text.bytes()), HasSubstr("parameter \"p\": the key \"type\" is missing"));
}

TEST(Reader, NamesWhatAppearsTwice)
{
    Text text;
    text.packer.pack_map(3)
        .pack("node_path")
        .pack("/n")
        .pack("node_path")
        .pack("e")
        .pack("parms")
        .pack_map(0);
    EXPECT_THAT(sentenceFor(text.bytes()), HasSubstr("the key \"node_path\" appears twice"));

    Text parms;
    parms.packer.pack_map(3)
        .pack("node_path")
        .pack("/n")
        .pack("entry_name")
        .pack("e")
        .pack("parms")
        .pack_map(2);
    for (int i = 0; i < 2; ++i)
        parms.packer.pack("p").pack_map(2).pack("type").pack(1).pack("value").pack(1);
    EXPECT_THAT(sentenceFor(parms.bytes()), HasSubstr("parameter \"p\": it appears twice"));
}

TEST(Reader, NamesTheParameterAndWhatItsTypeExpects)
{
    EXPECT_THAT(sentenceForValue(KR_TYPE_INT, "text"),
                HasSubstr("parameter \"p\": a signed 32-bit integer was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_INT, INT64_C(1) << 31),
                HasSubstr("a signed 32-bit integer was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_INT, UINT64_MAX), HasSubstr("a signed 32-bit integer was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_BOOLEAN, 1), HasSubstr("a boolean was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_FLOAT, true), HasSubstr("a number was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_RGB, std::vector<float>{1, 2}),
                HasSubstr("a list of 3 numbers was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_MATRIX, std::vector<float>(17)),
                HasSubstr("a list of 16 numbers was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_STRING, 1.5), HasSubstr("a text was expected"));
    EXPECT_THAT(sentenceForValue(KR_TYPE_ARRAY, 1), HasSubstr("a text was expected"));
    EXPECT_THAT(sentenceForValue(256, 1), HasSubstr("an integer from 0 to 255 was expected, 256 was found"));
}

TEST(Reader, NamesWhatIsWrongWithAnArray)
{
    const auto sentence = [](int type, int keys, const std::vector<int>& values)
    {
        Text text;
        text.record(KR_TYPE_ARRAY).packer.pack_map(3).pack("element_type").pack(type);
        text.packer.pack("values").pack(values).pack("key_count").pack(keys);
        return sentenceFor(text.bytes());
    };
    EXPECT_THAT(sentence(KR_TYPE_ARRAY, 1, {1}), HasSubstr("there are no arrays of type 13"));
    EXPECT_THAT(sentence(KR_TYPE_INT, 2, {1, 2, 3}), HasSubstr("3 values do not fill 2 motion keys"));
    EXPECT_THAT(sentence(KR_TYPE_INT, 0, {1}), HasSubstr("1 values do not fill 0 motion keys"));
    EXPECT_THAT(sentence(KR_TYPE_BYTE, 1, {256}), HasSubstr("an integer from 0 to 255 was expected"));
    EXPECT_THAT(sentence(KR_TYPE_RGB, 1, {1}), HasSubstr("a list of 3 numbers was expected"));
}

TEST(Reader, ShowsForeignNamesHarmlessly)
{
    Text text;
    text.packer.pack_map(3).pack("node_path").pack("/n").pack("entry_name").pack("e");
    text.packer.pack("parms").pack_map(1).pack(std::string("\x1b[31m") + std::string(500, 'x')).pack_map(0);
    const std::string sentence = sentenceFor(text.bytes());
    EXPECT_EQ(sentence.find('\x1b'), std::string::npos);
    EXPECT_LT(sentence.size(), 300u);
}

TEST(Reader, PassesOverKeysThatNobodyKnows)
{
    Text text;
    text.packer.pack_map(4).pack("later").pack_map(1).pack(std::vector<int>{1, 2}).pack_nil();
    text.packer.pack("parms")
        .pack_map(1)
        .pack("p")
        .pack_map(3)
        .pack("value")
        .pack(5)
        .pack("note")
        .pack(1.5)
        .pack("type")
        .pack(1);
    text.packer.pack("entry_name").pack("e").pack("node_path").pack("/n");
    ReceivedDelta delta;
    std::string error;
    ASSERT_TRUE(readDelta(text.bytes(), delta, error)) << error;
    EXPECT_EQ(delta["p"].value.int_, 5);
}

TEST(Reader, TakesWhatOtherWritersCallAFloat)
{
    Text text;
    text.record(KR_TYPE_POINT2).packer.pack_array(2).pack(0.5).pack(3);
    ReceivedDelta delta;
    std::string error;
    ASSERT_TRUE(readDelta(text.bytes(), delta, error)) << error;
    EXPECT_EQ(delta["p"].value.pnt2.x, 0.5f);
    EXPECT_EQ(delta["p"].value.pnt2.y, 3.0f);
}

TEST(Reader, ForgetsTheFormerRecordAndItsArrays)
{
    ReceivedDelta delta;
    std::string error;
    ASSERT_TRUE(readDelta(richRecord(delta), delta, error)) << error;
    Delta small;
    small.nodePath = "/second";
    ASSERT_TRUE(readDelta(small.serialize(), delta, error)) << error;
    EXPECT_TRUE(delta.empty());
    EXPECT_EQ(delta.nodePath, "/second");
}
