#ifndef KSHOP_PREVIEW_PARM_VIEW_H
#define KSHOP_PREVIEW_PARM_VIEW_H

#include "../interface_json.h"

#include <set>
#include <string>

class OP_Node;

namespace kshop
{

/// The parameter pane of a node, as the page draws it: PARM objects in pane order, what a folder or list holds inside
/// it. Values are those of now: expressions and menu scripts run.
///
/// @param own  the renderer's parameters of this shader; all others are there for the interface only. Null: not known
Json paneJson(OP_Node& node, const std::set<std::string>* own);

/// The sentences of parameters that have no value at present.
std::vector<std::string> parmErrorsOf(const OP_Node& node);

} // namespace kshop

#endif
