#ifndef ZELK_SHOP_VOP_RAMP_RGB_H
#define ZELK_SHOP_VOP_RAMP_RGB_H

#include "vop_ramp.h"

namespace zelk
{
namespace shop
{

/// A colour ramp, "korvan::ramp_rgb".
class VOP_KorvanRampRgb : public VOP_KorvanRamp
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
