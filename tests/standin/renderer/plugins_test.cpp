#include "renderer_fixture.h"

#include <fstream>
#include <iterator>

namespace
{

const std::string plugins = TEST_PLUGIN_DIR;

std::string contentsOf(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

float callsOfCountingPlugin()
{
    float calls = 0;
    KrMetaDataGetFlt(KrNodeEntryLookUp("counting"), nullptr, "calls", &calls);
    return calls;
}

} // namespace

TEST(Plugins, GiveTheirEntriesTheirFile)
{
    Renderer renderer;
    KrLoadPlugins((plugins + "/counting").c_str());
    ASSERT_NE(KrNodeEntryLookUp("counting"), nullptr);
    EXPECT_EQ(KrNodeEntryGetFilename(KrNodeEntryLookUp("counting")), plugins + "/counting/counting.so");
}

TEST(Plugins, AreLoadedOnceHoweverOftenTheirDirectoryIsNamed)
{
    Renderer renderer;
    const std::string directory = plugins + "/counting";
    KrLoadPlugins((directory + "::" + plugins + "/no_declare/../counting:").c_str());
    KrLoadPlugins(directory.c_str());
    EXPECT_EQ(callsOfCountingPlugin(), 1.0f);
}

TEST(Plugins, AreReallyClosedAtTheEnd)
{
    for (int i = 0; i < 2; ++i)
    {
        Renderer renderer;
        KrLoadPlugins((plugins + "/counting").c_str());
        EXPECT_EQ(callsOfCountingPlugin(), 1.0f);
    }
}

TEST(Plugins, AreNotLookedForWithoutAPath)
{
    Renderer renderer;
    KrLoadPlugins(nullptr);
    KrLoadPlugins("");
    KrLoadPlugins("::");
}

TEST(Plugins, OfAMissingDirectoryAreReportedAndTheRestGoesOn)
{
    Renderer renderer;
    KrLoadPlugins(("/nowhere:" + plugins + "/counting").c_str());
    EXPECT_EQ(renderer.takeMessage(),
              "warning: [kr] Cannot read the plug-in directory /nowhere: No such file or "
              "directory. Skipping it; correct the plug-in path.");
    EXPECT_NE(KrNodeEntryLookUp("counting"), nullptr);
}

TEST(Plugins, ThatAreNoSharedObjectsAreReported)
{
    Renderer renderer;
    Folder folder;
    const std::string file = folder.write("broken.so", "not a shared object");
    folder.write("README.txt", "not looked at");
    KrLoadPlugins(folder.path().c_str());
    const std::string message = renderer.takeMessage();
    EXPECT_THAT(message, testing::StartsWith("error: [kr] Cannot open the plug-in " + file + ": "));
    EXPECT_THAT(message, testing::EndsWith(". Skipping it; rebuild it for this machine or take it away."));
}

// The system's loader would end the process.
TEST(Plugins, ThatAreCutOffAreReportedWithWhatIsMissing)
{
    Renderer renderer;
    Folder folder;
    const std::string whole = contentsOf(plugins + "/counting/counting.so");
    for (const std::size_t size : {std::size_t{4}, std::size_t{100}, std::size_t{3000}, whole.size() - 1})
    {
        ASSERT_LT(size, whole.size());
        const std::string file = folder.write("cut.so", whole.substr(0, size));
        KrLoadPlugins(folder.path().c_str());
        const std::string promised = std::to_string(size < 64 ? 64 : whole.size());
        EXPECT_EQ(renderer.takeMessage(), "error: [kr] The plug-in " + file + " is cut off: it should have " +
                                              promised + " bytes and has " + std::to_string(size) +
                                              ". Skipping it; copy it again.");
    }
}

TEST(Plugins, WithAnImpossibleHeaderAreReported)
{
    Renderer renderer;
    Folder folder;
    std::string text = contentsOf(plugins + "/counting/counting.so");
    text.replace(32, 8, 8, '\xff'); // where the program headers begin
    const std::string file = folder.write("odd.so", text);
    KrLoadPlugins(folder.path().c_str());
    EXPECT_THAT(renderer.takeMessage(),
                testing::StartsWith("error: [kr] The plug-in " + file + " is cut off: it should have "));
}

TEST(Plugins, WithoutTheirFunctionAreReported)
{
    Renderer renderer;
    KrLoadPlugins((plugins + "/no_declare").c_str());
    EXPECT_EQ(renderer.takeMessage(), "error: [kr] The plug-in " + plugins +
                                          "/no_declare/no_declare.so exports no KrPluginDeclare(). Skipping "
                                          "it; define that function or take "
                                          "the file away.");
}

TEST(Plugins, ThatDeclareANameTwiceKeepTheFirstAndTheRest)
{
    Renderer renderer;
    KrLoadPlugins((plugins + "/same_name_twice").c_str());
    const std::string file = plugins + "/same_name_twice/same_name_twice.so";
    EXPECT_EQ(renderer.takeMessage(), "error: [kr] " + file +
                                          ": The node entry \"twin\" is declared already by " + file +
                                          ". Skipping the second; rename one of them.");
    const KtNodeEntry* twin = KrNodeEntryLookUp("twin");
    ASSERT_NE(twin, nullptr);
    EXPECT_EQ(KrNodeEntryGetOutputType(twin), KR_TYPE_RGB);
    EXPECT_EQ(KrNodeEntryGetNumParams(twin), 0);
    EXPECT_NE(KrNodeEntryLookUp("after_twin"), nullptr);
}

TEST(Plugins, ThatAreThereTwiceAreReportedInOneMessage)
{
    Renderer renderer;
    const std::string first = SHADER_PLUGIN_DIR "/korvan_shaders.so";
    KrLoadPlugins(SHADER_PLUGIN_DIR);
    const std::filesystem::path second =
        std::filesystem::temp_directory_path() / ("kr_twice_" + std::to_string(getpid()));
    std::filesystem::create_directory(second);
    std::filesystem::copy_file(first, second / "copy.so");
    KrLoadPlugins(second.c_str());
    std::filesystem::remove_all(second);
    EXPECT_THAT(renderer.takeMessage(),
                testing::MatchesRegex(
                    "error: .kr. .*/copy.so: [0-9]+ node entries are declared already by " + first +
                    ": \"zelk__standard_surface\", \"zelk__hair_surface\", \"zelk__toon_surface\" and [0-9]+ "
                    "more. Skipping the second of each; take one of the two away, or rename its entries."));
}

TEST(Plugins, ThatThrowKeepWhatTheyHaveDeclared)
{
    Renderer renderer;
    KrLoadPlugins((plugins + "/throwing").c_str());
    EXPECT_EQ(
        renderer.takeMessage(),
        "error: [kr] The plug-in " + plugins +
            "/throwing/throwing.so stopped declaring its entries: no licence. What it has declared stays; "
            "repair it.");
    EXPECT_NE(KrNodeEntryLookUp("before_throw"), nullptr);
}
