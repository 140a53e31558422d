#include "vop_shaders.h"

#include "shader_desc.h"
#include "utils_nodes.h"

#include <PRM/PRM_Parm.h>

namespace zelk
{
namespace shop
{

namespace
{

/// A node with more inputs than this shows only the connected ones, unless its shader asks otherwise.
const unsigned most_inputs_in_full_detail = 4;

bool isEnabled(const PRM_Parm& parm) { return parm.getEnableState(); }

} // namespace

OP_Node* VOP_KorvanShader::myConstructor(OP_Network* net, const char* name, OP_Operator* op)
{
    return new VOP_KorvanShader(net, name, op);
}

VOP_KorvanShader::VOP_KorvanShader(OP_Network* net, const char* name, OP_Operator* op)
    : VOP_Node(net, name, op)
{
    addOpInterest(this, nodeEventHandler);
}

VOP_KorvanShader::~VOP_KorvanShader() { removeOpInterest(this, nodeEventHandler); }

const ShaderDesc& VOP_KorvanShader::desc() const
{
    return *static_cast<const VOP_KorvanOperator*>(getOperator())->shaderDesc;
}

unsigned VOP_KorvanShader::getNumVisibleInputs() const { return static_cast<unsigned>(desc().inputs.size()); }

unsigned VOP_KorvanShader::getNumVisibleOutputs() const
{
    return static_cast<unsigned>(desc().outputCount());
}

const char* VOP_KorvanShader::inputLabel(unsigned i) const
{
    return i < desc().inputs.size() ? desc().inputs[i]->label.c_str() : "Invalid";
}

/// Never null.
const char* VOP_KorvanShader::inputName(int i) const
{
    const bool exists = i >= 0 && static_cast<std::size_t>(i) < desc().inputs.size();
    return exists ? desc().inputs[i]->name.c_str() : "invalid";
}

void VOP_KorvanShader::getInputNameSubclass(UT_String& name, int i) const { setText(name, inputName(i)); }

VOP_Type VOP_KorvanShader::getInputTypeSubclass(int i)
{
    return static_cast<VOP_Type>(desc().inputs.at(i)->vopType);
}

void VOP_KorvanShader::getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types)
{
    types.append(static_cast<VOP_Type>(desc().inputs.at(i)->vopType));
}

int VOP_KorvanShader::getInputFromNameSubclass(const UT_String& name) const
{
    return name.isstring() ? desc().inputIndex(name.buffer()) : -1;
}

const char* VOP_KorvanShader::outputLabel(unsigned i) const { return desc().outputLabel(i); }

void VOP_KorvanShader::getOutputNameSubclass(UT_String& name, int i) const { setText(name, outputLabel(i)); }

VOP_Type VOP_KorvanShader::getOutputTypeSubclass(int i)
{
    return i == 0 ? static_cast<VOP_Type>(desc().vopOutputType) : VOP_TYPE_FLOAT;
}

int VOP_KorvanShader::getOutputFromName(const UT_String& name) const
{
    return name.isstring() ? desc().outputIndex(name.buffer()) : 0;
}

bool VOP_KorvanShader::updateParmsFlags()
{
    // The base is not called: the host has applied the templates' conditions, and inputs are handled here.
    bool changed = false;
    // Of all slots, connected or not, so that a parameter is enabled again when its last wire goes.
    const int slots = static_cast<int>(inputSlotCount(*this));
    for (int i = 0; i < slots; ++i)
        changed |= updateParmFlags(i);
    return changed;
}

/// Deliberate: `i` is both an input and a parameter index, although the two lists do not line up. See
/// ParmFlags.MixParameterAndInputIndices.
bool VOP_KorvanShader::updateParmFlags(int i)
{
    if (i >= getNumParms())
        return false;
    PRM_Parm& parm = getParm(i);
    const bool before = isEnabled(parm);

    enableParm(inputName(i), !getInput(i));
    const bool free = isEnabled(parm);
    updateParmDisableConditional(parm, true, nullptr);
    // A connected input's parameter stays disabled whatever its condition says.
    if (!free && isEnabled(parm))
        enableParm(i, false);
    return isEnabled(parm) != before;
}

bool VOP_KorvanShader::runCreateScript()
{
    int detail = desc().lod();
    if (!detail && getNumVisibleInputs() > most_inputs_in_full_detail)
        detail = VOP_OPT_MEDIUM_FLAG;
    return showDetailAroundMiddle(*this, static_cast<char>(detail)) && VOP_Node::runCreateScript();
}

void VOP_KorvanShader::nodeEventHandler(OP_Node*, void* callee, OP_EventType type, void* data)
{
    if (type == OP_PARM_CHANGED)
        static_cast<VOP_KorvanShader*>(callee)->handleParmChanged(parmIndexOf(data));
}

} // namespace shop
} // namespace zelk
