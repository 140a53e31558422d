#include "shader_desc.h"

#include "shader_desc_callbacks.h"
#include "shader_desc_template_parts.h"
#include "shader_desc_text.h"
#include "utils.h"
#include "utils_host_memory.h"
#include "utils_rows.h"
#include "utils_visibility.h"

#include <PRM/PRM_Callback.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_SpareData.h>
#include <PRM/PRM_Template.h>

#include <algorithm>

namespace zelk
{
namespace shop
{

namespace
{

// --- What one renderer type becomes -----------------------------------------------------------------------

/// What a type is shown as, before its sub-kind is looked at.
struct KindRow
{
    int code;
    const PRM_Type* type;
    bool hasRange;
};

// A code without a row is shown as a read-only label.
const KindRow kind_rows[] = {
    {KR_TYPE_BYTE, &PRM_INT, true},       {KR_TYPE_INT, &PRM_INT, true},
    {KR_TYPE_UINT, &PRM_INT, true},       {KR_TYPE_BOOLEAN, &PRM_TOGGLE, false},
    {KR_TYPE_FLOAT, &PRM_FLT, true},      {KR_TYPE_RGB, &PRM_RGB, true},
    {KR_TYPE_RGBA, &PRM_RGBA, true},      {KR_TYPE_VECTOR, &PRM_XYZ, true},
    {KR_TYPE_POINT, &PRM_XYZ, true},      {KR_TYPE_POINT2, &PRM_FLT, true},
    {KR_TYPE_STRING, &PRM_STRING, false}, {KR_TYPE_NODE, &PRM_STRING, false},
    {KR_TYPE_MATRIX, &PRM_FLT, true},     {KR_TYPE_ENUM, &PRM_STRING, false},
};

const KindRow* findKind(int code) { return findRow(kind_rows, &KindRow::code, code); }

/// The kind, look and menu of one parameter's template.
struct Look
{
    PRM_Type type;
    PRM_TypeExtended extended;
    PRM_ChoiceList* menu;
};

// --- Menus ------------------------------------------------------------------------------------------------

struct MenuKindRow
{
    const char* word;
    PRM_ChoiceListType type;
};

const MenuKindRow menu_kind_rows[] = {
    {"replace", PRM_CHOICELIST_REPLACE},     {"toggle", PRM_CHOICELIST_TOGGLE},
    {"append", PRM_CHOICELIST_APPEND},       {"wild", PRM_CHOICELIST_WILD},
    {"exclusive", PRM_CHOICELIST_EXCLUSIVE}, {"single", PRM_CHOICELIST_SINGLE},
};

struct ScriptRow
{
    const char* word;
    CH_ScriptLanguage language;
};

const ScriptRow script_rows[] = {
    {"python", CH_PYTHON_SCRIPT},
    {"hscript", CH_HSCRIPT},
};

/// Field `i` of a text split on ':', empty when there is none.
std::string field(const std::vector<std::string>& fields, std::size_t i)
{
    return i < fields.size() ? fields[i] : std::string();
}

/// The menu that "menu:<kind>:<source>" asks for; null, after an error message, when either word is unknown.
PRM_ChoiceList* describedMenu(const ParmDesc& parm)
{
    const std::vector<std::string> fields = split(parm.houdiniType.c_str(), ':', false);
    const std::string kindWord = field(fields, 1), source = field(fields, 2);

    const MenuKindRow* kind = findRow(menu_kind_rows, &MenuKindRow::word, kindWord);
    if (!kind)
    {
        KrMsgError("[zelk::shop::ParmDesc] Unhandled menu type: %s", kindWord.c_str());
        return nullptr;
    }
    if (source == "menu")
        return leakForHost<PRM_ChoiceList>(kind->type, parm.getMenuNames());

    const ScriptRow* script = findRow(script_rows, &ScriptRow::word, source);
    if (!script)
    {
        KrMsgError("[zelk::shop::ParmDesc] Unhandled menu script language: %s", source.c_str());
        return nullptr;
    }
    return leakForHost<PRM_ChoiceList>(kind->type, parm.menuScript.c_str(), script->language);
}

// --- Looks ------------------------------------------------------------------------------------------------

void refineText(const ParmDesc& parm, Look& look, PRM_SpareData& spare)
{
    const char* kind = parm.houdiniType.c_str();
    const std::vector<std::string> fields = split(kind, ':', false);
    if (parm.houdiniType == "file:image")
    {
        look.type = PRM_PICFILE;
    }
    else if (startsWith(kind, "file:"))
    {
        look.type = PRM_FILE;
        spare.addTokenValue("filechooser_pattern", field(fields, 1).c_str());
    }
    else if (startsWith(kind, "menu:"))
    {
        look.menu = describedMenu(parm);
    }
    else if (startsWith(kind, "opfilter"))
    {
        look.extended = PRM_TYPE_DYNAMIC_PATH;
        if (fields.size() == 2)
            spare.addTokenValue("opfilter", fields[1].c_str());
    }
}

void refineInteger(const ParmDesc& parm, Look& look)
{
    if (parm.houdiniType != "visibility")
        return;
    look.type = PRM_BUTTONSTRIP;
    look.menu = &visibilityMenu();
}

Look lookOf(const ParmDesc& parm, PRM_SpareData& spare)
{
    const KindRow* row = findKind(parm.typeCode());
    Look look = {row ? *row->type : PRM_LABEL, labelLook(parm), nullptr};
    switch (parm.typeCode())
    {
    case KR_TYPE_INT:
        refineInteger(parm, look);
        break;
    case KR_TYPE_BOOLEAN:
        if (parm.joinNext && parm.noLabel)
            look.type = PRM_JOINED_TOGGLE;
        break;
    case KR_TYPE_STRING:
        refineText(parm, look, spare);
        break;
    case KR_TYPE_NODE:
        look.extended = PRM_TYPE_DYNAMIC_PATH;
        break;
    case KR_TYPE_ENUM:
        look.menu = leakForHost<PRM_ChoiceList>(PRM_CHOICELIST_SINGLE, parm.getMenuNames());
        break;
    default:
        break;
    }
    return look;
}

// --- Ranges and defaults ----------------------------------------------------------------------------------

/// Bounds that a renderer type has whatever the metadata says; `!(a <= b)` also takes a NaN.
void clampRange(const ParmDesc& parm)
{
    const int code = parm.typeCode();
    if (code == KR_TYPE_BYTE && !(parm.max <= 255.0f))
        parm.max = 255.0f;
    if ((code == KR_TYPE_BYTE || code == KR_TYPE_UINT) && !(parm.min >= 0.0f))
        parm.min = 0.0f;
}

PRM_Range* rangeOf(const ParmDesc& parm)
{
    const KindRow* row = findKind(parm.typeCode());
    if (!row || !row->hasRange)
        return nullptr;
    clampRange(parm);
    return leakForHost<PRM_Range>(getRange(parm.min, parm.max, parm.softMin, parm.softMax));
}

PRM_Default* defaultsOf(const ParmDesc& parm)
{
    PRM_Default* defaults = parm.getDefault();
    if (!parm.expression.empty())
    {
        defaults[0].setString(parm.expression.c_str());
        defaults[0].setStringMeaning(static_cast<CH_StringMeaning>(parm.expressionLanguage));
    }
    return defaults;
}

// --- Arrays -----------------------------------------------------------------------------------------------

bool isArrayParm(const ParmDesc* parm) { return parm->isArray; }

PRM_Name* elementName(const ParmDesc& parm)
{
    return leakForHost<PRM_Name>(leakTextForHost(parm.name + "_#"), leakTextForHost(parm.label + " #"));
}

/// The tab that an array's list stands in: it holds the one template that follows.
PRM_Template arrayFolder(const ParmDesc& parm)
{
    PRM_Template folder(PRM_SWITCHER, PRM_TYPE_NONE, PRM_Template::PRM_EXPORT_MIN, 1,
                        leakForHost<PRM_Name>(leakTextForHost(parm.name + "_group")),
                        leakForHost<PRM_Default>(1, parm.label.c_str()), nullptr, nullptr, PRM_Callback(),
                        &PRM_SpareData::groupTypeSimple, parm_group);
    folder.setInvisible(parm.invisible);
    joinWithNext(folder, parm.joinNext);
    return folder;
}

PRM_Template arrayList(const ParmDesc& parm, const PRM_Template& element, PRM_ConditionalBase* conditional)
{
    const KtArray* array = parm.defaultValue.array;
    const double count = array ? array->nelements : 0;
    return multiTemplate(PRM_MULTITYPE_LIST, leakListForHost(std::vector<PRM_Template>(1, element)),
                         leakForHost<PRM_Name>(parm.name.c_str(), "Array Elements"),
                         leakForHost<PRM_Default>(count), PRM_Callback(), nullptr, helpOf(parm), conditional);
}

} // namespace

std::vector<PRM_Template> ParmDesc::makeTemplates() const
{
    // Deliberate: the callback belongs to this generator, not to one parameter. Once a parameter of any
    // shader had a script, every later template made here carries it; without a script it does nothing. See
    // CallbackSlot.StaysSetForEveryLaterParameter.
    static PRM_Callback callback_func(0);

    if (isExtra)
        return {makeExtraTemplate()};

    PRM_SpareData* spare = leakForHost<PRM_SpareData>();
    PRM_ConditionalBase* conditional = getConditional();
    PRM_Range* range = rangeOf(*this);
    const Look look = lookOf(*this, *spare);
    PRM_Default* defaults = defaultsOf(*this);
    if (!callback.empty())
    {
        storeCallbackScript(callback, *spare);
        callback_func = PRM_Callback(parmCallback);
    }

    PRM_Name* parmName = isArray ? elementName(*this) : leakForHost<PRM_Name>(name.c_str(), label.c_str());
    PRM_Template parm(look.type, look.extended, PRM_Template::PRM_EXPORT_MIN, shop::vectorSize(typeCode()),
                      parmName, defaults, look.menu, range, callback_func, spare, parm_group, helpOf(*this),
                      conditional);
    if (isArray)
        return {arrayFolder(*this), arrayList(*this, parm, conditional)};

    parm.setInvisible(invisible);
    joinWithNext(parm, joinNext);
    return {parm};
}

std::vector<PRM_Template*> ParmDesc::getTemplates() const
{
    std::vector<PRM_Template*> templates;
    for (const PRM_Template& made : makeTemplates())
        templates.push_back(leakForHost<PRM_Template>(made));
    return templates;
}

PRM_Template* ShaderDesc::getTemplates() const
{
    // An array takes two places, everything else one; the last place ends the list.
    const std::size_t arrays = std::count_if(parms.begin(), parms.end(), isArrayParm);
    PRM_Template* list = leakArrayForHost<PRM_Template>(parms.size() + arrays + 1);
    PRM_Template* next = list;
    for (const ParmDesc* parm : parms)
        for (const PRM_Template& made : parm->makeTemplates())
            *next++ = made;
    return list;
}

} // namespace shop
} // namespace zelk
