#include "standin_renderer.h"

#include "shader_desc.h"

#include <PRM/PRM_Conditional.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>
#include <UT/UT_String.h>

#include <climits>
#include <cmath>
#include <numeric>

using namespace zelk::shop;

namespace
{

/// The description of one parameter of a shader "s" that a test has declared.
ParmDesc parmOf(const StandinRenderer& renderer, const char* name)
{
    const KtNodeEntry* entry = renderer.entry("s");
    ParmDesc desc;
    for (int i = 0; i < KrNodeEntryGetNumParams(entry); ++i)
        if (std::string(KrParamGetName(KrNodeEntryGetParameter(entry, i))) == name)
            desc.init(entry, KrNodeEntryGetParameter(entry, i));
    return desc;
}

std::vector<double> numbersOf(const ParmDesc& desc, int count)
{
    std::vector<double> numbers;
    const PRM_Default* defaults = desc.getDefault();
    for (int i = 0; i < count; ++i)
        numbers.push_back(defaults[i].getFloat());
    return numbers;
}

std::string textOf(const ParmDesc& desc)
{
    const char* text = desc.getDefault()[0].getString();
    return text ? text : "<null>";
}

std::string conditionOf(PRM_ConditionalBase* conditional, PRM_ConditionalType type)
{
    const PRM_Conditional* one = conditional->getConditional(type);
    UT_String text;
    if (one)
        one->getStringFromList(text);
    return text.isstring() ? text.buffer() : "";
}

typedef std::vector<std::pair<std::string, std::string>> Items;

} // namespace

TEST(NewParmDesc, SortsLastAndAsksForNothing)
{
    const ParmDesc desc;
    EXPECT_EQ(desc.vopType, 0);
    EXPECT_EQ(desc.type, -1);
    EXPECT_EQ(desc.index, INT_MAX);
    EXPECT_EQ(desc.order, INT_MAX);
    EXPECT_EQ(desc.expressionLanguage, 0);
    EXPECT_FALSE(desc.isExtra || desc.invisible || desc.noMenuCaps || desc.noInput || desc.isArray ||
                 desc.joinNext || desc.noLabel);
    EXPECT_TRUE(std::isnan(desc.min) && std::isnan(desc.max) && std::isnan(desc.softMin) &&
                std::isnan(desc.softMax));
    EXPECT_TRUE(desc.menuItems.empty());
}

TEST(ParmDescOfRenderer, HasNameTypeAndLabel)
{
    StandinRenderer renderer;
    renderer.shader("s").parm("base_color", KR_TYPE_RGB, rgbValue(1, 0, 0));

    const ParmDesc desc = parmOf(renderer, "base_color");
    EXPECT_EQ(desc.name, "base_color");
    EXPECT_EQ(desc.label, "Base Color");
    EXPECT_EQ(desc.type, KR_TYPE_RGB);
    EXPECT_EQ(desc.vopType, 2);
    EXPECT_EQ(desc.softMin, 0);
    EXPECT_EQ(desc.softMax, 1);
    EXPECT_FALSE(desc.noInput || desc.isArray || desc.isExtra);
}

TEST(ParmDescOfRenderer, ReadsItsMetadata)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"a"})
        .parmMetaData("a", "houdini.label", "Amount")
        .parmMetaData("a", "desc", "How ")
        .parmMetaData("a", "desc2", "much.")
        .parmMetaData("a", "houdini.type", "visibility")
        .parmMetaData("a", "houdini.disable_when", "{ b == 0 }")
        .parmMetaData("a", "houdini.hide_when", "{ c == 1 }")
        .parmMetaData("a", "houdini.callback", "python:pass")
        .parmMetaData("a", "houdini.invisible", true)
        .parmMetaData("a", "houdini.no_menu_caps", true)
        .parmMetaData("a", "houdini.join_next", true)
        .parmMetaData("a", "houdini.no_label", true)
        .parmMetaData("a", "min", -1.0f)
        .parmMetaData("a", "max", 2.0f)
        .parmMetaData("a", "softmin", 0.25f)
        .parmMetaData("a", "softmax", 0.75f);

    const ParmDesc desc = parmOf(renderer, "a");
    EXPECT_EQ(desc.label, "Amount");
    EXPECT_EQ(desc.help, "How much.");
    EXPECT_EQ(desc.houdiniType, "visibility");
    EXPECT_EQ(desc.disableWhen, "{ b == 0 }");
    EXPECT_EQ(desc.hideWhen, "{ c == 1 }");
    EXPECT_EQ(desc.callback, "python:pass");
    EXPECT_TRUE(desc.invisible && desc.noMenuCaps && desc.joinNext && desc.noLabel);
    EXPECT_EQ(desc.min, -1);
    EXPECT_EQ(desc.max, 2);
    EXPECT_EQ(desc.softMin, 0.25f);
    EXPECT_EQ(desc.softMax, 0.75f);
}

TEST(ParmDescOfArray, HasTheTypeOfItsElements)
{
    StandinRenderer renderer;
    renderer.shader("s").floatArray("a", {1, 2}).emptyArray("nested", KR_TYPE_ARRAY);

    const ParmDesc desc = parmOf(renderer, "a");
    EXPECT_TRUE(desc.isArray);
    EXPECT_EQ(desc.type, KR_TYPE_FLOAT);
    EXPECT_EQ(desc.vopType, 3);
    EXPECT_EQ(parmOf(renderer, "nested").type, KR_TYPE_ARRAY);
    EXPECT_TRUE(parmOf(renderer, "nested").isArray);
}

TEST(ParmDescOfArray, WithoutADefaultRecordStaysAnArray)
{
    StandinRenderer renderer;
    renderer.shader("s").parmWithoutDefault("a", KR_TYPE_ARRAY);

    const ParmDesc desc = parmOf(renderer, "a");
    EXPECT_TRUE(desc.isArray);
    EXPECT_EQ(desc.type, KR_TYPE_ARRAY);
    EXPECT_EQ(textOf(desc), "Unhandled parameter type: KR_TYPE_ARRAY");
}

// --- Inputs -----------------------------------------------------------------------------------------------

TEST(InputOfParameter, GoesWithLinkableUnlessTheHostsKeySaysOtherwise)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"plain", "fixed", "forced", "refused"})
        .parmMetaData("fixed", "linkable", false)
        .parmMetaData("forced", "linkable", false)
        .parmMetaData("forced", "houdini.no_input", false)
        .parmMetaData("refused", "houdini.no_input", true);

    EXPECT_FALSE(parmOf(renderer, "plain").noInput);
    EXPECT_TRUE(parmOf(renderer, "fixed").noInput);
    EXPECT_FALSE(parmOf(renderer, "forced").noInput);
    EXPECT_TRUE(parmOf(renderer, "refused").noInput);
}

// --- Menus ------------------------------------------------------------------------------------------------

TEST(MenuOfParameter, IsMadeOfPairs)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"a"}).parmMetaData("a", "houdini.menu", "a;Label A;b;label b");

    EXPECT_EQ(parmOf(renderer, "a").menuItems, (Items{{"a", "Label A"}, {"b", "label b"}}));
}

TEST(MenuOfParameter, DropsALoneLastItemWithAMessage)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"p"}).parmMetaData("p", "houdini.menu", "a;A;b");

    EXPECT_EQ(parmOf(renderer, "p").menuItems, (Items{{"a", "A"}}));
    EXPECT_EQ(renderer.takeErrors(),
              Messages{"[zelk::shop::ParmDesc] Odd number of items in menu metadata for s.p"});
}

TEST(MenuOfParameter, IsEmptyForASingleItemWithAMessage)
{
    StandinRenderer renderer;
    renderer.shader("s").enumeration("p", {"one"}, 0).parmMetaData("p", "houdini.menu", "a");

    EXPECT_TRUE(parmOf(renderer, "p").menuItems.empty());
    EXPECT_EQ(renderer.takeErrors(),
              Messages{"[zelk::shop::ParmDesc] Odd number of items in menu metadata for s.p"});
}

TEST(MenuOfParameter, KeepsEmptyLabels)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"p"}).parmMetaData("p", "houdini.menu", "a;;b;B");

    EXPECT_EQ(parmOf(renderer, "p").menuItems, (Items{{"a", ""}, {"b", "B"}}));
}

TEST(MenuOfParameter, KeepsTheSecondTabEscape)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"p"}).parmMetaData("p", "houdini.menu", "\\ta;A\\tB\\tC");

    EXPECT_EQ(parmOf(renderer, "p").menuItems, (Items{{"\\ta", "A\tB\\tC"}}));
}

TEST(MenuOfEnumeration, CapitalisesTheRenderersNames)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .enumeration("p", {"half_pixel", "rgbNoise"}, 0)
        .enumeration("q", {"half_pixel"}, 0)
        .parmMetaData("q", "houdini.no_menu_caps", true);

    EXPECT_EQ(parmOf(renderer, "p").menuItems,
              (Items{{"half_pixel", "Half Pixel"}, {"rgbNoise", "Rgb Noise"}}));
    EXPECT_EQ(parmOf(renderer, "q").menuItems, (Items{{"half_pixel", "half pixel"}}));
}

TEST(MenuOfEnumeration, GivesWayToTheMetadata)
{
    StandinRenderer renderer;
    renderer.shader("s").enumeration("p", {"one", "two"}, 0).parmMetaData("p", "houdini.menu", "1;Uno");

    EXPECT_EQ(parmOf(renderer, "p").menuItems, (Items{{"1", "Uno"}}));
}

TEST(MenuOfEnumeration, MayBeEmpty)
{
    StandinRenderer renderer;
    renderer.shader("s").enumeration("p", {}, 3);

    const ParmDesc desc = parmOf(renderer, "p");
    EXPECT_TRUE(desc.menuItems.empty());
    EXPECT_EQ(desc.getMenuNames()[0].getToken(), nullptr);
}

TEST(MenuNames, EndWithAnEmptyName)
{
    StandinRenderer renderer;
    renderer.shader("s").enumeration("p", {"one"}, 0);

    const ParmDesc desc = parmOf(renderer, "p");
    const PRM_Name* names = desc.getMenuNames();
    EXPECT_STREQ(names[0].getToken(), "one");
    EXPECT_STREQ(names[0].getLabel(), "One");
    EXPECT_EQ(names[1].getToken(), nullptr);
}

TEST(MenuScript, TurnsEachEscapeIntoANewline)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"p"}).parmMetaData("p", "houdini.menu_script", "a\\nb\\\\n\\nc");

    EXPECT_EQ(parmOf(renderer, "p").menuScript, "a\nb\\\n\nc");
}

// --- Expressions ------------------------------------------------------------------------------------------

TEST(ExpressionOfParameter, LosesThePythonPrefixAndKeepsTheOther)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"none", "py", "hs", "plain"})
        .parmMetaData("py", "houdini.expression", "python:python:x")
        .parmMetaData("hs", "houdini.expression", "hscript:$F")
        .parmMetaData("plain", "houdini.expression", "$T python:");

    EXPECT_EQ(parmOf(renderer, "none").expressionLanguage, 0);
    EXPECT_EQ(parmOf(renderer, "py").expression, "python:x");
    EXPECT_EQ(parmOf(renderer, "py").expressionLanguage, 2);
    EXPECT_EQ(parmOf(renderer, "hs").expression, "hscript:$F");
    EXPECT_EQ(parmOf(renderer, "hs").expressionLanguage, 1);
    EXPECT_EQ(parmOf(renderer, "plain").expression, "$T python:");
    EXPECT_EQ(parmOf(renderer, "plain").expressionLanguage, 1);
}

// --- Conditions -------------------------------------------------------------------------------------------

TEST(ConditionsOfParameter, AreHandedOnAsWritten)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .floats({"none", "both", "hide"})
        .parmMetaData("both", "houdini.disable_when", "{ a ==  0 }")
        .parmMetaData("both", "houdini.hide_when", "{ b != x }{ c < 1 }")
        .parmMetaData("hide", "houdini.hide_when", "not a condition");

    EXPECT_EQ(parmOf(renderer, "none").getConditional(), nullptr);
    PRM_ConditionalBase* both = parmOf(renderer, "both").getConditional();
    EXPECT_EQ(conditionOf(both, PRM_CONDTYPE_DISABLE), "{ a ==  0 }");
    EXPECT_EQ(conditionOf(both, PRM_CONDTYPE_HIDE), "{ b != x }{ c < 1 }");
    PRM_ConditionalBase* hide = parmOf(renderer, "hide").getConditional();
    EXPECT_EQ(hide->getConditional(PRM_CONDTYPE_DISABLE), nullptr);
    EXPECT_EQ(conditionOf(hide, PRM_CONDTYPE_HIDE), "not a condition");
}

TEST(ConditionsOfParameter, AreMadeAnewByEachCall)
{
    StandinRenderer renderer;
    renderer.shader("s").floats({"a"}).parmMetaData("a", "houdini.hide_when", "{ b == 1 }");

    const ParmDesc desc = parmOf(renderer, "a");
    EXPECT_NE(desc.getConditional(), desc.getConditional());
}

// --- Defaults ---------------------------------------------------------------------------------------------

TEST(DefaultOfParameter, HasTheValueOfItsType)
{
    StandinRenderer renderer;
    KtParamValue point2 = {};
    point2.pnt2 = {1.5f, 2.5f};
    KtParamValue point = {};
    point.pnt = {1, 2, 3};
    renderer.shader("s")
        .parm("byte", KR_TYPE_BYTE, byteValue(200))
        .parm("int", KR_TYPE_INT, intValue(-7))
        .parm("uint", KR_TYPE_UINT, uintValue(4294967295u))
        .parm("bool", KR_TYPE_BOOLEAN, boolValue(true))
        .parm("float", KR_TYPE_FLOAT, floatValue(0.1f))
        .parm("rgb", KR_TYPE_RGB, rgbValue(1, 2, 3))
        .parm("rgba", KR_TYPE_RGBA, rgbaValue(1, 2, 3, 4))
        .parm("point", KR_TYPE_POINT, point)
        .parm("point2", KR_TYPE_POINT2, point2);
    typedef std::vector<double> Numbers;

    EXPECT_EQ(numbersOf(parmOf(renderer, "byte"), 1), Numbers{200});
    EXPECT_EQ(numbersOf(parmOf(renderer, "int"), 1), Numbers{-7});
    EXPECT_EQ(numbersOf(parmOf(renderer, "uint"), 1), Numbers{-1});
    EXPECT_EQ(numbersOf(parmOf(renderer, "bool"), 1), Numbers{1});
    EXPECT_EQ(numbersOf(parmOf(renderer, "float"), 1), Numbers{static_cast<double>(0.1f)});
    EXPECT_EQ(numbersOf(parmOf(renderer, "rgb"), 3), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "rgba"), 4), (Numbers{1, 2, 3, 4}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "point"), 3), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "point2"), 2), (Numbers{1.5, 2.5}));
}

TEST(DefaultOfParameter, HasAMatrixRowByRow)
{
    StandinRenderer renderer;
    KtMatrix matrix;
    std::iota(&matrix.m[0][0], &matrix.m[0][0] + 16, 0.0f);
    KtParamValue value = {};
    value.mtx = &matrix;
    renderer.shader("s").parm("m", KR_TYPE_MATRIX, value);

    std::vector<double> expected(16);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(numbersOf(parmOf(renderer, "m"), 16), expected);
}

TEST(DefaultOfParameter, KeepsItsOwnCopyOfAText)
{
    ParmDesc desc;
    const PRM_Default* defaults = nullptr;
    {
        StandinRenderer renderer;
        renderer.shader("s").parm("t", KR_TYPE_STRING, stringValue("wood.tx"));
        desc = parmOf(renderer, "t");
        defaults = desc.getDefault();
        EXPECT_NE(defaults[0].getString(), desc.defaultValue.str);
    }
    EXPECT_STREQ(defaults[0].getString(), "wood.tx");
    EXPECT_EQ(defaults[0].getFloat(), 0);
}

TEST(DefaultOfParameter, OfANodeIsEmpty)
{
    StandinRenderer renderer;
    KtParamValue value = {};
    renderer.shader("s").parm("n", KR_TYPE_NODE, value);

    EXPECT_EQ(textOf(parmOf(renderer, "n")), "<null>");
}

TEST(DefaultOfEnumeration, HasIndexAndToken)
{
    StandinRenderer renderer;
    renderer.shader("s").enumeration("p", {"one", "two"}, 1);

    const ParmDesc desc = parmOf(renderer, "p");
    EXPECT_EQ(numbersOf(desc, 1), std::vector<double>{1});
    EXPECT_EQ(textOf(desc), "two");
}

TEST(DefaultOfEnumeration, OutOfTheListHasNoToken)
{
    StandinRenderer renderer;
    renderer.shader("s").enumeration("p", {"one"}, 7).enumeration("q", {"one"}, -1).enumeration("r", {}, 0);

    EXPECT_EQ(numbersOf(parmOf(renderer, "p"), 1), std::vector<double>{7});
    EXPECT_EQ(textOf(parmOf(renderer, "p")), "<null>");
    EXPECT_EQ(textOf(parmOf(renderer, "q")), "<null>");
    EXPECT_EQ(textOf(parmOf(renderer, "r")), "<null>");
}

TEST(DefaultOfArray, IsItsFirstElement)
{
    StandinRenderer renderer;
    KtArray* texts = KrArrayAllocate(2, 1, KR_TYPE_STRING);
    static_cast<const char**>(texts->data)[0] = "first";
    static_cast<const char**>(texts->data)[1] = "second";
    renderer.shader("s").floatArray("f", {0.5f, 9}).arrayParm("t", texts);

    EXPECT_EQ(numbersOf(parmOf(renderer, "f"), 1), std::vector<double>{0.5});
    EXPECT_EQ(textOf(parmOf(renderer, "t")), "first");
}

TEST(DefaultOfArray, IsItsFirstElementWhateverItsType)
{
    StandinRenderer renderer;
    const auto array = [](int type, auto value)
    {
        KtArray* made = KrArrayAllocate(2, 1, static_cast<uint8_t>(type)); // the second element is zero
        *static_cast<decltype(value)*>(made->data) = value;
        return made;
    };
    KtMatrix matrix = {};
    matrix.m[0][1] = 7;
    renderer.shader("s")
        .arrayParm("byte", array(KR_TYPE_BYTE, uint8_t(200)))
        .arrayParm("int", array(KR_TYPE_INT, int32_t(-7)))
        .arrayParm("uint", array(KR_TYPE_UINT, uint32_t(4294967295u)))
        .arrayParm("bool", array(KR_TYPE_BOOLEAN, true))
        .arrayParm("rgb", array(KR_TYPE_RGB, KtRgb{1, 2, 3}))
        .arrayParm("rgba", array(KR_TYPE_RGBA, KtRgba{1, 2, 3, 4}))
        .arrayParm("vector", array(KR_TYPE_VECTOR, KtVector{1, 2, 3}))
        .arrayParm("point", array(KR_TYPE_POINT, KtPoint{4, 5, 6}))
        .arrayParm("point2", array(KR_TYPE_POINT2, KtPoint2{1, 2}))
        .arrayParm("matrix", array(KR_TYPE_MATRIX, matrix))
        .arrayParm("enum", array(KR_TYPE_ENUM, int32_t(1)))
        .parmMetaData("enum", "houdini.menu", "a;A;b;B");
    typedef std::vector<double> Numbers;

    EXPECT_EQ(numbersOf(parmOf(renderer, "byte"), 1), Numbers{200});
    EXPECT_EQ(numbersOf(parmOf(renderer, "int"), 1), Numbers{-7});
    EXPECT_EQ(numbersOf(parmOf(renderer, "uint"), 1), Numbers{-1});
    EXPECT_EQ(numbersOf(parmOf(renderer, "bool"), 1), Numbers{1});
    EXPECT_EQ(numbersOf(parmOf(renderer, "rgb"), 3), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "rgba"), 4), (Numbers{1, 2, 3, 4}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "vector"), 3), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "point"), 3), (Numbers{4, 5, 6}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "point2"), 2), (Numbers{1, 2}));
    EXPECT_EQ(numbersOf(parmOf(renderer, "matrix"), 3), (Numbers{0, 7, 0}));
    EXPECT_EQ(textOf(parmOf(renderer, "enum")), "b");
}

TEST(DefaultOfArray, IsZeroWithElementsButNoKeys)
{
    StandinRenderer renderer;
    renderer.shader("s").arrayParm("a", KrArrayAllocate(3, 0, KR_TYPE_FLOAT));

    EXPECT_EQ(numbersOf(parmOf(renderer, "a"), 1), std::vector<double>{0});
}

TEST(DefaultOfArray, IsZeroWhenItIsEmpty)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .emptyArray("f", KR_TYPE_FLOAT)
        .emptyArray("c", KR_TYPE_RGBA)
        .emptyArray("m", KR_TYPE_MATRIX)
        .emptyArray("t", KR_TYPE_STRING);

    EXPECT_EQ(numbersOf(parmOf(renderer, "f"), 1), std::vector<double>{0});
    EXPECT_EQ(numbersOf(parmOf(renderer, "c"), 4), std::vector<double>(4));
    EXPECT_EQ(numbersOf(parmOf(renderer, "m"), 16), std::vector<double>(16));
    EXPECT_EQ(textOf(parmOf(renderer, "t")), "");
}

TEST(DefaultOfParameter, StaysTheHostsOwnWithoutARecord)
{
    StandinRenderer renderer;
    renderer.shader("s")
        .parmWithoutDefault("f", KR_TYPE_RGB)
        .parmWithoutDefault("t", KR_TYPE_STRING)
        .parmWithoutDefault("m", KR_TYPE_MATRIX);

    EXPECT_EQ(numbersOf(parmOf(renderer, "f"), 3), std::vector<double>(3));
    EXPECT_EQ(textOf(parmOf(renderer, "t")), "<null>");
    EXPECT_EQ(numbersOf(parmOf(renderer, "m"), 16), std::vector<double>(16));
}

TEST(DefaultOfUnshownType, SaysWhy)
{
    StandinRenderer renderer;
    KtParamValue value = {};
    renderer.shader("s").parm("p", KR_TYPE_POINTER, value).emptyArray("a", KR_TYPE_ARRAY);

    EXPECT_EQ(textOf(parmOf(renderer, "p")), "Unhandled parameter type: KR_TYPE_POINTER");
    EXPECT_EQ(textOf(parmOf(renderer, "a")), "Unhandled parameter type: KR_TYPE_ARRAY");
}

TEST(DefaultOfUnknownType, SaysSoAndReportsIt)
{
    StandinRenderer renderer;
    KtParamValue value = {};
    renderer.shader("s").parm("u", KR_TYPE_UNDEFINED, value).parm("x", 77, value);

    EXPECT_EQ(textOf(parmOf(renderer, "u")), "Undefined parameter type");
    EXPECT_EQ(textOf(parmOf(renderer, "x")), "Unknown parameter type");
    EXPECT_EQ(renderer.takeErrors(), (Messages{"[zelk::shop::ParmDesc] Undefined parameter type for u",
                                               "[zelk::shop::ParmDesc] Unknown parameter type for x"}));
}

// --- Ranges -----------------------------------------------------------------------------------------------

TEST(Range, ChoosesEachEndByItself)
{
    const PRM_Range free = getRange(NAN, NAN, NAN, NAN);
    EXPECT_EQ(free.getMinFlag(), PRM_RANGE_FREE);
    EXPECT_EQ(free.getMin(), 0);
    EXPECT_EQ(free.getMaxFlag(), PRM_RANGE_FREE);
    EXPECT_EQ(free.getMax(), 1);
    const PRM_Range soft = getRange(NAN, NAN, -1, 2);
    EXPECT_EQ(soft.getMinFlag(), PRM_RANGE_UI);
    EXPECT_EQ(soft.getUIMin(), -1);
    EXPECT_EQ(soft.getMaxFlag(), PRM_RANGE_UI);
    EXPECT_EQ(soft.getUIMax(), 2);
    const PRM_Range mixed = getRange(5, NAN, -1, 2);
    EXPECT_EQ(mixed.getMinFlag(), PRM_RANGE_RESTRICTED);
    EXPECT_EQ(mixed.getParmMin(), 5);
    EXPECT_EQ(mixed.getMaxFlag(), PRM_RANGE_UI);
    EXPECT_EQ(mixed.getUIMax(), 2);
}

TEST(Range, DoesNotCompareItsEnds)
{
    const PRM_Range inverted = getRange(5, 1, 0, 1);
    EXPECT_EQ(inverted.getParmMin(), 5);
    EXPECT_EQ(inverted.getParmMax(), 1);
}
