#include "standin_renderer.h"
#include "template_text.h"

#include "shader_desc.h"
#include "shader_desc_callbacks.h"

using namespace zelk::shop;

namespace
{

typedef std::vector<std::pair<std::string, std::string>> Items;

ParmDesc extra(const char* kind, const char* args)
{
    ParmDesc desc;
    desc.isExtra = true;
    desc.noInput = true;
    desc.name = "e";
    desc.label = "Extra";
    desc.houdiniType = kind;
    desc.extraArgs = args;
    return desc;
}

bool isEnd(const PRM_Template& tmpl) { return tmpl.getType() == PRM_LIST_TERMINATOR; }

} // namespace

TEST(FolderExtra, HasATabForEachPair)
{
    const ParmDesc desc = extra("folder", "Base;3;;Coat; 2x");
    const PRM_Template& tmpl = *desc.getExtraTemplate();

    EXPECT_TRUE(tmpl.getType() == PRM_SWITCHER);
    ASSERT_EQ(tmpl.getVectorSize(), 2);
    EXPECT_STREQ(tmpl.getDefault(0)->getString(), "Base");
    EXPECT_EQ(tmpl.getDefault(0)->getFloat(), 3);
    EXPECT_STREQ(tmpl.getDefault(1)->getString(), "Coat");
    EXPECT_EQ(tmpl.getDefault(1)->getFloat(), 2);
    EXPECT_EQ(tmpl.getSparePtr(), nullptr);
    EXPECT_STREQ(tmpl.getToken(), "e");
    EXPECT_STREQ(tmpl.getLabel(), "Extra");
}

TEST(FolderExtra, CountsInTensWhateverANumberBeginsWith)
{
    const ParmDesc desc = extra("folder", "Base;010;Coat;0x10");
    EXPECT_EQ(desc.getExtraTemplate()->getDefault(0)->getFloat(), 10);
    EXPECT_EQ(desc.getExtraTemplate()->getDefault(1)->getFloat(), 0);
}

TEST(FolderExtra, CountsZeroForATextThatIsNoNumber)
{
    const ParmDesc desc = extra("folder", "Base;many");
    EXPECT_EQ(desc.getExtraTemplate()->getDefault(0)->getFloat(), 0);
}

TEST(MalformedExtra, EndsTheInterface)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"a", "b"})
        .metaData("houdini.parm.folder.tabs", "Base;1;Coat")
        .metaData("houdini.order", "a tabs b");

    const ShaderDesc desc(renderer.entry("s"));
    EXPECT_EQ(tokensOf(desc.getTemplates()), Names{"a"});
    EXPECT_EQ(desc.inputs.size(), 2u) << "what is not shown is still an input";
    EXPECT_EQ(renderer.takeErrors(),
              Messages{"[zelk::shop::ShaderDesc] Odd number of arguments (3) for folder \"tabs\""});
}

TEST(MalformedExtra, OfAFolderWithoutTabsSaysThatItIsEmpty)
{
    StandinRenderer renderer;
    const ParmDesc desc = extra("folder", ";;");
    EXPECT_TRUE(isEnd(*desc.getExtraTemplate()));
    EXPECT_EQ(renderer.takeErrors(), Messages{"[zelk::shop::ShaderDesc] Folder \"e\" is empty"});
}

TEST(MalformedExtra, OfAMenuSaysHowManyItemsItHas)
{
    StandinRenderer renderer;
    const ParmDesc desc = extra("menu", "a;A;b");
    EXPECT_TRUE(isEnd(*desc.getExtraTemplate()));
    EXPECT_EQ(renderer.takeErrors(),
              Messages{"[zelk::shop::ShaderDesc] Odd number of arguments (3) for menu \"e\""});
}

TEST(MalformedExtra, IsABareEndWhateverElseItAsksFor)
{
    StandinRenderer renderer;
    ParmDesc desc = extra("folder", "");
    desc.joinNext = true;
    desc.callback = "echo";
    EXPECT_TRUE(isEnd(*desc.getExtraTemplate()));
    const ParmDesc toggle = extra("toggle", "on");
    EXPECT_TRUE(toggle.getExtraTemplate()->getCallback().isNull()) << "its script was not taken";
    EXPECT_EQ(renderer.takeErrors().size(), 1u);
}

TEST(HeadingExtra, ShowsItsArguments)
{
    const ParmDesc desc = extra("heading", "Colour; and more");
    const PRM_Template& tmpl = *desc.getExtraTemplate();
    EXPECT_TRUE(tmpl.getType() == PRM_HEADING);
    EXPECT_STREQ(tmpl.getToken(), "e");
    EXPECT_STREQ(tmpl.getLabel(), "Colour; and more");
}

TEST(SeparatorExtra, IsALineAndNothingElse)
{
    const ParmDesc desc = extra("separator", "");
    const PRM_Template& tmpl = *desc.getExtraTemplate();
    EXPECT_TRUE(tmpl.getType() == PRM_SEPARATOR);
    EXPECT_EQ(tmpl.getVectorSize(), 1);
    EXPECT_EQ(tmpl.getSparePtr(), nullptr);
    EXPECT_EQ(tmpl.getFactoryDefaults(), nullptr);
}

TEST(ToggleExtra, IsOnOnlyForThatVeryWord)
{
    const ParmDesc on = extra("toggle", "on"), off = extra("toggle", "On"), none = extra("toggle", "");
    EXPECT_TRUE(on.getExtraTemplate()->getType() == PRM_TOGGLE);
    EXPECT_EQ(on.getExtraTemplate()->getDefault(0)->getFloat(), 1);
    EXPECT_EQ(off.getExtraTemplate()->getDefault(0)->getFloat(), 0);
    EXPECT_EQ(none.getExtraTemplate()->getDefault(0)->getFloat(), 0);
}

TEST(RampExtra, HasTwoKeysOfItsKind)
{
    ParmDesc value = extra("ramp_float", "a b c");
    value.help = "Helpful.";
    value.joinNext = true;
    const ParmDesc colour = extra("ramp_rgb", "a b c");
    const PRM_Template& valueRamp = *value.getExtraTemplate();
    EXPECT_EQ(valueRamp.getMultiType(), PRM_MULTITYPE_RAMP_FLT);
    EXPECT_EQ(valueRamp.getDefault(0)->getFloat(), 2);
    EXPECT_EQ(valueRamp.getMultiParmTemplate(), nullptr);
    EXPECT_STREQ(valueRamp.getHelpText(), "Helpful.");
    EXPECT_TRUE(valueRamp.getJoinNext());
    EXPECT_EQ(colour.getExtraTemplate()->getMultiType(), PRM_MULTITYPE_RAMP_RGB);
}

TEST(MenuExtra, HasItsPairsAndStartsWithTheFirst)
{
    const ParmDesc desc = extra("menu", "a;Label A;;b;Label B");
    const PRM_Template& tmpl = *desc.getExtraTemplate();
    EXPECT_TRUE(tmpl.getType() == PRM_STRING);
    EXPECT_EQ(tmpl.getChoiceListPtr()->getType(), PRM_CHOICELIST_SINGLE);
    EXPECT_EQ(menuOf(tmpl), (Items{{"a", "Label A"}, {"b", "Label B"}}));
    EXPECT_EQ(defaultTextOf(tmpl), "a");
}

TEST(MenuExtra, WithoutItemsHasNoDefault)
{
    const ParmDesc desc = extra("menu", "");
    const PRM_Template& tmpl = *desc.getExtraTemplate();
    EXPECT_TRUE(tmpl.getType() == PRM_STRING);
    EXPECT_EQ(menuOf(tmpl), Items());
    EXPECT_EQ(tmpl.getFactoryDefaults(), nullptr);
}

TEST(ButtonExtra, RunsItsArgumentsUnlessItHasACallback)
{
    ParmDesc desc = extra("button", "python:press()");
    desc.icon = "BUTTONS_reload";
    const PRM_Template& byArguments = *desc.getExtraTemplate();
    EXPECT_TRUE(byArguments.getType() == PRM_CALLBACK);
    EXPECT_EQ(spareOf(byArguments, "button_icon"), "BUTTONS_reload");
    EXPECT_EQ(spareOf(byArguments, "script_callback"), "press()");
    EXPECT_EQ(byArguments.getSparePtr()->getCallbackLanguage(), CH_PYTHON_SCRIPT);

    desc.callback = "hscript:echo";
    EXPECT_EQ(spareOf(*desc.getExtraTemplate(), "script_callback"), "echo");
}

TEST(ButtonExtra, WithoutIconAndScriptHasNoSpareData)
{
    const ParmDesc desc = extra("button", "");
    EXPECT_EQ(desc.getExtraTemplate()->getSparePtr(), nullptr);
}

TEST(UnknownExtra, TakesItsPlaceWithTheEmptyType)
{
    const ParmDesc desc = extra("slider", "1 2");
    const PRM_Template& tmpl = *desc.getExtraTemplate();
    EXPECT_TRUE(tmpl.getType() == PRM_TYPE_ZERO);
    EXPECT_FALSE(isEnd(tmpl));
    EXPECT_EQ(tmpl.getVectorSize(), 1);
    EXPECT_STREQ(tmpl.getToken(), "e");
    EXPECT_EQ(tmpl.getFactoryDefaults(), nullptr);
}

TEST(ExtraTemplate, TakesHelpLookAndJoinButIsNeverInvisible)
{
    ParmDesc desc = extra("toggle", "on");
    desc.help = "Helpful.";
    desc.noLabel = true;
    desc.joinNext = true;
    desc.invisible = true;
    const PRM_Template& tmpl = *desc.getExtraTemplate();
    EXPECT_STREQ(tmpl.getHelpText(), "Helpful.");
    EXPECT_EQ(tmpl.getTypeExtended(), 4);
    EXPECT_TRUE(tmpl.getJoinNext());
    EXPECT_FALSE(tmpl.getInvisible());
    EXPECT_EQ(tmpl.getParmGroup(), 1);
}

TEST(CallbackSlot, OfExtraParametersIsApart)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"a"})
        .metaData("houdini.parm.toggle.before", "on")
        .metaData("houdini.parm.ramp_rgb.ramp", "x y z")
        .metaData("houdini.parm.ramp_rgb.ramp.callback", "echo hi")
        .metaData("houdini.parm.separator.after", "");

    const ShaderDesc desc(renderer.entry("s"));
    const PRM_Template* list = desc.getTemplates();
    ASSERT_EQ(tokensOf(list), (Names{"a", "before", "ramp", "after"}));
    const PRM_Callback ours(parmCallback);
    EXPECT_TRUE(list[0].getCallback().isNull());
    EXPECT_TRUE(list[1].getCallback().isNull());
    EXPECT_TRUE(list[2].getCallback() == ours);
    EXPECT_EQ(spareOf(list[2], "script_callback"), "echo hi");
    EXPECT_TRUE(list[3].getCallback() == ours);
}
