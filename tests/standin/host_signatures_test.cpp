// The numbers and signatures that a plug-in is compiled against. Nothing here runs: a change that would break a plug-in
// does not compile.
#include <CH/CH_ExprLanguage.h>
#include <CH/CH_Manager.h>
#include <OP/OP_Parameters.h>
#include <PRM/PRM_Include.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <SYS/SYS_Version.h>
#include <UT/UT_HDKVersion.h>
#include <UT/UT_IntArray.h>
#include <UT/UT_Options.h>
#include <UT/UT_PathSearch.h>
#include <UT/UT_StringArray.h>
#include <UT/UT_UndoManager.h>
#include <UT/UT_Version.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace
{
template <typename Wanted, typename Given>
constexpr bool is(Given)
{
    return std::is_same<Wanted, Given>::value;
}
} // namespace

// Scalars.
static_assert(std::is_same<fpreal, double>::value && std::is_same<exint, int64>::value && sizeof(int64) == 8,
              "");
static_assert(SYS_SequentialThreadIndex::FIRST_INDEX == 1, "");
static_assert(UT_MAJOR_VERSION_INT == 15 && UT_MINOR_VERSION_INT == 5 && SYS_COMPILER_TAG == 408, "");

// PRM_Type.h
static_assert(PRM_BASIC_ORDINAL == 1 && PRM_BASIC_FLOAT == 2 && PRM_BASIC_STRING == 4 &&
                  PRM_BASIC_DATA == 8 && PRM_BASIC_MASK == 0xF,
              "");
static_assert(PRM_FLOAT_INTEGER == 1 && PRM_FLOAT_POLAR == 4 && PRM_FLOAT_RANGE == 0x80 &&
                  PRM_FLOAT_MINMAX_MASK == 0x3E000 && PRM_FLOAT_RGBA == 0x100000 &&
                  PRM_FLOAT_LOGARITHMIC == 0x200000,
              "");
static_assert(PRM_ORD_TOGGLE == 1 && PRM_ORD_CALLBACK == 2 && PRM_ORD_SWITCHERLIST == 4 &&
                  PRM_ORD_RGBAMASK == 8 && PRM_ORD_BUTTONSTRIP == 0x10 && PRM_ORD_ICONSTRIP == 0x20,
              "");
static_assert(PRM_STR_CMD == 1 && PRM_STR_PATH == 2 && PRM_STR_ALPHA == 4 && PRM_STR_OP_REF_LIST == 8 &&
                  PRM_STR_OP_REF_NAME == 0x10 && PRM_STR_OP_REF_MASK == 0xF8,
              "");
static_assert(PRM_TYPE_NONE == 0 && PRM_TYPE_TOGGLE_JOIN == 1 && PRM_TYPE_JOIN_PAIR == 2 &&
                  PRM_TYPE_MENU_JOIN == 3 && PRM_TYPE_NO_LABEL == 4 && PRM_TYPE_DYNAMIC_PATH == 0x11,
              "");
static_assert(PRM_MULTITYPE_LIST == 0 && PRM_MULTITYPE_SCROLL == 1 && PRM_MULTITYPE_SWITCHER == 2 &&
                  PRM_MULTITYPE_NONE == 4 && PRM_MULTITYPE_RAMP_FLT == 8 && PRM_MULTITYPE_RAMP_RGB == 0x10 &&
                  PRM_MULTITYPE_RAMP_MASK == 0x18 && PRM_MULTITYPE_TYPEMASK == 0x0FFFFFFF,
              "");
static_assert(PRM_RAMP_INTERP_INVALID == -1 && PRM_RAMP_INTERP_CONSTANT == 0 && PRM_RAMP_INTERP_LINEAR == 1 &&
                  PRM_RAMP_INTERP_CATMULLROM == 2 && PRM_RAMP_INTERP_MONOTONECUBIC == 3 &&
                  PRM_RAMP_INTERP_BEZIER == 4 && PRM_RAMP_INTERP_BSPLINE == 5 &&
                  PRM_RAMP_INTERP_HERMITE == 6 && PRM_RAMP_INTERP_ITEMS == 7,
              "");
static_assert(PRM_RAMP_PARM_POS == 0 && PRM_RAMP_PARM_VAL == 1 && PRM_RAMP_PARM_INTERP == 2 &&
                  PRM_RAMP_NUM_PARMS == 3,
              "");

// Other enumerations of PRM, CH and UT.
static_assert(PRM_RANGE_FREE == 0 && PRM_RANGE_UI == 1 && PRM_RANGE_PRM == 2 && PRM_RANGE_RESTRICTED == 3,
              "");
static_assert(PRM_CHOICELIST_REPLACE == 1 && PRM_CHOICELIST_TOGGLE == 2 && PRM_CHOICELIST_APPEND == 4 &&
                  PRM_CHOICELIST_WILD == 8 && PRM_CHOICELIST_EXCLUSIVE == 0x1000 &&
                  PRM_CHOICELIST_SINGLE == 0x1001,
              "");
static_assert(PRM_CONDTYPE_DISABLE == 0 && PRM_CONDTYPE_HIDE == 1 && NB_PRM_CONDTYPES == 2, "");
static_assert(PRM_CONDOP_EQ == 0 && PRM_CONDOP_NE == 1 && PRM_CONDOP_GE == 2 && PRM_CONDOP_LE == 3 &&
                  PRM_CONDOP_GT == 4 && PRM_CONDOP_LT == 5,
              "");
static_assert(PRM_Template::PRM_EXPORT_MIN == 0 && PRM_Template::PRM_EXPORT_MED == 1 &&
                  PRM_Template::PRM_EXPORT_MAX == 2 && PRM_Template::PRM_EXPORT_TBX == 3,
              "");
static_assert(CH_HSCRIPT == 0 && CH_PYTHON_SCRIPT == 1 && CH_NUM_SCRIPT_LANGUAGES == 2, "");
static_assert(CH_STRING_LITERAL == 0 && CH_OLD_EXPRESSION == 1 && CH_PYTHON_EXPRESSION == 2 &&
                  CH_EXPRESSION_IN_DEFAULT_LANGUAGE == 4,
              "");
static_assert(CH_OLD_EXPR_LANGUAGE == 0 && CH_PYTHON == 1, "");
static_assert(UT_HOUDINI_PATH == 0 && TOPLEVEL == 0 && ANYLEVEL == 1, "");

// Templates: every constructor, with the arguments in the host's order.
static_assert(std::is_constructible<PRM_Template>::value, "");
static_assert(
    std::is_constructible<PRM_Template, PRM_Type, int, PRM_Name*, PRM_Default*, PRM_ChoiceList*, PRM_Range*,
                          PRM_Callback, PRM_SpareData*, int, const char*, PRM_ConditionalBase*>::value,
    "");
static_assert(std::is_constructible<PRM_Template, PRM_Type, PRM_Template::PRM_Export, int, PRM_Name*,
                                    PRM_Default*, PRM_ChoiceList*, PRM_Range*, PRM_Callback, PRM_SpareData*,
                                    int, const char*, PRM_ConditionalBase*>::value,
              "");
static_assert(std::is_constructible<PRM_Template, PRM_Type, PRM_TypeExtended, int, PRM_Name*, PRM_Default*,
                                    PRM_ChoiceList*, PRM_Range*, PRM_Callback, PRM_SpareData*, int,
                                    const char*, PRM_ConditionalBase*>::value,
              "");
static_assert(std::is_constructible<PRM_Template, PRM_Type, PRM_TypeExtended, PRM_Template::PRM_Export, int,
                                    PRM_Name*, PRM_Default*, PRM_ChoiceList*, PRM_Range*, PRM_Callback,
                                    PRM_SpareData*, int, const char*, PRM_ConditionalBase*>::value,
              "");
static_assert(
    std::is_constructible<PRM_Template, PRM_MultiType, PRM_Template*, fpreal, PRM_Name*, PRM_Default*,
                          PRM_Range*, PRM_SpareData*, const char*, PRM_ConditionalBase*>::value,
    "");
static_assert(std::is_constructible<PRM_Template, PRM_MultiType, PRM_Template*, PRM_Template::PRM_Export,
                                    fpreal, PRM_Name*, PRM_Default*, PRM_Range*, PRM_Callback, PRM_SpareData*,
                                    const char*, PRM_ConditionalBase*>::value,
              "");
static_assert(std::is_copy_assignable<PRM_Template>::value && std::is_copy_assignable<PRM_Name>::value, "");
static_assert(is<const PRM_Default* (PRM_Template::*)(int) const>(
                  static_cast<const PRM_Default* (PRM_Template::*)(int) const>(&PRM_Template::getDefault)),
              "");
static_assert(is<void (PRM_Template::*)(bool)>(&PRM_Template::setInvisible) &&
                  is<void (PRM_Template::*)(bool)>(&PRM_Template::setJoinNext),
              "");

// What templates are made of.
static_assert(std::is_constructible<PRM_Name, const char*, const char*>::value, "");
static_assert(std::is_constructible<PRM_Default, fpreal, const char*, CH_StringMeaning>::value, "");
static_assert(std::is_constructible<PRM_Range, PRM_RangeFlag, fpreal, PRM_RangeFlag, fpreal>::value, "");
static_assert(std::is_constructible<PRM_ChoiceList, PRM_ChoiceListType, PRM_Name*>::value, "");
static_assert(std::is_constructible<PRM_ChoiceList, PRM_ChoiceListType, PRM_ChoiceGenFunc>::value, "");
static_assert(
    std::is_constructible<PRM_ChoiceList, PRM_ChoiceListType, const char*, CH_ScriptLanguage>::value, "");
static_assert(std::is_convertible<int, PRM_Callback>::value &&
                  std::is_convertible<PRM_Callback64, PRM_Callback>::value &&
                  std::is_convertible<PRM_Callback32, PRM_Callback>::value,
              "");
static_assert(std::is_same<PRM_Callback64, int (*)(void*, int, double, const PRM_Template*)>::value, "");
static_assert(std::is_constructible<PRM_Conditional, const char*, PRM_ConditionalType>::value, "");
static_assert(is<void (PRM_ConditionalGroup::*)(const char*, PRM_ConditionalType)>(
                  static_cast<void (PRM_ConditionalGroup::*)(const char*, PRM_ConditionalType)>(
                      &PRM_ConditionalGroup::addConditional)),
              "");
static_assert(is<bool (PRM_Conditional::*)(const PRM_Parm&, const PRM_ParmList&, const UT_StringArray*)
                     const>(&PRM_Conditional::eval),
              "");

// Parameters and evaluation.
static_assert(is<void (PRM_Parm::*)(UT_IntArray&) const>(&PRM_Parm::getMultiInstanceIndex), "");
static_assert(is<const char* (PRM_Parm::*)() const>(&PRM_Parm::getToken), "");
static_assert(is<PRM_Parm* (PRM_ParmList::*)(const char*)>(
                  static_cast<PRM_Parm* (PRM_ParmList::*)(const char*)>(&PRM_ParmList::getParmPtr)),
              "");
static_assert(
    is<exint (OP_Parameters::*)(const char*, int, fpreal, int) const>(
        static_cast<exint (OP_Parameters::*)(const char*, int, fpreal, int) const>(&OP_Parameters::evalIntT)),
    "");
static_assert(is<void (OP_Parameters::*)(UT_String&, const char*, int, fpreal, int) const>(
                  static_cast<void (OP_Parameters::*)(UT_String&, const char*, int, fpreal, int) const>(
                      &OP_Parameters::evalStringT)),
              "");
static_assert(
    is<void (OP_Parameters::*)(const char*, fpreal*, fpreal) const>(
        static_cast<void (OP_Parameters::*)(const char*, fpreal*, fpreal) const>(&OP_Parameters::evalFloats)),
    "");
static_assert(is<fpreal (OP_Parameters::*)(const char*, const int*, int, fpreal, int) const>(
                  &OP_Parameters::evalFloatInst),
              "");
static_assert(is<bool (OP_Parameters::*)(const char*, int, int)>(
                  static_cast<bool (OP_Parameters::*)(const char*, int, int)>(&OP_Parameters::enableParm)),
              "");

// Utilities.
static_assert(is<int (*)(const char*, UT_UndoBlockType, UT_UndoManager*)>(&UTbeginUndoBlock) &&
                  is<void (*)(int, UT_UndoManager*)>(&UTendUndoBlock),
              "");
static_assert(
    is<int (UT_PathSearch::*)(const char*, UT_StringArray&) const>(&UT_PathSearch::findAllDirectories), "");
static_assert(is<int (UT_PathSearch::*)(const char*, const char*, bool, UT_StringArray&, bool, bool) const>(
                  &UT_PathSearch::matchAllFilesInSubdirectory),
              "");
static_assert(is<UT_String (UT_String::*)(char, bool) const>(&UT_String::makeSmartQuotedString), "");

TEST(HostSignatures, HoldAtRunTimeWhereTheCompilerCannotTell)
{
    EXPECT_STREQ(SYS_VERSION_RELEASE, "15.5");
    EXPECT_EQ(is<fpreal (*)()>(static_cast<fpreal (*)()>(&CHgetEvalTime)), true);
    EXPECT_EQ(PRMtwoDefaults[15].getFloat(), 2);
}
