#ifndef ZELK_SHOP_SHOP_H
#define ZELK_SHOP_SHOP_H

#include <OP/OP_Network.h>
#include <PRM/PRM_Template.h>
#include <SHOP/SHOP_Node.h>
#include <SYS/SYS_Visibility.h>

// The plug-in's entry points, which the host looks up by name. `newVopOperator` and `newShopOperator` are
// declared by the host's own headers.

extern "C"
{
    /// Stores the toolkit version that the plug-in is built for, a static text, through `version`.
    SYS_VISIBILITY_EXPORT void HoudiniDSOVersion(const char** version);

    /// Returns the tag of the compiler that the toolkit asks for.
    SYS_VISIBILITY_EXPORT unsigned HoudiniCompilerVersion();
}

namespace zelk
{
namespace shop
{

/// Decides which operator types may be created inside a container.
class OP_KorvanMaterialOperatorFilter : public OP_OperatorFilter
{
public:
    /// True for the plug-in's own types, for the host's "subnet" and "null", and for digital assets that are made of
    /// Korvan nodes and do not belong to the host itself. Reads the asset's contents each time. A failure refuses.
    bool allowOperatorAsChild(OP_Operator* op) override;
};

/// The container "korvan_vopnet": a SHOP node whose inside is a network of Korvan nodes.
class SHOP_KorvanMaterial : public SHOP_Node
{
public:
    static OP_Node* myConstructor(OP_Network* net, const char* name, OP_Operator* op);

    /// Returns the host's VOP table after telling its observers to read it again.
    static OP_OperatorTable* createAndGetOperatorTable();

    /// The container has no parameters of its own.
    static PRM_Template myTemplateList[];

    /// Runs the host's own script, then makes a material output. False when either fails.
    bool runCreateScript() override;

    const char* getChildType() const override;
    OP_OpTypeId getChildTypeID() const override;
    OP_OperatorFilter* getOperatorFilter() override;

protected:
    SHOP_KorvanMaterial(OP_Network* net, const char* name, OP_Operator* op);
    ~SHOP_KorvanMaterial() override;

private:
    OP_KorvanMaterialOperatorFilter m_filter;
};

} // namespace shop
} // namespace zelk

#endif
