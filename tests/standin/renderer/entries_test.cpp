#include "renderer_fixture.h"

TEST(EntryIterator, GivesTheKindsOfItsMaskOnly)
{
    Renderer renderer;
    KrDeclareNode("shader", KR_NODE_SHADER, KR_TYPE_RGB);
    for (const int kind : {KR_NODE_CAMERA, KR_NODE_LIGHT, KR_NODE_SHAPE, KR_NODE_SHADER})
        for (const KtNodeEntry* entry : entriesOf(kind))
            EXPECT_EQ(KrNodeEntryGetType(entry), kind) << KrNodeEntryGetName(entry);
    EXPECT_EQ(entriesOf(KR_NODE_SHADER | KR_NODE_CAMERA).size(), 4u);
    EXPECT_TRUE(entriesOf(0).empty());
}

TEST(EntryIterator, GivesNullBeyondItsEnd)
{
    Renderer renderer;
    KtNodeEntryIterator* iterator = KrUniverseGetNodeEntryIterator(KR_NODE_SHADER);
    EXPECT_TRUE(KrNodeEntryIteratorFinished(iterator));
    EXPECT_EQ(KrNodeEntryIteratorGetNext(iterator), nullptr);
    KrNodeEntryIteratorDestroy(iterator);
}

TEST(EntryLookUp, FindsEachOfManyEntries)
{
    Renderer renderer;
    for (int i = 0; i < 1000; ++i)
        KrDeclareNode(("shader" + std::to_string(i)).c_str(), KR_NODE_SHADER, KR_TYPE_RGB);
    for (int i = 0; i < 1000; ++i)
    {
        const std::string name = "shader" + std::to_string(i);
        ASSERT_NE(KrNodeEntryLookUp(name.c_str()), nullptr) << name;
        EXPECT_EQ(KrNodeEntryGetName(KrNodeEntryLookUp(name.c_str())), name);
    }
    EXPECT_EQ(KrNodeEntryLookUp("shader1000"), nullptr);
    EXPECT_EQ(KrNodeEntryLookUp(""), nullptr);
}

TEST(EntryParameters, AreCountedFromZero)
{
    Renderer renderer;
    KtNodeDecl* node = KrDeclareNode("noise", KR_NODE_SHADER, KR_TYPE_RGB);
    KrDeclareParam(node, "a", KR_TYPE_FLOAT, nullptr);
    KrDeclareParam(node, "b", 200, nullptr);
    const KtNodeEntry* entry = KrNodeEntryLookUp("noise");
    EXPECT_EQ(KrNodeEntryGetNumParams(entry), 2);
    EXPECT_STREQ(KrParamGetName(KrNodeEntryGetParameter(entry, 1)), "b");
    EXPECT_EQ(KrParamGetType(KrNodeEntryGetParameter(entry, 1)), 200);
    EXPECT_EQ(KrNodeEntryGetParameter(entry, 2), nullptr);
    EXPECT_EQ(KrNodeEntryGetParameter(entry, -1), nullptr);
}
