#include <standin/host.h>

#include "plugins.h"

#include <OP/OP_Director.h>
#include <VOP/VOP_OperatorInfo.h>

namespace standin
{

void startHost()
{
    static bool started = false;
    if (started)
        return;
    started = true; // before the plug-ins run: they may ask for the director, which comes here
    openPlugins();
    for (const char* table : {VOP_TABLE_NAME, SHOP_TABLE_NAME, OBJ_TABLE_NAME, ROP_TABLE_NAME})
        OP_Network::getOperatorTable(table);
    OPgetDirector();
}

bool vopnetMaskOf(const OP_Operator& op, std::string& mask)
{
    const auto* info = dynamic_cast<const VOP_OperatorInfo*>(op.getOpSpecificData());
    if (info)
        mask = info->getVopnetMask().toStdString();
    return info != nullptr;
}

int redrawCount(const OP_Node& node) { return node.getUIChangeCount(); }

} // namespace standin
