#include "op/op_archive.h"

#include <gmock/gmock.h>

using standin::ArchiveEntry;
using testing::HasSubstr;

namespace
{

std::string sample()
{
    return standin::writeArchive({{"a.init", "type = x\n"}, {"a.data", std::string("\0\n", 2)}});
}

} // namespace

TEST(Archive, HasOctalHeadersAndNoPadding)
{
    EXPECT_EQ(standin::writeArchive({{"a", "xy"}}), std::string("070707"
                                                                "000001"
                                                                "000000"
                                                                "000666"
                                                                "000000"
                                                                "000000"
                                                                "000001"
                                                                "000000"
                                                                "00000000000"
                                                                "000002"
                                                                "00000000002"
                                                                "a\0xy"
                                                                "070707"
                                                                "000001"
                                                                "000000"
                                                                "000666"
                                                                "000000"
                                                                "000000"
                                                                "000001"
                                                                "000000"
                                                                "00000000000"
                                                                "000013"
                                                                "00000000000"
                                                                "TRAILER!!!\0",
                                                                76 + 4 + 76 + 11));
}

TEST(Archive, GivesBackNamesAndBytes)
{
    std::vector<ArchiveEntry> entries;
    std::string why;
    ASSERT_TRUE(standin::readArchive(sample(), entries, why)) << why;
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].name, "a.init");
    EXPECT_EQ(entries[0].data, "type = x\n");
    EXPECT_EQ(entries[1].data, std::string("\0\n", 2));
}

TEST(Archive, SaysOfEveryLengthThatIsTooShortThatItIs)
{
    const std::string whole = sample();
    for (std::size_t size = 0; size < whole.size(); ++size)
    {
        std::vector<ArchiveEntry> entries;
        std::string why;
        EXPECT_FALSE(standin::readArchive(whole.substr(0, size), entries, why)) << size;
        EXPECT_TRUE(entries.empty());
        EXPECT_THAT(why, size ? HasSubstr("byte " + std::to_string(size)) : HasSubstr("empty")) << size;
    }
}

TEST(Archive, NamesTheEntryThatIsCutOff)
{
    std::vector<ArchiveEntry> entries;
    std::string why;
    EXPECT_FALSE(standin::readArchive(sample().substr(0, 90), entries, why));
    EXPECT_EQ(why, "it ends at byte 90, inside the entry \"a.init\", which has 9 bytes");
}

TEST(Archive, SaysWhereSomethingElseStands)
{
    std::vector<ArchiveEntry> entries;
    std::string why;
    EXPECT_FALSE(standin::readArchive("some text that is no archive", entries, why));
    EXPECT_EQ(why, "there is no archive entry at byte 0, where one must begin");
    EXPECT_FALSE(standin::readArchive(sample() + "x", entries, why));
    EXPECT_THAT(why, HasSubstr("something behind its end"));
}

TEST(Archive, RefusesSizesThatAreNoOctalNumbersOrLargerThanTheFile)
{
    std::vector<ArchiveEntry> entries;
    std::string why;
    std::string damaged = sample();
    damaged[70] = '9';
    EXPECT_FALSE(standin::readArchive(damaged, entries, why));
    EXPECT_EQ(why, "the header of the archive entry at byte 0 holds no sizes");
    damaged = sample();
    damaged.replace(65, 11, "77777777777");
    EXPECT_FALSE(standin::readArchive(damaged, entries, why));
    EXPECT_THAT(why, HasSubstr("inside the entry \"a.init\""));
}
