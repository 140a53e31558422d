// Tells how often it was asked since it was opened: after it was really closed the count begins anew.
#include "kr_plugin.h"

static int calls = 0;

void KrPluginDeclare(void)
{
    ++calls;
    KtNodeDecl* node = KrDeclareNode("counting", KR_NODE_CAMERA, KR_TYPE_UNDEFINED);
    KrDeclareMetaDataFlt(node, nullptr, "calls", static_cast<float>(calls));
}
