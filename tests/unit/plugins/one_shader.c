/* A renderer plug-in with one shader, whose name the build gives. */
#include <kr_plugin.h>

void KrPluginDeclare(void) { KrDeclareNode(SHADER_NAME, KR_NODE_SHADER, KR_TYPE_RGB); }
