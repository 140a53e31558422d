#include "renderer_fixture.h"

#include <cstring>

namespace
{

KtNodeDecl* shader(const char* name) { return KrDeclareNode(name, KR_NODE_SHADER, KR_TYPE_RGB); }

const KtParamValue* defaultOf(const char* node, const char* param)
{
    return KrParamGetDefault(findParam(KrNodeEntryLookUp(node), param));
}

} // namespace

TEST(Declaring, KeepsNameKindOutputAndOrder)
{
    Renderer renderer;
    KrDeclareNode("second", KR_NODE_CAMERA, KR_TYPE_UNDEFINED);
    KrDeclareNode("first", KR_NODE_SHADER, 77);
    const std::vector<const KtNodeEntry*> entries = entriesOf(KR_NODE_SHADER | KR_NODE_CAMERA);
    ASSERT_EQ(entries.size(), 5u); // after the three built-in cameras
    EXPECT_STREQ(KrNodeEntryGetName(entries[3]), "second");
    EXPECT_EQ(KrNodeEntryGetType(entries[3]), KR_NODE_CAMERA);
    EXPECT_STREQ(KrNodeEntryGetName(entries[4]), "first");
    EXPECT_EQ(KrNodeEntryGetOutputType(entries[4]), 77);
}

TEST(Declaring, KeepsTheFirstEntryOfAName)
{
    Renderer renderer;
    KrDeclareNodeFile(shader("noise"), "/plugins/a.so");
    EXPECT_EQ(shader("noise"), nullptr);
    EXPECT_EQ(
        renderer.takeMessage(),
        "error: [kr] the renderer itself: The node entry \"noise\" is declared already by /plugins/a.so. "
        "Skipping the second; rename one of them.");
    EXPECT_EQ(shader(""), nullptr);
    EXPECT_EQ(renderer.takeMessage(),
              "error: [kr] the renderer itself: A node entry has no name. Skipping it; give it one.");
}

TEST(Declaring, KeepsTheFirstParameterOfAName)
{
    Renderer renderer;
    KtNodeDecl* node = shader("noise");
    EXPECT_TRUE(KrDeclareParam(node, "gain", KR_TYPE_FLOAT, nullptr));
    EXPECT_FALSE(KrDeclareParam(node, "gain", KR_TYPE_INT, nullptr));
    EXPECT_EQ(renderer.takeMessage(),
              "error: [kr] the renderer itself: Parameter \"gain\" of \"noise\" is declared "
              "twice. Skipping the second; rename one of them.");
    EXPECT_EQ(KrParamGetType(findParam(KrNodeEntryLookUp("noise"), "gain")), KR_TYPE_FLOAT);
}

TEST(Declaring, PassesOverARefusedEntry)
{
    Renderer renderer;
    EXPECT_FALSE(KrDeclareParam(nullptr, "gain", KR_TYPE_FLOAT, nullptr));
    EXPECT_FALSE(KrDeclareEnum(nullptr, "mode", nullptr, 0));
    KrDeclareItems(nullptr, "mode", nullptr);
    KrDeclareMetaDataStr(nullptr, nullptr, "key", "text");
    KrDeclareNodeFile(nullptr, "/plugins/a.so");
}

TEST(Declaring, CopiesTexts)
{
    Renderer renderer;
    std::string name = "noise", text = "cellular";
    KtParamValue value = KtParamValue();
    value.str = text.c_str();
    KrDeclareParam(shader(name.c_str()), "kind", KR_TYPE_STRING, &value);
    name.assign(name.size(), '-');
    text.assign(text.size(), '-');
    ASSERT_NE(KrNodeEntryLookUp("noise"), nullptr);
    EXPECT_STREQ(defaultOf("noise", "kind")->str, "cellular");
}

TEST(Declaring, CopiesMatricesAndArrays)
{
    Renderer renderer;
    KtNodeDecl* node = shader("noise");
    KtParamValue value = KtParamValue();
    {
        const KtMatrix matrix = {{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};
        value.mtx = &matrix;
        KrDeclareParam(node, "matrix", KR_TYPE_MATRIX, &value);
    }
    const std::string word = "a word that is longer than any small buffer";
    KtArray* inner = KrArrayAllocate(1, 1, KR_TYPE_STRING);
    *static_cast<const char**>(inner->data) = word.c_str();
    KtArray* outer = KrArrayAllocate(1, 1, KR_TYPE_ARRAY);
    *static_cast<KtArray**>(outer->data) = inner;
    value.array = outer;
    KrDeclareParam(node, "lists", KR_TYPE_ARRAY, &value);
    KrArrayDestroy(outer);
    KrArrayDestroy(inner);

    EXPECT_EQ(defaultOf("noise", "matrix")->mtx->m[2][1], 10.0f);
    const KtArray* copy = defaultOf("noise", "lists")->array;
    ASSERT_EQ(copy->type, KR_TYPE_ARRAY);
    EXPECT_EQ(KrArrayGetStrFunc(*static_cast<KtArray**>(copy->data), 0, __FILE__, __LINE__), word);
}

TEST(Declaring, KeepsANullDefaultAndANullText)
{
    Renderer renderer;
    KtNodeDecl* node = shader("noise");
    KtParamValue value = KtParamValue();
    KrDeclareParam(node, "none", KR_TYPE_FLOAT, nullptr);
    KrDeclareParam(node, "null_text", KR_TYPE_STRING, &value);
    KrDeclareParam(node, "null_matrix", KR_TYPE_MATRIX, &value);
    KrDeclareParam(node, "null_array", KR_TYPE_ARRAY, &value);
    EXPECT_EQ(defaultOf("noise", "none"), nullptr);
    EXPECT_EQ(defaultOf("noise", "null_text")->str, nullptr);
    EXPECT_EQ(defaultOf("noise", "null_matrix")->mtx, nullptr);
    EXPECT_EQ(defaultOf("noise", "null_array")->array, nullptr);
}

TEST(Declaring, KeepsTheItemsOfEnumerations)
{
    Renderer renderer;
    KtNodeDecl* node = shader("noise");
    const char* const items[] = {"perlin", "cell", nullptr};
    KrDeclareEnum(node, "mode", items, 7);
    KrDeclareEnum(node, "empty", nullptr, 0);
    KrDeclareParam(node, "bare", KR_TYPE_ENUM, nullptr);
    KrDeclareItems(node, "bare", items);
    KrDeclareParam(node, "gain", KR_TYPE_FLOAT, nullptr);

    const KtNodeEntry* entry = KrNodeEntryLookUp("noise");
    const char** names = KrParamGetEnum(findParam(entry, "mode"));
    EXPECT_STREQ(names[0], "perlin");
    EXPECT_STREQ(names[1], "cell");
    EXPECT_EQ(names[2], nullptr);
    EXPECT_EQ(defaultOf("noise", "mode")->int_, 7);
    EXPECT_EQ(KrParamGetEnum(findParam(entry, "empty"))[0], nullptr);
    EXPECT_STREQ(KrParamGetEnum(findParam(entry, "bare"))[1], "cell");
    EXPECT_EQ(defaultOf("noise", "bare"), nullptr);
    EXPECT_EQ(KrParamGetEnum(findParam(entry, "gain")), nullptr);
    KrDeclareItems(node, "gain", items);
    EXPECT_EQ(renderer.takeMessage(),
              "error: [kr] the renderer itself: \"noise\" has no enumeration \"gain\". "
              "Ignoring its items; declare the parameter first.");
}

TEST(Declaring, TakesLongAndForeignNames)
{
    Renderer renderer;
    const std::string longName(10000, 'x');
    KtNodeDecl* node = shader(longName.c_str());
    KrDeclareParam(node, "größe", KR_TYPE_FLOAT, nullptr);
    const KtNodeEntry* entry = KrNodeEntryLookUp(longName.c_str());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(KrNodeEntryGetName(entry), longName);
    EXPECT_EQ(paramNamesOf(entry), std::vector<std::string>{"größe"});
}
