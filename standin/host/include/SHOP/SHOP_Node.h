#ifndef SHOP_NODE_H
#define SHOP_NODE_H

#include <CH/CH_LocalVariable.h>
#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <SHOP/SHOP_NodeTypes.h>
#include <SHOP/SHOP_Operator.h>
#include <SYS/SYS_Visibility.h>

extern "C"
{
    /// A plug-in's hook for the SHOP table, called once when that table is made.
    SYS_VISIBILITY_EXPORT extern void newShopOperator(OP_OperatorTable* table);
}

/// A shader, or a container of a shader network: such a class names another child kind and sets that kind's
/// table in its constructor. A plain SHOP node takes no children.
class SHOP_Node : public OP_Network
{
public:
    SHOP_Node(OP_Network* dad, const char* name, OP_Operator* entry, SHOP_TYPE shader_type = SHOP_SURFACE);
    virtual ~SHOP_Node();

    virtual const char* getOpType() const;
    virtual OP_OpTypeId getOpTypeID() const;
    virtual SHOP_Node* castToSHOPNode();
    virtual const SHOP_Node* castToSHOPNode() const;

    SHOP_TYPE getShaderType() const { return myShaderType; }

    /// The local variables of SHOP nodes: none of their own beyond those of all nodes. Ends with a null name.
    static CH_LocalVariable myVariableList[];

private:
    SHOP_TYPE myShaderType;
};

#endif
