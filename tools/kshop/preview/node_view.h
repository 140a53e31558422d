#ifndef KSHOP_PREVIEW_NODE_VIEW_H
#define KSHOP_PREVIEW_NODE_VIEW_H

#include "../interface_json.h"
#include "scene.h"

#include <map>
#include <set>
#include <string>

namespace kshop
{

/// The renderer's parameters of each shader, by node type.
using ParameterNames = std::map<std::string, std::set<std::string>>;

/// NODE of the preview's interface: the whole of one node as the page draws it, after the host refreshed it. See
/// docs/preview.md.
Json nodeJson(const PreviewScene& scene, OP_Node& node, const ParameterNames& names);

/// One entry of the state's "types".
Json typeJson(const OperatorFacts& facts);

} // namespace kshop

#endif
