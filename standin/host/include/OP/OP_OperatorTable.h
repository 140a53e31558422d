#ifndef OP_OPERATORTABLE_H
#define OP_OPERATORTABLE_H

#include <OP/OP_OpTypeId.h>
#include <OP/OP_OperatorList.h>
#include <UT/UT_String.h>
#include <UT/UT_StringArray.h>

#include <iosfwd>
#include <memory>

class OP_Network;
class OP_Node;
class OP_Operator;

/// All operators of one kind, in the order in which they were added. The host's own tables come from
/// OP_Network::getOperatorTable() and live for the whole process.
class OP_OperatorTable
{
public:
    explicit OP_OperatorTable(const char* name, OP_OpTypeId type = INVALID_OPTYPE_ID);
    /// Destroys the operators.
    ~OP_OperatorTable();

    /// Takes the operator over and returns true. False when the name is taken (or `op` is null or has no
    /// name): the table and `op` stay as they are, `op` stays the caller's, and a sentence goes to `err`, or
    /// to the host's messages when that is null.
    bool addOperator(OP_Operator* op, std::ostream* err = 0);

    /// Host's side: the operator stays out of the table, but counts as one of its kind from now on. For the types of
    /// placeholders, whose category is that of the network they are in.
    void adoptPlaceholder(OP_Operator& op);

    /// The operator of exactly that name; null when there is none.
    OP_Operator* getOperator(const char* name) const;

    /// Takes the operator out and destroys it. There must be no nodes of it.
    void removeOperator(OP_Operator* op);

    int entries() const;

    /// Appends the operators in insertion order and returns how many; with `net`, those that may be created
    /// there.
    int getOperators(OP_OperatorList& list, OP_Network* net = 0, bool filterhidden = false) const;

    /// The same as OP_Network::createNode() of a type of this table.
    OP_Node* createNode(OP_Network* parent, const char* type, const char* name = 0, int* aliased = 0,
                        bool exact_type = false);

    /// The base of automatic names: the type's name without namespace and version.
    void getDefaultNodeName(const char* type, UT_String& name);

    /// Tells tab menus and networks that the table changed. For after bulk changes.
    void notifyUpdateTableSinksOfUpdate();

    /// "Vop", "Shop", ...
    const UT_String& getName() const { return myName; }
    OP_OpTypeId getOpTypeID() const { return myType; }

private:
    struct Contents;

    OP_OperatorTable(const OP_OperatorTable&);
    OP_OperatorTable& operator=(const OP_OperatorTable&);

    UT_String myName;
    OP_OpTypeId myType;
    std::unique_ptr<Contents> myContents;
};

#endif
