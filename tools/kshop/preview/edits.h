#ifndef KSHOP_PREVIEW_EDITS_H
#define KSHOP_PREVIEW_EDITS_H

#include "../interface_json.h"
#include "scene.h"

#include <string>
#include <vector>

namespace kshop
{

/// More instances than this are refused: a page could not show them.
constexpr int most_preview_instances = 10000;

/// Does what a person does to a node: `request` is the body of an edit, {"type", "action", ...}. Callbacks run, and all
/// of it is one step of undo.
///
/// Returns sentences about what the node did not take; it is then as it was. Throws RequestError for a request that
/// makes no sense for this node: no such type, action, parameter or channel, or a member that is missing or of the
/// wrong kind.
std::vector<std::string> applyEdit(PreviewScene& scene, const Json& request);

} // namespace kshop

#endif
