#include <VOP/VOP_Operator.h>

VOP_OperatorInfo::VOP_OperatorInfo(const char* vopnetMask)
    : myVopnetMask(UT_String::ALWAYS_DEEP, vopnetMask ? vopnetMask : ""),
      myRenderMask(UT_String::ALWAYS_DEEP, "*")
{
}

void VOP_OperatorInfo::setVopnetMask(const char* mask) { myVopnetMask = mask ? mask : ""; }
void VOP_OperatorInfo::setRenderMask(const char* mask) { myRenderMask = mask ? mask : ""; }

VOP_Operator::VOP_Operator(const char* name, const char* english, OP_Constructor construct,
                           PRM_Template* templates, unsigned min_sources, unsigned max_sources,
                           const char* vopnetMask, CH_LocalVariable* variables, unsigned flags,
                           unsigned num_outputs)
    : OP_Operator(name, english, construct, templates, min_sources, max_sources, variables, flags),
      myInfo(vopnetMask),
      myNumOutputs(num_outputs)
{
}

VOP_Operator::~VOP_Operator() {}

OP_SpecificData* VOP_Operator::getOpSpecificData() { return &myInfo; }
const OP_SpecificData* VOP_Operator::getOpSpecificData() const { return &myInfo; }
unsigned VOP_Operator::maxOutputs() { return myNumOutputs; }
