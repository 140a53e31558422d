#include "vop_utility.h"

#include "utils_nodes.h"
#include "vop_fetch.h"
#include "vop_ramp_float.h"
#include "vop_ramp_rgb.h"
#include "vop_shaders.h"

#include <OP/OP_OperatorTable.h>
#include <UT/UT_String.h>

#include <kr.h>

namespace zelk
{
namespace shop
{

namespace
{

void nameAfter(const char* label, UT_String& name)
{
    if (label)
        setText(name, label);
}

/// A shader of the same name gives way: the hand-written node stands for it.
void addInsteadOfShader(OP_OperatorTable& table, OP_Operator* op)
{
    if (VOP_KorvanOperator* shader = dynamic_cast<VOP_KorvanOperator*>(table.getOperator(op->getName())))
    {
        KrMsgWarning(
            "[vop_utility] Ignoring the renderer's shader %s: the type is hand-written. Set houdini.skip on "
            "the shader.",
            op->getName().buffer());
        table.removeOperator(shader);
    }
    table.addOperator(op, nullptr);
}

} // namespace

void registerUtilities(OP_OperatorTable* table)
{
    addInsteadOfShader(*table, VOP_KorvanFetch::newOperator());
    addInsteadOfShader(*table, VOP_KorvanRampFloat::newOperator());
    addInsteadOfShader(*table, VOP_KorvanRampRgb::newOperator());
}

bool VOP_KorvanUtilityOperator::getOpTabSubMenuPath(UT_String& path)
{
    setText(path, tabSubMenuPath.c_str());
    return true;
}

VOP_KorvanUtility::VOP_KorvanUtility(OP_Network* net, const char* name, OP_Operator* op)
    : VOP_Node(net, name, op)
{
}

VOP_KorvanUtility::~VOP_KorvanUtility() {}

bool VOP_KorvanUtility::runCreateScript() { return VOP_Node::runCreateScript(); }

void VOP_KorvanUtility::getInputNameSubclass(UT_String& name, int i) const
{
    nameAfter(inputLabel(static_cast<unsigned>(i)), name);
}

void VOP_KorvanUtility::getOutputNameSubclass(UT_String& name, int i) const
{
    nameAfter(outputLabel(static_cast<unsigned>(i)), name);
}

int VOP_KorvanUtility::getInputFromNameSubclass(const UT_String& name) const
{
    return findInputByLabel(*this, name);
}

} // namespace shop
} // namespace zelk
