#ifndef ZELK_SHOP_VOP_RAMP_FLOAT_H
#define ZELK_SHOP_VOP_RAMP_FLOAT_H

#include "vop_ramp.h"

namespace zelk
{
namespace shop
{

/// A float ramp, "korvan::ramp_float".
class VOP_KorvanRampFloat : public VOP_KorvanRamp
{
public:
    static OP_Node* myConstructor(OP_Network* net, const char* name, OP_Operator* op);
    static OP_Operator* newOperator();

protected:
    using VOP_KorvanRamp::VOP_KorvanRamp;
    const RampKind& kind() const override;
};

} // namespace shop
} // namespace zelk

#endif
