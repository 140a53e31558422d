#include "standin_session.h"

#include "shader_desc.h"

#include <gmock/gmock.h>

using namespace zelk::shop;

namespace
{

Names shaderTypes()
{
    Names names;
    for (OP_Operator* op : standin::operatorsOf(*OP_Network::getOperatorTable("Vop")))
        if (dynamic_cast<VOP_KorvanOperator*>(op))
            names.push_back(op->getName().buffer());
    return names;
}

/// Console flags after a registration under a value of ZELK_STARTUP_LOG; null: not set.
int consoleFlagsWith(const char* value)
{
    if (value)
        ::setenv("ZELK_STARTUP_LOG", value, 1);
    else
        ::unsetenv("ZELK_STARTUP_LOG");
    registerShaders(OP_Network::getOperatorTable("Vop"));
    return KrMsgGetConsoleFlags();
}

} // namespace

TEST(Registration, MakesOneOperatorForEachShaderInTheRenderersOrder)
{
    StandinSession session;
    session.renderer.shader("zelk__noise").floats({"a"});
    session.renderer.shader("flat");
    session.registerAll();

    EXPECT_EQ(shaderTypes(), (Names{"korvan::noise", "korvan::flat"}));
}

TEST(Registration, GivesAnOperatorAllThatItsDescriptionSays)
{
    StandinSession session;
    session.renderer.shader("noise", KR_TYPE_RGBA)
        .floats({"a"})
        .metaData("houdini.label", "My Noise")
        .metaData("houdini.icon", "VOP_noise")
        .metaData("houdini.category", "Texture")
        .metaData("houdini.help_url", "https://studio.example/noise");
    session.registerAll();

    OP_Operator* op = session.vop("korvan::noise");
    ASSERT_NE(op, nullptr);
    EXPECT_STREQ(op->getEnglish(), "My Noise");
    EXPECT_STREQ(op->getIconName(), "VOP_noise");
    EXPECT_EQ(op->getMinSources(), 0u);
    EXPECT_EQ(op->getMaxSources(), 2048u);
    EXPECT_EQ(op->maxOutputs(), 5u);
    EXPECT_EQ(op->getFlags(), 0u);
    std::string mask;
    EXPECT_TRUE(standin::vopnetMaskOf(*op, mask));
    EXPECT_EQ(mask, "korvan_vopnet");
    UT_String text;
    EXPECT_TRUE(op->getOpTabSubMenuPath(text));
    EXPECT_STREQ(text, "Texture");
    EXPECT_TRUE(op->getOpHelpURL(text));
    EXPECT_STREQ(text, "https://studio.example/noise");
}

TEST(Registration, GivesAShaderWithoutMetadataNoSubMenuAndTheGeneralHelpPage)
{
    StandinSession session;
    session.renderer.shader("noise");
    session.registerAll();

    OP_Operator* op = session.vop("korvan::noise");
    UT_String text("untouched");
    EXPECT_FALSE(op->getOpTabSubMenuPath(text));
    EXPECT_STREQ(text, "untouched");
    EXPECT_TRUE(op->getOpHelpURL(text));
    EXPECT_STREQ(text, "https://docs.korvan.example/houdini/Shaders");
}

TEST(ShaderOperator, WithoutADescriptionHasNoSubMenuAndTheGeneralHelpPage)
{
    StandinSession session;
    VOP_KorvanOperator op("korvan::bare", "Bare", VOP_KorvanShader::myConstructor, nullptr, 0, 0,
                          "korvan_vopnet");
    UT_String text;
    EXPECT_FALSE(op.getOpTabSubMenuPath(text));
    EXPECT_TRUE(op.getOpHelpURL(text));
    EXPECT_STREQ(text, "https://docs.korvan.example/houdini/Shaders");
}

TEST(Registration, LeavesOutWhatAsksToBeSkippedWhateverItsKind)
{
    StandinSession session;
    session.renderer.shader("hidden").metaData("houdini.skip", true);
    session.renderer.camera("hidden_camera").metaData("houdini.skip", true);
    session.renderer.shader("shown").metaData("houdini.skip", false);
    session.registerAll();

    EXPECT_EQ(shaderTypes(), Names{"korvan::shown"});
    EXPECT_NE(session.vop("korvan_material"), nullptr) << "what is hand-written comes all the same";
    EXPECT_NE(session.vop("korvan::fetch"), nullptr);
}

TEST(Registration, TakesCamerasOnlyFromPluginsAndPutsThemUnderCamera)
{
    StandinSession session;
    session.renderer.camera("plugin_camera").metaData("houdini.category", "Lens");
    session.registerAll();

    EXPECT_EQ(shaderTypes(), Names{"korvan::plugin_camera"}) << "the renderer has built-in cameras too";
    UT_String path;
    EXPECT_TRUE(session.vop("korvan::plugin_camera")->getOpTabSubMenuPath(path));
    EXPECT_STREQ(path, "Camera");
}

TEST(Registration, KeepsTheFirstOfTwoShadersOfOneName)
{
    StandinSession session;
    session.renderer.shader("zelk__noise", KR_TYPE_FLOAT);
    session.renderer.shader("noise", KR_TYPE_RGB);
    session.registerAll();

    EXPECT_EQ(shaderTypes(), Names{"korvan::noise"});
    EXPECT_EQ(session.vop("korvan::noise")->maxOutputs(), 1u);
    const std::vector<standin::Message> complaints = standin::takeMessages();
    ASSERT_EQ(complaints.size(), 1u);
    EXPECT_NE(complaints[0].text.find("korvan::noise"), std::string::npos);
}

TEST(Registration, LoadsMetadataOfEveryPathEntryAndSaysSo)
{
    StandinSession session;
    const std::string deep =
        session.folder.write("korvan/metadata/lib/b.mtd", "[noise]\n\"houdini.label\" = \"B\"\n");
    const std::string top =
        session.folder.write("korvan/metadata/a.mtd", "[noise]\n\"houdini.icon\" = \"A\"\n");
    session.folder.write("korvan/metadata/a.txt", "not metadata");
    session.renderer.shader("noise");
    session.registerAll();

    EXPECT_STREQ(session.vop("korvan::noise")->getEnglish(), "B");
    EXPECT_STREQ(session.vop("korvan::noise")->getIconName(), "A");
    Messages infos = session.renderer.takeInfos();
    ASSERT_EQ(infos.size(), 4u);
    EXPECT_EQ(infos.front(), "[vop_shaders] Registering shaders ...");
    EXPECT_EQ(infos.back(), "[vop_shaders] shader registration done.");
    const Names loaded(infos.begin() + 1, infos.end() - 1);
    EXPECT_THAT(loaded, ::testing::UnorderedElementsAre("[vop_shaders] Loading metadata file: " + top,
                                                        "[vop_shaders] Loading metadata file: " + deep));
}

TEST(Registration, ReadsADirectoryAsOftenAsThePathNamesIt)
{
    StandinSession session;
    const std::string folder = session.folder.path().string();
    session.folder.write("korvan/metadata/a.mtd", "");
    ::setenv("HOUDINI_PATH", (folder + ";" + folder).c_str(), 1);
    UT_PathSearch::getInstance(UT_HOUDINI_PATH)->rehash();
    session.registerAll();

    EXPECT_EQ(session.renderer.takeInfos().size(), 4u);
}

TEST(Registration, LoadsMetadataInTheOrderOfThePathAfterThePlugins)
{
    namespace fs = std::filesystem;
    StandinSession session;
    const fs::path folder = session.folder.path();
    session.folder.write("b/korvan/metadata/z.mtd",
                         "[on_path]\n\"houdini.label\" = \"First\"\n\"houdini.icon\" = \"I\"\n");
    session.folder.write("a/korvan/metadata/a.mtd", "[on_path]\n\"houdini.label\" = \"Second\"\n");
    fs::create_directories(folder / "a/korvan/plugins");
    fs::copy(fs::path(TEST_PLUGINS) / "on_path.so", folder / "a/korvan/plugins");
    ::setenv("HOUDINI_PATH", (folder.string() + "/b;" + folder.string() + "/a").c_str(), 1);
    UT_PathSearch::getInstance(UT_HOUDINI_PATH)->rehash();
    session.registerAll();

    ASSERT_EQ(shaderTypes(), Names{"korvan::on_path"});
    EXPECT_STREQ(session.vop("korvan::on_path")->getEnglish(), "Second");
    EXPECT_STREQ(session.vop("korvan::on_path")->getIconName(), "I");
}

TEST(Registration, LoadsRendererPluginsOfThePathAndThenOfTheVariable)
{
    namespace fs = std::filesystem;
    StandinSession session;
    const fs::path further = session.folder.path() / "further",
                   onPath = session.folder.path() / "korvan/plugins";
    for (const fs::path& directory : {further, onPath})
        fs::create_directories(directory);
    fs::copy(fs::path(TEST_PLUGINS) / "on_path.so", onPath);
    fs::copy(fs::path(TEST_PLUGINS) / "by_variable.so", further);
    ::setenv("KORVAN_PLUGIN_PATH", further.c_str(), 1);
    session.registerAll();

    EXPECT_EQ(shaderTypes(), (Names{"korvan::on_path", "korvan::by_variable"}));
}

TEST(Registration, PassesOverPluginDirectoriesThatAreNotThere)
{
    StandinSession session;
    const std::filesystem::path there = session.folder.path() / "there";
    std::filesystem::create_directories(there);
    std::filesystem::copy(std::filesystem::path(TEST_PLUGINS) / "by_variable.so", there);
    const std::string gone = (session.folder.path() / "gone").string();
    ::setenv("KORVAN_PLUGIN_PATH", (gone + ":" + there.string()).c_str(), 1);
    session.registerAll();

    EXPECT_EQ(shaderTypes(), Names{"korvan::by_variable"});
    const Messages warnings = session.renderer.takeWarnings();
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings[0].find(gone), std::string::npos) << warnings[0];
}

TEST(Registration, GoesOnBehindMetadataThatDoesNotLoad)
{
    StandinSession session;
    session.folder.write("korvan/metadata/a.mtd", "[noise]\n'houdini.icon' = 'A'\n");
    session.folder.write("korvan/metadata/bad.mtd", "[noise\n");
    session.folder.write("korvan/metadata/c.mtd", "[noise]\n'houdini.label' = 'C'\n");
    session.renderer.shader("noise");
    session.registerAll();

    EXPECT_EQ(shaderTypes(), Names{"korvan::noise"});
    EXPECT_STREQ(session.vop("korvan::noise")->getIconName(), "A");
    EXPECT_STREQ(session.vop("korvan::noise")->getEnglish(), "C");
    EXPECT_EQ(session.renderer.takeErrors().size(), 1u);
}

TEST(Registration, WorksWithoutAnyMetadata)
{
    StandinSession session;
    session.renderer.shader("noise").floats({"base_scale"});
    session.registerAll();

    EXPECT_STREQ(session.vop("korvan::noise")->getEnglish(), "Noise");
    EXPECT_STREQ(session.vop("korvan::noise")->getParmTemplates()[0].getLabel(), "Base Scale");
}

TEST(Registration, EndsTheRendererItStarted)
{
    StandinSession session;
    KrEnd(); // the session's own start, so that the plug-in's is the only one
    registerShaders(OP_Network::getOperatorTable("Vop"));
    KrBegin();
    KrDeclareNode("noise", KR_NODE_SHADER, KR_TYPE_RGB);
    KrEnd();
    KrBegin();
    EXPECT_EQ(KrNodeEntryLookUp("noise"), nullptr) << "one end was missing";
}

TEST(StartupLog, IsShownUnlessTheVariableSaysZero)
{
    StandinSession session;
    EXPECT_EQ(consoleFlagsWith(nullptr), 3655);
    EXPECT_EQ(consoleFlagsWith("0"), 0);
    EXPECT_EQ(consoleFlagsWith("1"), 3655);
    EXPECT_EQ(consoleFlagsWith("yes"), 0);
    EXPECT_EQ(consoleFlagsWith(""), 0);
    EXPECT_EQ(consoleFlagsWith("7x"), 3655);
    EXPECT_EQ(consoleFlagsWith("-1"), 3655);
    EXPECT_EQ(consoleFlagsWith("4294967296"), 0) << "only the low 32 bits count";
}
