#ifndef ZELK_SHOP_VOP_OUTPUTS_H
#define ZELK_SHOP_VOP_OUTPUTS_H

#include <OP/OP_Value.h>
#include <PRM/PRM_Template.h>
#include <VOP/VOP_Node.h>
#include <VOP/VOP_Operator.h>

#include <string>
#include <vector>

class OP_OperatorTable;

namespace zelk
{
namespace shop
{

/// Parameters of the outputs that have none, and those of the environment output.
extern PRM_Template vop_korvan_output_templates[];
extern PRM_Template vop_korvan_environment_templates[];

/// Adds the four output types to the VOP table: material, environment, light, camera.
void registerOutputs(OP_OperatorTable* table);

/// One input of an output type.
struct InputDesc
{
    std::string token; ///< name, which the tile shows as label too
    std::string label; ///< for people; kept here only
    int type;          ///< VOP_Type
};

/// The type of output nodes.
class VOP_KorvanOutputOperator : public VOP_Operator
{
public:
    using VOP_Operator::VOP_Operator;

    /// Gives the page on output nodes. Always true.
    bool getOpHelpURL(UT_String& url) override;

    /// Gives "Output". Always true.
    bool getOpTabSubMenuPath(UT_String& path) override;

    /// Inputs of the nodes, in order; set right after construction, not owned.
    std::vector<InputDesc*> inputs;
};

/// A terminal of a shader network: inputs, and no outputs.
///
/// Labels and types of an input that does not exist throw std::out_of_range.
class VOP_KorvanOutput : public VOP_Node
{
public:
    const char* inputLabel(unsigned i) const override;
    /// Returns "none": there is no output.
    const char* outputLabel(unsigned i) const override;
    unsigned getNumVisibleInputs() const override;
    unsigned getNumVisibleOutputs() const override;

    /// Takes the type's default name, made unique by the host, then runs the host's own script.
    bool runCreateScript() override;

protected:
    VOP_KorvanOutput(OP_Network* net, const char* name, OP_Operator* op);
    ~VOP_KorvanOutput() override;

    void getInputNameSubclass(UT_String& name, int i) const override;
    int getInputFromNameSubclass(const UT_String& name) const override;
    VOP_Type getInputTypeSubclass(int i) override;
    /// Appends the input's own type only.
    void getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types) override;
    void getOutputNameSubclass(UT_String& name, int i) const override;
    VOP_Type getOutputTypeSubclass(int i) override;

    /// Name of a new node: "OUT_material".
    virtual const char* defaultName() const = 0;

private:
    static void nodeEventHandler(OP_Node* caller, void* callee, OP_EventType type, void* data);

    const InputDesc& input(unsigned i) const;
};

/// What each kind of output node has for itself: how it is made, and an event handler beside the base's.
template <typename Kind>
class VOP_KorvanOutputKind : public VOP_KorvanOutput
{
public:
    static OP_Node* myConstructor(OP_Network* net, const char* name, OP_Operator* op)
    {
        return new Kind(net, name, op);
    }

protected:
    VOP_KorvanOutputKind(OP_Network* net, const char* name, OP_Operator* op);
    ~VOP_KorvanOutputKind() override;

private:
    static void nodeEventHandler(OP_Node* caller, void* callee, OP_EventType type, void* data);
};

class VOP_KorvanOutputMaterial : public VOP_KorvanOutputKind<VOP_KorvanOutputMaterial>
{
protected:
    friend class VOP_KorvanOutputKind<VOP_KorvanOutputMaterial>;
    using VOP_KorvanOutputKind::VOP_KorvanOutputKind;
    const char* defaultName() const override;
};

class VOP_KorvanOutputEnvironment : public VOP_KorvanOutputKind<VOP_KorvanOutputEnvironment>
{
protected:
    friend class VOP_KorvanOutputKind<VOP_KorvanOutputEnvironment>;
    using VOP_KorvanOutputKind::VOP_KorvanOutputKind;
    const char* defaultName() const override;
};

class VOP_KorvanOutputCamera : public VOP_KorvanOutputKind<VOP_KorvanOutputCamera>
{
protected:
    friend class VOP_KorvanOutputKind<VOP_KorvanOutputCamera>;
    using VOP_KorvanOutputKind::VOP_KorvanOutputKind;
    const char* defaultName() const override;
};

/// A light's colour, and as many light filters as are wired: there is always a free input after the last one.
class VOP_KorvanOutputLight : public VOP_KorvanOutputKind<VOP_KorvanOutputLight>
{
public:
    /// "Color", "Light Filter 1", ... The text is overwritten by the next call.
    const char* inputLabel(unsigned i) const override;
    unsigned getNumVisibleInputs() const override;
    unsigned orderedInputs() const override;

protected:
    friend class VOP_KorvanOutputKind<VOP_KorvanOutputLight>;
    using VOP_KorvanOutputKind::VOP_KorvanOutputKind;
    const char* defaultName() const override;
    VOP_Type getInputTypeSubclass(int i) override;
    void getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types) override;
};

} // namespace shop
} // namespace zelk

#endif
