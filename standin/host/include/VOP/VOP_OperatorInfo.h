#ifndef VOP_OPERATORINFO_H
#define VOP_OPERATORINFO_H

#include <OP/OP_Operator.h>
#include <UT/UT_Array.h>
#include <UT/UT_String.h>
#include <VOP/VOP_TypeInfo.h>
#include <VOP/VOP_Types.h>

typedef UT_Array<VOP_Type> VOP_VopTypeArray;
typedef UT_Array<VOP_TypeInfo> VOP_VopTypeInfoArray;

/// What a VOP operator knows beyond other operators.
class VOP_OperatorInfo : public OP_SpecificData
{
public:
    explicit VOP_OperatorInfo(const char* vopnetMask);

    /// Where the type may appear: glob patterns of network type names, separated by spaces; "*" means
    /// everywhere.
    const UT_String& getVopnetMask() const { return myVopnetMask; }
    void setVopnetMask(const char* mask);
    const UT_String& getRenderMask() const { return myRenderMask; }
    void setRenderMask(const char* mask);

private:
    UT_String myVopnetMask;
    UT_String myRenderMask;
};

#endif
