#ifndef SHOP_OPERATORINFO_H
#define SHOP_OPERATORINFO_H

#include <OP/OP_Operator.h>
#include <SHOP/SHOP_NodeTypes.h>
#include <UT/UT_String.h>

/// Which renderers may add themselves to the render mask of a SHOP type.
enum
{
    SHOP_AUTOADD_NONE = 0,
    SHOP_AUTOADD_STRING = 1,
    SHOP_AUTOADD_ANY = 2
};

/// What a SHOP operator knows beyond other operators.
class SHOP_OperatorInfo : public OP_SpecificData
{
public:
    explicit SHOP_OperatorInfo(int auto_add_clerk);

    void setShaderType(SHOP_TYPE type) { myShaderType = type; }
    SHOP_TYPE getShaderType() const { return myShaderType; }
    /// Renderers that the type is for; "*" means all.
    void setRenderMask(const char* mask);
    const UT_String& getRenderMask() const { return myRenderMask; }
    void setNumOutputs(int count) { myNumOutputs = count; }
    int getNumOutputs() const { return myNumOutputs; }
    int getAutoAddClerk() const { return myAutoAddClerk; }

private:
    SHOP_TYPE myShaderType;
    UT_String myRenderMask;
    int myNumOutputs;
    int myAutoAddClerk;
};

#endif
