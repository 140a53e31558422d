#ifndef OP_DIRECTOR_H
#define OP_DIRECTOR_H

#include <OP/OP_CommandManager.h>
#include <OP/OP_Network.h>

#include <map>
#include <memory>
#include <vector>

/// The root of all nodes, "/". Its children are the managers "obj", "shop", "out" and "vex".
class OP_Director : public OP_Network
{
public:
    virtual ~OP_Director();

    /// The manager of that name; null when there is none.
    OP_Network* getManager(const char* name) const;
    OP_CommandManager* getCommandManager() const;

    /// Non-zero while a scene loads.
    int isLoading() const;

    /// The working node of a thread: what relative paths in scripts start from. The root when nothing was
    /// pushed. Every push is ended by a pop; a node that was deleted meanwhile reads as the root.
    void pushCwd(int thread, OP_Node* node);
    void popCwd(int thread);
    OP_Node* getCwd(int thread) const;

    virtual const char* getOpType() const;
    virtual OP_OpTypeId getOpTypeID() const;
    /// False: what is here stays here.
    virtual int renameNode(OP_Node* node, const char* name, OP_RenameAction action = OP_RENAME_NORMAL);

private:
    friend OP_Director* OPgetDirector();

    explicit OP_Director(OP_Operator* op);

    std::unique_ptr<OP_CommandManager> myCommands;
    std::map<int, std::vector<int>> myCwd;
};

/// The one director. The first call starts the host: plug-ins are opened, then root and managers are made.
OP_Director* OPgetDirector();

#endif
