// Gives up in the middle.
#include "kr_plugin.h"

#include <stdexcept>

void KrPluginDeclare(void)
{
    KrDeclareNode("before_throw", KR_NODE_SHADER, KR_TYPE_RGB);
    throw std::runtime_error("no licence");
}
