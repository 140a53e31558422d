#ifndef ZELK_SHOP_VOP_UTILITY_H
#define ZELK_SHOP_VOP_UTILITY_H

#include <VOP/VOP_Node.h>
#include <VOP/VOP_Operator.h>

#include <string>

class OP_OperatorTable;

namespace zelk
{
namespace shop
{

/// Adds the hand-written utility types to the VOP table: fetch, float ramp, colour ramp.
void registerUtilities(OP_OperatorTable* table);

/// The type of utility nodes.
class VOP_KorvanUtilityOperator : public VOP_Operator
{
public:
    using VOP_Operator::VOP_Operator;

    /// Gives `tabSubMenuPath`. Always true.
    bool getOpTabSubMenuPath(UT_String& path) override;

    /// Where the tab menu has the type; set right after construction.
    std::string tabSubMenuPath;
};

/// Base of the hand-written nodes whose connectors are named as they are labelled: a class says inputLabel() and
/// outputLabel(), and the names follow.
class VOP_KorvanUtility : public VOP_Node
{
public:
    bool runCreateScript() override;

protected:
    VOP_KorvanUtility(OP_Network* net, const char* name, OP_Operator* op);
    ~VOP_KorvanUtility() override;

    /// A connector without a label leaves `name` as it is.
    void getInputNameSubclass(UT_String& name, int i) const override;
    void getOutputNameSubclass(UT_String& name, int i) const override;
    /// The first visible input of that name; -1 when there is none.
    int getInputFromNameSubclass(const UT_String& name) const override;
};

} // namespace shop
} // namespace zelk

#endif
