#include "vop_ramp.h"

#include "utils_host_memory.h"
#include "utils_nodes.h"
#include "utils_publish.h"

#include <CH/CH_Manager.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_Parm.h>
#include <PRM/PRM_Shared.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_String.h>

#include <kr.h>

#include <zelk/ipr/delta.h>

#include <memory>

namespace zelk
{
namespace shop
{

namespace
{

const int input_parm_index = 0;
const int pattern_parm_index = 1;
const int ramp_parm_index = 2;
const int first_key_parm_index = 3;

/// What an input is about.
enum class RampInput
{
    input,
    position,
    value,
    interpolation,
    none
};

RampInput rampInput(int i)
{
    if (i < 0)
        return RampInput::none;
    if (i == 0)
        return RampInput::input;
    static const RampInput of_a_key[] = {RampInput::position, RampInput::value, RampInput::interpolation};
    return of_a_key[(i - 1) % 3];
}

/// Number of the key that an input belongs to, from 1.
std::string keyNumber(unsigned i) { return std::to_string((i - 1) / 3 + 1); }

struct DestroyArray
{
    void operator()(KtArray* array) const { KrArrayDestroy(array); }
};

/// A renderer array of one key, filled from the instances of a ramp for as long as the ramp lives.
class KeyArray
{
public:
    KeyArray(const OP_Node& ramp, const NodeLife::Watch& life, int firstInstance, int count, double time,
             int elementType)
        : m_ramp(ramp),
          m_life(life),
          m_first(firstInstance),
          m_count(count),
          m_time(time),
          m_array(
              KrArrayAllocate(static_cast<std::uint32_t>(count), 1, static_cast<std::uint8_t>(elementType)))
    {
    }

    /// Evaluates `components` floats of each key, narrowed to single precision.
    void fillFloats(const char* parm, int components)
    {
        float* target = m_array ? static_cast<float*>(m_array->data) : nullptr;
        for (int key = 0; target && key < m_count && !m_life.isOver(); ++key)
        {
            const int instance = m_first + key;
            for (int c = 0; c < components && !m_life.isOver(); ++c)
                *target++ = static_cast<float>(m_ramp.evalFloatInst(parm, &instance, c, m_time));
        }
    }

    void fillInts(const char* parm)
    {
        std::int32_t* target = m_array ? static_cast<std::int32_t*>(m_array->data) : nullptr;
        for (int key = 0; target && key < m_count && !m_life.isOver(); ++key)
        {
            const int instance = m_first + key;
            *target++ = static_cast<std::int32_t>(m_ramp.evalIntInst(parm, &instance, 0, m_time));
        }
    }

    /// Makes the array the value of a change record, which must not outlive this.
    void put(ipr::DeltaParm& parm) const
    {
        parm.type = KR_TYPE_ARRAY;
        parm.value.array = m_array.get();
    }

private:
    const OP_Node& m_ramp;
    const NodeLife::Watch& m_life;
    const int m_first;
    const int m_count;
    const double m_time;
    const std::unique_ptr<KtArray, DestroyArray> m_array; // null, which the renderer reported, without memory
};

} // namespace

// Made on first use: the tables of the two kinds are filled while the plug-in loads, in no order with this file.

PRM_Template rampInputTemplate()
{
    static PRM_Name name("input", "Input");
    return PRM_Template(PRM_FLT_J, 1, &name);
}

PRM_Template rampPatternTemplate()
{
    static PRM_Name name("type", "Pattern");
    static PRM_Default custom(0.0f, "custom");
    static PRM_Name pattern_menu_items[] = {
        PRM_Name("custom", "Custom"), PRM_Name("u", "U"),
        PRM_Name("v", "V"),           PRM_Name("diagonal", "Diagonal"),
        PRM_Name("radial", "Radial"), PRM_Name("circular", "Circular"),
        PRM_Name("box", "Box"),       PRM_Name(),
    };
    static PRM_ChoiceList menu(PRM_CHOICELIST_SINGLE, pattern_menu_items);
    return PRM_Template(PRM_STRING, 1, &name, &custom, &menu);
}

PRM_Template rampKeysTemplate(PRM_MultiType type)
{
    static PRM_Name name("ramp", "Ramp");
    return PRM_Template(type, nullptr, 1, &name, PRMtwoDefaults);
}

VOP_KorvanUtilityOperator* VOP_KorvanRamp::makeOperator(const RampKind& kind, OP_Constructor construct,
                                                        PRM_Template* templates)
{
    VOP_KorvanUtilityOperator* op = leakForHost<VOP_KorvanUtilityOperator>(
        kind.opName, kind.opLabel, construct, templates, 0u, static_cast<unsigned>(VOP_VARIABLE_INOUT_MAX),
        network_mask, nullptr, 0u, static_cast<unsigned>(kind.outputs.size()));
    op->tabSubMenuPath = "Texture";
    op->setIconName("VOP_rampparm");
    return op;
}

VOP_KorvanRamp::VOP_KorvanRamp(OP_Network* net, const char* name, OP_Operator* op)
    : VOP_KorvanUtility(net, name, op)
{
    addOpInterest(this, nodeEventHandler);
}

VOP_KorvanRamp::~VOP_KorvanRamp() { removeOpInterest(this, nodeEventHandler); }

int VOP_KorvanRamp::keyCount(double time) const
{
    return static_cast<int>(evalIntT(ramp_parm_index, 0, time, SYSgetSTID()));
}

// --- Connectors -------------------------------------------------------------------------------------------------------

unsigned VOP_KorvanRamp::getNumVisibleInputs() const { return 3 * static_cast<unsigned>(keyCount(0)) + 1; }

const char* VOP_KorvanRamp::inputLabel(unsigned i) const
{
    static LabelText label;
    switch (rampInput(static_cast<int>(i)))
    {
    case RampInput::input:
        return label.keep("Input");
    case RampInput::position:
        return label.keep(keyNumber(i) + " : Position");
    case RampInput::value:
        return label.keep(keyNumber(i) + kind().valueInputLabel);
    case RampInput::interpolation:
        return label.keep(keyNumber(i) + " : Interpolation");
    case RampInput::none:
        break;
    }
    return label.keep("<error>");
}

void VOP_KorvanRamp::getInputNameSubclass(UT_String& name, int i) const
{
    const unsigned index = static_cast<unsigned>(i);
    switch (rampInput(i))
    {
    case RampInput::input:
        setText(name, "input");
        break;
    case RampInput::position:
        setText(name, ("position" + keyNumber(index)).c_str());
        break;
    case RampInput::value:
        setText(name, (kind().valueInputName + keyNumber(index)).c_str());
        break;
    case RampInput::interpolation:
        setText(name, ("interp" + keyNumber(index)).c_str());
        break;
    case RampInput::none:
        setText(name, "<error>");
        break;
    }
}

VOP_Type VOP_KorvanRamp::getInputTypeSubclass(int i)
{
    switch (rampInput(i))
    {
    case RampInput::input:
    case RampInput::position:
        return VOP_TYPE_FLOAT;
    case RampInput::value:
        return kind().valueInputType;
    case RampInput::interpolation:
        return VOP_TYPE_INTEGER;
    case RampInput::none:
        break;
    }
    return VOP_TYPE_UNDEF;
}

// Deliberate: looking up any name gives the first input. See RampNode.AnswersTheFirstInputToEveryName.
int VOP_KorvanRamp::getInputFromNameSubclass(const UT_String&) const { return 0; }

void VOP_KorvanRamp::getAllowedInputTypesSubclass(unsigned, UT_Array<VOP_Type>&) {}

unsigned VOP_KorvanRamp::getNumVisibleOutputs() const { return static_cast<unsigned>(kind().outputs.size()); }

const char* VOP_KorvanRamp::outputLabel(unsigned i) const
{
    return i < kind().outputs.size() ? kind().outputs[i].label : nullptr;
}

VOP_Type VOP_KorvanRamp::getOutputTypeSubclass(int i)
{
    const bool exists = i >= 0 && static_cast<std::size_t>(i) < kind().outputs.size();
    return exists ? kind().outputs[static_cast<std::size_t>(i)].type : VOP_TYPE_UNDEF;
}

// --- Parameters -------------------------------------------------------------------------------------------------------

bool VOP_KorvanRamp::updateParmsFlags()
{
    bool changed = enableParm(input_parm_index, !getInput(0));
    // Deliberate: parameter i goes with input i - 1, and the last per-key parameter is left alone. Do not line them up;
    // see RampEnabling.LeavesTheLastPerKeyParameterAlone.
    const int end = 3 * keyCount(0) + 2;
    for (int i = first_key_parm_index; i < end; ++i)
        changed |= enableParm(i, !getInput(static_cast<unsigned>(i - 1)));
    return changed;
}

bool VOP_KorvanRamp::runCreateScript()
{
    return showDetailAroundMiddle(*this, VOP_OPT_MEDIUM_FLAG) && VOP_KorvanUtility::runCreateScript();
}

void VOP_KorvanRamp::nodeEventHandler(OP_Node*, void* callee, OP_EventType type, void* data)
{
    if (type == OP_PARM_CHANGED)
        static_cast<VOP_KorvanRamp*>(callee)->handleParmChanged(parmIndexOf(data));
}

// --- Live updates -----------------------------------------------------------------------------------------------------

void VOP_KorvanRamp::handleParmChanged(int parmIndex)
{
    // Whoever hears of the redraw, or of a wire that goes, may delete this node; so may an expression that is evaluated.
    const NodeLife::Watch life(m_life);
    triggerUIChanged(OP_UICHANGE_ANY);
    if (!life.isOver())
        disconnectRemovedKeys(life);
    if (life.isOver() || parmIndex < 0)
        return;
    if (parmIndex == input_parm_index)
        publishInput(life);
    else if (parmIndex == pattern_parm_index)
        publishPattern(life);
    else
        publishKeys(life);
}

void VOP_KorvanRamp::disconnectRemovedKeys(const NodeLife::Watch& life)
{
    const unsigned visible = getNumVisibleInputs();
    for (unsigned i = nInputs(); !life.isOver() && i > visible; --i)
        setInput(i - 1, nullptr);
}

void VOP_KorvanRamp::publishInput(const NodeLife::Watch& life)
{
    ipr::DeltaParm value = ipr::DeltaParm();
    value.type = KR_TYPE_FLOAT;
    value.value.flt = static_cast<float>(evalFloatT(input_parm_index, 0, CHgetEvalTime(), SYSgetSTID()));
    if (life.isOver())
        return;
    ipr::Delta delta;
    delta[getParm(input_parm_index).getToken()] = value;
    publishRecord(delta);
}

void VOP_KorvanRamp::publishPattern(const NodeLife::Watch& life)
{
    UT_String token;
    evalStringT(token, pattern_parm_index, 0, CHgetEvalTime(), SYSgetSTID());
    if (life.isOver())
        return;
    ipr::DeltaParm value = ipr::DeltaParm();
    value.type = KR_TYPE_ENUM;
    value.str = token.isstring() ? token.buffer() : "";
    ipr::Delta delta;
    delta[getParm(pattern_parm_index).getToken()] = value;
    publishRecord(delta);
}

void VOP_KorvanRamp::publishKeys(const NodeLife::Watch& life)
{
    const RampKind& ramp = kind();
    const double time = CHgetEvalTime();
    const int count = keyCount(time), first = getParm(ramp_parm_index).getMultiStartOffset();
    KeyArray positions(*this, life, first, count, time, KR_TYPE_FLOAT);
    KeyArray values(*this, life, first, count, time, ramp.valueElementType);
    KeyArray interpolations(*this, life, first, count, time, KR_TYPE_INT);
    positions.fillFloats("ramp#pos", 1);
    values.fillFloats(ramp.valueParm, ramp.valueSize);
    interpolations.fillInts("ramp#interp");
    if (life.isOver())
        return;

    ipr::Delta delta;
    positions.put(delta["position"]);
    values.put(delta[ramp.valueKey]);
    interpolations.put(delta["interpolation"]);
    publishRecord(delta);
}

void VOP_KorvanRamp::publishRecord(ipr::Delta& delta) const
{
    delta.entryName = kind().entryName;
    delta.nodePath = fullPathOf(*this);
    publish(delta);
}

} // namespace shop
} // namespace zelk
