#include "standin_renderer.h"

#include "shader_desc.h"
#include "shader_desc_cache.h"

#include <ostream>

using namespace zelk::shop;

namespace
{

Names namesOf(const std::vector<ParmDesc*>& parms)
{
    Names names;
    for (const ParmDesc* parm : parms)
        names.push_back(parm->name);
    return names;
}

Names outputTokensOf(const ShaderDesc& desc)
{
    Names tokens;
    for (int i = 0; i < desc.outputCount(); ++i)
        tokens.push_back(desc.outputToken(static_cast<unsigned>(i)));
    return tokens;
}

} // namespace

// --- Names ------------------------------------------------------------------------------------------------

TEST(NamesOfShader, LoseThePrefixAndGainTheOperatorNamespace)
{
    StandinRenderer renderer;
    renderer.shader("zelk__foo");

    const ShaderDesc desc(renderer.entry("zelk__foo"));
    EXPECT_EQ(desc.name, "zelk__foo");
    EXPECT_EQ(desc.baseName, "foo");
    EXPECT_EQ(desc.opName, "korvan::foo");
    EXPECT_EQ(desc.label, "Foo");
}

TEST(NamesOfShader, KeepAPrefixThatIsNotInFront)
{
    StandinRenderer renderer;
    renderer.shader("my_zelk__foo");

    const ShaderDesc desc(renderer.entry("my_zelk__foo"));
    EXPECT_EQ(desc.opName, "korvan::my_zelk__foo");
}

TEST(NamesOfShader, ComeFromTheMetadataWhenItSaysSo)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .metaData("houdini.label", "My ")
        .metaData("houdini.label2", "Noise")
        .metaData("houdini.icon", "VOP_noise")
        .metaData("houdini.lod", "low")
        .metaData("houdini.shader_type", "volume")
        .metaData("houdini.help_url", "https://studio.example/noise")
        .metaData("houdini.category", "Texture/3D");

    const ShaderDesc desc(renderer.entry("noise"));
    EXPECT_EQ(desc.label, "My Noise");
    EXPECT_EQ(desc.icon, "VOP_noise");
    EXPECT_EQ(desc.lodSpec, "low");
    EXPECT_EQ(desc.shaderType, "volume");
    EXPECT_EQ(desc.helpUrl, "https://studio.example/noise");
    EXPECT_EQ(desc.category, "Texture/3D");
}

TEST(NamesOfShader, AreEmptyWithoutMetadataButForLabelAndIcon)
{
    StandinRenderer renderer;
    renderer.shader("noise");
    renderer.camera("fisheye");

    const ShaderDesc noise(renderer.entry("noise"));
    EXPECT_EQ(noise.icon, "MISC_generic");
    EXPECT_EQ(noise.lodSpec + noise.shaderType + noise.helpUrl + noise.category, "");
    EXPECT_EQ(ShaderDesc(renderer.entry("fisheye")).icon, "OBJ_camera");
}

TEST(NamesOfShader, MayBeTenThousandCharactersLong)
{
    StandinRenderer renderer;
    const std::string name(10000, 'n');
    renderer.shader(name.c_str());

    EXPECT_EQ(ShaderDesc(renderer.entry(name.c_str())).opName, "korvan::" + name);
}

// --- Parameters -------------------------------------------------------------------------------------------

TEST(ParmsOfShader, AreNoneWhenItHasOnlyAName)
{
    StandinRenderer renderer;
    renderer.shader("noise").parm("name", KR_TYPE_STRING, stringValue(""));

    const ShaderDesc desc(renderer.entry("noise"));
    EXPECT_TRUE(desc.parms.empty());
    EXPECT_TRUE(desc.inputs.empty());
    EXPECT_EQ(desc.opName, "korvan::noise");
}

TEST(ParmsOfShader, LeaveOutSkippedOnesWhichTakeNoIndex)
{
    StandinRenderer renderer;
    renderer.shader("noise").floats({"a", "b", "c"}).parmMetaData("b", "houdini.skip", true);

    const ShaderDesc desc(renderer.entry("noise"));
    ASSERT_EQ(namesOf(desc.parms), (Names{"a", "c"}));
    EXPECT_EQ(desc.parmDesc("c")->index, 1);
    EXPECT_EQ(desc.parmDesc("b"), nullptr);
}

TEST(ParmsOfCamera, LeaveOutTheBaseCamerasOnesAndTheFieldOfView)
{
    StandinRenderer renderer;
    renderer.camera("fisheye").floats({"near_clip", "fov", "squeeze", "exposure"});
    renderer.shader("noise").floats({"near_clip", "fov"});

    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("fisheye")).parms), Names{"squeeze"});
    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("noise")).parms), (Names{"near_clip", "fov"}));
}

TEST(InputsOfShader, AreTheParmsWithoutTheUnlinkableAndTheExtraOnes)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .floats({"a", "b", "c"})
        .parmMetaData("b", "linkable", false)
        .metaData("houdini.parm.heading.h", "Title")
        .metaData("houdini.order", "c h b a");

    const ShaderDesc desc(renderer.entry("noise"));
    EXPECT_EQ(namesOf(desc.inputs), (Names{"c", "a"}));
    EXPECT_EQ(desc.inputIndex("c"), 0);
    EXPECT_EQ(desc.inputIndex("a"), 1);
    EXPECT_EQ(desc.inputIndex("b"), -1);
    EXPECT_EQ(desc.inputIndex("h"), -1);
    EXPECT_EQ(desc.inputIndex("nothing"), -1);
}

// --- Extra parameters -------------------------------------------------------------------------------------

TEST(ExtraParms, FollowTheRegularOnesInTheOrderOfTheMetadata)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .metaData("houdini.parm.toggle.z_switch", "on")
        .floats({"a"})
        .metaData("houdini.parm.separator.s", "");

    const ShaderDesc desc(renderer.entry("noise"));
    EXPECT_EQ(namesOf(desc.parms), (Names{"a", "z_switch", "s"}));
    EXPECT_EQ(desc.parmDesc("z_switch")->index, 1);
}

TEST(ExtraParms, ReadTheirSubKeys)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .metaData("houdini.parm.button.go", "opcf /")
        .metaData("houdini.parm.button.go.label", "Do ")
        .metaData("houdini.parm.button.go.label2", "It")
        .metaData("houdini.parm.button.go.icon", "BUTTONS_reload")
        .metaData("houdini.parm.button.go.desc", "Does it.")
        .metaData("houdini.parm.button.go.callback", "python:pass")
        .metaData("houdini.parm.button.go.join_next", true)
        .metaData("houdini.parm.button.go.no_label", true);

    const ShaderDesc desc(renderer.entry("noise"));
    ASSERT_EQ(namesOf(desc.parms), Names{"go"});
    const ParmDesc& go = *desc.parms[0];
    EXPECT_EQ(go.houdiniType, "button");
    EXPECT_EQ(go.extraArgs, "opcf /");
    EXPECT_EQ(go.label, "Do It");
    EXPECT_EQ(go.icon, "BUTTONS_reload");
    EXPECT_EQ(go.help, "Does it.");
    EXPECT_EQ(go.callback, "python:pass");
    EXPECT_TRUE(go.isExtra && go.noInput && go.joinNext && go.noLabel);
}

TEST(ExtraParms, GetALabelFromTheirNameAndNothingElse)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("houdini.parm.toggle.use_it", "on");

    const ShaderDesc desc(renderer.entry("noise"));
    const ParmDesc& parm = *desc.parms.at(0);
    EXPECT_EQ(parm.label, "Use It");
    EXPECT_EQ(parm.icon + parm.help + parm.callback, "");
    EXPECT_FALSE(parm.joinNext || parm.noLabel);
}

TEST(ExtraParms, AreSkippedWithAMessageWhenTheirKeyIsTooShort)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("houdini.parm.heading", "Title").metaData("houdini.parm.a..", "");

    EXPECT_TRUE(ShaderDesc(renderer.entry("noise")).parms.empty());
    EXPECT_EQ(
        renderer.takeErrors(),
        (Messages{"[zelk::shop::ShaderDesc] Skipping badly formatted extra parameter: houdini.parm.heading",
                  "[zelk::shop::ShaderDesc] Skipping badly formatted extra parameter: houdini.parm.a.."}));
}

TEST(ExtraParms, IgnoreSubKeysWithoutTheirParameter)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("houdini.parm.ramp_float.r.label", "Ramp");

    EXPECT_TRUE(ShaderDesc(renderer.entry("noise")).parms.empty());
}

TEST(ExtraParms, TakeAValueThatIsNoTextForEmptyArguments)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("houdini.parm.toggle.t", true);

    EXPECT_EQ(ShaderDesc(renderer.entry("noise")).parms.at(0)->extraArgs, "");
}

// --- Ramps ------------------------------------------------------------------------------------------------

TEST(RampOfShader, StandsForItsThreeParameters)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .floats({"pos", "val", "mode", "gain"})
        .metaData("houdini.parm.ramp_float.r", " pos  val mode ");

    const ShaderDesc desc(renderer.entry("noise"));
    EXPECT_EQ(namesOf(desc.parms), (Names{"gain", "r"}));
    EXPECT_EQ(namesOf(desc.inputs), Names{"gain"});
    EXPECT_EQ(desc.parmDesc("pos"), nullptr);
}

TEST(RampOfShader, CachesTheNamesOfItsKeys)
{
    StandinRenderer renderer;
    renderer.shader("zelk__n1").floats({"p", "v", "i"}).metaData("houdini.parm.ramp_rgb.r", "p v i");
    renderer.shader("n2").floats({"p", "v", "i"}).metaData("houdini.parm.ramp_float.s", "p v i");
    const ShaderDesc first(renderer.entry("zelk__n1")), second(renderer.entry("n2"));

    EXPECT_STREQ(getMetaDataCacheStr("zelk__n1", "p", "houdini.array_token"), "%s%ipos");
    EXPECT_STREQ(getMetaDataCacheStr("zelk__n1", "v", "houdini.array_token"), "%s%ic");
    EXPECT_STREQ(getMetaDataCacheStr("zelk__n1", "i", "houdini.array_token"), "%s%iinterp");
    EXPECT_STREQ(getMetaDataCacheStr("zelk__n1", "i", "houdini.remap"), "r");
    EXPECT_STREQ(getMetaDataCacheStr("n2", "v", "houdini.array_token"), "%s%ivalue");
}

TEST(RampOfShader, LastOneReplacesTheCacheOfTheOthers)
{
    StandinRenderer renderer;
    renderer.shader("two_ramps")
        .floats({"a", "b", "c", "d", "e", "f"})
        .metaData("houdini.parm.ramp_float.first", "a b c")
        .metaData("houdini.parm.ramp_float.second", "d e f");

    const ShaderDesc desc(renderer.entry("two_ramps"));
    EXPECT_EQ(namesOf(desc.parms), (Names{"first", "second"}));
    EXPECT_STREQ(getMetaDataCacheStr("two_ramps", "a", "houdini.remap"), "");
    EXPECT_STREQ(getMetaDataCacheStr("two_ramps", "d", "houdini.remap"), "second");
}

TEST(RampOfShader, WithTwoArgumentsIsKeptBesideItsParameters)
{
    StandinRenderer renderer;
    renderer.shader("bad_ramp").floats({"a", "b", "c"}).metaData("houdini.parm.ramp_rgb.r", "a b");

    const ShaderDesc desc(renderer.entry("bad_ramp"));
    EXPECT_EQ(namesOf(desc.parms), (Names{"a", "b", "c", "r"}));
    EXPECT_EQ(namesOf(desc.inputs), (Names{"a", "b", "c"}));
    EXPECT_EQ(renderer.takeErrors(),
              Messages{"[zelk::shop::ShaderDesc] Exactly 3 arguments needed for ramp \"r\", found 2"});
    EXPECT_STREQ(getMetaDataCacheStr("bad_ramp", "a", "houdini.remap"), "");
}

TEST(RampOfShader, WithFourArgumentsIsKeptBesideItsParametersToo)
{
    StandinRenderer renderer;
    renderer.shader("long_ramp").floats({"a", "b", "c", "d"}).metaData("houdini.parm.ramp_rgb.r", "a b c d");

    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("long_ramp")).parms), (Names{"a", "b", "c", "d", "r"}));
    EXPECT_EQ(renderer.takeErrors(),
              Messages{"[zelk::shop::ShaderDesc] Exactly 3 arguments needed for ramp \"r\", found 4"});
}

TEST(RampOfShader, RemovesOnlyRendererParameters)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .floats({"a"})
        .metaData("houdini.parm.toggle.b", "on")
        .metaData("houdini.parm.ramp_rgb.r", "a b unknown");

    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("noise")).parms), (Names{"b", "r"}));
}

TEST(MetaDataCache, GivesTheEmptyTextForWhatItDoesNotHold)
{
    EXPECT_STREQ(getMetaDataCacheStr("no_such_shader", "p", "houdini.remap"), "");
    cacheMetaData("shader", {{"p", {{"k", "v"}}}});
    EXPECT_STREQ(getMetaDataCacheStr("shader", "p", "k"), "v");
    EXPECT_STREQ(getMetaDataCacheStr("shader", "p", "other"), "");
    EXPECT_STREQ(getMetaDataCacheStr("shader", "other", "k"), "");
}

TEST(MetaDataCache, TakesANullNameForOneItDoesNotHold)
{
    cacheMetaData("shader", {{"p", {{"k", "v"}}}});
    EXPECT_STREQ(getMetaDataCacheStr(nullptr, "p", "k"), "");
    EXPECT_STREQ(getMetaDataCacheStr("shader", nullptr, "k"), "");
    EXPECT_STREQ(getMetaDataCacheStr("shader", "p", nullptr), "");
}

// --- Display order ----------------------------------------------------------------------------------------

TEST(DisplayOrder, PutsListedParametersFirstAndKeepsTheRestAsDeclared)
{
    StandinRenderer renderer;
    renderer.shader("noise").floats({"a", "b", "c"}).metaData("houdini.order", "b a");

    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("noise")).parms), (Names{"b", "a", "c"}));
}

TEST(DisplayOrder, IgnoresUnknownNames)
{
    StandinRenderer renderer;
    renderer.shader("noise").floats({"a", "b", "c"}).metaData("houdini.order", "x  b");

    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("noise")).parms), (Names{"b", "a", "c"}));
}

TEST(DisplayOrder, TakesTheLastPlaceOfARepeatedName)
{
    StandinRenderer renderer;
    renderer.shader("noise").floats({"a", "b", "c"}).metaData("houdini.order", "a b a");

    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("noise")).parms), (Names{"b", "a", "c"}));
}

TEST(DisplayOrder, OfARampsParameterHasNoEffect)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .floats({"p", "v", "i", "a"})
        .metaData("houdini.parm.ramp_rgb.r", "p v i")
        .metaData("houdini.order", "v r");

    EXPECT_EQ(namesOf(ShaderDesc(renderer.entry("noise")).parms), (Names{"r", "a"}));
}

TEST(DisplayOrder, GoesToTheExtraParameterOfASharedName)
{
    StandinRenderer renderer;
    renderer.shader("noise")
        .floats({"a", "b"})
        .metaData("houdini.parm.toggle.b", "on")
        .metaData("houdini.order", "b");

    const ShaderDesc desc(renderer.entry("noise"));
    EXPECT_EQ(namesOf(desc.parms), (Names{"b", "a", "b"}));
    EXPECT_TRUE(desc.parms[0]->isExtra);
}

TEST(ParmsOfShader, AreFoundByTheLastOfASharedName)
{
    StandinRenderer renderer;
    renderer.shader("noise").floats({"a", "b"}).metaData("houdini.parm.toggle.b", "on");
    EXPECT_TRUE(ShaderDesc(renderer.entry("noise")).parmDesc("b")->isExtra);

    renderer.shader("other")
        .floats({"a", "b"})
        .metaData("houdini.parm.toggle.b", "on")
        .metaData("houdini.order", "b");
    EXPECT_FALSE(ShaderDesc(renderer.entry("other")).parmDesc("b")->isExtra)
        << "the extra one is shown first";
}

// --- Level of detail --------------------------------------------------------------------------------------

struct LodCase
{
    const char* text;
    int letter;
};

void PrintTo(const LodCase& c, std::ostream* out) { *out << '"' << c.text << '"'; }

class LevelOfDetail : public ::testing::TestWithParam<LodCase>
{
};

TEST_P(LevelOfDetail, IsTheFirstLetterOfTheWord)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("houdini.lod", GetParam().text);

    EXPECT_EQ(ShaderDesc(renderer.entry("noise")).lod(), GetParam().letter);
}

const LodCase lod_cases[] = {{"", 0},       {"high", 72},   {"H", 72}, {"Low", 76},
                             {"llama", 76}, {"medium", 77}, {"M", 77}, {"Hidden", 72}};
INSTANTIATE_TEST_SUITE_P(Words, LevelOfDetail, ::testing::ValuesIn(lod_cases));

TEST(LevelOfDetail, WarnsAndFallsBackToNoneOnAnUnknownWord)
{
    StandinRenderer renderer;
    renderer.shader("noise").metaData("houdini.lod", "x");
    const ShaderDesc desc(renderer.entry("noise"));

    EXPECT_EQ(desc.lod(), 0);
    EXPECT_EQ(renderer.takeWarnings(),
              Messages{"[zelk::shop::ShaderDesc] Ignoring invalid LOD specification: x"});
}

// --- Outputs ----------------------------------------------------------------------------------------------

struct OutputCase
{
    int type;
    int connector;
    Names tokens;
};

void PrintTo(const OutputCase& c, std::ostream* out) { *out << "type " << c.type; }

class OutputsOfShader : public ::testing::TestWithParam<OutputCase>
{
};

TEST_P(OutputsOfShader, AreTheValueAndItsComponents)
{
    StandinRenderer renderer;
    renderer.shader("noise", GetParam().type);

    const ShaderDesc desc(renderer.entry("noise"));
    EXPECT_EQ(desc.vopOutputType, GetParam().connector);
    EXPECT_EQ(outputTokensOf(desc), GetParam().tokens);
    EXPECT_STREQ(desc.outputLabel(0), desc.outputToken(0));
}

const OutputCase output_cases[] = {
    {KR_TYPE_FLOAT, 3, {"float"}},
    {KR_TYPE_RGB, 2, {"rgb", "r", "g", "b"}},
    {KR_TYPE_RGBA, 1, {"rgba", "r", "g", "b", "a"}},
    {KR_TYPE_VECTOR, 2, {"vector", "x", "y", "z"}},
    {KR_TYPE_POINT, 2, {"point", "x", "y", "z"}},
    {KR_TYPE_POINT2, 9, {"point2", "x", "y"}},
    {KR_TYPE_MATRIX, 7, {"matrix"}},
    {KR_TYPE_NODE, 28, {"node"}},
    {KR_TYPE_UNDEFINED, 0, {"undefined"}},
    {99, 0, {"<error>"}},
};
INSTANTIATE_TEST_SUITE_P(Types, OutputsOfShader, ::testing::ValuesIn(output_cases));

TEST(OutputsOfShader, BeyondTheComponentsAreErrors)
{
    StandinRenderer renderer;
    renderer.shader("colour", KR_TYPE_RGB);
    renderer.shader("value", KR_TYPE_FLOAT);

    EXPECT_STREQ(ShaderDesc(renderer.entry("colour")).outputToken(4), "a");
    EXPECT_STREQ(ShaderDesc(renderer.entry("colour")).outputToken(5), "<error>");
    EXPECT_STREQ(ShaderDesc(renderer.entry("value")).outputToken(1), "<error>");
}

struct ShaderTypeCase
{
    const char* type;
    int connector;
    const char* token;
};

void PrintTo(const ShaderTypeCase& c, std::ostream* out) { *out << c.type; }

class OutputOfShaderType : public ::testing::TestWithParam<ShaderTypeCase>
{
};

TEST_P(OutputOfShaderType, IsItsOwnConnector)
{
    StandinRenderer renderer;
    renderer.shader("s", KR_TYPE_RGB).metaData("houdini.shader_type", GetParam().type);
    renderer.camera("c").metaData("houdini.shader_type", GetParam().type);

    const ShaderDesc shader(renderer.entry("s")), camera(renderer.entry("c"));
    EXPECT_EQ(shader.vopOutputType, GetParam().connector);
    EXPECT_STREQ(shader.outputToken(0), GetParam().token);
    EXPECT_EQ(camera.vopOutputType, GetParam().connector);
}

const ShaderTypeCase shader_type_cases[] = {
    {"light_filter", 36, "light filter"}, {"atmosphere", 39, "rgb"}, {"volume", 51, "rgb"}};
INSTANTIATE_TEST_SUITE_P(Words, OutputOfShaderType, ::testing::ValuesIn(shader_type_cases));

TEST(OutputOfCamera, IsACameraUnlessItsShaderTypeSaysOtherwise)
{
    StandinRenderer renderer;
    renderer.camera("plain");
    renderer.camera("filter").metaData("houdini.shader_type", "light_filter");

    const ShaderDesc plain(renderer.entry("plain"));
    EXPECT_EQ(plain.vopOutputType, 40);
    EXPECT_STREQ(plain.outputToken(0), "camera");
    EXPECT_STREQ(ShaderDesc(renderer.entry("filter")).outputToken(0), "light filter");
}

TEST(OutputByName, IsTheComponentOfTheLetterWhateverTheType)
{
    StandinRenderer renderer;
    renderer.shader("noise", KR_TYPE_RGB);
    const ShaderDesc desc(renderer.entry("noise"));

    const std::pair<const char*, int> cases[] = {{"r", 1}, {"x", 1},   {"g", 2}, {"y", 2}, {"b", 3}, {"z", 3},
                                                 {"a", 4}, {"rgb", 0}, {"q", 0}, {"", 0},  {"R", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(desc.outputIndex(c.first), c.second) << c.first;
}
