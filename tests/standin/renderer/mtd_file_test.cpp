#include "renderer_fixture.h"

namespace
{

using Items = std::vector<std::string>;

/// A running renderer with one shader "noise" of one parameter "gain", and metadata files for it.
class MtdFile : public testing::Test
{
protected:
    MtdFile()
    {
        KtNodeDecl* node = KrDeclareNode("noise", KR_NODE_SHADER, KR_TYPE_RGB);
        KrDeclareParam(node, "gain", KR_TYPE_FLOAT, nullptr);
    }

    bool load(const std::string& text) { return KrMetaDataLoadFile(folder.write("a.mtd", text).c_str()); }

    // The only message, which begins with the severity and the file; returned is the rest.
    std::string takeComplaint(const std::string& severity)
    {
        const std::string message = renderer.takeMessage();
        const std::string start = severity + ": [kr] " + folder.path() + "/a.mtd:";
        EXPECT_EQ(message.substr(0, start.size()), start);
        return message.size() < start.size() ? message : message.substr(start.size());
    }

    Items nodeItems() const { return metaDataOf(KrNodeEntryLookUp("noise")); }
    Items gainItems() const { return metaDataOf(KrNodeEntryLookUp("noise"), "gain"); }

    Folder folder;
    Renderer renderer;
};

} // namespace

TEST_F(MtdFile, GivesEntriesAndParametersTheirMetaDataInTheOrderOfTheFile)
{
    EXPECT_TRUE(load("[\"noise\"]\n\"z\" = \"text\"\n\"a\" = true\n\"m\" = 1.5\n\"b\" = 2\n"
                     "[\"noise\".parameters.gain]\n\"y\" = -1\n\"c\" = false\n"));
    EXPECT_EQ(nodeItems(), (Items{"z=text", "a=true", "m=1.5", "b=2"}));
    EXPECT_EQ(gainItems(), (Items{"y=-1", "c=false"}));
}

TEST_F(MtdFile, ReadsADottedKeyLikeTheQuotedOne)
{
    EXPECT_TRUE(load(
        "[noise]\nhoudini.order = \"b\"\ndesc = \"d\"\nhoudini.label = \"l\"\nhoudini.parm.folder.f = \"x\"\n"
        "\"houdini.parm.folder.f.label\" = \"F\"\n"
        "[noise.parameters]\ngain.houdini.label = \"Gain\"\n"));
    EXPECT_EQ(nodeItems(), (Items{"houdini.order=b", "desc=d", "houdini.label=l", "houdini.parm.folder.f=x",
                                  "houdini.parm.folder.f.label=F"}));
    EXPECT_EQ(gainItems(), (Items{"houdini.label=Gain"}));
}

TEST_F(MtdFile, ReplacesInPlaceWhatAnEarlierFileSet)
{
    EXPECT_TRUE(load("[noise]\na = 1\nb = 2\n"));
    EXPECT_TRUE(load("[noise]\nc = 3\na = \"new\"\n"));
    EXPECT_EQ(nodeItems(), (Items{"a=new", "b=2", "c=3"}));
}

TEST_F(MtdFile, TakesForeignTextAsItIs)
{
    EXPECT_TRUE(load("[noise]\nhelp = \"Größe \\u00e9 日本\"\nscript = '''a\\nb'''\n"));
    EXPECT_EQ(nodeItems(), (Items{"help=Größe é 日本", "script=a\\nb"}));
}

TEST_F(MtdFile, TakesANumberTooLargeForAFloatAsInfinite)
{
    EXPECT_TRUE(load("[noise]\nmax = 1e300\nmin = -1e300\n"));
    EXPECT_EQ(nodeItems(), (Items{"max=inf", "min=-inf"}));
}

TEST_F(MtdFile, MayBeEmpty)
{
    EXPECT_TRUE(load(""));
    EXPECT_TRUE(load("# nothing yet\n[noise]\n"));
    EXPECT_EQ(nodeItems(), Items{});
}

TEST_F(MtdFile, ContributesNothingAfterASyntaxError)
{
    EXPECT_FALSE(load("[noise]\na = 1\nb = = 2\n"));
    EXPECT_EQ(takeComplaint("error"),
              "3:5: Error while parsing value: could not determine value type. Skipping the "
              "whole file; correct this line.");
    EXPECT_EQ(nodeItems(), Items{});
}

TEST_F(MtdFile, SaysWhereAKeyOrATableStandsASecondTime)
{
    const std::string end = ": This key or table is there already, further up. Skipping the whole file; take "
                            "one of the two away.";
    EXPECT_FALSE(load("[noise]\n\"houdini.label\" = 1\nb = 2\n\"houdini.label\" = 3\n"));
    EXPECT_EQ(takeComplaint("error"), "4:19" + end);
    EXPECT_FALSE(load("[noise]\na = 1\n[noise.parameters.gain]\n[noise]\n"));
    EXPECT_EQ(takeComplaint("error"), "4:1" + end);
    EXPECT_EQ(nodeItems(), Items{});
}

TEST_F(MtdFile, ThatIsNotUtf8IsASyntaxError)
{
    EXPECT_FALSE(load("[noise]\na = \"\xff\"\n"));
    EXPECT_THAT(takeComplaint("error"), testing::StartsWith("2:"));
}

TEST_F(MtdFile, WithAControlCharacterForAKeyIsASyntaxError)
{
    EXPECT_FALSE(load("[\x01noise]\na = 1\n"));
    EXPECT_THAT(takeComplaint("error"), testing::StartsWith("1:"));
}

TEST_F(MtdFile, WithALetterBeyondAsciiOutsideOfQuotesIsASyntaxError)
{
    for (const char* letter : {"\u00e9", "\u0496", "\u3042", "\ufefe"})
    {
        EXPECT_FALSE(load(std::string("[\"noise\"") + letter + "]\na = 1\n")) << letter;
        EXPECT_THAT(takeComplaint("error"), testing::StartsWith("1:")) << letter;
    }
}

TEST_F(MtdFile, ThatCannotBeReadIsReportedWithItsName)
{
    EXPECT_FALSE(KrMetaDataLoadFile("/nowhere/a.mtd"));
    EXPECT_EQ(renderer.takeMessage(),
              "error: [kr] Cannot read the metadata file /nowhere/a.mtd: No such file or "
              "directory. Skipping it; make it readable or take it away.");
    EXPECT_FALSE(KrMetaDataLoadFile(folder.path().c_str()));
    EXPECT_EQ(renderer.takeMessage(), "error: [kr] Cannot read the metadata file " + folder.path() +
                                          ": Is a directory. Skipping it; make it readable or take it away.");
}

TEST_F(MtdFile, KeepsOutEntriesThatNoRendererNodeHas)
{
    EXPECT_TRUE(load("[\"nose\"]\na = 1\n[noise]\na = 2\n"));
    EXPECT_EQ(takeComplaint("warning"),
              "1:2: There is no node entry \"nose\". Ignoring its metadata; correct the name, "
              "or install the plug-in that declares it.");
    EXPECT_EQ(nodeItems(), Items{"a=2"});
}

TEST_F(MtdFile, KeepsOutParametersThatTheEntryDoesNotHave)
{
    EXPECT_TRUE(load("[noise.parameters.pain]\na = 1\n[noise.parameters.gain]\na = 2\n"));
    EXPECT_EQ(takeComplaint("warning"),
              "1:19: \"noise\" has no parameter \"pain\". Ignoring its metadata; correct the name.");
    EXPECT_EQ(gainItems(), Items{"a=2"});
}

TEST_F(MtdFile, SkipsValuesOfOtherTypes)
{
    EXPECT_TRUE(load("[noise]\n  list = [1, 2]\nday = 1979-05-27\ninline = { x = 1 }\na = "
                     "1\n[noise.parameters.gain]\nlist=[]"));
    const std::string start = "error: [kr] " + folder.path() + "/a.mtd:";
    const std::string end = ". Skipping it; write a string, a boolean or a number.";
    EXPECT_EQ(renderer.takeMessages(), (Messages{start + "2:3: The value of \"list\" is an array" + end,
                                                 start + "3:1: The value of \"day\" is a date or time" + end,
                                                 start + "4:1: The value of \"inline\" is a table" + end,
                                                 start + "7:1: The value of \"list\" is an array" + end}));
    EXPECT_EQ(nodeItems(), Items{"a=1"});
}

TEST_F(MtdFile, SkipsATextWithAZeroCharacter)
{
    EXPECT_TRUE(load("[noise]\na = \"x\\u0000y\"\nb = 1\n"));
    EXPECT_EQ(takeComplaint("error"),
              "2:1: The text of \"a\" holds a zero character. Skipping it; take the \\u0000 out.");
    EXPECT_EQ(nodeItems(), Items{"b=1"});
}

TEST_F(MtdFile, SkipsWhatStandsOutsideOfATable)
{
    EXPECT_TRUE(load("a = 1\n[noise]\nparameters.gain = 3\nb = 1\n"));
    const std::string start = "error: [kr] " + folder.path() + "/a.mtd:";
    EXPECT_EQ(
        renderer.takeMessages(),
        (Messages{start + "1:1: \"a\" stands where no metadata can stand. Skipping it; write it below a line "
                          "[\"ENTRY\"].",
                  start + "3:12: \"gain\" stands where no metadata can stand. Skipping it; write it below a "
                          "line [\"ENTRY\".parameters.NAME]."}));
    EXPECT_EQ(nodeItems(), Items{"b=1"});
}

TEST_F(MtdFile, SkipsParametersThatAreNoTable)
{
    EXPECT_TRUE(load("[noise]\nparameters = 3\n"));
    EXPECT_THAT(takeComplaint("error"), testing::StartsWith("2:1: \"parameters\" stands where"));
}

TEST_F(MtdFile, IsRefusedWithAKeyOfEndlessParts)
{
    std::string key = "a";
    for (int i = 0; i < 100000; ++i)
        key += ".a";
    EXPECT_FALSE(load("[noise]\n" + key + " = 1\n"));
    EXPECT_EQ(takeComplaint("error"),
              "2:1: A dotted key has too many parts. Skipping the whole file; correct this line.");
}

TEST_F(MtdFile, TakesLongTexts)
{
    const std::string text(100000, '.');
    EXPECT_TRUE(load("[noise]\nhelp = \"" + text + "\"\n"));
    EXPECT_EQ(nodeItems(), Items{"help=" + text});
}
