#include "vop_ramp_rgb.h"

#include <kr.h>

namespace zelk
{
namespace shop
{

namespace
{

const RampKind rgb_ramp = {
    "korvan::ramp_rgb",
    "Ramp RGB",
    "zelk__ramp_rgb",
    "ramp#c",
    3,
    "color",
    " : Color",
    VOP_TYPE_VECTOR,
    "color",
    KR_TYPE_RGB,
    {{"rgb", VOP_TYPE_VECTOR}, {"r", VOP_TYPE_FLOAT}, {"g", VOP_TYPE_FLOAT}, {"b", VOP_TYPE_FLOAT}},
};

PRM_Template vop_korvan_ramp_rgb_templates[] = {rampInputTemplate(), rampPatternTemplate(),
                                                rampKeysTemplate(PRM_MULTITYPE_RAMP_RGB), PRM_Template()};

} // namespace

OP_Operator* VOP_KorvanRampRgb::newOperator()
{
    return makeOperator(rgb_ramp, myConstructor, vop_korvan_ramp_rgb_templates);
}

OP_Node* VOP_KorvanRampRgb::myConstructor(OP_Network* net, const char* name, OP_Operator* op)
{
    return new VOP_KorvanRampRgb(net, name, op);
}

const RampKind& VOP_KorvanRampRgb::kind() const { return rgb_ramp; }

} // namespace shop
} // namespace zelk
