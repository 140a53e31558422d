#include "parm_node.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(ParmType, DefaultMadeTemplateEndsAList)
{
    EXPECT_TRUE(PRM_Template().getType() == PRM_LIST_TERMINATOR);
    EXPECT_FALSE(PRM_TYPE_ZERO == PRM_LIST_TERMINATOR);
}

TEST(ParmType, EmptyTypeDoesNotEndTheParameterList)
{
    PRM_Name empty("empty");
    PRM_Name after("after");
    PRM_Template templates[] = {PRM_Template(PRM_TYPE_ZERO, 1, &empty), PRM_Template(PRM_FLT, 1, &after),
                                PRM_Template()};
    EXPECT_EQ(ParmNode(templates).tokens(), (Texts{"empty", "after"}));
}

TEST(ParmType, JoinedToggleIsAKindOfItsOwn)
{
    EXPECT_TRUE(PRM_JOINED_TOGGLE != PRM_TOGGLE);
    EXPECT_TRUE(PRM_JOINED_TOGGLE != (PRM_TOGGLE | PRM_TYPE_JOIN_NEXT));
    EXPECT_TRUE(PRM_FLT != PRM_FLT_J);
}

TEST(ParmType, FlagsOfATemplateLiveInItsType)
{
    PRM_Template tmpl(PRM_FLT, 1);
    tmpl.setJoinNext(true);
    EXPECT_TRUE(tmpl.getJoinNext());
    EXPECT_FALSE(tmpl.getType() == PRM_FLT);
    EXPECT_TRUE(tmpl.getType() == (PRM_FLT | PRM_TYPE_JOIN_NEXT));
    tmpl.setInvisible(true);
    tmpl.setJoinNext(false);
    EXPECT_TRUE(tmpl.getType() == (PRM_FLT | PRM_TYPE_INVISIBLE));
}

TEST(ParmType, IsNamedWithoutItsFlags)
{
    EXPECT_STREQ(PRMtypeName(PRM_FLT | PRM_TYPE_JOIN_NEXT | PRM_TYPE_INVISIBLE), "PRM_FLT");
    EXPECT_STREQ(PRMtypeName(PRM_JOINED_TOGGLE), "PRM_JOINED_TOGGLE");
    EXPECT_STREQ(PRMtypeName(PRM_LIST_TERMINATOR), "PRM_LIST_TERMINATOR");
    EXPECT_EQ(PRMtypeName(PRM_TYPE_ZERO), nullptr);
    EXPECT_EQ(PRMtypeName(PRM_TYPE_ZERO | PRM_TYPE_INVISIBLE), nullptr);
    EXPECT_EQ(PRMtypeName(PRM_FLT | PRM_TOGGLE), nullptr);
}

TEST(ParmType, NoTwoKindsAreEqual)
{
    const PRM_Type kinds[] = {PRM_TYPE_ZERO,    PRM_INT,           PRM_INT_J,         PRM_INT_E,
                              PRM_FLT,          PRM_FLT_J,         PRM_FLT_E,         PRM_RGB,
                              PRM_RGB_J,        PRM_RGBA,          PRM_RGBA_J,        PRM_XYZ,
                              PRM_XYZ_J,        PRM_UVW,           PRM_ORD,           PRM_TOGGLE,
                              PRM_CALLBACK,     PRM_JOINED_TOGGLE, PRM_BUTTONSTRIP,   PRM_SWITCHER,
                              PRM_STRING,       PRM_FILE,          PRM_PICFILE,       PRM_ALPHASTRING,
                              PRM_STRING_OPREF, PRM_GEOFILE,       PRM_STRING_OPLIST, PRM_LABEL,
                              PRM_DIRECTORY,    PRM_HEADING,       PRM_SEPARATOR,     PRM_LIST_TERMINATOR};
    const int count = static_cast<int>(sizeof(kinds) / sizeof(kinds[0]));
    for (int i = 0; i < count; ++i)
        for (int j = 0; j < count; ++j)
            EXPECT_EQ(kinds[i] == kinds[j], i == j) << i << " and " << j;
}

TEST(ParmType, MultiParametersAreNamedToo)
{
    EXPECT_STREQ(PRMmultiTypeName(PRM_MULTITYPE_LIST), "PRM_MULTITYPE_LIST");
    EXPECT_STREQ(PRMmultiTypeName(PRM_MULTITYPE_RAMP_RGB), "PRM_MULTITYPE_RAMP_RGB");
    EXPECT_EQ(PRMmultiTypeName(PRM_MULTITYPE_NONE), nullptr);
}

TEST(ParmName, LabelFallsBackToTheTokenOnlyWhenItIsNull)
{
    EXPECT_STREQ(PRM_Name("token").getLabel(), "token");
    EXPECT_STREQ(PRM_Name("token", "").getLabel(), "");
    EXPECT_EQ(PRM_Name().getToken(), nullptr);
}

TEST(ParmName, HardenedNameOutlivesItsTexts)
{
    std::string token = "first";
    PRM_Name name(token.c_str(), "Label");
    name.harden();
    const PRM_Name copy = name;
    token = "other";
    EXPECT_STREQ(name.getToken(), "first");
    EXPECT_EQ(copy.getToken(), name.getToken());
}

TEST(ParmTemplate, CopiesShareWhatTheTemplatePointsTo)
{
    PRM_Name name("a", "A");
    PRM_Default defaults[] = {PRM_Default(3)};
    PRM_SpareData spare;
    const PRM_Template original(PRM_FLT, 1, &name, defaults, nullptr, nullptr, 0, &spare);
    PRM_Template copy;
    copy = original;
    EXPECT_EQ(copy.getNamePtr(), &name);
    EXPECT_EQ(copy.getFactoryDefaults(), defaults);
    EXPECT_EQ(copy.getSparePtr(), &spare);
}

TEST(ParmTemplate, FullInitialiserKeepsEveryArgument)
{
    PRM_Name name("a", "A");
    PRM_Range range(PRM_RANGE_RESTRICTED, 0, PRM_RANGE_UI, 10);
    PRM_ConditionalGroup conditions;
    const PRM_Template tmpl(PRM_INT, PRM_TYPE_NO_LABEL, PRM_Template::PRM_EXPORT_MAX, 2, &name,
                            PRMoneDefaults, nullptr, &range, 0, nullptr, 7, "help", &conditions);
    EXPECT_EQ(tmpl.getTypeExtended(), PRM_TYPE_NO_LABEL);
    EXPECT_EQ(tmpl.exportLevel(), PRM_Template::PRM_EXPORT_MAX);
    EXPECT_EQ(tmpl.getVectorSize(), 2);
    EXPECT_EQ(tmpl.getParmGroup(), 7);
    EXPECT_STREQ(tmpl.getHelpText(), "help");
    EXPECT_EQ(tmpl.getRangePtr(), &range);
    EXPECT_EQ(tmpl.getConditionalBasePtr(), &conditions);
    EXPECT_EQ(tmpl.getDefault(1)->getFloat(), 1);
    EXPECT_EQ(tmpl.getDefault(2), nullptr);
    EXPECT_TRUE(tmpl.getCallback().isNull());
}

TEST(ParmTemplate, CountsUpToTheTerminator)
{
    PRM_Default tabs[] = {PRM_Default(2, "One"), PRM_Default(1, "Two")};
    PRM_Template templates[] = {PRM_Template(PRM_SWITCHER, 2, nullptr, tabs),
                                PRM_Template(PRM_FLT),
                                PRM_Template(PRM_FLT),
                                PRM_Template(PRM_FLT),
                                PRM_Template(PRM_INT),
                                PRM_Template()};
    templates[4].setInvisible(true);
    EXPECT_EQ(PRM_Template::countTemplates(templates), 5);
    EXPECT_EQ(PRM_Template::countTemplates(templates, true), 2);
    EXPECT_EQ(PRM_Template::countTemplates(templates, false, false, true), 4);
    EXPECT_EQ(PRM_Template::countTemplates(nullptr), 0);
}

TEST(ParmTemplate, JoinedRowsCountOnce)
{
    PRM_Template templates[] = {PRM_Template(PRM_TOGGLE, PRM_TYPE_TOGGLE_JOIN), PRM_Template(PRM_FLT),
                                PRM_Template(PRM_FLT), PRM_Template()};
    EXPECT_EQ(PRM_Template::countTemplates(templates, false, true), 2);
}

struct ChannelRow
{
    const PRM_Type* type;
    int size;
    Texts channels;
};

/// A test's name has to be the same in every run.
void PrintTo(const ChannelRow& row, std::ostream* out) { *out << testing::PrintToString(row.channels); }

class ChannelsOf : public testing::TestWithParam<ChannelRow>
{
};

TEST_P(ChannelsOf, AreTheTokenWithTheKindsSuffixes)
{
    PRM_Name name("p", "P");
    const PRM_Template tmpl(*GetParam().type, GetParam().size, &name);
    Texts channels;
    for (int i = 0; i < GetParam().size; ++i)
        channels.push_back(tmpl.getChannelToken(i).toStdString());
    EXPECT_EQ(channels, GetParam().channels);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ChannelsOf,
    testing::Values(ChannelRow{&PRM_FLT, 1, {"p"}}, ChannelRow{&PRM_RGB, 3, {"pr", "pg", "pb"}},
                    ChannelRow{&PRM_RGBA, 4, {"pr", "pg", "pb", "pa"}},
                    ChannelRow{&PRM_XYZ_J, 3, {"px", "py", "pz"}}, ChannelRow{&PRM_UVW, 2, {"pu", "pv"}},
                    ChannelRow{&PRM_FLT, 2, {"p1", "p2"}}, ChannelRow{&PRM_STRING, 3, {"p1", "p2", "p3"}}));

TEST(ParmRange, ClampsOnlyToEndsThatRestrict)
{
    const PRM_Range range(PRM_RANGE_RESTRICTED, 0, PRM_RANGE_UI, 1);
    fpreal low = -5;
    fpreal high = 5;
    range.constrain(low);
    range.constrain(high);
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 5);
    EXPECT_TRUE(range.hasUIMax());
    EXPECT_FALSE(range.hasParmMax());
}

TEST(SpareData, ReplacesValuesAndKeepsTheOrderOfTokens)
{
    PRM_SpareData spare(PRM_SpareArgs() << PRM_SpareToken("z", "1") << PRM_SpareToken("a", "2"));
    spare.addTokenValue("z", "3");
    UT_StringArray tokens;
    spare.getTokens(tokens);
    ASSERT_EQ(tokens.entries(), 2);
    EXPECT_STREQ(tokens(0), "z");
    EXPECT_STREQ(spare.getValue("z"), "3");
    EXPECT_EQ(spare.getValue("missing"), nullptr);
}

TEST(SpareData, CallbackLanguageIsHscriptUntilSet)
{
    PRM_SpareData spare;
    EXPECT_EQ(spare.getCallbackLanguage(), CH_HSCRIPT);
    spare.setCallbackLanguage(CH_PYTHON_SCRIPT);
    EXPECT_EQ(spare.getCallbackLanguage(), CH_PYTHON_SCRIPT);
    EXPECT_STREQ(spare.getValue("script_callback_language"), "python");
}

TEST(SpareData, SharedOnesHoldWhatTheirNamesSay)
{
    EXPECT_STREQ(PRM_SpareData::vopPath.getOpFilter(), "!!VOP!!");
    EXPECT_STREQ(PRM_SpareData::groupTypeSimple.getValue("group_type"), "simple");
    EXPECT_STREQ(PRM_SpareData::multiStartOffsetZero.getValue("multistartoffset"), "0");
}

TEST(SharedDefaults, HaveSixteenEqualEntries)
{
    for (int i = 0; i < 16; ++i)
    {
        EXPECT_EQ(PRMzeroDefaults[i].getFloat(), 0);
        EXPECT_EQ(PRMtwoDefaults[i].getFloat(), 2);
        EXPECT_FALSE(PRMoneDefaults[i].gotString());
    }
}
