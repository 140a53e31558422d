#include "renderer_fixture.h"

namespace
{

using Items = std::vector<std::string>;

KtNodeDecl* noise()
{
    KtNodeDecl* node = KrDeclareNode("noise", KR_NODE_SHADER, KR_TYPE_RGB);
    KrDeclareParam(node, "gain", KR_TYPE_FLOAT, nullptr);
    return node;
}

} // namespace

TEST(MetaData, IsFoundByItsTypeOnly)
{
    Renderer renderer;
    KrDeclareMetaDataStr(noise(), "gain", "desc", "How strong");
    const KtNodeEntry* entry = KrNodeEntryLookUp("noise");
    const char* text = nullptr;
    bool truth = true;
    float number = 3;
    EXPECT_TRUE(KrMetaDataGetStr(entry, "gain", "desc", &text));
    EXPECT_STREQ(text, "How strong");
    EXPECT_FALSE(KrMetaDataGetBool(entry, "gain", "desc", &truth));
    EXPECT_FALSE(KrMetaDataGetFlt(entry, "gain", "desc", &number));
    EXPECT_TRUE(truth);
    EXPECT_EQ(number, 3);
}

TEST(MetaData, OfTheEntryAndOfItsParametersAreApart)
{
    Renderer renderer;
    KtNodeDecl* node = noise();
    KrDeclareMetaDataFlt(node, "gain", "min", 0.5f);
    const KtNodeEntry* entry = KrNodeEntryLookUp("noise");
    float number = 3;
    EXPECT_FALSE(KrMetaDataGetFlt(entry, nullptr, "min", &number));
    EXPECT_FALSE(KrMetaDataGetFlt(entry, "gain", "max", &number));
    EXPECT_FALSE(KrMetaDataGetFlt(entry, "pain", "min", &number));
    EXPECT_EQ(number, 3);
    EXPECT_TRUE(KrMetaDataGetFlt(entry, "gain", "min", &number));
    EXPECT_EQ(number, 0.5f);
    EXPECT_EQ(metaDataOf(entry, "pain"), Items{});
}

TEST(MetaData, KeepsItsPlaceWhenItIsSetAgain)
{
    Renderer renderer;
    KtNodeDecl* node = noise();
    KrDeclareMetaDataStr(node, nullptr, "z", "1");
    KrDeclareMetaDataBool(node, nullptr, "a", true);
    KrDeclareMetaDataFlt(node, nullptr, "m", 2);
    KrDeclareMetaDataFlt(node, nullptr, "z", 1.5f);
    EXPECT_EQ(metaDataOf(KrNodeEntryLookUp("noise")), (Items{"z=1.5", "a=true", "m=2"}));
}

TEST(MetaData, IsFoundAmongHundredsOfKeys)
{
    Renderer renderer;
    KtNodeDecl* node = noise();
    for (int i = 0; i < 300; ++i)
        KrDeclareMetaDataFlt(node, nullptr, ("key" + std::to_string(i)).c_str(), static_cast<float>(i));
    const KtNodeEntry* entry = KrNodeEntryLookUp("noise");
    for (int i = 0; i < 300; ++i)
    {
        float number = -1;
        EXPECT_TRUE(KrMetaDataGetFlt(entry, nullptr, ("key" + std::to_string(i)).c_str(), &number));
        EXPECT_EQ(number, static_cast<float>(i));
    }
    EXPECT_EQ(metaDataOf(entry).size(), 300u);
}

TEST(MetaData, TakesANullTextAsAnEmptyOne)
{
    Renderer renderer;
    KrDeclareMetaDataStr(noise(), nullptr, "desc", nullptr);
    EXPECT_EQ(metaDataOf(KrNodeEntryLookUp("noise")), Items{"desc="});
}

TEST(MetaData, OfAnUnknownParameterIsReportedAndLeftOut)
{
    Renderer renderer;
    KrDeclareMetaDataBool(noise(), "pain", "linkable", false);
    EXPECT_EQ(renderer.takeMessage(),
              "warning: [kr] the renderer itself: \"noise\" has no parameter \"pain\". Ignoring its metadata "
              "\"linkable\"; declare the parameter first or correct the name.");
}

TEST(MetaDataIterator, GivesNullBeyondItsEnd)
{
    Renderer renderer;
    noise();
    KtMetaDataIterator* iterator = KrNodeEntryGetMetaDataIterator(KrNodeEntryLookUp("noise"), nullptr);
    EXPECT_TRUE(KrMetaDataIteratorFinished(iterator));
    EXPECT_EQ(KrMetaDataIteratorGetNext(iterator), nullptr);
    KrMetaDataIteratorDestroy(iterator);
}
