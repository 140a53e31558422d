#include "asset_files.h"

#include <UT/UT_IGZStream.h>

#include <memory>
#include <random>

namespace
{

using ::testing::ElementsAre;
typedef std::vector<std::string> Words;

std::string textOf(const UT_WorkBuffer& buffer)
{
    return std::string(buffer.buffer(), static_cast<std::size_t>(buffer.length()));
}

Words wordsOf(UT_IStream& stream)
{
    Words words;
    UT_WorkBuffer word;
    while (stream.getWord(word))
        words.push_back(textOf(word));
    return words;
}

/// What the stream should find, letter by letter.
Words wordsByHand(const std::string& text)
{
    Words words;
    std::string word;
    for (const char c : text + " ")
        if (std::string(" \t\n\v\f\r").find(c) == std::string::npos)
            word += c;
        else if (!word.empty())
        {
            words.push_back(word);
            word.clear();
        }
    return words;
}

class Streams : public AssetFiles
{
protected:
    UT_IStream& streamOf(const std::string& bytes)
    {
        m_reader.reset(new FS_Reader(file("bytes", bytes).c_str()));
        return *m_reader->getStream();
    }

    /// A stream of what these compressed bytes hold.
    UT_IStream& inflated(const std::string& packed)
    {
        m_gzip.reset();
        UT_IStream& source = streamOf(packed);
        m_gzip.reset(source.getGzipStream());
        return *m_gzip;
    }

private:
    std::unique_ptr<FS_Reader> m_reader;
    std::unique_ptr<UT_IStream> m_gzip;
};

std::string randomText(unsigned seed, std::size_t size)
{
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < size)
        text += static_cast<char>(random() % 12 ? random() % 256 : ' ');
    return text;
}

TEST_F(Streams, GiveWordsBetweenAnyWhiteSpace)
{
    EXPECT_THAT(wordsOf(streamOf("  one\ttwo\n\nthree\vfour\ffive\rsix ")),
                ElementsAre("one", "two", "three", "four", "five", "six"));
    EXPECT_THAT(wordsOf(streamOf("last")), ElementsAre("last"));
    EXPECT_THAT(wordsOf(streamOf(" \n ")), ElementsAre());
    EXPECT_THAT(wordsOf(streamOf("")), ElementsAre());
}

TEST_F(Streams, KeepZerosAndHighBytesInsideWords)
{
    const std::string word("a.init\0type\xa0\xff", 13);
    EXPECT_THAT(wordsOf(streamOf(word + " =")), ElementsAre(word, "="));
}

TEST_F(Streams, GiveTheSameWordsHoweverTheBlocksFall)
{
    const std::string text = std::string(65530, 'x') + " " + randomText(1, 300000) + std::string(200000, 'y');
    EXPECT_EQ(wordsOf(streamOf(text)), wordsByHand(text));
    EXPECT_EQ(wordsOf(inflated(gzip(text))), wordsByHand(text));
}

TEST_F(Streams, TellTheEndWithTheLastWord)
{
    UT_IStream& stream = streamOf("one two");
    UT_WorkBuffer word;
    EXPECT_FALSE(stream.isEof());
    EXPECT_TRUE(stream.getWord(word));
    EXPECT_FALSE(stream.isEof());
    EXPECT_TRUE(stream.getWord(word));
    EXPECT_TRUE(stream.isEof());
    EXPECT_FALSE(stream.getWord(word));
    EXPECT_EQ(textOf(word), "");
    EXPECT_FALSE(stream.isError());
}

TEST_F(Streams, GiveLinesQuotedTextsAndTheRest)
{
    UT_IStream& stream = streamOf("first\n\n  \"two \\\" words\" plain token\nrest\n of it");
    UT_WorkBuffer text;
    EXPECT_TRUE(stream.getLine(text));
    EXPECT_EQ(textOf(text), "first");
    EXPECT_TRUE(stream.getLine(text));
    EXPECT_EQ(textOf(text), "");
    EXPECT_TRUE(stream.getString(text));
    EXPECT_EQ(textOf(text), "two \" words");
    EXPECT_TRUE(stream.getString(text));
    EXPECT_EQ(textOf(text), "plain");
    EXPECT_TRUE(stream.checkToken("token"));
    EXPECT_TRUE(stream.getAll(text));
    EXPECT_EQ(textOf(text), "\nrest\n of it");
    EXPECT_FALSE(stream.getLine(text));
    EXPECT_FALSE(stream.checkToken("token"));
}

TEST_F(Streams, GiveWhatStandsBeforeABreakInCompressedBytes)
{
    const std::string text = "alpha beta gamma " + randomText(2, 200000);
    const std::string packed = gzip(text);
    UT_IStream& stream = inflated(packed.substr(0, packed.size() / 2));
    const Words words = wordsOf(stream);
    ASSERT_GT(words.size(), 3u);
    EXPECT_EQ(words[0], "alpha");
    EXPECT_TRUE(stream.isError());
    EXPECT_TRUE(stream.isEof());
}

TEST_F(Streams, GiveNothingOfBytesThatAreNotCompressed)
{
    for (const std::string& bytes :
         {std::string("no gzip at all"), std::string(), std::string("\x1f\x8b"), std::string(100000, '\0')})
    {
        UT_IStream& stream = inflated(bytes);
        EXPECT_THAT(wordsOf(stream), ElementsAre());
        EXPECT_TRUE(stream.isError());
    }
}

TEST_F(Streams, TellAWrongChecksumAfterTheLastWord)
{
    std::string packed = gzip("one two");
    packed[packed.size() - 8] = static_cast<char>(packed[packed.size() - 8] + 1);
    UT_IStream& stream = inflated(packed);
    EXPECT_THAT(wordsOf(stream), ElementsAre("one", "two"));
    EXPECT_TRUE(stream.isError());
}

TEST_F(Streams, EndWithTheFirstCompressedMember)
{
    EXPECT_THAT(wordsOf(inflated(gzip("one") + gzip("two"))), ElementsAre("one"));
}

} // namespace
