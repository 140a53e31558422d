#ifndef KORVAN_FUZZ_HOST_WORLD_H
#define KORVAN_FUZZ_HOST_WORLD_H

#include "shop.h"

#include <standin/host.h>

#include <kr_observe.h>

#include <OP/OP_Director.h>
#include <OP/OP_Network.h>
#include <OP/OP_Node.h>
#include <OP/OP_OperatorTable.h>
#include <SHOP/SHOP_Node.h>
#include <VOP/VOP_Node.h>

#include <cstdlib>

/// Host and renderer, started once in the process, silent, with nothing on the search path but the plug-in's own types.
inline void startQuietHost()
{
    KrMsgSetConsoleFlags(0);
    ::setenv("HOUDINI_PATH", "/nonexistent", 1);
    ::unsetenv("HOUDINI_DSO_PATH");
    ::unsetenv("KORVAN_PLUGIN_PATH");
    KrBegin();
    standin::startHost();
    newVopOperator(OP_Network::getOperatorTable("Vop"));
    newShopOperator(OP_Network::getOperatorTable("Shop"));
}

/// Forgets what was reported, which would grow with every input.
inline void forgetMessages() { standin::takeMessages(); }

/// A network below a manager ("shop", "obj").
inline OP_Network& newNetwork(const char* manager, const char* type)
{
    return *static_cast<OP_Network*>(OPgetDirector()->getManager(manager)->createNode(type));
}

#endif
