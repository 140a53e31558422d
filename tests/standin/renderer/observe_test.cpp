#include "catalogue_fixture.h"

namespace
{

/// A running renderer with one shader "noise" of one parameter "gain", and metadata files for it.
class Observe : public testing::Test
{
protected:
    Observe()
    {
        KtNodeDecl* node = KrDeclareNode("noise", KR_NODE_SHADER, KR_TYPE_RGB);
        KrDeclareParam(node, "gain", KR_TYPE_FLOAT, nullptr);
        KrDeclareNodeSource(node, "noise.json");
        KrDeclareMetaDataStr(node, nullptr, "declared", "x");
        noise = KrNodeEntryLookUp("noise");
    }

    void load(const std::string& text, const std::string& name = "a.mtd")
    {
        KrMetaDataLoadFile(folder.write(name, text).c_str());
        renderer.takeMessages();
    }

    /// "a.mtd:2:1", of a place without a file ":2:1".
    static std::string textOf(const KtPlace& place)
    {
        const std::string file = place.file ? std::filesystem::path(place.file).filename().string() : "";
        return file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
    }

    std::string placeOf(const char* param, const char* key) const
    {
        KtPlace place = {nullptr, 0, 0};
        return KrObserveMetaDataPlace(noise, param, key, &place) ? textOf(place) : "none";
    }

    std::string tableOf(const char* param) const
    {
        KtPlace place = {nullptr, 0, 0};
        return KrObserveTablePlace(noise, param, &place) ? textOf(place) : "none";
    }

    /// Place, entry, parameter, key and detail of what was left out with that reason, one text each.
    static Messages leftOut(int reason)
    {
        Messages all;
        for (int i = 0; i < KrObserveGetNumLeftOut(); ++i)
        {
            const KtLeftOut& item = *KrObserveGetLeftOut(i);
            if (item.reason == reason)
                all.push_back(textOf(item.place) + " " + item.entry + "|" + item.param + "|" + item.key +
                              "|" + item.detail);
        }
        return all;
    }

    Folder folder;
    Renderer renderer;
    const KtNodeEntry* noise;
};

class ObserveCatalogue : public CatalogueTest
{
};

} // namespace

TEST_F(Observe, KnowsWhereEachKeyWasWritten)
{
    load("[\"noise\"]\n\"houdini.label\" = \"N\"\n\n  houdini.lod = \"h\"\n[\"noise\".parameters.gain]\nmin "
         "= 1\n");
    EXPECT_EQ(placeOf(nullptr, "houdini.label"), "a.mtd:2:1");
    EXPECT_EQ(placeOf(nullptr, "houdini.lod"), "a.mtd:4:11");
    EXPECT_EQ(placeOf("gain", "min"), "a.mtd:6:1");
}

TEST_F(Observe, KnowsThePlaceOfTheValueInForce)
{
    load("[\"noise\"]\na = 1\nb = 1\n");
    load("[\"noise\"]\n\n\na = \"text\"\n", "b.mtd");
    EXPECT_EQ(placeOf(nullptr, "a"), "b.mtd:4:1");
    EXPECT_EQ(placeOf(nullptr, "b"), "a.mtd:3:1");
}

TEST_F(Observe, GivesWhatIsDeclaredTheSourceWithoutALine)
{
    EXPECT_EQ(placeOf(nullptr, "declared"), "noise.json:0:0");
}

TEST_F(Observe, KnowsNoPlaceOfWhatIsNotThere)
{
    EXPECT_EQ(placeOf(nullptr, "absent"), "none");
    EXPECT_EQ(placeOf("pain", "min"), "none");
    EXPECT_EQ(tableOf("pain"), "none");
}

TEST_F(Observe, KnowsTheLastTableElseTheSource)
{
    EXPECT_EQ(tableOf(nullptr), "noise.json:0:0");
    load("\n[\"noise\"]\n[\"noise\".parameters.gain]\n");
    EXPECT_EQ(tableOf(nullptr), "a.mtd:2:2");
    EXPECT_EQ(tableOf("gain"), "a.mtd:3:21");
}

TEST_F(Observe, NotesTablesOfWhatIsNotThere)
{
    load("[\"nose\"]\na = 1\n[\"noise\".parameters.pain]\nb = 1\n");
    EXPECT_EQ(leftOut(KR_LEFT_OUT_ENTRY), Messages{"a.mtd:1:2 nose||nose|"});
    EXPECT_EQ(leftOut(KR_LEFT_OUT_PARAMETER), Messages{"a.mtd:3:21 noise|pain|pain|"});
}

TEST_F(Observe, NotesValuesThatAreNoMetaData)
{
    load("[\"noise\".parameters.gain]\na = [1]\n[\"noise\"]\nb = \"\\u0000\"\n");
    EXPECT_EQ(leftOut(KR_LEFT_OUT_VALUE), (Messages{"a.mtd:4:1 noise||b|a text that holds a zero character",
                                                    "a.mtd:2:1 noise|gain|a|an array"}));
}

TEST_F(Observe, NotesWhatStandsInTheWrongPlace)
{
    load("a = 1\n[\"noise\".parameters]\nb = 2\n");
    EXPECT_EQ(leftOut(KR_LEFT_OUT_MISPLACED),
              (Messages{"a.mtd:1:1 ||a|[\"ENTRY\"]", "a.mtd:3:1 noise||b|[\"ENTRY\".parameters.NAME]"}));
}

TEST_F(Observe, NotesFilesThatCountForNothing)
{
    load("[\"noise\"]\noops\n");
    load("[\"noise\"]\na = 1\na = 2\n", "b.mtd");
    KrMetaDataLoadFile("/nowhere/c.mtd");
    renderer.takeMessages();
    ASSERT_EQ(leftOut(KR_LEFT_OUT_SYNTAX).size(), 1u);
    EXPECT_THAT(leftOut(KR_LEFT_OUT_SYNTAX)[0], testing::StartsWith("a.mtd:2:5 |||Error while parsing"));
    EXPECT_EQ(leftOut(KR_LEFT_OUT_TWICE), Messages{"b.mtd:3:5 |||"});
    EXPECT_EQ(leftOut(KR_LEFT_OUT_UNREADABLE), Messages{"c.mtd:0:0 |||No such file or directory"});
}

TEST_F(Observe, KnowsNothingOutOfRangeOrAfterTheEnd)
{
    load("[\"nose\"]\n");
    EXPECT_EQ(KrObserveGetLeftOut(-1), nullptr);
    EXPECT_EQ(KrObserveGetLeftOut(1), nullptr);
    KrEnd();
    EXPECT_EQ(KrObserveGetNumLeftOut(), 0);
    KrBegin();
    EXPECT_EQ(KrObserveGetNumLeftOut(), 0);
}

TEST_F(ObserveCatalogue, NamesItsFile)
{
    const std::string file =
        load(R"({"nodes": [{"name": "n", "kind": "shader", "output": "rgb", "parameters": [],
                                      "metadata": [{"key": "a", "value": 1}]}]})");
    KtPlace place = {nullptr, 1, 1};
    ASSERT_TRUE(KrObserveMetaDataPlace(KrNodeEntryLookUp("n"), nullptr, "a", &place));
    EXPECT_EQ(place.file, file);
    EXPECT_EQ(place.line, 0u);
}
