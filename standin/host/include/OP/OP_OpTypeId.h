#ifndef OP_OPTYPEID_H
#define OP_OPTYPEID_H

/// The kinds of nodes, one for each operator table and network language.
enum OP_OpTypeId
{
    INVALID_OPTYPE_ID = -1,
    OBJ_OPTYPE_ID = 0,
    SOP_OPTYPE_ID = 1,
    POPNET_OPTYPE_ID = 2,
    POP_OPTYPE_ID = 3,
    CHOPNET_OPTYPE_ID = 4,
    CHOP_OPTYPE_ID = 5,
    ROP_OPTYPE_ID = 6,
    SHOP_OPTYPE_ID = 7,
    COP2_OPTYPE_ID = 8,
    COPNET_OPTYPE_ID = 9,
    VOP_OPTYPE_ID = 10,
    VOPNET_OPTYPE_ID = 11,
    DOP_OPTYPE_ID = 12,
    MGR_OPTYPE_ID = 13,
    DIR_OPTYPE_ID = 14,
    NUM_MANAGERS
};

#endif
