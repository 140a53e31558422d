#ifndef KSHOP_RENDERER_WALK_H
#define KSHOP_RENDERER_WALK_H

#include "running_renderer.h"

#include <kr.h>

#include <map>
#include <set>
#include <string>
#include <vector>

class OP_Operator;

namespace kshop
{

/// A renderer entry without a node type, and why.
struct UnregisteredEntry
{
    std::string name;
    std::string reason; ///< a sentence without its full stop
};

/// Why an entry of the running renderer is none that the plug-in makes a node type of: the rest of a sentence; empty when
/// it is one.
std::string whyNotWanted(const KtNodeEntry* entry);

/// Starts the renderer once more with the same files and goes through all its entries. Silent: what there is to say
/// about the files was said when the plug-in loaded them. `registered` are the operators of the shader-network table.
std::vector<UnregisteredEntry> findUnregistered(const std::vector<OP_Operator*>& registered);

/// Starts the renderer once more, in the same silent way, and gives the parameters that each shader or camera declares,
/// by the name of its node type.
std::map<std::string, std::set<std::string>> findParameterNames();

} // namespace kshop

#endif
