#include "renderer_fixture.h"

TEST(RendererSession, StartsWithTheBuiltInEntriesOnly)
{
    Renderer renderer;
    for (const KtNodeEntry* entry : entriesOf(~0))
        EXPECT_EQ(KrNodeEntryGetFilename(entry), nullptr) << KrNodeEntryGetName(entry);
    EXPECT_TRUE(entriesOf(KR_NODE_SHADER).empty());
    EXPECT_EQ(entriesOf(KR_NODE_CAMERA).size(), 3u);
    EXPECT_FALSE(entriesOf(KR_NODE_LIGHT).empty());
    EXPECT_FALSE(entriesOf(KR_NODE_SHAPE).empty());
}

TEST(RendererSession, GivesTheOrthoCameraExactlyTheBaseParameters)
{
    Renderer renderer;
    EXPECT_EQ(
        paramNamesOf(KrNodeEntryLookUp("ortho_camera")),
        (std::vector<std::string>{"name", "position", "look_at", "up", "matrix", "near_clip", "far_clip",
                                  "screen_min", "screen_max", "shutter_start", "shutter_end", "exposure"}));
    EXPECT_NE(KrNodeEntryLookUp("persp_camera"), nullptr);
    EXPECT_NE(KrNodeEntryLookUp("fisheye_camera"), nullptr);
}

TEST(RendererSession, ForgetsEverythingAtItsEnd)
{
    {
        Renderer renderer;
        KrDeclareNode("mine", KR_NODE_SHADER, KR_TYPE_RGB);
        EXPECT_NE(KrNodeEntryLookUp("mine"), nullptr);
    }
    EXPECT_EQ(KrNodeEntryLookUp("mine"), nullptr);
    EXPECT_EQ(KrNodeEntryLookUp("ortho_camera"), nullptr);
    Renderer again;
    EXPECT_EQ(KrNodeEntryLookUp("mine"), nullptr);
    EXPECT_NE(KrNodeEntryLookUp("ortho_camera"), nullptr);
}

TEST(RendererSession, EndsWithTheLastOfNestedEnds)
{
    Renderer renderer;
    KrBegin();
    KrDeclareNode("mine", KR_NODE_SHADER, KR_TYPE_RGB);
    KrEnd();
    EXPECT_NE(KrNodeEntryLookUp("mine"), nullptr);
}

TEST(RendererSession, TakesAnEndWithoutABeginAsNothing)
{
    KrEnd();
    Renderer renderer;
    EXPECT_NE(KrNodeEntryLookUp("ortho_camera"), nullptr);
}

TEST(RendererSession, ReportsCallsThatNeedARunningRenderer)
{
    Renderer renderer;
    KrEnd();
    EXPECT_EQ(KrDeclareNode("mine", KR_NODE_SHADER, KR_TYPE_RGB), nullptr);
    KrLoadPlugins("/somewhere");
    EXPECT_FALSE(KrMetaDataLoadFile("/some.mtd"));
    EXPECT_TRUE(entriesOf(~0).empty());
    EXPECT_EQ(
        renderer.takeMessages(),
        (Messages{"error: [kr] KrDeclareNode: the renderer is not running. Call KrBegin() first.",
                  "error: [kr] KrLoadPlugins: the renderer is not running. Call KrBegin() first.",
                  "error: [kr] KrMetaDataLoadFile: the renderer is not running. Call KrBegin() first.",
                  "error: [kr] KrUniverseGetNodeEntryIterator: the renderer is not running. Call KrBegin() "
                  "first."}));
    KrBegin();
}
