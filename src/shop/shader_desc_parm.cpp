#include "shader_desc.h"

#include "shader_desc_text.h"
#include "utils.h"
#include "utils_host_memory.h"
#include "utils_rows.h"

#include <PRM/PRM_Conditional.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>

namespace zelk
{
namespace shop
{

namespace
{

/// Replaces each two-character `\n` by a newline.
std::string unescapeNewlines(std::string text)
{
    std::string::size_type at = 0;
    while ((at = text.find("\\n", at)) != std::string::npos)
        text.replace(at++, 2, "\n");
    return text;
}

typedef std::vector<std::pair<std::string, std::string>> MenuItems;

MenuItems menuOfEnum(const KtParamEntry* param, bool capitalize)
{
    MenuItems items;
    const char** names = KrParamGetEnum(param);
    for (; names && *names; ++names)
        items.push_back(std::make_pair(*names, prettyLabel(*names, capitalize)));
    return items;
}

/// Complete pairs of token and label; a lone last text is dropped.
MenuItems menuOfPairs(const std::vector<std::string>& texts)
{
    MenuItems items;
    for (std::size_t i = 0; i + 1 < texts.size(); i += 2)
    {
        std::string label = texts[i + 1];
        // Deliberate: only the first escape of a label becomes a tab. See
        // MenuOfParameter.KeepsTheSecondTabEscape.
        replace(label, "\\t", "\t");
        items.push_back(std::make_pair(texts[i], label));
    }
    return items;
}

/// One value as host defaults: numbers and, for some types, a text. A null text is left out.
struct DefaultValues
{
    DefaultValues() : count(0), text(nullptr) {}
    explicit DefaultValues(double value) : count(1), text(nullptr) { numbers[0] = value; }
    DefaultValues(const float* values, int size) : count(size), text(nullptr)
    {
        std::copy(values, values + size, numbers);
    }

    double numbers[16];
    int count;
    const char* text;
};

// --- Elements: the first one of an array, as a record -----------------------------------------------------------------
//
// A matrix record is a pointer: the last argument is where the matrix itself is put.

void byteElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.byte_ = KrArrayGetByteFunc(array, 0, __FILE__, __LINE__);
}

void intElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.int_ = KrArrayGetIntFunc(array, 0, __FILE__, __LINE__);
}

void uintElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.uint_ = KrArrayGetUIntFunc(array, 0, __FILE__, __LINE__);
}

void booleanElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.bool_ = KrArrayGetBoolFunc(array, 0, __FILE__, __LINE__);
}

void floatElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.flt = KrArrayGetFltFunc(array, 0, __FILE__, __LINE__);
}

void rgbElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.rgb = KrArrayGetRGBFunc(array, 0, __FILE__, __LINE__);
}

void rgbaElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.rgba = KrArrayGetRGBAFunc(array, 0, __FILE__, __LINE__);
}

void vectorElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.vec = KrArrayGetVecFunc(array, 0, __FILE__, __LINE__);
}

void pointElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.pnt = KrArrayGetPntFunc(array, 0, __FILE__, __LINE__);
}

void point2Element(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.pnt2 = KrArrayGetPnt2Func(array, 0, __FILE__, __LINE__);
}

void stringElement(const KtArray* array, KtParamValue& value, KtMatrix&)
{
    value.str = KrArrayGetStrFunc(array, 0, __FILE__, __LINE__);
}

void matrixElement(const KtArray* array, KtParamValue& value, KtMatrix& matrix)
{
    matrix = KrArrayGetMtxFunc(array, 0, __FILE__, __LINE__);
    value.mtx = &matrix;
}

// --- Records: what the host's defaults are made from ------------------------------------------------------------------

/// Token of a menu item; null for an index that is out of the menu, a negative one too.
const char* enumToken(const ParmDesc& parm, int index)
{
    const bool inMenu = static_cast<std::size_t>(index) < parm.menuItems.size();
    return inMenu ? parm.menuItems[index].first.c_str() : nullptr;
}

DefaultValues byteDefault(const ParmDesc&, const KtParamValue& value) { return DefaultValues(value.byte_); }

/// Unsigned values too: the host's integers are signed, and the upper half comes out negative.
DefaultValues intDefault(const ParmDesc&, const KtParamValue& value) { return DefaultValues(value.int_); }

DefaultValues booleanDefault(const ParmDesc&, const KtParamValue& value)
{
    return DefaultValues(value.bool_ ? 1 : 0);
}

/// Colours, vectors and points are floats in a row.
template <int Count>
DefaultValues floatsDefault(const ParmDesc&, const KtParamValue& value)
{
    return DefaultValues(&value.flt, Count);
}

DefaultValues matrixDefault(const ParmDesc&, const KtParamValue& value)
{
    return value.mtx ? DefaultValues(&value.mtx->m[0][0], 16) : DefaultValues();
}

DefaultValues stringDefault(const ParmDesc&, const KtParamValue& value)
{
    DefaultValues values;
    values.text = leakTextForHost(value.str ? value.str : "");
    return values;
}

DefaultValues enumDefault(const ParmDesc& parm, const KtParamValue& value)
{
    DefaultValues values(value.int_);
    values.text = enumToken(parm, value.int_);
    return values;
}

struct ValueRow
{
    int code;
    void (*readElement)(const KtArray*, KtParamValue&, KtMatrix&);
    DefaultValues (*makeDefault)(const ParmDesc&, const KtParamValue&);
};

// A type without a row has the host's own default, in an array too.
const ValueRow value_rows[] = {
    {KR_TYPE_BYTE, byteElement, byteDefault},        {KR_TYPE_INT, intElement, intDefault},
    {KR_TYPE_UINT, uintElement, intDefault},         {KR_TYPE_BOOLEAN, booleanElement, booleanDefault},
    {KR_TYPE_FLOAT, floatElement, floatsDefault<1>}, {KR_TYPE_RGB, rgbElement, floatsDefault<3>},
    {KR_TYPE_RGBA, rgbaElement, floatsDefault<4>},   {KR_TYPE_VECTOR, vectorElement, floatsDefault<3>},
    {KR_TYPE_POINT, pointElement, floatsDefault<3>}, {KR_TYPE_POINT2, point2Element, floatsDefault<2>},
    {KR_TYPE_STRING, stringElement, stringDefault},  {KR_TYPE_MATRIX, matrixElement, matrixDefault},
    {KR_TYPE_ENUM, intElement, enumDefault},
};

bool hasValues(const KtArray* array) { return array && array->nelements != 0 && array->nkeys != 0; }

/// The values that a description's default record holds: of an array, those of its first element. An empty array's record
/// holds no value of the element type, so zeros stand for it.
DefaultValues defaultValues(const ParmDesc& parm, const ValueRow& row)
{
    if (!parm.isArray)
        return row.makeDefault(parm, parm.defaultValue);
    KtParamValue element = KtParamValue();
    KtMatrix matrix;
    if (hasValues(parm.defaultValue.array))
        row.readElement(parm.defaultValue.array, element, matrix);
    return row.makeDefault(parm, element);
}

/// Text shown for a type that has no value to show; null for the others. Types that the renderer should not
/// have sent are reported.
const char* complaintAboutType(const ParmDesc& parm, int type)
{
    if (type == KR_TYPE_POINTER)
        return "Unhandled parameter type: KR_TYPE_POINTER";
    if (type == KR_TYPE_ARRAY)
        return "Unhandled parameter type: KR_TYPE_ARRAY";
    if (type == KR_TYPE_UNDEFINED)
    {
        KrMsgError("[zelk::shop::ParmDesc] Undefined parameter type for %s", parm.name.c_str());
        return "Undefined parameter type";
    }
    if (type > KR_TYPE_ENUM)
    {
        KrMsgError("[zelk::shop::ParmDesc] Unknown parameter type for %s", parm.name.c_str());
        return "Unknown parameter type";
    }
    return nullptr;
}

} // namespace

ParmDesc::ParmDesc()
    : defaultValue(),
      hasDefault(false),
      vopType(VOP_TYPE_UNDEF),
      expressionLanguage(0),
      type(-1),
      index(INT_MAX),
      order(INT_MAX),
      isExtra(false),
      invisible(false),
      noMenuCaps(false),
      noInput(false),
      isArray(false),
      joinNext(false),
      noLabel(false),
      min(std::numeric_limits<float>::quiet_NaN()),
      max(min),
      softMin(min),
      softMax(min)
{
}

void ParmDesc::init(const KtNodeEntry* entry, const KtParamEntry* param)
{
    readType(param);
    readTexts(entry);
    readFlags(entry);
    readRange(entry);
    readMenu(entry, param);
    readExpression(entry);
}

void ParmDesc::readType(const KtParamEntry* param)
{
    name = KrParamGetName(param);
    type = KrParamGetType(param);
    if (const KtParamValue* value = KrParamGetDefault(param))
    {
        defaultValue = *value;
        hasDefault = true;
    }

    isArray = type == KR_TYPE_ARRAY;
    // An array without a record has no element type to show: it stays an array of what nobody knows.
    if (isArray && defaultValue.array)
        type = defaultValue.array->type;
    vopType = shop::vopType(type);
}

void ParmDesc::readTexts(const KtNodeEntry* entry)
{
    label = getParmMetaDataStr(entry, name, "houdini.label", "");
    if (label.empty())
        label = prettyLabel(name, true);
    help = getParmMetaDataStr(entry, name, "desc", "");
    houdiniType = getParmMetaDataStr(entry, name, "houdini.type", "");
    disableWhen = getParmMetaDataStr(entry, name, "houdini.disable_when", "");
    hideWhen = getParmMetaDataStr(entry, name, "houdini.hide_when", "");
    menuScript = unescapeNewlines(getParmMetaDataStr(entry, name, "houdini.menu_script", ""));
    callback = getParmMetaDataStr(entry, name, "houdini.callback", "");
}

void ParmDesc::readFlags(const KtNodeEntry* entry)
{
    invisible = getParmMetaDataBool(entry, name, "houdini.invisible", false);
    noMenuCaps = getParmMetaDataBool(entry, name, "houdini.no_menu_caps", false);
    joinNext = getParmMetaDataBool(entry, name, "houdini.join_next", false);
    noLabel = getParmMetaDataBool(entry, name, "houdini.no_label", false);
    // What the renderer cannot link gets no input unless the metadata insists.
    const bool linkable = getParmMetaDataBool(entry, name, "linkable", true);
    noInput = getParmMetaDataBool(entry, name, "houdini.no_input", !linkable);
}

void ParmDesc::readRange(const KtNodeEntry* entry)
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    min = getParmMetaDataFlt(entry, name, "min", none);
    max = getParmMetaDataFlt(entry, name, "max", none);
    softMin = getParmMetaDataFlt(entry, name, "softmin", 0.0f);
    softMax = getParmMetaDataFlt(entry, name, "softmax", 1.0f);
}

void ParmDesc::readMenu(const KtNodeEntry* entry, const KtParamEntry* param)
{
    const std::string menu = getParmMetaDataStr(entry, name, "houdini.menu", "");
    const std::vector<std::string> texts = split(menu.c_str(), ';', true);
    if (!texts.empty())
        menuItems = menuOfPairs(texts);
    else if (type == KR_TYPE_ENUM)
        menuItems = menuOfEnum(param, !noMenuCaps);

    if (texts.size() % 2 != 0)
        KrMsgError("[zelk::shop::ParmDesc] Odd number of items in menu metadata for %s.%s",
                   KrNodeEntryGetName(entry), name.c_str());
}

void ParmDesc::readExpression(const KtNodeEntry* entry)
{
    expression = getParmMetaDataStr(entry, name, "houdini.expression", "");
    if (expression.empty())
        return;
    const bool isPython = stripPrefix(expression, prefix_python);
    // Deliberate: "hscript:" stays in an expression; only callbacks know that prefix.
    expressionLanguage = isPython ? CH_PYTHON_EXPRESSION : CH_OLD_EXPRESSION;
}

PRM_ConditionalBase* ParmDesc::getConditional() const
{
    if (disableWhen.empty() && hideWhen.empty())
        return nullptr;
    PRM_ConditionalGroup* group = leakForHost<PRM_ConditionalGroup>();
    if (!disableWhen.empty())
        group->addConditional(disableWhen.c_str(), PRM_CONDTYPE_DISABLE);
    if (!hideWhen.empty())
        group->addConditional(hideWhen.c_str(), PRM_CONDTYPE_HIDE);
    return group;
}

PRM_Default* ParmDesc::getDefault() const
{
    const int code = typeCode();
    PRM_Default* defaults = leakArrayForHost<PRM_Default>(vectorSize(code));
    if (const char* complaint = complaintAboutType(*this, code))
    {
        defaults[0].setString(complaint);
        return defaults;
    }
    if (!hasDefault)
        return defaults;

    const ValueRow* row = findRow(value_rows, &ValueRow::code, code);
    const DefaultValues values = row ? defaultValues(*this, *row) : DefaultValues();
    for (int i = 0; i < values.count; ++i)
        defaults[i].setFloat(values.numbers[i]);
    if (values.text)
        defaults[0].setString(values.text);
    return defaults;
}

PRM_Name* ParmDesc::getMenuNames() const
{
    std::vector<PRM_Name> names;
    for (const auto& item : menuItems)
        names.push_back(PRM_Name(item.first.c_str(), item.second.c_str()));
    return leakListForHost(names);
}

PRM_Range getRange(float min, float max, float softMin, float softMax)
{
    const bool restrictMin = !std::isnan(min), uiMin = !std::isnan(softMin);
    const bool restrictMax = !std::isnan(max), uiMax = !std::isnan(softMax);
    return PRM_Range(restrictMin ? PRM_RANGE_RESTRICTED
                     : uiMin     ? PRM_RANGE_UI
                                 : PRM_RANGE_FREE,
                     restrictMin ? min
                     : uiMin     ? softMin
                                 : 0.0f,
                     restrictMax ? PRM_RANGE_RESTRICTED
                     : uiMax     ? PRM_RANGE_UI
                                 : PRM_RANGE_FREE,
                     restrictMax ? max
                     : uiMax     ? softMax
                                 : 1.0f);
}

} // namespace shop
} // namespace zelk
