#ifndef STANDIN_PY_PARM_ACCESS_H
#define STANDIN_PY_PARM_ACCESS_H

#include "module.h"

#include <OP/OP_Node.h>
#include <PRM/PRM_Parm.h>

#include <string>

namespace standin
{
namespace python
{

/// The parameter with that token; raises hou.ObjectWasDeleted when the node or the parameter is gone.
PRM_Parm& parmOf(int id, const Text& token);

/// The same, and `component` is one of its components; raises hou.ObjectWasDeleted otherwise.
PRM_Parm& parmOf(int id, const Text& token, int component);

/// "/obj/cam1/tx".
std::string channelPath(const OP_Node& node, const PRM_Parm& parm, int component);

/// Number of the calling thread.
int currentThread();

} // namespace python
} // namespace standin

#endif
