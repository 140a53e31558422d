#include "asset_contents.h"
#include "gzip.h"
#include "standin_renderer.h"
#include "standin_session.h"

#include "shop_contents.h"

#include <FS/FS_IndexFile.h>
#include <UT/UT_IStream.h>

#include <cstring>
#include <random>

using zelk::shop::areKorvanContents;
using zelk::shop::isKorvanAsset;

namespace
{

/// A stream of a text, given in small pieces.
class TextStream : public UT_IStream
{
public:
    explicit TextStream(std::string text, std::size_t pieceSize = 7)
        : m_rest(std::move(text)), m_pieceSize(pieceSize)
    {
    }

protected:
    exint readBytes(char* bytes, exint size) override
    {
        const std::size_t count = std::min({m_pieceSize, m_rest.size(), static_cast<std::size_t>(size)});
        std::memcpy(bytes, m_rest.data(), count);
        m_rest.erase(0, count);
        return static_cast<exint>(count);
    }

private:
    std::string m_rest;
    std::size_t m_pieceSize;
};

/// Where an entry of the archive begins: the end of its name, and the type of its node.
std::string entry(const std::string& type)
{
    return "0707070000010000000000000666net/node.init" + std::string(1, '\0') + "type = " + type +
           "\nmatchesdef = 0\n";
}

/// Contents of an asset "own" with children of those types.
std::string contents(const std::vector<std::string>& children)
{
    std::string text = "node_type" + std::string(1, '\0') + "Vop\n" + entry("own");
    for (const std::string& child : children)
        text += entry(child);
    return text + "TRAILER!!!" + std::string(1, '\0');
}

bool accepts(const std::string& text, bool stored = false)
{
    TextStream stream(text);
    return areKorvanContents(stream, stored);
}

void addSection(FS_IndexFile& file, const char* name, const std::string& data)
{
    file.addSection(name, data.data(), static_cast<int>(data.size()));
}

bool acceptsByWords(const std::string& text, bool stored)
{
    TextStream stream(text);
    return acceptsByWords(stream, stored);
}

} // namespace

TEST(AssetContents, OfKorvanNodesAreAccepted)
{
    EXPECT_TRUE(accepts(contents({"korvan::noise"})));
    EXPECT_TRUE(accepts(contents({"null", "subnet", "korvan::a", "subinput", "suboutput", "korvan::b"})));
}

TEST(AssetContents, WithOneForeignChildAreRefused)
{
    EXPECT_FALSE(accepts(contents({"korvan::noise", "add"})));
    EXPECT_FALSE(accepts(contents({"add", "korvan::noise"})));
    EXPECT_FALSE(accepts(contents({"korvan::noise", "other::noise"})));
    EXPECT_FALSE(accepts(contents({"korvan::noise", "KORVAN::noise"})));
    EXPECT_FALSE(accepts(contents({"korvan::noise", "korvan_material"}))) << "the colons belong to the name";
    EXPECT_FALSE(accepts(contents({"korvan::noise", "korvan:noise"})));
    EXPECT_FALSE(accepts(contents({"korvan::noise", "inline"})));
    EXPECT_FALSE(accepts(contents({"korvan::noise", "nullify"}))) << "only the exact names pass";
    EXPECT_FALSE(accepts(contents({"korvan::noise", "subnet2"})));
}

TEST(AssetContents, WithoutAKorvanChildAreRefused)
{
    EXPECT_FALSE(accepts(contents({})));
    EXPECT_FALSE(accepts(contents({"null", "subnet"})));
    EXPECT_FALSE(accepts(entry("korvan::own"))) << "the asset's own type does not count";
    EXPECT_FALSE(accepts(""));
    EXPECT_FALSE(accepts(" \n\t"));
}

TEST(AssetContents, WithAStickyNoteAreRefused)
{
    std::string note = entry("postitnote");
    note.replace(note.find(".init"), 5, ".postitinit");
    EXPECT_FALSE(accepts(contents({"korvan::noise"}) + note)) << "it is stored as a type of its own";
}

TEST(AssetContents, OfANestedKorvanAssetAreAcceptedUnread)
{
    EXPECT_TRUE(accepts(contents({"korvan::inner"})));
}

TEST(AssetContents, ThatAreCutOffCountAsWhatIsThere)
{
    const std::string whole = contents({"korvan::noise", "add"});
    EXPECT_TRUE(accepts(whole.substr(0, whole.find("add") - 20)));
    EXPECT_FALSE(accepts(whole.substr(0, whole.find("add") + 1)))
        << "a part of the type's name is a foreign type";
}

TEST(AssetContents, OfOneWordPassWhenTheyAreStoredAndNotWhenCompressed)
{
    EXPECT_TRUE(accepts("placeholder", true));
    EXPECT_TRUE(accepts("  placeholder\n", true));
    EXPECT_FALSE(accepts("placeholder", false));
    EXPECT_FALSE(accepts("two words", true));
    EXPECT_FALSE(accepts("", true));
    EXPECT_TRUE(accepts(std::string("xinit\0type foo", 14), true))
        << "words behind a separator are not counted";
}

TEST(AssetContents, NeedTheSeparatorInOneWord)
{
    const std::string own = entry("own");
    EXPECT_FALSE(accepts(own + std::string("init\0 type = korvan::a", 22)));
    EXPECT_FALSE(accepts(own + "inittype = korvan::a"));
    EXPECT_FALSE(accepts(own + std::string("init\0type korvan::a", 19)));
    EXPECT_FALSE(accepts(own + std::string("init\0type == korvan::a", 22)));
    EXPECT_TRUE(accepts(own + std::string("xinit\0typex = korvan::a", 23)));
    EXPECT_TRUE(accepts(own + std::string("init\0init\0type\n=\nkorvan::a", 26)));
}

TEST(AssetContents, GetTheVerdictOfAScanByWordsWhateverTheyHold)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string nul(1, '\0');
    const std::vector<std::string> pieces = {" ",
                                             "\n",
                                             "\t",
                                             "\v",
                                             "\r",
                                             nul,
                                             "init",
                                             "type",
                                             "init" + nul + "type",
                                             "=",
                                             " = ",
                                             "korvan::",
                                             "korvan::a",
                                             "null",
                                             "subnet",
                                             "add",
                                             "a",
                                             "x.init" + nul + "type = null\n",
                                             "x.init" + nul + "type = korvan::a\n"};
    int accepted = 0;
    for (int round = 0; round < 20000; ++round)
    {
        std::string text;
        for (unsigned count = random() % 12; count > 0; --count)
            text += pieces[random() % pieces.size()];
        for (const bool stored : {false, true})
        {
            const bool wanted = acceptsByWords(text, stored);
            ASSERT_EQ(accepts(text, stored), wanted)
                << ::testing::PrintToString(text) << (stored ? " stored" : "");
            accepted += wanted;
        }
    }
    EXPECT_GT(accepted, 1000) << "the texts must not all be refused";
}

TEST(AssetSections, AreReadCompressedOrPlain)
{
    FS_IndexFile packed, plain;
    addSection(packed, "Contents.gz", gzip(contents({"korvan::noise"})));
    addSection(plain, "Contents", contents({"korvan::noise"}));
    EXPECT_TRUE(isKorvanAsset(packed));
    EXPECT_TRUE(isKorvanAsset(plain));
}

TEST(AssetSections, AreReadCompressedWhenBothAreThere)
{
    FS_IndexFile good, bad;
    addSection(good, "Contents", contents({"add"}));
    addSection(good, "Contents.gz", gzip(contents({"korvan::noise"})));
    addSection(bad, "Contents", contents({"korvan::noise"}));
    addSection(bad, "Contents.gz", gzip(contents({"add"})));
    EXPECT_TRUE(isKorvanAsset(good));
    EXPECT_FALSE(isKorvanAsset(bad));
}

TEST(AssetSections, ThatAreNotThereRefuse)
{
    FS_IndexFile none, others;
    addSection(others, "DialogScript", contents({"korvan::noise"}));
    EXPECT_FALSE(isKorvanAsset(none));
    EXPECT_FALSE(isKorvanAsset(others));
}

TEST(AssetSections, OfOneWordPassPlainAndNotCompressed)
{
    FS_IndexFile packed, plain;
    addSection(packed, "Contents.gz", gzip("placeholder"));
    addSection(plain, "Contents", "placeholder");
    EXPECT_FALSE(isKorvanAsset(packed));
    EXPECT_TRUE(isKorvanAsset(plain));
}

TEST(AssetSections, ThatAreNoGzipRefuseInSilence)
{
    StandinRenderer renderer;
    FS_IndexFile file;
    addSection(file, "Contents.gz", contents({"korvan::noise"}));
    EXPECT_FALSE(isKorvanAsset(file));
}

TEST(AssetSections, AreJudgedByWhatInflatesOfThem)
{
    std::mt19937 random(1);
    std::string noise;
    for (int i = 0; i < 100000; ++i)
        noise += static_cast<char>('A' + random() % 26);
    const std::string packed = gzip(contents({"korvan::noise"}) + noise + "\n" + entry("add"));
    FS_IndexFile whole, cut;
    addSection(whole, "Contents.gz", packed);
    addSection(cut, "Contents.gz", packed.substr(0, packed.size() / 2));
    EXPECT_FALSE(isKorvanAsset(whole));
    EXPECT_TRUE(isKorvanAsset(cut)) << "the foreign child is cut off";
}

TEST(AssetSections, WhoseFileIsGoneAreReportedAndRefuse)
{
    StandinRenderer renderer;
    TemporaryFolder folder;
    const std::string file = (folder.path() / "a.hda").string();
    {
        FS_IndexFile made;
        addSection(made, "Contents", contents({"korvan::noise"}));
        ASSERT_TRUE(made.writeFile(file.c_str())) << made.problem();
    }
    FS_IndexFile asset(file.c_str());
    ASSERT_TRUE(isKorvanAsset(asset));
    std::filesystem::remove(file);

    EXPECT_FALSE(isKorvanAsset(asset));
    EXPECT_EQ(renderer.takeErrors(), Messages{"[zelk::shop::shop] Cannot open OTL file " + file});
}
