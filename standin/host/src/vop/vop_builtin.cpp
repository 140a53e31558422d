#include "vop_builtin.h"

#include "../op/op_otl_types.h"
#include "../op/op_placeholder.h"
#include "../standin/builtin_types.h"

#include <VOP/VOP_Node.h>

#include <algorithm>
#include <string>

namespace standin
{

namespace
{

constexpr const char* any_network = "*";

void appendAllTypes(VOP_VopTypeArray& types)
{
    for (int type = VOP_TYPE_UNDEF; type < VOP_SHADER_END; ++type)
        if (type != VOP_SHADER_START)
            types.append(static_cast<VOP_Type>(type));
}

VOP_Type typeOf(const VopSource& source)
{
    const bool there = source.node && source.output < source.node->getNumVisibleOutputs();
    return there ? source.node->getOutputType(static_cast<int>(source.output)) : VOP_TYPE_UNDEF;
}

/// What the host's own nodes have in common: numbered inputs that take anything and have the type of what feeds them.
/// The outputs of some ask the inputs, and wires may form a circle, so a question that comes back to a node that is
/// being asked already ends with "undefined".
class HostVop : public VOP_Node
{
public:
    HostVop(OP_Network* parent, const char* name, OP_Operator* op) : VOP_Node(parent, name, op) {}

    template <typename Node>
    static OP_Node* make(OP_Network* net, const char* name, OP_Operator* op)
    {
        return new Node(net, name, op);
    }

protected:
    VOP_Type getInputTypeSubclass(int idx) override
    {
        if (m_asked)
            return VOP_TYPE_UNDEF;
        m_asked = true;
        const VOP_Type type = typeOf(directSource(*this, static_cast<unsigned>(idx)));
        m_asked = false;
        return type;
    }

    void getAllowedInputTypesSubclass(unsigned, VOP_VopTypeArray& types) override { appendAllTypes(types); }

private:
    bool m_asked = false;
};

class NullVop : public HostVop
{
public:
    using HostVop::HostVop;

protected:
    VOP_Type getOutputTypeSubclass(int) override { return getInputType(0); }
};

/// Adds any number of values; stands for the host's many language nodes.
class AddVop : public HostVop
{
public:
    using HostVop::HostVop;

    unsigned getNumVisibleInputs() const override { return std::max(nInputs() + 1, 2u); }

protected:
    /// All have the type of the first one.
    VOP_Type getInputTypeSubclass(int) override
    {
        const VOP_Type first = HostVop::getInputTypeSubclass(0);
        return first != VOP_TYPE_UNDEF ? first : VOP_TYPE_FLOAT;
    }

    void getAllowedInputTypesSubclass(unsigned, VOP_VopTypeArray& types) override
    {
        for (const VOP_Type type : {VOP_TYPE_FLOAT, VOP_TYPE_INTEGER, VOP_TYPE_VECTOR2, VOP_TYPE_VECTOR,
                                    VOP_TYPE_VECTOR4, VOP_TYPE_POINT, VOP_TYPE_NORMAL, VOP_TYPE_COLOR})
            types.append(type);
    }

    void getOutputNameSubclass(UT_String& out, int) const override { out.harden("sum"); }
    VOP_Type getOutputTypeSubclass(int) override { return getInputType(0); }
};

/// The end of a subnet: what is wired into it are the subnet's outputs.
class SubOutputVop : public HostVop
{
public:
    using HostVop::HostVop;

    void opChanged(OP_EventType reason, void* data) override
    {
        OP_Network* subnet = getParent();
        const int id = subnet ? subnet->getUniqueId() : 0;
        HostVop::opChanged(reason, data);
        if (reason == OP_INPUT_REWIRED && subnet && lookupNode(id))
            subnet->triggerUIChanged(OP_UICHANGE_CONNECTIONS);
    }
};

class SubnetVop : public HostVop
{
public:
    using HostVop::HostVop;

    unsigned getNumVisibleInputs() const override
    {
        const Connectors* inputs = declaredInputs();
        return inputs ? std::min(static_cast<unsigned>(inputs->size()), maxInputs())
                      : HostVop::getNumVisibleInputs();
    }

    unsigned getNumVisibleOutputs() const override
    {
        if (const Connectors* outputs = declaredOutputs())
            return static_cast<unsigned>(outputs->size());
        return end() ? end()->nInputs() : 0;
    }

    const char* inputLabel(unsigned idx) const override
    {
        const DialogConnector* declared = at(declaredInputs(), static_cast<int>(idx));
        return declared ? declared->label.c_str() : HostVop::inputLabel(idx);
    }

    const char* outputLabel(unsigned idx) const override
    {
        const DialogConnector* declared = at(declaredOutputs(), static_cast<int>(idx));
        return declared ? declared->label.c_str() : HostVop::outputLabel(idx);
    }

    /// How many outputs the node inside has that stands for the inputs.
    unsigned numPassedIn() const { return declaredInputs() ? getNumVisibleInputs() : nInputs(); }

    /// The node whose inputs are this subnet's outputs; null when it was deleted.
    SubOutputVop* end() const
    {
        for (int i = 0; i < getNchildren(); ++i)
            if (auto* node = dynamic_cast<SubOutputVop*>(getChild(i)))
                return node;
        return nullptr;
    }

    bool runCreateScript() override
    {
        if (!HostVop::runCreateScript())
            return false;
        if (assetScriptOf(getOperator()))
            return true; // its contents came with it
        for (const char* type : {"subinput", "suboutput"})
            if (OP_Node* child = createNodeUnfiltered(type))
                child->moveToGoodPosition();
        return true;
    }

    /// New inputs are new outputs of the node inside that stands for them.
    void opChanged(OP_EventType reason, void* data) override
    {
        const int id = getUniqueId();
        HostVop::opChanged(reason, data);
        if (reason == OP_INPUT_REWIRED && lookupNode(id))
            redrawChildren();
    }

protected:
    VOP_Type getInputTypeSubclass(int idx) override
    {
        const DialogConnector* declared = typedAt(declaredInputs(), idx);
        return declared ? declared->type : HostVop::getInputTypeSubclass(idx);
    }

    void getAllowedInputTypesSubclass(unsigned idx, VOP_VopTypeArray& types) override
    {
        if (!typedAt(declaredInputs(), static_cast<int>(idx)))
            HostVop::getAllowedInputTypesSubclass(idx, types);
    }

    void getInputNameSubclass(UT_String& in, int idx) const override
    {
        if (const DialogConnector* declared = at(declaredInputs(), idx))
            in.harden(declared->name.c_str());
        else
            HostVop::getInputNameSubclass(in, idx);
    }

    void getOutputNameSubclass(UT_String& out, int idx) const override
    {
        if (const DialogConnector* declared = at(declaredOutputs(), idx))
            out.harden(declared->name.c_str());
        else
            HostVop::getOutputNameSubclass(out, idx);
    }

    VOP_Type getOutputTypeSubclass(int idx) override
    {
        if (const DialogConnector* declared = typedAt(declaredOutputs(), idx))
            return declared->type;
        return end() ? end()->getInputType(idx) : VOP_TYPE_UNDEF;
    }

private:
    typedef std::vector<DialogConnector> Connectors;

    /// Null for a subnet that is no asset, and for an asset that tells nothing of its connectors.
    const Connectors* declaredInputs() const
    {
        const DialogScript* script = assetScriptOf(getOperator());
        return script && !script->inputs.empty() ? &script->inputs : nullptr;
    }

    const Connectors* declaredOutputs() const
    {
        const DialogScript* script = assetScriptOf(getOperator());
        return script && !script->outputs.empty() ? &script->outputs : nullptr;
    }

    static const DialogConnector* at(const Connectors* declared, int idx)
    {
        const bool there = declared && idx >= 0 && idx < static_cast<int>(declared->size());
        return there ? &(*declared)[static_cast<std::size_t>(idx)] : nullptr;
    }

    /// The same, but null as well when the type was left open.
    static const DialogConnector* typedAt(const Connectors* declared, int idx)
    {
        const DialogConnector* connector = at(declared, idx);
        return connector && connector->type != VOP_TYPE_UNDEF ? connector : nullptr;
    }

    void redrawChildren()
    {
        std::vector<int> ids(static_cast<std::size_t>(getNchildren()));
        for (std::size_t i = 0; i < ids.size(); ++i)
            ids[i] = getChild(static_cast<int>(i))->getUniqueId();
        for (const int id : ids)
            if (OP_Node* child = lookupNode(id))
                child->triggerUIChanged(OP_UICHANGE_CONNECTIONS);
    }
};

/// The beginning of a subnet: its outputs are what is wired into the subnet.
class SubInputVop : public HostVop
{
public:
    using HostVop::HostVop;

    unsigned getNumVisibleOutputs() const override
    {
        const auto* subnet = dynamic_cast<const SubnetVop*>(getParent());
        if (subnet)
            return subnet->numPassedIn();
        // What a placeholder is wired to outside does not tell what its type passed in.
        if (placeholderOf(getParent()))
            return getParent()->getNumVisibleInputs();
        return getParent() ? getParent()->nInputs() : 0;
    }

protected:
    void getOutputNameSubclass(UT_String& out, int idx) const override
    {
        if (const VOP_Node* subnet = CAST_VOPNODE(getParent()))
            subnet->getInputName(out, idx);
    }

    VOP_Type getOutputTypeSubclass(int idx) override
    {
        VOP_Node* subnet = CAST_VOPNODE(getParent());
        return subnet ? subnet->getInputType(idx) : VOP_TYPE_UNDEF;
    }
};

struct VopRow
{
    const char* name;
    const char* label;
    OP_Constructor construct;
    unsigned maxInputs;
    unsigned flags;
    unsigned numOutputs;
    const char* subMenu; ///< null for none
};

const VopRow vop_rows[] = {
    {"subnet", "Subnetwork", HostVop::make<SubnetVop>, VOP_VARIABLE_INOUT_MAX,
     OP_FLAG_NETWORK | OP_FLAG_PRIMARYSUBNET, VOP_VARIABLE_INOUT_MAX, nullptr},
    {"null", "Null", HostVop::make<NullVop>, 1, 0, 1, nullptr},
    {"subinput", "Subnet Input", HostVop::make<SubInputVop>, 0, 0, VOP_VARIABLE_INOUT_MAX, nullptr},
    {"suboutput", "Subnet Output", HostVop::make<SubOutputVop>, VOP_VARIABLE_INOUT_MAX, 0, 0, nullptr},
    {"add", "Add", HostVop::make<AddVop>, VOP_VARIABLE_INOUT_MAX, OP_FLAG_UNORDERED, 1, "Math"},
};

} // namespace

VopSource directSource(const VOP_Node& node, unsigned input)
{
    const OP_Input* slot = node.getInputReferenceConst(input);
    VOP_Node* source = slot ? CAST_VOPNODE(slot->getNode()) : nullptr;
    return {source, source ? static_cast<unsigned>(slot->getNodeOutputIndex()) : 0};
}

bool passesOn(const VopSource& source, VopSource& from)
{
    if (auto* null = dynamic_cast<NullVop*>(source.node))
        from = directSource(*null, 0);
    else if (auto* subnet = dynamic_cast<SubnetVop*>(source.node))
        from = subnet->end() ? directSource(*subnet->end(), source.output) : VopSource{nullptr, 0};
    else if (auto* begin = dynamic_cast<SubInputVop*>(source.node))
    {
        const VOP_Node* outer = CAST_VOPNODE(begin->getParent());
        from = outer ? directSource(*outer, source.output) : VopSource{nullptr, 0};
    }
    else
        return false;
    return true;
}

OP_Node* makeSubnetVop(OP_Network* net, const char* name, OP_Operator* op)
{
    return new SubnetVop(net, name, op);
}

void addVopTypes(OP_OperatorTable& table)
{
    for (const VopRow& row : vop_rows)
    {
        auto* op = new VOP_Operator(row.name, row.label, row.construct, nullptr, 0, row.maxInputs,
                                    any_network, nullptr, row.flags, row.numOutputs);
        op->setOpTabSubMenuPath(row.subMenu);
        table.addOperator(op);
    }
}

} // namespace standin
