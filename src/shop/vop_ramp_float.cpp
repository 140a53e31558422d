#include "vop_ramp_float.h"

#include <kr.h>

namespace zelk
{
namespace shop
{

namespace
{

const RampKind float_ramp = {
    "korvan::ramp_float",
    "Ramp Float",
    "zelk__ramp_float",
    "ramp#value",
    1,
    "value",
    " : Value",
    VOP_TYPE_FLOAT,
    "value",
    KR_TYPE_FLOAT,
    {{"float", VOP_TYPE_FLOAT}},
};

PRM_Template vop_korvan_ramp_float_templates[] = {rampInputTemplate(), rampPatternTemplate(),
                                                  rampKeysTemplate(PRM_MULTITYPE_RAMP_FLT), PRM_Template()};

} // namespace

OP_Operator* VOP_KorvanRampFloat::newOperator()
{
    return makeOperator(float_ramp, myConstructor, vop_korvan_ramp_float_templates);
}

OP_Node* VOP_KorvanRampFloat::myConstructor(OP_Network* net, const char* name, OP_Operator* op)
{
    return new VOP_KorvanRampFloat(net, name, op);
}

const RampKind& VOP_KorvanRampFloat::kind() const { return float_ramp; }

} // namespace shop
} // namespace zelk
