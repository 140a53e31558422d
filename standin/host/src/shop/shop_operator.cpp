#include <SHOP/SHOP_Operator.h>

namespace
{

constexpr int default_outputs = 1;

} // namespace

SHOP_OperatorInfo::SHOP_OperatorInfo(int auto_add_clerk)
    : myShaderType(SHOP_INVALID),
      myRenderMask(UT_String::ALWAYS_DEEP, "*"),
      myNumOutputs(default_outputs),
      myAutoAddClerk(auto_add_clerk)
{
}

void SHOP_OperatorInfo::setRenderMask(const char* mask) { myRenderMask = mask ? mask : ""; }

SHOP_Operator::SHOP_Operator(const char* name, const char* english, OP_Constructor construct,
                             PRM_Template* templates, unsigned min_sources, unsigned max_sources,
                             CH_LocalVariable* variables, unsigned flags, int auto_add_clerk)
    : OP_Operator(name, english, construct, templates, min_sources, max_sources, variables, flags),
      myInfo(auto_add_clerk)
{
}

SHOP_Operator::~SHOP_Operator() {}

OP_SpecificData* SHOP_Operator::getOpSpecificData() { return &myInfo; }
const OP_SpecificData* SHOP_Operator::getOpSpecificData() const { return &myInfo; }

unsigned SHOP_Operator::maxOutputs()
{
    const int count = myInfo.getNumOutputs();
    return count > 0 ? static_cast<unsigned>(count) : 0;
}
