#include <SHOP/SHOP_Node.h>

CH_LocalVariable SHOP_Node::myVariableList[] = {{nullptr, 0, 0}};

SHOP_Node::SHOP_Node(OP_Network* dad, const char* name, OP_Operator* entry, SHOP_TYPE shader_type)
    : OP_Network(dad, name, entry), myShaderType(shader_type)
{
}

SHOP_Node::~SHOP_Node() {}

const char* SHOP_Node::getOpType() const { return SHOP_OPTYPE_NAME; }
OP_OpTypeId SHOP_Node::getOpTypeID() const { return SHOP_OPTYPE_ID; }
SHOP_Node* SHOP_Node::castToSHOPNode() { return this; }
const SHOP_Node* SHOP_Node::castToSHOPNode() const { return this; }
