#ifndef SHOP_OPERATORINFO_H
#define SHOP_OPERATORINFO_H

#include <OP/OP_Operator.h>
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
    SHOP_OperatorInfo();

    /// Renderers that the type is for; "*" means all.
    void setRenderMask(const char* mask);
    const UT_String& getRenderMask() const { return myRenderMask; }

private:
    UT_String myRenderMask;
};

#endif
