// Declares one name twice and does not look at the result.
#include "kr_plugin.h"

void KrPluginDeclare(void)
{
    KrDeclareNode("twin", KR_NODE_SHADER, KR_TYPE_RGB);
    KtNodeDecl* second = KrDeclareNode("twin", KR_NODE_SHADER, KR_TYPE_FLOAT);
    KrDeclareParam(second, "lost", KR_TYPE_FLOAT, nullptr);
    KrDeclareMetaDataBool(second, nullptr, "lost", true);
    KrDeclareNode("after_twin", KR_NODE_SHADER, KR_TYPE_RGB);
}
