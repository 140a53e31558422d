#ifndef KSHOP_PREVIEW_PARM_FACTS_H
#define KSHOP_PREVIEW_PARM_FACTS_H

#include <string>
#include <utility>
#include <vector>

class OP_Node;
class PRM_Parm;

/// @file
/// What the preview needs to know about one parameter of a node, besides its value.

namespace kshop
{

/// How a parameter is drawn.
enum class ParmKind
{
    floats,
    integers,
    color,
    vector,
    matrix,
    toggle,
    strip,
    string,
    file,
    node,
    label,
    menu,
    button,
    heading,
    separator,
    folder,
    list,
    ramp
};

ParmKind kindOf(const PRM_Parm& parm);
/// The kind's word in the page's interface: "float", "menu", ...
const char* kindWord(ParmKind kind);
/// False for headings, separators, labels and buttons, and for lists and ramps, whose instances hold the values.
bool holdsValue(ParmKind kind);

using MenuItems = std::vector<std::pair<std::string, std::string>>; ///< token, label

/// The items of the parameter's menu as it is now; a scripted one is run. None without a menu.
MenuItems menuItemsOf(OP_Node& node, const PRM_Parm& parm);

/// The parameters of a multi-parameter's instances, one list for each.
std::vector<std::vector<PRM_Parm*>> instancesOf(const PRM_Parm& multi);

/// True when the parameter, or anything inside a list or ramp, is not as a fresh node has it.
bool differsFromDefault(const PRM_Parm& parm);

/// One component as number (expressions evaluated), and as text: as typed, or with expressions and variables
/// evaluated.
double numberOf(const PRM_Parm& parm, int component);
std::string rawTextOf(const PRM_Parm& parm, int component);
std::string textOf(const PRM_Parm& parm, int component);

/// "hscript" or "python": language of a component's expression.
const char* expressionLanguageOf(const PRM_Parm& parm, int component);

} // namespace kshop

#endif
