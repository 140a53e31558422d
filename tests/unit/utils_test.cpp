#include "standin_renderer.h"

#include "utils.h"
#include "utils_nodes.h"

#include <clocale>
#include <cmath>
#include <ostream>

using namespace zelk::shop;

TEST(StringMetaData, JoinsContinuationKeysUpToTheFirstGap)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("help", "one").metaData("help2", "two").metaData("help4", "four");

    EXPECT_EQ(getNodeMetaDataStr(renderer.entry("noise"), "help", "none"), "onetwo");
}

TEST(StringMetaData, StartsWithTheKeyItself)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("help2", "two");

    EXPECT_EQ(getNodeMetaDataStr(renderer.entry("noise"), "help", "none"), "none");
}

TEST(StringMetaData, ReadsNinetyEightContinuationKeysAtMost)
{
    StandinRenderer renderer;
    EntryBuilder noise = renderer.shader("noise");
    noise.metaData("k", "x");
    for (int n = 2; n <= 101; ++n)
        noise.metaData(("k" + std::to_string(n)).c_str(), n == 99 ? "!" : n > 99 ? "?" : ".");

    const std::string text = getNodeMetaDataStr(renderer.entry("noise"), "k", "");
    EXPECT_EQ(text, "x" + std::string(97, '.') + "!");
}

TEST(StringMetaData, GoesOnBehindAnEmptyPiece)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("help", "").metaData("help2", "two");

    EXPECT_EQ(getNodeMetaDataStr(renderer.entry("noise"), "help", "none"), "two");
}

TEST(StringMetaData, TakesAnEmptyTextForAbsent)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("help", "");

    EXPECT_EQ(getNodeMetaDataStr(renderer.entry("noise"), "help", "none"), "none");
}

TEST(StringMetaData, OfAParameterIsApartFromTheEntrysOwn)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .floats({"a"})
        .metaData("desc", "of the shader")
        .parmMetaData("a", "desc", "of a");

    EXPECT_EQ(getParmMetaDataStr(renderer.entry("noise"), "a", "desc", ""), "of a");
    EXPECT_EQ(getParmMetaDataStr(renderer.entry("noise"), "", "desc", ""), "of the shader");
}

TEST(StringMetaData, OfAnotherTypeCountsAsAbsent)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("help", 2.0f);

    EXPECT_EQ(getNodeMetaDataStr(renderer.entry("noise"), "help", "none"), "none");
}

TEST(BooleanMetaData, GivesTheDefaultOnlyWhenAbsent)
{
    StandinRenderer renderer;
    renderer.shader("noise").floats({"a"}).metaData("no", false).parmMetaData("a", "yes", true);
    const KtNodeEntry* noise = renderer.entry("noise");

    EXPECT_FALSE(getNodeMetaDataBool(noise, "no", true));
    EXPECT_TRUE(getNodeMetaDataBool(noise, "absent", true));
    EXPECT_TRUE(getParmMetaDataBool(noise, "a", "yes", false));
    EXPECT_FALSE(getParmMetaDataBool(noise, "a", "absent", false));
}

TEST(BooleanMetaData, OfAnotherTypeCountsAsAbsent)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("skip", "true");

    EXPECT_FALSE(getNodeMetaDataBool(renderer.entry("noise"), "skip", false));
}

TEST(NumberMetaData, OfAParameterIsReadAsANumber)
{
    StandinRenderer renderer;
    renderer.shader("noise").floats({"a"}).parmMetaData("a", "max", 2.5f).parmMetaData("a", "min", "0");
    const KtNodeEntry* noise = renderer.entry("noise");

    EXPECT_EQ(getParmMetaDataFlt(noise, "a", "max", 1), 2.5f);
    EXPECT_EQ(getParmMetaDataFlt(noise, "a", "min", 7), 7);
    EXPECT_TRUE(std::isnan(getParmMetaDataFlt(noise, "a", "absent", NAN)));
}

TEST(NodeMetaDataFlt, ReadsABoolean)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("off", false).metaData("on", true).metaData("number", 0.25f);
    const KtNodeEntry* noise = renderer.entry("noise");

    EXPECT_EQ(getNodeMetaDataFlt(noise, "off", 0.5f), 0);
    EXPECT_EQ(getNodeMetaDataFlt(noise, "on", 0), 1);
    EXPECT_EQ(getNodeMetaDataFlt(noise, "number", 0), 0);
    EXPECT_EQ(getNodeMetaDataFlt(noise, "absent", 0.5f), 1);
    EXPECT_EQ(getNodeMetaDataFlt(noise, "absent", 0), 0);
    EXPECT_EQ(getNodeMetaDataFlt(noise, "absent", NAN), 1);
}

struct LabelCase
{
    const char* text;
    const char* capitalized;
    const char* plain;
};

void PrintTo(const LabelCase& c, std::ostream* out) { *out << '"' << c.text << '"'; }

class Labels : public ::testing::TestWithParam<LabelCase>
{
};

TEST_P(Labels, AreMadeFromNames)
{
    EXPECT_EQ(prettyLabel(GetParam().text, true), GetParam().capitalized);
    EXPECT_EQ(prettyLabel(GetParam().text, false), GetParam().plain);
}

const LabelCase label_cases[] = {
    {"", "", ""},
    {"_", " ", " "},
    {"base_color", "Base Color", "base color"},
    {"diffuse_roughness", "Diffuse Roughness", "diffuse roughness"},
    {"a__b", "A  B", "a  b"},
    {"_lead", " Lead", " lead"},
    {"a_1b", "A 1b", "a 1b"},
    {"baseColor", "Base Color", "base Color"},
    {"specularIOR", "Specular IOR", "specular IOR"},
    {"depthZ", "Depth Z", "depth Z"},
    {"KdColor", "Kd Color", "Kd Color"},
    {"HDRMap", "HDRMap", "HDRMap"},
    {"color2Tint", "Color2Tint", "color2Tint"},
    {"xScale", "X Scale", "x Scale"}, // "the letter before it" is the given one, not the one just written
    {"mixedCase_too", "MixedCase Too", "mixedCase too"},
    {"\xc3\xa9tat", "\xc3\xa9tat", "\xc3\xa9tat"},
};
INSTANTIATE_TEST_SUITE_P(Names, Labels, ::testing::ValuesIn(label_cases));

TEST(LabelsInATurkishLocale, AreTheSame)
{
    if (!std::setlocale(LC_ALL, "tr_TR.UTF-8"))
        GTEST_SKIP() << "the locale tr_TR.UTF-8 is not installed: run script/bootstrap --test";
    EXPECT_EQ(prettyLabel("ior", true), "Ior");
    EXPECT_EQ(prettyLabel("index_i", true), "Index I");
    std::setlocale(LC_ALL, "C");
}

struct TypeCase
{
    int code;
    const char* name;
    int connector;
    int components;
};

void PrintTo(const TypeCase& c, std::ostream* out) { *out << "code " << c.code; }

class Types : public ::testing::TestWithParam<TypeCase>
{
};

TEST_P(Types, HaveAWordAConnectorAndASize)
{
    EXPECT_STREQ(typeName(GetParam().code), GetParam().name);
    EXPECT_EQ(vopType(GetParam().code), GetParam().connector);
    EXPECT_EQ(vectorSize(GetParam().code), GetParam().components);
}

const TypeCase type_cases[] = {
    {0, "byte", 4, 1},     {1, "int", 4, 1},       {2, "uint", 4, 1},        {3, "boolean", 4, 1},
    {4, "float", 3, 1},    {5, "rgb", 2, 3},       {6, "rgba", 1, 4},        {7, "vector", 2, 3},
    {8, "point", 2, 3},    {9, "point2", 9, 2},    {10, "string", 5, 1},     {11, "pointer", 28, 1},
    {12, "node", 28, 1},   {13, "array", 0, 1},    {14, "matrix", 7, 16},    {15, "enum", 4, 1},
    {16, "<error>", 0, 1}, {254, "<error>", 0, 1}, {255, "undefined", 0, 1}, {-1, "<error>", 0, 1},
};
INSTANTIATE_TEST_SUITE_P(Codes, Types, ::testing::ValuesIn(type_cases));

TEST(Split, OfAnEmptyTextGivesNothing)
{
    EXPECT_EQ(split("", ',', true), Names());
    EXPECT_EQ(split("", ',', false), Names());
    EXPECT_EQ(split(nullptr, ',', true), Names());
}

TEST(Split, KeepsEmptyTokensOnlyWhenAsked)
{
    EXPECT_EQ(split("a,,b", ',', true), (Names{"a", "", "b"}));
    EXPECT_EQ(split(",a", ',', true), (Names{"", "a"}));
    EXPECT_EQ(split("a,", ',', true), (Names{"a", ""}));
    EXPECT_EQ(split("a,,b", ',', false), (Names{"a", "b"}));
    EXPECT_EQ(split(",a,", ',', false), Names{"a"});
    EXPECT_EQ(split(",", ',', false), Names());
}

TEST(Split, TrimsNothingButTheSeparator)
{
    EXPECT_EQ(split("a  b", ' ', false), (Names{"a", "b"}));
    EXPECT_EQ(split(" a; b", ';', false), (Names{" a", " b"}));
}

TEST(LabelText, IsOverwrittenInItsPlace)
{
    LabelText text;
    const char* first = text.keep("a label that is too long for a small string's own room");
    EXPECT_STREQ(first, "a label that is too long for a small string's own room");
    EXPECT_EQ(text.keep(""), first);
    EXPECT_STREQ(first, "");
}

TEST(LabelText, IsCutAfterSixtyThreeBytes)
{
    LabelText text;
    EXPECT_EQ(text.keep(std::string(63, 'a')), std::string(63, 'a'));
    EXPECT_EQ(text.keep(std::string(65, 'b')), std::string(63, 'b'));
}
