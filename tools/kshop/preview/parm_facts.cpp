#include "parm_facts.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Node.h>
#include <PRM/PRM_Parm.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_String.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace kshop
{

namespace
{

struct KindRow
{
    ParmKind kind;
    const char* word;
    bool holdsValue;
};

const KindRow kind_rows[] = {
    {ParmKind::floats, "float", true},
    {ParmKind::integers, "int", true},
    {ParmKind::color, "color", true},
    {ParmKind::vector, "vector", true},
    {ParmKind::matrix, "matrix", true},
    {ParmKind::toggle, "toggle", true},
    {ParmKind::strip, "strip", true},
    {ParmKind::string, "string", true},
    {ParmKind::file, "file", true},
    {ParmKind::node, "node", true},
    {ParmKind::label, "label", false},
    {ParmKind::menu, "menu", true},
    {ParmKind::button, "button", false},
    {ParmKind::heading, "heading", false},
    {ParmKind::separator, "separator", false},
    {ParmKind::folder, "folder", true},
    {ParmKind::list, "list", false},
    {ParmKind::ramp, "ramp", false},
};

const KindRow& kindRow(ParmKind kind)
{
    return *std::find_if(std::begin(kind_rows), std::end(kind_rows),
                         [kind](const KindRow& row) { return row.kind == kind; });
}

struct TypeRow
{
    const char* type;
    ParmKind kind;
};

const TypeRow type_rows[] = {
    {"PRM_INT", ParmKind::integers},        {"PRM_INT_J", ParmKind::integers},
    {"PRM_INT_E", ParmKind::integers},      {"PRM_FLT", ParmKind::floats},
    {"PRM_FLT_J", ParmKind::floats},        {"PRM_FLT_E", ParmKind::floats},
    {"PRM_RGB", ParmKind::color},           {"PRM_RGB_J", ParmKind::color},
    {"PRM_RGBA", ParmKind::color},          {"PRM_RGBA_J", ParmKind::color},
    {"PRM_XYZ", ParmKind::vector},          {"PRM_XYZ_J", ParmKind::vector},
    {"PRM_UVW", ParmKind::vector},          {"PRM_ORD", ParmKind::menu},
    {"PRM_TOGGLE", ParmKind::toggle},       {"PRM_JOINED_TOGGLE", ParmKind::toggle},
    {"PRM_BUTTONSTRIP", ParmKind::strip},   {"PRM_CALLBACK", ParmKind::button},
    {"PRM_SWITCHER", ParmKind::folder},     {"PRM_STRING", ParmKind::string},
    {"PRM_ALPHASTRING", ParmKind::string},  {"PRM_STRING_OPREF", ParmKind::node},
    {"PRM_STRING_OPLIST", ParmKind::node},  {"PRM_FILE", ParmKind::file},
    {"PRM_PICFILE", ParmKind::file},        {"PRM_GEOFILE", ParmKind::file},
    {"PRM_DIRECTORY", ParmKind::file},      {"PRM_HEADING", ParmKind::heading},
    {"PRM_SEPARATOR", ParmKind::separator},
};

const int matrix_size = 16;

/// A kind without a row has nothing to edit and is shown as a read-only text.
ParmKind kindOfType(const PRM_Type& type)
{
    const char* name = PRMtypeName(type);
    for (const TypeRow& row : type_rows)
        if (name && std::strcmp(row.type, name) == 0)
            return row.kind;
    return ParmKind::label;
}

/// A text whose menu offers all that it can be.
bool isClosedMenu(const PRM_Template& tmpl)
{
    const PRM_ChoiceList* menu = tmpl.getChoiceListPtr();
    return menu && (menu->getType() & PRM_CHOICELIST_EXCLUSIVE) != 0;
}

bool isPlain(const PRM_Parm& parm)
{
    for (int i = 0; i < parm.getVectorSize(); ++i)
        if (parm.hasExpression(i))
            return false;
    return true;
}

/// A fresh ramp's keys lie evenly from 0 to 1, and so do their values.
bool isFreshKey(const std::vector<PRM_Parm*>& key, std::size_t index, std::size_t count)
{
    const double even = count > 1 ? static_cast<double>(index) / static_cast<double>(count - 1) : 0;
    for (const PRM_Parm* parm : key)
        if (!isPlain(*parm))
            return false;
    if (!key[PRM_RAMP_PARM_INTERP]->isDefault(0))
        return false;
    for (const int place : {PRM_RAMP_PARM_POS, PRM_RAMP_PARM_VAL})
    {
        const PRM_Parm& parm = *key[static_cast<std::size_t>(place)];
        for (int i = 0; i < parm.getVectorSize(); ++i)
            if (numberOf(parm, i) != even)
                return false;
    }
    return true;
}

bool isFreshRamp(const PRM_Parm& ramp)
{
    const std::vector<std::vector<PRM_Parm*>> keys = instancesOf(ramp);
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i].size() != PRM_RAMP_NUM_PARMS || !isFreshKey(keys[i], i, keys.size()))
            return false;
    return true;
}

} // namespace

ParmKind kindOf(const PRM_Parm& parm)
{
    const PRM_Template& tmpl = *parm.getTemplatePtr();
    if (parm.isMultiParm())
        return parm.isRampType() ? ParmKind::ramp : ParmKind::list;
    const ParmKind kind = kindOfType(parm.getType());
    if (kind == ParmKind::floats && parm.getVectorSize() == matrix_size)
        return ParmKind::matrix;
    if (kind == ParmKind::string && tmpl.getTypeExtended() == PRM_TYPE_DYNAMIC_PATH)
        return ParmKind::node;
    if (kind == ParmKind::string && isClosedMenu(tmpl))
        return ParmKind::menu;
    return kind;
}

const char* kindWord(ParmKind kind) { return kindRow(kind).word; }

bool holdsValue(ParmKind kind) { return kindRow(kind).holdsValue; }

MenuItems menuItemsOf(OP_Node& node, const PRM_Parm& parm)
{
    MenuItems items;
    const PRM_ChoiceList* menu = parm.getTemplatePtr()->getChoiceListPtr();
    const PRM_Name* names = nullptr;
    if (menu)
        menu->getChoiceNames(names, node.parmData(), parm.getSparePtr(), &parm);
    for (; names && names->getToken() && *names->getToken(); ++names)
        items.emplace_back(names->getToken(), names->getLabel() ? names->getLabel() : "");
    return items;
}

std::vector<std::vector<PRM_Parm*>> instancesOf(const PRM_Parm& multi)
{
    const int size = multi.getMultiParmInstanceSize();
    std::vector<std::vector<PRM_Parm*>> instances;
    for (int i = 0; i < multi.getMultiParmNumItems(); ++i)
    {
        instances.emplace_back();
        for (int j = 0; j < size; ++j)
            instances.back().push_back(multi.getMultiParm(i * size + j));
    }
    return instances;
}

bool differsFromDefault(const PRM_Parm& parm)
{
    if (!parm.isMultiParm())
    {
        for (int i = 0; i < parm.getVectorSize(); ++i)
            if (!parm.isDefault(i))
                return true;
        return false;
    }
    if (!parm.isDefault(0))
        return true;
    if (parm.isRampType() && !parm.getTemplatePtr()->getMultiParmTemplate())
        return !isFreshRamp(parm);
    for (const std::vector<PRM_Parm*>& instance : instancesOf(parm))
        for (const PRM_Parm* child : instance)
            if (differsFromDefault(*child))
                return true;
    return false;
}

double numberOf(const PRM_Parm& parm, int component)
{
    fpreal value = 0;
    parm.getValue(CHgetEvalTime(), value, component, SYSgetSTID());
    return value;
}

std::string rawTextOf(const PRM_Parm& parm, int component)
{
    UT_String text;
    parm.getValue(CHgetEvalTime(), text, component, false, SYSgetSTID());
    return text.toStdString();
}

std::string textOf(const PRM_Parm& parm, int component)
{
    UT_String text;
    parm.getValue(CHgetEvalTime(), text, component, true, SYSgetSTID());
    return text.toStdString();
}

const char* expressionLanguageOf(const PRM_Parm& parm, int component)
{
    return parm.getExpressionLanguage(component) == CH_PYTHON ? "python" : "hscript";
}

} // namespace kshop
