#include "key_file.h"
#include "support.h"

#include <zelk/ipr/keys.h>

#include <sys/stat.h>

#include <fstream>
#include <sstream>

using namespace zelk::ipr;
using testing::HasSubstr;

namespace
{
class KeyFile : public testing::Test
{
protected:
    KeyFile()
    {
        std::string error;
        EXPECT_TRUE(makeKeys(path, error)) << error;
    }

    std::string text() const
    {
        std::ostringstream stream;
        stream << std::ifstream(path).rdbuf();
        return stream.str();
    }

    std::string sentenceFor(const std::string& contents) const
    {
        std::ofstream(path) << contents;
        std::string error;
        EXPECT_FALSE(checkKeys(path, error));
        return error;
    }

    const TemporaryDirectory directory;
    const std::string path = directory.path("keys");
};
} // namespace

TEST_F(KeyFile, IsForItsOwnerAloneAndHoldsTwoDifferentPairs)
{
    struct stat status = {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    Keys keys;
    std::string error;
    ASSERT_TRUE(readKeys(path, keys, error)) << error;
    EXPECT_EQ(keys.serverSecret.size(), 40u);
    EXPECT_NE(keys.serverSecret, keys.clientSecret);
}

TEST_F(KeyFile, IsNeverOverwritten)
{
    const std::string before = text();
    std::string error;
    EXPECT_FALSE(makeKeys(path, error));
    EXPECT_EQ(error, "The key file " + path +
                         " cannot be made: File exists. "
                         "Remove it first if nobody needs its keys, or choose another name.");
    EXPECT_EQ(text(), before);
    EXPECT_FALSE(makeKeys(directory.path("no/keys"), error));
    EXPECT_THAT(error, HasSubstr("No such file or directory. Choose a directory that exists"));
}

TEST_F(KeyFile, IsRefusedWhenOthersCanReadIt)
{
    chmod(path.c_str(), 0640);
    std::string error;
    EXPECT_FALSE(checkKeys(path, error));
    EXPECT_THAT(error,
                HasSubstr("The key file " + path + " can be read by other users. Run \"chmod 600\" on it"));
}

TEST_F(KeyFile, IsRefusedWhenItIsNoFile)
{
    std::string error;
    EXPECT_FALSE(checkKeys(directory.path(), error));
    EXPECT_THAT(error, HasSubstr("is no regular file"));
    EXPECT_FALSE(checkKeys(directory.path("missing"), error));
    EXPECT_THAT(error, HasSubstr("cannot be opened: No such file or directory"));
}

TEST_F(KeyFile, IsRefusedWithThePlaceOfTheDamage)
{
    const std::string good = text();
    std::string other;
    ASSERT_TRUE(makeKeys(directory.path("other"), other)) << other;
    EXPECT_THAT(sentenceFor(""), HasSubstr("the line \"render_public\" is missing"));
    EXPECT_THAT(sentenceFor(good + "surplus x\n"), HasSubstr("line 6 has an unknown name"));
    EXPECT_THAT(sentenceFor(good + "host_public short\n"), HasSubstr("line 6 has no key of 40 characters"));
    EXPECT_THAT(sentenceFor(good + "host_public " + std::string(40, '~') + "\n"),
                HasSubstr("line 6 has no key"));
    EXPECT_THAT(sentenceFor(good + "host_public " + std::string(40, '0') + "\n"),
                HasSubstr("do not belong together"));
    EXPECT_THAT(sentenceFor(std::string(100000, '\0')), HasSubstr("is damaged"));
}
