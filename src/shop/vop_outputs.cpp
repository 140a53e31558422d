#include "vop_outputs.h"

#include "utils_host_memory.h"
#include "utils_nodes.h"
#include "utils_visibility.h"

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <PRM/PRM_Default.h>
#include <PRM/PRM_Name.h>

#include <algorithm>

namespace zelk
{
namespace shop
{

namespace
{

PRM_Name spacer_name("spacer", "");
PRM_Name visibility_name("background_visibility", "Background Visibility");
PRM_Default visibility_default(255); // every bit, those without a meaning too

} // namespace

PRM_Template vop_korvan_output_templates[] = {PRM_Template()};

PRM_Template vop_korvan_environment_templates[] = {
    PRM_Template(PRM_LABEL, 1, &spacer_name),
    PRM_Template(PRM_BUTTONSTRIP, 1, &visibility_name, &visibility_default, &visibilityMenu()),
    PRM_Template(),
};

namespace
{

struct OutputRow
{
    const char* name;
    const char* label;
    OP_Constructor construct;
    PRM_Template* templates;
    unsigned flags;
    std::vector<InputDesc> inputs;
};

/// The output types, in the order of their registration.
std::vector<OutputRow> outputRows()
{
    return {
        {"korvan_material",
         "Material Output",
         VOP_KorvanOutputMaterial::myConstructor,
         vop_korvan_output_templates,
         0,
         {{"surface", "Surface", VOP_TYPE_VECTOR4},
          {"bump", "Bump", VOP_TYPE_FLOAT},
          {"displacement", "Displacement", VOP_TYPE_VECTOR},
          {"volume", "Volume", VOP_IMAGE3D_SHADER}}},
        {"korvan_environment",
         "Environment Output",
         VOP_KorvanOutputEnvironment::myConstructor,
         vop_korvan_environment_templates,
         0,
         {{"atmosphere", "Atmosphere", VOP_ATMOSPHERE_SHADER},
          {"background", "Background", VOP_TYPE_VECTOR4}}},
        {"korvan_light",
         "Light Output",
         VOP_KorvanOutputLight::myConstructor,
         vop_korvan_output_templates,
         OP_FLAG_UNORDERED,
         {{"color", "Color", VOP_TYPE_VECTOR}, {"light_filter", "Light Filter", VOP_LIGHT_SHADER}}},
        {"korvan_camera",
         "Camera Output",
         VOP_KorvanOutputCamera::myConstructor,
         vop_korvan_output_templates,
         0,
         {{"camera", "Camera", VOP_LENS_SHADER},
          {"uv_remap", "UV Remap", VOP_TYPE_VECTOR4},
          {"filtermap", "Filtermap", VOP_TYPE_VECTOR}}},
    };
}

VOP_KorvanOutputOperator* makeOperator(const OutputRow& row)
{
    VOP_KorvanOutputOperator* op = leakForHost<VOP_KorvanOutputOperator>(
        row.name, row.label, row.construct, row.templates, 0u, static_cast<unsigned>(VOP_VARIABLE_INOUT_MAX),
        network_mask, nullptr, row.flags, 0u);
    for (const InputDesc& input : row.inputs)
        op->inputs.push_back(leakForHost<InputDesc>(input));
    op->setIconName("VOP_output");
    return op;
}

/// Deliberate: tiles are redrawn when a parameter changes. When a wire changes the host redraws them by itself.
void redrawOnParmChange(VOP_KorvanOutput& node, OP_EventType type)
{
    if (type == OP_PARM_CHANGED)
        node.triggerUIChanged(OP_UICHANGE_ANY);
}

} // namespace

void registerOutputs(OP_OperatorTable* table)
{
    for (const OutputRow& row : outputRows())
        table->addOperator(makeOperator(row), nullptr);
}

bool VOP_KorvanOutputOperator::getOpHelpURL(UT_String& url)
{
    setText(url, (std::string(help_root) + "Output+Nodes").c_str());
    return true;
}

bool VOP_KorvanOutputOperator::getOpTabSubMenuPath(UT_String& path)
{
    setText(path, "Output");
    return true;
}

// --- All kinds --------------------------------------------------------------------------------------------------------

VOP_KorvanOutput::VOP_KorvanOutput(OP_Network* net, const char* name, OP_Operator* op)
    : VOP_Node(net, name, op)
{
    addOpInterest(this, nodeEventHandler);
}

VOP_KorvanOutput::~VOP_KorvanOutput() { removeOpInterest(this, nodeEventHandler); }

void VOP_KorvanOutput::nodeEventHandler(OP_Node*, void* callee, OP_EventType type, void*)
{
    redrawOnParmChange(*static_cast<VOP_KorvanOutput*>(callee), type);
}

const InputDesc& VOP_KorvanOutput::input(unsigned i) const
{
    return *static_cast<const VOP_KorvanOutputOperator*>(getOperator())->inputs.at(i);
}

const char* VOP_KorvanOutput::inputLabel(unsigned i) const { return input(i).token.c_str(); }

const char* VOP_KorvanOutput::outputLabel(unsigned) const { return "none"; }

unsigned VOP_KorvanOutput::getNumVisibleInputs() const
{
    return static_cast<unsigned>(static_cast<const VOP_KorvanOutputOperator*>(getOperator())->inputs.size());
}

unsigned VOP_KorvanOutput::getNumVisibleOutputs() const { return 0; }

bool VOP_KorvanOutput::runCreateScript()
{
    const NodeWatch life(*this); // whoever hears of the new name may delete the node
    getParent()->renameNode(this, defaultName());
    return !life.isOver() && VOP_Node::runCreateScript();
}

void VOP_KorvanOutput::getInputNameSubclass(UT_String& name, int i) const
{
    setText(name, inputLabel(static_cast<unsigned>(i)));
}

int VOP_KorvanOutput::getInputFromNameSubclass(const UT_String& name) const
{
    return findInputByLabel(*this, name);
}

VOP_Type VOP_KorvanOutput::getInputTypeSubclass(int i)
{
    return static_cast<VOP_Type>(input(static_cast<unsigned>(i)).type);
}

void VOP_KorvanOutput::getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types)
{
    types.append(static_cast<VOP_Type>(input(i).type));
}

void VOP_KorvanOutput::getOutputNameSubclass(UT_String& name, int i) const
{
    setText(name, outputLabel(static_cast<unsigned>(i)));
}

VOP_Type VOP_KorvanOutput::getOutputTypeSubclass(int) { return VOP_TYPE_UNDEF; }

// --- Each kind --------------------------------------------------------------------------------------------------------

// Deliberate: the base has a handler of its own, so that a change asks for two redraws.
template <typename Kind>
VOP_KorvanOutputKind<Kind>::VOP_KorvanOutputKind(OP_Network* net, const char* name, OP_Operator* op)
    : VOP_KorvanOutput(net, name, op)
{
    addOpInterest(this, nodeEventHandler);
}

template <typename Kind>
VOP_KorvanOutputKind<Kind>::~VOP_KorvanOutputKind()
{
    removeOpInterest(this, nodeEventHandler);
}

template <typename Kind>
void VOP_KorvanOutputKind<Kind>::nodeEventHandler(OP_Node*, void* callee, OP_EventType type, void*)
{
    redrawOnParmChange(*static_cast<VOP_KorvanOutputKind*>(callee), type);
}

const char* VOP_KorvanOutputMaterial::defaultName() const { return "OUT_material"; }

const char* VOP_KorvanOutputEnvironment::defaultName() const { return "OUT_environment"; }

const char* VOP_KorvanOutputCamera::defaultName() const { return "OUT_camera"; }

const char* VOP_KorvanOutputLight::defaultName() const { return "OUT_light"; }

unsigned VOP_KorvanOutputLight::orderedInputs() const { return 1; }

unsigned VOP_KorvanOutputLight::getNumVisibleInputs() const { return std::max(nInputs() + 1, 2u); }

const char* VOP_KorvanOutputLight::inputLabel(unsigned i) const
{
    static LabelText label;
    return label.keep(i == 0 ? "Color" : "Light Filter " + std::to_string(i + 1 - orderedInputs()));
}

VOP_Type VOP_KorvanOutputLight::getInputTypeSubclass(int i)
{
    return i == 0 ? VOP_TYPE_VECTOR : VOP_LIGHT_SHADER;
}

void VOP_KorvanOutputLight::getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types)
{
    types.append(getInputTypeSubclass(static_cast<int>(i)));
}

} // namespace shop
} // namespace zelk
