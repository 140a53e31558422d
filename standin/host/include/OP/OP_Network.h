#ifndef OP_NETWORK_H
#define OP_NETWORK_H

#include <OP/OP_Node.h>

#include <string>
#include <vector>

class OP_OperatorTable;

/// Decides which operators may be created inside a network.
class OP_OperatorFilter
{
public:
    virtual ~OP_OperatorFilter() {}
    virtual bool allowOperatorAsChild(OP_Operator* op);
};

/// A node that can hold nodes. Whether it really does depends on its own operator table: a network without
/// one takes no children.
class OP_Network : public OP_Node
{
public:
    /// Deletes the children that are still there.
    virtual ~OP_Network();

    /// The table of that name ("Vop", "Shop", "Object", ...), made on the first request: then the host's own
    /// types are added and the plug-ins' hooks for that table run. Always the same object for a name; null
    /// for no name.
    static OP_OperatorTable* getOperatorTable(const char* table, const char* scriptdir = 0);
    /// The table of the children; null when this network takes none.
    OP_OperatorTable* getOperatorTable() const { return myTable; }

    /// Decides what may be created here; null leaves it to the nearest network above that has one, and when
    /// none has, everything of the table is allowed.
    virtual OP_OperatorFilter* getOperatorFilter();

    virtual const char* getChildType() const;
    virtual OP_OpTypeId getChildTypeID() const;
    virtual int isNetwork() const;

    virtual OP_Network* castToOPNetwork();
    virtual const OP_Network* castToOPNetwork() const;

    /// True when an operator of this network's table may be created here: the filter in force allows it, and
    /// its network mask fits the network which that filter belongs to.
    bool allowsOperator(OP_Operator* op);

    /// Makes a child: constructs it, gives it its name and its parameters, and sends OP_CHILD_CREATED. Null
    /// when the type is unknown or not allowed here. It runs no creation script and places nothing: callers
    /// go on with runCreateScript() and moveToGoodPosition(). Characters that no name can have become '_',
    /// and a taken name gets another number. With `loadcontents`, a type that comes from an asset file gets
    /// the nodes inside that the file holds.
    OP_Node* createNode(const char* type, const char* name = 0, int notify = 1, int explicitly = 1,
                        int loadcontents = 1, int* aliasedScriptedOp = 0, char* matIconFilename = 0,
                        bool exact_type = false);
    /// The same without asking mask and filter: how the host itself fills subnets, and how scenes and assets
    /// load.
    OP_Node* createNodeUnfiltered(const char* type, const char* name = 0);

    /// Host's side: a child of an operator that need not be in the table, as placeholders are. Asks neither mask nor
    /// filter.
    OP_Node* createNodeOfOperator(OP_Operator& op, const char* name);

    /// Ends a child: its own children, its wires, its events, the object. Non-zero when it was done; zero
    /// when the node is no child of this network, cannot be destroyed, or is being deleted already.
    int destroyNode(OP_Node* node);
    /// False for the root and the managers.
    static bool canDestroyNode(OP_Node* node);

    /// Renames a child; a taken name gets another number. Sends OP_NAME_CHANGED unless told not to. Zero when
    /// the node is no child of this network or the name is no valid one.
    virtual int renameNode(OP_Node* node, const char* name, OP_RenameAction action = OP_RENAME_NORMAL);

    int getNchildren() const;
    /// In the order of creation; null out of range.
    OP_Node* getChild(int index) const;
    OP_Node* getChild(const char* name = 0, int* hint = 0) const;
    /// -1 when the node is no child of this network.
    int getChildIndex(const OP_Node* node) const;
    /// Appends the children whose operator has that name and returns how many.
    int getOpsByName(const char* optype, UT_ValArray<OP_Node*>& list);

    /// A name like `base` that no child has: `base` itself, or with the first free number at its end. With
    /// `always_number`, as for automatic names, `base` alone is never taken.
    std::string uniqueChildName(const std::string& base, bool always_number = false) const;

    virtual void finishedLoadingNetwork(bool is_child_call = false);

    /// What network masks of operators are matched with where this network's filter is in force: words separated by
    /// spaces. The name of the network's own operator, unless a class knows better.
    virtual std::string maskContexts() const;

protected:
    OP_Network(OP_Network* parent, const char* name, OP_Operator* op);

    /// The table that children come from. Set in constructors.
    void setOperatorTable(OP_OperatorTable* table) { myTable = table; }

    /// Takes a constructed node in and, with `notify`, sends OP_CHILD_CREATED.
    virtual void addNode(OP_Node* node, int notify = 1, int explicitly = 1);

private:
    friend class OP_Director;
    friend class OP_Node;

    OP_Node* makeChild(OP_Operator* op, const char* name, int notify, int explicitly);
    void dropChild(OP_Node* node);
    static void destroyChildrenOf(OP_Node* node);

    OP_OperatorTable* myTable;
    std::vector<OP_Node*> myChildren;
    struct NameIndex;
    std::unique_ptr<NameIndex> myNames;
};

#endif
