#include "vop_fetch.h"

#include "utils.h"
#include "utils_host_memory.h"
#include "utils_nodes.h"

#include <OP/OP_Input.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_SpareData.h>
#include <PRM/PRM_Template.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_String.h>

#include <cstdlib>

namespace zelk
{
namespace shop
{

namespace
{

const char* const outputs_user_data = "outputs";
const char* const target_parm = "target";
const int target_parm_index = 0;

PRM_Name target_name(target_parm, "Target");
PRM_Template vop_korvan_fetch_templates[] = {
    PRM_Template(PRM_STRING_OPREF, PRM_TYPE_DYNAMIC_PATH, 1, &target_name, nullptr, nullptr, nullptr,
                 PRM_Callback(), &PRM_SpareData::vopPath),
    PRM_Template(),
};

/// A record with fewer fields than it should have reads as empty and 0.
VOP_KorvanFetch::OutputData parsedOutput(const std::string& record)
{
    std::vector<std::string> fields = split(record.c_str(), ':', false);
    fields.resize(3);
    return {fields[0], fields[1], static_cast<std::int32_t>(std::strtol(fields[2].c_str(), nullptr, 10))};
}

std::vector<VOP_KorvanFetch::OutputData> outputsOf(VOP_Node& target)
{
    std::vector<VOP_KorvanFetch::OutputData> outputs;
    const int count = static_cast<int>(target.getNumVisibleOutputs());
    for (int i = 0; i < count; ++i)
    {
        UT_String name;
        target.getOutputName(name, i);
        const char* label = target.outputLabel(static_cast<unsigned>(i));
        outputs.push_back(
            {name.isstring() ? name.buffer() : "", label ? label : "", target.getOutputType(i)});
    }
    return outputs;
}

} // namespace

OP_Operator* VOP_KorvanFetch::newOperator()
{
    VOP_KorvanUtilityOperator* op = leakForHost<VOP_KorvanUtilityOperator>(
        "korvan::fetch", "Fetch", myConstructor, vop_korvan_fetch_templates, 0u, 0u, network_mask, nullptr,
        0u, static_cast<unsigned>(VOP_VARIABLE_INOUT_MAX));
    op->tabSubMenuPath = "Utility";
    op->setIconName("OBJ_fetch");
    return op;
}

OP_Node* VOP_KorvanFetch::myConstructor(OP_Network* net, const char* name, OP_Operator* op)
{
    return new VOP_KorvanFetch(net, name, op);
}

VOP_KorvanFetch::VOP_KorvanFetch(OP_Network* net, const char* name, OP_Operator* op)
    : VOP_KorvanUtility(net, name, op), outputs_loaded(false)
{
    addOpInterest(this, nodeEventHandler);
}

VOP_KorvanFetch::~VOP_KorvanFetch() { removeOpInterest(this, nodeEventHandler); }

// --- Connectors -------------------------------------------------------------------------------------------------------

unsigned VOP_KorvanFetch::getNumVisibleInputs() const { return 0; }

const char* VOP_KorvanFetch::inputLabel(unsigned) const { return "<none>"; }

VOP_Type VOP_KorvanFetch::getInputTypeSubclass(int) { return VOP_TYPE_UNDEF; }

void VOP_KorvanFetch::getAllowedInputTypesSubclass(unsigned, UT_Array<VOP_Type>&) {}

unsigned VOP_KorvanFetch::getNumVisibleOutputs() const
{
    return static_cast<unsigned>(outputs_loaded ? outputs.size() : userDataOutputs().size());
}

const char* VOP_KorvanFetch::outputLabel(unsigned i) const
{
    const OutputData* output = loadedOutput(i);
    return output ? output->label.c_str() : nullptr;
}

VOP_Type VOP_KorvanFetch::getOutputTypeSubclass(int i)
{
    const OutputData* output = loadedOutput(static_cast<unsigned>(i));
    return output ? static_cast<VOP_Type>(output->type) : VOP_TYPE_UNDEF;
}

void VOP_KorvanFetch::getDescriptiveName(UT_String& name) const { setText(name, descriptive_name.c_str()); }

// --- User data --------------------------------------------------------------------------------------------------------

std::vector<VOP_KorvanFetch::OutputData> VOP_KorvanFetch::userDataOutputs() const
{
    UT_String text;
    getUserData(outputs_user_data, text);
    std::vector<OutputData> read;
    for (const std::string& record : split(text.buffer(), ';', false))
        read.push_back(parsedOutput(record));
    return read;
}

void VOP_KorvanFetch::storeUserData()
{
    std::string text;
    for (const OutputData& output : outputs)
        text += output.name + ":" + output.label + ":" + std::to_string(output.type) + ";";
    const bool undoable = false; // undoing the target's change sends its event, which stores the outputs anew
    setUserData(outputs_user_data, text.c_str(), undoable);
}

/// Reads the outputs of a scene that was loaded, when they are asked for first. Null for one that does not exist.
const VOP_KorvanFetch::OutputData* VOP_KorvanFetch::loadedOutput(unsigned i) const
{
    if (!outputs_loaded)
    {
        outputs = userDataOutputs();
        outputs_loaded = true;
    }
    return i < outputs.size() ? &outputs[i] : nullptr;
}

// --- The target -------------------------------------------------------------------------------------------------------

void VOP_KorvanFetch::nodeEventHandler(OP_Node*, void* callee, OP_EventType type, void* data)
{
    if (type == OP_PARM_CHANGED)
        static_cast<VOP_KorvanFetch*>(callee)->handleParmChanged(parmIndexOf(data));
}

VOP_Node* VOP_KorvanFetch::findTarget(const std::string& path) const
{
    OP_Node* node = findNode(path.c_str());
    return node && node->getOpTypeID() == VOP_OPTYPE_ID ? CAST_VOPNODE(node) : nullptr;
}

void VOP_KorvanFetch::handleParmChanged(int parmIndex)
{
    const NodeLife::Watch life(m_life);
    triggerUIChanged(OP_UICHANGE_ANY);
    if (life.isOver() || parmIndex != target_parm_index)
        return;

    UT_String text;
    evalStringT(text, target_parm, 0, 0, SYSgetSTID());
    if (life.isOver()) // its own expression may delete it
        return;
    const std::string path = text.isstring() ? text.buffer() : "";
    VOP_Node* target = findTarget(path);
    const unsigned oldCount = getNumVisibleOutputs();

    outputs.clear(); // first: a fetch node that is its own target mirrors nothing
    const std::vector<OutputData> mirrored = target ? outputsOf(*target) : std::vector<OutputData>();
    outputs = mirrored;
    outputs_loaded = true;
    descriptive_name = target || path.empty() ? path : "Invalid Path";

    if (outputs.empty())
        dropWires(life);
    else if (outputs.size() < oldCount)
        moveWiresToLastOutput(oldCount, life);
    if (!life.isOver())
        storeUserData();
}

void VOP_KorvanFetch::dropWires(const NodeLife::Watch& life)
{
    for (unsigned left = wireCount(*this, every_output); !life.isOver() && left > 0; --left)
        moveOneWire(every_output);
}

/// Deliberate: wires of outputs that are gone are not dropped, whatever the type of the last output.
void VOP_KorvanFetch::moveWiresToLastOutput(unsigned oldCount, const NodeLife::Watch& life)
{
    for (int gone = static_cast<int>(outputs.size()); !life.isOver() && gone < static_cast<int>(oldCount);
         ++gone)
        for (unsigned left = wireCount(*this, gone); !life.isOver() && left > 0; --left)
            moveOneWire(gone);
}

void VOP_KorvanFetch::moveOneWire(int output)
{
    OP_Node* reader = firstReader(*this, output);
    for (unsigned i = 0; reader && i < inputSlotCount(*reader); ++i)
    {
        const OP_Input* wire = reader->getInputReferenceConst(i);
        if (!wire || wire->getNode() != this || (output >= 0 && wire->getNodeOutputIndex() != output))
            continue;
        if (outputs.empty())
            reader->setInput(i, nullptr);
        else
            reader->setInput(i, this, static_cast<unsigned>(outputs.size() - 1));
        return;
    }
}

} // namespace shop
} // namespace zelk
