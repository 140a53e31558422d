#ifndef ZELK_SHOP_SHADER_DESC_TEMPLATE_PARTS_H
#define ZELK_SHOP_SHADER_DESC_TEMPLATE_PARTS_H

#include "shader_desc.h"

#include <PRM/PRM_Callback.h>
#include <PRM/PRM_Template.h>
#include <PRM/PRM_Type.h>

#include <string>

// What the templates of renderer parameters and of extra parameters are made from alike.

namespace zelk
{
namespace shop
{

/// Group that every parameter of ours is in; the host gives it no meaning.
const int parm_group = 1;

/// What the host's multi-parameter constructor calls the number of rows of the instance area.
const int multi_rows = 1;

/// The look that hides a label, when the description asks for it.
inline PRM_TypeExtended labelLook(const ParmDesc& parm)
{
    return parm.noLabel ? PRM_TYPE_NO_LABEL : PRM_TYPE_NONE;
}

/// The help text as the host wants it: null for none.
inline const char* helpOf(const ParmDesc& parm) { return parm.help.empty() ? nullptr : parm.help.c_str(); }

/// The template of a multi-parameter: a list (of `children`) or a ramp (null).
inline PRM_Template multiTemplate(PRM_MultiType type, PRM_Template* children, PRM_Name* name,
                                  PRM_Default* count, const PRM_Callback& callback, PRM_SpareData* spare,
                                  const char* help, PRM_ConditionalBase* conditional)
{
    return PRM_Template(type, children, PRM_Template::PRM_EXPORT_MIN, multi_rows, name, count, nullptr,
                        callback, spare, help, conditional);
}

/// Puts the next parameter into the same row, or not.
inline void joinWithNext(PRM_Template& tmpl, bool join) { tmpl.setJoinNext(join); }

/// Stores a callback script in a template's spare data. A leading "hscript:" or "python:" sets the language
/// and is left out; without one the text is stored whole, in the host's default language.
void storeCallbackScript(const std::string& script, PRM_SpareData& spare);

} // namespace shop
} // namespace zelk

#endif
