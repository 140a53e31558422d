#include "standin_renderer.h"
#include "template_text.h"

#include "shader_desc.h"
#include "shader_desc_callbacks.h"
#include "utils_host_memory.h"

#include <PRM/PRM_Conditional.h>
#include <PRM/PRM_Range.h>

#include <ostream>

using namespace zelk::shop;

namespace
{

typedef std::vector<std::pair<std::string, std::string>> Items;

/// The template list of the shader "s" that a test has declared.
const PRM_Template* listOf(const StandinRenderer& renderer)
{
    return leakForHost<ShaderDesc>(renderer.entry("s"))->getTemplates(); // which point into it
}

/// Its first template.
const PRM_Template& templateOf(const StandinRenderer& renderer) { return listOf(renderer)[0]; }

/// The template of a text parameter with the given "houdini.type".
const PRM_Template& textTemplate(StandinRenderer& renderer, const char* houdiniType)
{
    renderer.shader("s")
        .parm("p", KR_TYPE_STRING, stringValue(""))
        .parmMetaData("p", "houdini.type", houdiniType)
        .parmMetaData("p", "houdini.menu", "a;A;b;B")
        .parmMetaData("p", "houdini.menu_script", "return []\\n");
    return templateOf(renderer);
}

const Items visibility_items = {{"camera", "Camera"},       {"shadow", "Shadow"}, {"reflected", "Reflected"},
                                {"refracted", "Refracted"}, {"unused", ""},       {"diffuse", "Diffuse"},
                                {"glossy", "Glossy"}};

} // namespace

// --- Kinds ------------------------------------------------------------------------------------------------

struct KindCase
{
    int code;
    const PRM_Type* type;
    int size;
    bool hasRange;
};

void PrintTo(const KindCase& c, std::ostream* out) { *out << "code " << c.code; }

class KindOfTemplate : public ::testing::TestWithParam<KindCase>
{
};

TEST_P(KindOfTemplate, GoesWithTheRenderersType)
{
    StandinRenderer renderer;
    KtParamValue zero = {};
    renderer.shader("s").parm("some_value", GetParam().code, zero);

    const PRM_Template& tmpl = templateOf(renderer);
    EXPECT_TRUE(tmpl.getType() == *GetParam().type);
    EXPECT_EQ(tmpl.getVectorSize(), GetParam().size);
    EXPECT_EQ(tmpl.getRangePtr() != nullptr, GetParam().hasRange);
    EXPECT_STREQ(tmpl.getToken(), "some_value");
    EXPECT_STREQ(tmpl.getLabel(), "Some Value");
    EXPECT_EQ(tmpl.getParmGroup(), 1);
    EXPECT_EQ(tmpl.exportLevel(), PRM_Template::PRM_EXPORT_MIN);
    EXPECT_EQ(tmpl.getHelpText(), nullptr);
    EXPECT_NE(tmpl.getSparePtr(), nullptr);
    EXPECT_EQ(tmpl.getTypeExtended(), GetParam().code == KR_TYPE_NODE ? 0x11 : 0);
}

const KindCase kind_cases[] = {
    {KR_TYPE_BYTE, &PRM_INT, 1, true},       {KR_TYPE_INT, &PRM_INT, 1, true},
    {KR_TYPE_UINT, &PRM_INT, 1, true},       {KR_TYPE_BOOLEAN, &PRM_TOGGLE, 1, false},
    {KR_TYPE_FLOAT, &PRM_FLT, 1, true},      {KR_TYPE_RGB, &PRM_RGB, 3, true},
    {KR_TYPE_RGBA, &PRM_RGBA, 4, true},      {KR_TYPE_VECTOR, &PRM_XYZ, 3, true},
    {KR_TYPE_POINT, &PRM_XYZ, 3, true},      {KR_TYPE_POINT2, &PRM_FLT, 2, true},
    {KR_TYPE_STRING, &PRM_STRING, 1, false}, {KR_TYPE_POINTER, &PRM_LABEL, 1, false},
    {KR_TYPE_NODE, &PRM_STRING, 1, false},   {KR_TYPE_MATRIX, &PRM_FLT, 16, true},
};
INSTANTIATE_TEST_SUITE_P(Types, KindOfTemplate, ::testing::ValuesIn(kind_cases));

TEST(KindOfTemplateOfUnknownType, IsALabel)
{
    StandinRenderer renderer;
    KtParamValue zero = {};
    renderer.shader("s").parm("u", KR_TYPE_UNDEFINED, zero).parm("x", 42, zero);

    const PRM_Template* list = listOf(renderer);
    EXPECT_TRUE(list[0].getType() == PRM_LABEL);
    EXPECT_TRUE(list[1].getType() == PRM_LABEL);
    EXPECT_EQ(defaultTextOf(list[1]), "Unknown parameter type");
    EXPECT_EQ(renderer.takeErrors().size(), 2u);
}

TEST(ToggleTemplate, IsJoinedOnlyWithBothJoinNextAndNoLabel)
{
    StandinRenderer renderer;
    EntryBuilder s = renderer.shader("s");
    for (const char* name : {"joined", "join_only", "bare_only"})
        s.parm(name, KR_TYPE_BOOLEAN, boolValue(true));
    s.parmMetaData("joined", "houdini.join_next", true).parmMetaData("joined", "houdini.no_label", true);
    s.parmMetaData("join_only", "houdini.join_next", true);
    s.parmMetaData("bare_only", "houdini.no_label", true);

    const PRM_Template* list = listOf(renderer);
    EXPECT_STREQ(PRMtypeName(list[0].getType()), "PRM_JOINED_TOGGLE");
    EXPECT_STREQ(PRMtypeName(list[1].getType()), "PRM_TOGGLE");
    EXPECT_STREQ(PRMtypeName(list[2].getType()), "PRM_TOGGLE");
    EXPECT_TRUE(list[1].getJoinNext());
    EXPECT_FALSE(list[2].getJoinNext());
}

TEST(VisibilityTemplate, IsAStripOfSevenButtonsWithAnUnlabelledFifth)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .parm("p", KR_TYPE_INT, intValue(255))
        .parmMetaData("p", "houdini.type", "visibility")
        .parm("q", KR_TYPE_UINT, uintValue(255))
        .parmMetaData("q", "houdini.type", "visibility");

    const PRM_Template* list = listOf(renderer);
    EXPECT_TRUE(list[0].getType() == PRM_BUTTONSTRIP);
    EXPECT_EQ(list[0].getChoiceListPtr()->getType(), PRM_CHOICELIST_TOGGLE);
    EXPECT_EQ(menuOf(list[0]), visibility_items);
    EXPECT_TRUE(list[1].getType() == PRM_INT) << "only signed integers are masks";
}

// --- Texts ------------------------------------------------------------------------------------------------

TEST(TextTemplate, IsAFieldForAnUnknownSubKind)
{
    StandinRenderer renderer;
    const PRM_Template& tmpl = textTemplate(renderer, "colourful");
    EXPECT_TRUE(tmpl.getType() == PRM_STRING);
    EXPECT_EQ(tmpl.getChoiceListPtr(), nullptr);
    EXPECT_EQ(tmpl.getTypeExtended(), 0);
}

TEST(FileTemplate, OfImagesBrowsesPictures)
{
    StandinRenderer renderer;
    const PRM_Template& tmpl = textTemplate(renderer, "file:image");
    EXPECT_TRUE(tmpl.getType() == PRM_PICFILE);
    EXPECT_EQ(spareOf(tmpl, "filechooser_pattern"), "<none>");
}

TEST(FileTemplate, KeepsItsPatternUpToTheNextColon)
{
    StandinRenderer renderer;
    const PRM_Template& tmpl = textTemplate(renderer, "file:*.ies *.ldt:more");
    EXPECT_TRUE(tmpl.getType() == PRM_FILE);
    EXPECT_EQ(spareOf(tmpl, "filechooser_pattern"), "*.ies *.ldt");
}

TEST(FileTemplate, WithoutAPatternHasAnEmptyOne)
{
    StandinRenderer renderer;
    const PRM_Template& tmpl = textTemplate(renderer, "file:");
    EXPECT_TRUE(tmpl.getType() == PRM_FILE);
    EXPECT_EQ(spareOf(tmpl, "filechooser_pattern"), "");
}

TEST(NodePathTemplate, TakesItsFilterFromTheSecondField)
{
    StandinRenderer renderer;
    const PRM_Template& tmpl = textTemplate(renderer, "opfilter:!!OBJ!!");
    EXPECT_TRUE(tmpl.getType() == PRM_STRING);
    EXPECT_EQ(tmpl.getTypeExtended(), 0x11);
    EXPECT_EQ(spareOf(tmpl, "opfilter"), "!!OBJ!!");
}

TEST(NodePathTemplate, HasNoFilterWithoutExactlyTwoFields)
{
    for (const char* type : {"opfilter", "opfilter:", "opfilter:a:b"})
    {
        StandinRenderer renderer;
        const PRM_Template& tmpl = textTemplate(renderer, type);
        EXPECT_EQ(tmpl.getTypeExtended(), 0x11) << type;
        EXPECT_EQ(spareOf(tmpl, "opfilter"), "<none>") << type;
    }
}

struct MenuCase
{
    const char* houdiniType;
    int type;
    int language; // -1: a static menu
};

void PrintTo(const MenuCase& c, std::ostream* out) { *out << c.houdiniType; }

class MenuTemplate : public ::testing::TestWithParam<MenuCase>
{
};

TEST_P(MenuTemplate, IsOfTheKindAndSourceThatItNames)
{
    StandinRenderer renderer;
    const PRM_Template& tmpl = textTemplate(renderer, GetParam().houdiniType);
    const PRM_ChoiceList* menu = tmpl.getChoiceListPtr();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(tmpl.getType() == PRM_STRING);
    EXPECT_EQ(menu->getType(), GetParam().type);
    if (GetParam().language < 0)
    {
        EXPECT_EQ(menuOf(tmpl), (Items{{"a", "A"}, {"b", "B"}}));
        return;
    }
    EXPECT_EQ(menu->getScriptLanguage(), GetParam().language);
    EXPECT_STREQ(menu->getScript(), "return []\n");
}

const MenuCase menu_cases[] = {
    {"menu:replace:menu", 0x1, -1},    {"menu:toggle:menu", 0x2, -1},       {"menu:append:menu", 0x4, -1},
    {"menu:wild:menu", 0x8, -1},       {"menu:exclusive:menu", 0x1000, -1}, {"menu:single:menu", 0x1001, -1},
    {"menu:single:python", 0x1001, 1}, {"menu:append:hscript:x", 0x4, 0},
};
INSTANTIATE_TEST_SUITE_P(Words, MenuTemplate, ::testing::ValuesIn(menu_cases));

TEST(MenuTemplateOfUnknownKind, HasNoMenuAndSaysWhy)
{
    StandinRenderer renderer;
    const PRM_Template& tmpl = textTemplate(renderer, "menu:choose:perl");
    EXPECT_TRUE(tmpl.getType() == PRM_STRING);
    EXPECT_EQ(tmpl.getChoiceListPtr(), nullptr);
    EXPECT_EQ(renderer.takeErrors(), Messages{"[zelk::shop::ParmDesc] Unhandled menu type: choose"});
}

TEST(MenuTemplateOfUnknownSource, HasNoMenuAndSaysWhy)
{
    StandinRenderer renderer;
    EXPECT_EQ(textTemplate(renderer, "menu:single:perl").getChoiceListPtr(), nullptr);
    EXPECT_EQ(renderer.takeErrors(), Messages{"[zelk::shop::ParmDesc] Unhandled menu script language: perl"});
}

TEST(MenuTemplateWithoutSource, HasNoMenuAndSaysWhy)
{
    StandinRenderer renderer;
    EXPECT_EQ(textTemplate(renderer, "menu:single").getChoiceListPtr(), nullptr);
    EXPECT_EQ(renderer.takeErrors(), Messages{"[zelk::shop::ParmDesc] Unhandled menu script language: "});
}

TEST(MenuTemplateWithoutAnything, HasNoMenuAndSaysWhy)
{
    StandinRenderer renderer;
    EXPECT_EQ(textTemplate(renderer, "menu:").getChoiceListPtr(), nullptr);
    EXPECT_EQ(renderer.takeErrors(), Messages{"[zelk::shop::ParmDesc] Unhandled menu type: "});
}

TEST(EnumTemplate, IsAMenuOfTokens)
{
    StandinRenderer renderer;
    renderer.shader("s").enumeration("p", {"one", "two"}, 1);

    const PRM_Template& tmpl = templateOf(renderer);
    EXPECT_TRUE(tmpl.getType() == PRM_STRING);
    EXPECT_EQ(tmpl.getChoiceListPtr()->getType(), PRM_CHOICELIST_SINGLE);
    EXPECT_EQ(menuOf(tmpl), (Items{{"one", "One"}, {"two", "Two"}}));
    EXPECT_EQ(defaultTextOf(tmpl), "two");
}

// --- Looks, conditions, help, expressions -----------------------------------------------------------------

TEST(Template, TakesItsFlagsFromTheDescription)
{
    StandinRenderer renderer;
    KtParamValue zero = {};
    renderer.shader("s")
        .floats({"p"})
        .parmMetaData("p", "houdini.no_label", true)
        .parmMetaData("p", "houdini.invisible", true)
        .parmMetaData("p", "houdini.join_next", true)
        .parmMetaData("p", "desc", "Helpful.")
        .parmMetaData("p", "houdini.hide_when", "{ q == 1 }")
        .parm("n", KR_TYPE_NODE, zero)
        .parmMetaData("n", "houdini.no_label", true);

    const PRM_Template* list = listOf(renderer);
    EXPECT_EQ(list[0].getTypeExtended(), 4);
    EXPECT_TRUE(list[0].getInvisible());
    EXPECT_TRUE(list[0].getJoinNext());
    EXPECT_STREQ(list[0].getHelpText(), "Helpful.");
    EXPECT_NE(list[0].getConditionalPtr(PRM_CONDTYPE_HIDE), nullptr);
    EXPECT_EQ(list[1].getTypeExtended(), 0x11) << "a node path shows its label";
}

TEST(Template, StartsOutWithItsExpression)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .parm("h", KR_TYPE_FLOAT, floatValue(2))
        .parmMetaData("h", "houdini.expression", "$F")
        .enumeration("p", {"one"}, 0)
        .parmMetaData("p", "houdini.expression", "python:'one'");

    const PRM_Template* list = listOf(renderer);
    EXPECT_EQ(defaultTextOf(list[0]), "$F");
    EXPECT_EQ(list[0].getDefault(0)->getStringMeaning(), CH_OLD_EXPRESSION);
    EXPECT_EQ(list[0].getDefault(0)->getFloat(), 2);
    EXPECT_EQ(defaultTextOf(list[1]), "'one'");
    EXPECT_EQ(list[1].getDefault(0)->getStringMeaning(), CH_PYTHON_EXPRESSION);
}

// --- Ranges -----------------------------------------------------------------------------------------------

TEST(RangeOfTemplate, IsASliderFromZeroToOneWithoutMetadata)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"p"});

    const PRM_Range& range = *templateOf(renderer).getRangePtr();
    EXPECT_EQ(range.getMinFlag(), PRM_RANGE_UI);
    EXPECT_EQ(range.getUIMin(), 0);
    EXPECT_EQ(range.getMaxFlag(), PRM_RANGE_UI);
    EXPECT_EQ(range.getUIMax(), 1);
}

TEST(RangeOfByteTemplate, IsRestrictedToAByteAndWrittenBack)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .parm("p", KR_TYPE_BYTE, byteValue(0))
        .parmMetaData("p", "max", 1000.0f)
        .parmMetaData("p", "min", -5.0f)
        .parm("q", KR_TYPE_BYTE, byteValue(0))
        .parmMetaData("q", "max", 100.0f)
        .parmMetaData("q", "min", 10.0f)
        .parm("r", KR_TYPE_BYTE, byteValue(0));

    const ShaderDesc desc(renderer.entry("s"));
    const PRM_Template* list = desc.getTemplates();
    EXPECT_EQ(list[0].getRangePtr()->getMinFlag(), PRM_RANGE_RESTRICTED);
    EXPECT_EQ(list[0].getRangePtr()->getParmMin(), 0);
    EXPECT_EQ(list[0].getRangePtr()->getMaxFlag(), PRM_RANGE_RESTRICTED);
    EXPECT_EQ(list[0].getRangePtr()->getParmMax(), 255);
    EXPECT_EQ(desc.parmDesc("p")->max, 255);
    EXPECT_EQ(desc.parmDesc("p")->min, 0);
    EXPECT_EQ(list[1].getRangePtr()->getParmMin(), 10);
    EXPECT_EQ(list[1].getRangePtr()->getParmMax(), 100);
    EXPECT_EQ(list[2].getRangePtr()->getMaxFlag(), PRM_RANGE_RESTRICTED) << "without metadata";
    EXPECT_EQ(list[2].getRangePtr()->getParmMax(), 255);
}

TEST(RangeOfUnsignedTemplate, StartsAtZeroAndIsOpenAbove)
{
    StandinRenderer renderer;
    renderer.shader("s").parm("p", KR_TYPE_UINT, uintValue(0)).parmMetaData("p", "softmax", 12.0f);

    const PRM_Range& range = *templateOf(renderer).getRangePtr();
    EXPECT_EQ(range.getMinFlag(), PRM_RANGE_RESTRICTED);
    EXPECT_EQ(range.getParmMin(), 0);
    EXPECT_EQ(range.getMaxFlag(), PRM_RANGE_UI);
    EXPECT_EQ(range.getUIMax(), 12);
}

// --- Arrays -----------------------------------------------------------------------------------------------

TEST(ArrayTemplates, AreAFolderAndAListOfElements)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floatArray("knots", {0.5f, 1, 2})
        .parmMetaData("knots", "desc", "Where.")
        .parmMetaData("knots", "houdini.disable_when", "{ q == 1 }")
        .parmMetaData("knots", "houdini.invisible", true)
        .parmMetaData("knots", "houdini.join_next", true);

    const PRM_Template* list = listOf(renderer);
    ASSERT_EQ(tokensOf(list), (Names{"knots_group", "knots"}));

    const PRM_Template& folder = list[0];
    EXPECT_STREQ(PRMtypeName(folder.getType()), "PRM_SWITCHER");
    EXPECT_EQ(folder.getVectorSize(), 1);
    EXPECT_EQ(folder.getDefault(0)->getFloat(), 1);
    EXPECT_EQ(defaultTextOf(folder), "Knots");
    EXPECT_EQ(spareOf(folder, "group_type"), "simple");
    EXPECT_TRUE(folder.getInvisible() && folder.getJoinNext());
    EXPECT_TRUE(folder.getCallback().isNull());
    EXPECT_EQ(folder.getConditionalBasePtr(), nullptr);
    EXPECT_EQ(folder.getHelpText(), nullptr);

    const PRM_Template& array = list[1];
    EXPECT_EQ(array.getMultiType(), PRM_MULTITYPE_LIST);
    EXPECT_STREQ(array.getLabel(), "Array Elements");
    EXPECT_EQ(array.getDefault(0)->getFloat(), 3);
    EXPECT_EQ(array.getSparePtr(), nullptr);
    EXPECT_EQ(array.getRangePtr(), nullptr);
    EXPECT_STREQ(array.getHelpText(), "Where.");
    EXPECT_FALSE(array.getInvisible() || array.getJoinNext());

    const PRM_Template* element = array.getMultiParmTemplate();
    ASSERT_EQ(tokensOf(element), Names{"knots_#"});
    EXPECT_STREQ(element->getLabel(), "Knots #");
    EXPECT_TRUE(element->getType() == PRM_FLT);
    EXPECT_EQ(element->getDefault(0)->getFloat(), 0.5);
    EXPECT_NE(element->getRangePtr(), nullptr);
    EXPECT_EQ(element->getConditionalBasePtr(), array.getConditionalBasePtr());
    EXPECT_NE(element->getConditionalBasePtr(), nullptr);
}

TEST(ArrayTemplates, OfAnEmptyArrayHaveNoInstances)
{
    StandinRenderer renderer;
    renderer.shader("s").emptyArray("p", KR_TYPE_RGB);

    const PRM_Template& array = listOf(renderer)[1];
    EXPECT_EQ(array.getDefault(0)->getFloat(), 0);
    EXPECT_STREQ(PRMtypeName(array.getMultiParmTemplate()->getType()), "PRM_RGB");
}

TEST(ArrayTemplates, HaveAnInstanceForEachElementWhateverItsKeys)
{
    StandinRenderer renderer;
    renderer.shader("s").arrayParm("p", KrArrayAllocate(2, 3, KR_TYPE_FLOAT));

    EXPECT_EQ(listOf(renderer)[1].getDefault(0)->getFloat(), 2);
}

TEST(ArrayTemplates, OfArraysShowALabel)
{
    StandinRenderer renderer;
    renderer.shader("s").emptyArray("p", KR_TYPE_ARRAY);

    const PRM_Template& element = *listOf(renderer)[1].getMultiParmTemplate();
    EXPECT_STREQ(PRMtypeName(element.getType()), "PRM_LABEL");
    EXPECT_EQ(defaultTextOf(element), "Unhandled parameter type: KR_TYPE_ARRAY");
}

TEST(TemplatesOfShader, HaveTwoPlacesForAnArray)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"a"}).floatArray("b", {1}).floats({"c"});

    EXPECT_EQ(tokensOf(listOf(renderer)), (Names{"a", "b_group", "b", "c"}));
}

TEST(TemplatesOfShader, AreOnlyTheEndWithoutParameters)
{
    StandinRenderer renderer;
    renderer.shader("s");

    EXPECT_TRUE(listOf(renderer)->getType() == PRM_LIST_TERMINATOR);
}

TEST(TemplatesOfCamera, LeaveOutTheBaseCamerasParameters)
{
    StandinRenderer renderer;
    renderer.camera("s").floats({"fov", "shutter_start", "squeeze"});

    EXPECT_EQ(tokensOf(listOf(renderer)), Names{"squeeze"});
}

TEST(TemplatesOfShader, OutliveTheRenderer)
{
    const PRM_Template* list = nullptr;
    {
        StandinRenderer renderer;
        renderer.shader("s").parm("p", KR_TYPE_STRING, stringValue("x.tx")).floatArray("a", {1});
        list = listOf(renderer);
    }
    EXPECT_EQ(tokensOf(list), (Names{"p", "a_group", "a"}));
    EXPECT_EQ(defaultTextOf(list[0]), "x.tx");
    EXPECT_EQ(list[2].getDefault(0)->getFloat(), 1);
}

// --- Callbacks --------------------------------------------------------------------------------------------

TEST(CallbackOfParameter, HasItsLanguageFromThePrefix)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"py", "hs", "plain", "none"})
        .parmMetaData("py", "houdini.callback", "python:print(1)")
        .parmMetaData("hs", "houdini.callback", "hscript:echo hi")
        .parmMetaData("plain", "houdini.callback", "print(python:1)");

    const PRM_Template* list = listOf(renderer);
    EXPECT_EQ(spareOf(list[0], "script_callback"), "print(1)");
    EXPECT_EQ(list[0].getSparePtr()->getCallbackLanguage(), CH_PYTHON_SCRIPT);
    EXPECT_EQ(spareOf(list[1], "script_callback"), "echo hi");
    EXPECT_EQ(list[1].getSparePtr()->getCallbackLanguage(), CH_HSCRIPT);
    EXPECT_EQ(spareOf(list[1], "script_callback_language"), "hscript");
    EXPECT_EQ(spareOf(list[2], "script_callback"), "print(python:1)");
    EXPECT_EQ(spareOf(list[2], "script_callback_language"), "<none>");
    EXPECT_EQ(spareOf(list[3], "script_callback"), "<none>");
}

TEST(CallbackSlot, StaysSetForEveryLaterParameter)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"before", "scripted", "after"})
        .floatArray("array", {1})
        .metaData("houdini.parm.toggle.extra", "on")
        .parmMetaData("scripted", "houdini.callback", "echo hi");
    renderer.shader("later").floats({"p"});

    const PRM_Template* list = listOf(renderer);
    const PRM_Callback ours(parmCallback);
    EXPECT_TRUE(list[0].getCallback().isNull());
    EXPECT_TRUE(list[1].getCallback() == ours);
    EXPECT_TRUE(list[2].getCallback() == ours);
    EXPECT_TRUE(list[3].getCallback().isNull()) << "an array's folder";
    EXPECT_TRUE(list[4].getCallback().isNull()) << "an array's list";
    EXPECT_TRUE(list[4].getMultiParmTemplate()->getCallback() == ours);
    EXPECT_TRUE(list[5].getCallback().isNull()) << "an extra parameter";
    const ShaderDesc later(renderer.entry("later"));
    EXPECT_TRUE(later.getTemplates()[0].getCallback() == ours);
}
