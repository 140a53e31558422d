#include <VOP/VOP_Node.h>

#include "vop_builtin.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace
{

constexpr fpreal tile_width = 1.5;
constexpr fpreal tile_base = 0.4; // height of a tile that shows no connector
constexpr fpreal tile_row = 0.2;  // and what each row of connectors adds

/// A text that stays until the thread's next such question, like every label made on the fly.
const char* numberedLabel(const char* kind, unsigned idx)
{
    thread_local std::string label;
    label = std::string(kind) + " " + std::to_string(idx + 1);
    return label.c_str();
}

std::string numberedName(const char* kind, int idx) { return kind + std::to_string(idx + 1); }

} // namespace

VOP_Node::VOP_Node(OP_Network* parent, const char* name, OP_Operator* entry)
    : OP_Network(parent, name, entry), myDetail(0)
{
    if (entry && entry->getIsNetwork())
        setOperatorTable(getOperatorTable(VOP_TABLE_NAME));
}

VOP_Node::~VOP_Node() {}

const char* VOP_Node::getOpType() const { return VOP_OPTYPE_NAME; }
OP_OpTypeId VOP_Node::getOpTypeID() const { return VOP_OPTYPE_ID; }
const char* VOP_Node::getChildType() const { return VOP_OPTYPE_NAME; }
OP_OpTypeId VOP_Node::getChildTypeID() const { return VOP_OPTYPE_ID; }
VOP_Node* VOP_Node::castToVOPNode() { return this; }
const VOP_Node* VOP_Node::castToVOPNode() const { return this; }

bool VOP_Node::runCreateScript() { return OP_Network::runCreateScript(); }
VOP_Type VOP_Node::getShaderType() const { return VOP_TYPE_UNDEF; }

// --- connectors -------------------------------------------------------------------------------------------------

const char* VOP_Node::inputLabel(unsigned idx) const
{
    const char* label = getOperator() ? getOperator()->inputLabel(idx) : nullptr;
    return label ? label : numberedLabel("Input", idx);
}

const char* VOP_Node::outputLabel(unsigned idx) const { return numberedLabel("Output", idx); }

unsigned VOP_Node::getNumVisibleInputs() const
{
    const unsigned most = maxInputs();
    return most < VOP_VARIABLE_INOUT_MAX ? most : nInputs() + 1;
}

unsigned VOP_Node::getNumVisibleOutputs() const
{
    const unsigned most = maxOutputs();
    return most < VOP_VARIABLE_INOUT_MAX ? most : 1;
}

unsigned VOP_Node::orderedInputs() const { return OP_Network::orderedInputs(); }
unsigned VOP_Node::maxOutputs() const { return OP_Network::maxOutputs(); }

void VOP_Node::getInputName(UT_String& in, int idx) const { getInputNameSubclass(in, idx); }
void VOP_Node::getOutputName(UT_String& out, int idx) const { getOutputNameSubclass(out, idx); }
int VOP_Node::getInputFromName(const UT_String& in) const { return getInputFromNameSubclass(in); }

int VOP_Node::getOutputFromName(const UT_String& out) const
{
    const int count = static_cast<int>(getNumVisibleOutputs());
    for (int i = 0; i < count; ++i)
    {
        UT_String name;
        getOutputName(name, i);
        if (name == out)
            return i;
    }
    return -1;
}

VOP_Type VOP_Node::getInputType(int idx)
{
    VOP_TypeInfo info;
    getInputTypeInfoSubclass(info, idx);
    return info.getType();
}

VOP_Type VOP_Node::getOutputType(int idx)
{
    VOP_TypeInfo info;
    getOutputTypeInfoSubclass(info, idx);
    return info.getType();
}

void VOP_Node::getAllowedInputTypes(unsigned idx, VOP_VopTypeArray& types)
{
    VOP_VopTypeInfoArray infos;
    getAllowedInputTypeInfosSubclass(idx, infos);
    for (const VOP_TypeInfo& info : infos)
        types.append(info.getType());
}

void VOP_Node::getInputNameSubclass(UT_String& in, int idx) const
{
    in.harden(numberedName("input", idx).c_str());
}
void VOP_Node::getOutputNameSubclass(UT_String& out, int idx) const
{
    out.harden(numberedName("output", idx).c_str());
}

int VOP_Node::getInputFromNameSubclass(const UT_String& in) const
{
    const int count = static_cast<int>(getNumVisibleInputs());
    for (int i = 0; i < count; ++i)
    {
        UT_String name;
        getInputName(name, i);
        if (name == in)
            return i;
    }
    return -1;
}

VOP_Type VOP_Node::getInputTypeSubclass(int) { return VOP_TYPE_UNDEF; }
VOP_Type VOP_Node::getOutputTypeSubclass(int) { return VOP_TYPE_UNDEF; }
void VOP_Node::getAllowedInputTypesSubclass(unsigned, VOP_VopTypeArray&) {}

void VOP_Node::getInputTypeInfoSubclass(VOP_TypeInfo& info, int idx)
{
    info.setType(getInputTypeSubclass(idx));
}
void VOP_Node::getOutputTypeInfoSubclass(VOP_TypeInfo& info, int idx)
{
    info.setType(getOutputTypeSubclass(idx));
}

void VOP_Node::getAllowedInputTypeInfosSubclass(unsigned idx, VOP_VopTypeInfoArray& infos)
{
    VOP_VopTypeArray types;
    getAllowedInputTypesSubclass(idx, types);
    for (const VOP_Type type : types)
        infos.append(VOP_TypeInfo(type));
}

// --- what is connected ------------------------------------------------------------------------------------------

bool VOP_Node::isConnected(int inputidx, bool recursive)
{
    if (inputidx < 0)
        return false;
    return recursive ? findSimpleInput(inputidx) != nullptr
                     : getInput(static_cast<unsigned>(inputidx)) != nullptr;
}

VOP_Node* VOP_Node::findSimpleInput(int idx)
{
    if (idx < 0)
        return nullptr;
    standin::VopSource source = standin::directSource(*this, static_cast<unsigned>(idx));
    std::set<std::pair<VOP_Node*, unsigned>> seen; // wires may form a circle
    while (source.node && seen.insert({source.node, source.output}).second)
    {
        standin::VopSource from{nullptr, 0};
        if (!standin::passesOn(source, from))
            return source.node;
        source = from;
    }
    return nullptr;
}

bool VOP_Node::updateParmsFlags()
{
    bool changed = OP_Network::updateParmsFlags();
    const int count = static_cast<int>(getNumVisibleInputs());
    for (int i = 0; i < count; ++i)
    {
        UT_String name;
        getInputName(name, i);
        PRM_Parm* parm = name.isstring() ? getParmPtr(name) : nullptr;
        if (!parm)
            continue;
        if (isConnected(i, false))
            changed |= enableParm(name, 0);
        else
            changed |= updateParmDisableConditional(*parm, true);
    }
    return changed;
}

// --- the tile ---------------------------------------------------------------------------------------------------

int VOP_Node::setExtraFlag(char flag, int on)
{
    if (flag != VOP_OPT_LOW_FLAG && flag != VOP_OPT_MEDIUM_FLAG && flag != VOP_OPT_HIGH_FLAG)
        return OP_Network::setExtraFlag(flag, on);
    const char detail = on ? flag : myDetail == flag ? char(0) : myDetail;
    if (detail == myDetail)
        return 1;
    myDetail = detail;
    const int id = getUniqueId();
    opChanged(OP_FLAG_CHANGED);
    if (lookupNode(id))
        triggerUIChanged();
    return 1;
}

int VOP_Node::getExtraFlag(char flag)
{
    const bool isDetail =
        flag == VOP_OPT_LOW_FLAG || flag == VOP_OPT_MEDIUM_FLAG || flag == VOP_OPT_HIGH_FLAG;
    return isDetail ? flag == myDetail : OP_Network::getExtraFlag(flag);
}

unsigned VOP_Node::connectedOutputs() const
{
    unsigned count = 0;
    const int visible = static_cast<int>(getNumVisibleOutputs());
    for (int i = 0; i < visible; ++i)
        count += nOutputs(i) ? 1 : 0;
    return count;
}

unsigned VOP_Node::shownRows() const
{
    if (myDetail == VOP_OPT_LOW_FLAG)
        return 0;
    if (myDetail == VOP_OPT_MEDIUM_FLAG)
        return std::max(nConnectedInputs(), connectedOutputs());
    return std::max(getNumVisibleInputs(), getNumVisibleOutputs());
}

fpreal VOP_Node::getW() const { return tile_width; }
fpreal VOP_Node::getH() const { return tile_base + tile_row * shownRows(); }
