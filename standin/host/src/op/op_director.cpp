#include <OP/OP_Director.h>

#include "../standin/builtin_types.h"
#include "../standin/plugins.h"
#include "op_loading.h"

#include <OP/OP_OperatorTable.h>
#include <standin/host.h>

namespace standin
{

int& loadingDepth()
{
    static int depth = 0;
    return depth;
}

} // namespace standin

OP_Director::OP_Director(OP_Operator* op) : OP_Network(nullptr, "", op), myCommands(new OP_CommandManager)
{
    setOperatorTable(getOperatorTable(standin::manager_table));
}

OP_Director::~OP_Director() {}

const char* OP_Director::getOpType() const { return "DIR"; }
OP_OpTypeId OP_Director::getOpTypeID() const { return DIR_OPTYPE_ID; }
int OP_Director::renameNode(OP_Node*, const char*, OP_RenameAction) { return 0; }

OP_Network* OP_Director::getManager(const char* name) const
{
    OP_Node* node = getChild(name);
    return node ? node->castToOPNetwork() : nullptr;
}

OP_CommandManager* OP_Director::getCommandManager() const { return myCommands.get(); }
int OP_Director::isLoading() const { return standin::loadingDepth(); }

void OP_Director::pushCwd(int thread, OP_Node* node)
{
    myCwd[thread].push_back(node ? node->getUniqueId() : 0);
}

void OP_Director::popCwd(int thread)
{
    const auto found = myCwd.find(thread);
    if (found == myCwd.end())
        return;
    found->second.pop_back();
    if (found->second.empty())
        myCwd.erase(found);
}

OP_Node* OP_Director::getCwd(int thread) const
{
    const auto found = myCwd.find(thread);
    OP_Node* node = found == myCwd.end() ? nullptr : lookupNode(found->second.back());
    return node ? node : const_cast<OP_Director*>(this);
}

OP_Director* OPgetDirector()
{
    static OP_Director* director = nullptr; // never destroyed: nodes may outlive every static object
    if (!director)
        standin::startHost();
    // Start-up itself comes by here: entry points of plug-ins may ask for the director.
    if (!director)
    {
        director = new OP_Director(nullptr);
        for (const char* name : standin::manager_names)
            director->createNodeUnfiltered(name, name);
        standin::runCommandHooks(*director->getCommandManager());
    }
    return director;
}
