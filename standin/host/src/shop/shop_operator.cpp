#include <SHOP/SHOP_Operator.h>

namespace
{

constexpr unsigned output_count = 1;

} // namespace

SHOP_OperatorInfo::SHOP_OperatorInfo() : myRenderMask(UT_String::ALWAYS_DEEP, "*") {}

void SHOP_OperatorInfo::setRenderMask(const char* mask) { myRenderMask = mask ? mask : ""; }

SHOP_Operator::SHOP_Operator(const char* name, const char* english, OP_Constructor construct,
                             PRM_Template* templates, unsigned min_sources, unsigned max_sources,
                             CH_LocalVariable* variables, unsigned flags, int)
    : OP_Operator(name, english, construct, templates, min_sources, max_sources, variables, flags)
{
}

SHOP_Operator::~SHOP_Operator() {}

OP_SpecificData* SHOP_Operator::getOpSpecificData() { return &myInfo; }
const OP_SpecificData* SHOP_Operator::getOpSpecificData() const { return &myInfo; }

unsigned SHOP_Operator::maxOutputs() { return output_count; }
