#include "shader_desc.h"

#include "shader_desc_callbacks.h"
#include "shader_desc_template_parts.h"
#include "shader_desc_text.h"
#include "utils.h"
#include "utils_host_memory.h"
#include "utils_rows.h"

#include <PRM/PRM_Callback.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_Shared.h>
#include <PRM/PRM_SpareData.h>
#include <PRM/PRM_Template.h>

#include <cstdlib>
#include <type_traits>

namespace zelk
{
namespace shop
{

namespace
{

/// What the arguments of an extra parameter become.
struct ExtraParts
{
    PRM_Type type;
    int size;
    PRM_Name* name;
    PRM_Default* defaults;
    PRM_ChoiceList* menu;
    PRM_SpareData* spare;
};

ExtraParts plainParts(const PRM_Type& type, const ParmDesc& parm)
{
    const ExtraParts parts = {type,    1,       leakForHost<PRM_Name>(parm.name.c_str(), parm.label.c_str()),
                              nullptr, nullptr, nullptr};
    return parts;
}

/// Reports a list of arguments that do not make pairs.
bool arePairs(const std::vector<std::string>& args, const ParmDesc& parm)
{
    if (args.size() % 2 == 0)
        return true;
    KrMsgError("[zelk::shop::ShaderDesc] Odd number of arguments (%zi) for %s \"%s\"",
               static_cast<std::make_signed<std::size_t>::type>(args.size()), parm.houdiniType.c_str(),
               parm.name.c_str());
    return false;
}

/// Tabs and their sizes; false, after an error message, when the list of tabs is malformed.
bool makeFolder(const ParmDesc& parm, ExtraParts& parts)
{
    const std::vector<std::string> args = split(parm.extraArgs.c_str(), ';', false);
    if (args.empty())
    {
        KrMsgError("[zelk::shop::ShaderDesc] Folder \"%s\" is empty", parm.name.c_str());
        return false;
    }
    if (!arePairs(args, parm))
        return false;

    parts.size = static_cast<int>(args.size() / 2);
    parts.defaults = leakArrayForHost<PRM_Default>(parts.size);
    for (int tab = 0; tab < parts.size; ++tab)
    {
        const double followers = std::strtol(args[2 * tab + 1].c_str(), nullptr, 10);
        parts.defaults[tab] = PRM_Default(followers, leakTextForHost(args[2 * tab]));
    }
    return true;
}

/// Items of a menu, the first one chosen; false, after an error message, when they do not make pairs.
bool makeMenu(const ParmDesc& parm, ExtraParts& parts)
{
    const std::vector<std::string> args = split(parm.extraArgs.c_str(), ';', false);
    if (!arePairs(args, parm))
        return false;

    std::vector<PRM_Name> items;
    for (std::size_t i = 0; i < args.size(); i += 2)
        items.push_back(PRM_Name(leakTextForHost(args[i]), leakTextForHost(args[i + 1])));
    if (!items.empty())
        parts.defaults = leakForHost<PRM_Default>(0, leakTextForHost(args[0]));
    parts.menu = leakForHost<PRM_ChoiceList>(PRM_CHOICELIST_SINGLE, leakListForHost(items));
    return true;
}

bool makeHeading(const ParmDesc& parm, ExtraParts& parts)
{
    *parts.name = PRM_Name(parm.name.c_str(), parm.extraArgs.c_str());
    return true;
}

bool makeToggle(const ParmDesc& parm, ExtraParts& parts)
{
    parts.defaults = parm.extraArgs == "on" ? PRMoneDefaults : PRMzeroDefaults;
    return true;
}

bool makeButton(const ParmDesc& parm, ExtraParts& parts)
{
    if (parm.icon.empty())
        return true;
    parts.spare = leakForHost<PRM_SpareData>();
    parts.spare->addTokenValue("button_icon", parm.icon.c_str());
    return true;
}

bool makeNothing(const ParmDesc&, ExtraParts&) { return true; }

struct ExtraRow
{
    const char* word;
    const PRM_Type* type;
    bool (*make)(const ParmDesc&, ExtraParts&);
};

// A kind without a row still takes its place in the list, as a template of the host's empty type.
const ExtraRow extra_rows[] = {
    {"folder", &PRM_SWITCHER, makeFolder},
    {"heading", &PRM_HEADING, makeHeading},
    {"separator", &PRM_SEPARATOR, makeNothing},
    {"toggle", &PRM_TOGGLE, makeToggle},
    {"menu", &PRM_STRING, makeMenu},
    {"button", &PRM_CALLBACK, makeButton},
};

struct RampKindRow
{
    const char* word;
    PRM_MultiType type;
};

const RampKindRow ramp_kind_rows[] = {
    {"ramp_float", PRM_MULTITYPE_RAMP_FLT},
    {"ramp_rgb", PRM_MULTITYPE_RAMP_RGB},
};

/// The script of an extra parameter; a button may also have it as its argument.
const std::string& scriptOf(const ParmDesc& parm)
{
    const bool isButton = parm.houdiniType == "button";
    return isButton && parm.callback.empty() ? parm.extraArgs : parm.callback;
}

} // namespace

PRM_Template ParmDesc::makeExtraTemplate() const
{
    // Deliberate: shared by all extra parameters, and apart from the one of the renderer's parameters. See
    // CallbackSlot.OfExtraParametersIsApart.
    static PRM_Callback callback_func(0);

    const ExtraRow* row = findRow(extra_rows, &ExtraRow::word, houdiniType);
    ExtraParts parts = plainParts(row ? *row->type : PRM_TYPE_ZERO, *this);
    // Deliberate: a malformed folder or menu ends the shader's interface here. See
    // MalformedExtra.EndsTheInterface.
    if (row && !row->make(*this, parts))
        return PRM_Template();

    const std::string& script = scriptOf(*this);
    if (!script.empty())
    {
        if (!parts.spare)
            parts.spare = leakForHost<PRM_SpareData>();
        storeCallbackScript(script, *parts.spare);
        callback_func = PRM_Callback(parmCallback);
    }

    const RampKindRow* ramp = findRow(ramp_kind_rows, &RampKindRow::word, houdiniType);
    PRM_Template extra =
        ramp ? multiTemplate(ramp->type, nullptr, parts.name, PRMtwoDefaults, callback_func, parts.spare,
                             helpOf(*this), getConditional())
             : PRM_Template(parts.type, labelLook(*this), PRM_Template::PRM_EXPORT_MIN, parts.size,
                            parts.name, parts.defaults, parts.menu, nullptr, callback_func, parts.spare,
                            parm_group, helpOf(*this), getConditional());
    joinWithNext(extra, joinNext);
    return extra;
}

PRM_Template* ParmDesc::getExtraTemplate() const { return leakForHost<PRM_Template>(makeExtraTemplate()); }

} // namespace shop
} // namespace zelk
