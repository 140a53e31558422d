#ifndef ZELK_SHOP_VOP_SHADERS_H
#define ZELK_SHOP_VOP_SHADERS_H

#include "utils_nodes.h"

#include <OP/OP_Value.h>
#include <VOP/VOP_Node.h>
#include <VOP/VOP_Operator.h>

#include <string>
#include <vector>

class OP_OperatorTable;

namespace zelk
{
namespace ipr
{
class Delta;
}

namespace shop
{

class ShaderDesc;
struct ParmDesc;

/// Adds one operator for each shader and each plug-in camera of the renderer.
///
/// Starts the renderer, loads its plug-ins ("korvan/plugins" on the host's path, then `KORVAN_PLUGIN_PATH`)
/// and its metadata ("korvan/metadata" on the host's path), and ends it again: descriptions keep what they
/// need. The operators and their descriptions live for the process. Reports nothing but progress: what is
/// missing or does not load contributes nothing.
void registerShaders(OP_OperatorTable* table);

/// The type of a shader's nodes.
class VOP_KorvanOperator : public VOP_Operator
{
public:
    using VOP_Operator::VOP_Operator;

    /// Gives the shader's own help address, or the general page on shaders. Always true.
    bool getOpHelpURL(UT_String& url) override;

    /// Gives the shader's category. False, and `path` untouched, when it has none.
    bool getOpTabSubMenuPath(UT_String& path) override;

    /// What the type was made from; set right after construction, not owned.
    const ShaderDesc* shaderDesc = nullptr;
};

/// A node that stands for one shader of the renderer. All it knows is in its operator's description.
class VOP_KorvanShader : public VOP_Node
{
public:
    static OP_Node* myConstructor(OP_Network* net, const char* name, OP_Operator* op);

    const char* inputLabel(unsigned i) const override;
    const char* outputLabel(unsigned i) const override;
    unsigned getNumVisibleInputs() const override;
    unsigned getNumVisibleOutputs() const override;

    /// Chooses the tile's level of detail and keeps its middle in place, then runs the host's own script.
    bool runCreateScript() override;

    int getOutputFromName(const UT_String& name) const override;

protected:
    VOP_KorvanShader(OP_Network* net, const char* name, OP_Operator* op);
    ~VOP_KorvanShader() override;

    /// Disables the parameters of connected inputs. The host has applied the templates' conditions before.
    bool updateParmsFlags() override;

    void getInputNameSubclass(UT_String& name, int i) const override;
    int getInputFromNameSubclass(const UT_String& name) const override;
    /// Throws std::out_of_range for an input that does not exist.
    VOP_Type getInputTypeSubclass(int i) override;
    /// Appends the input's own type only. Throws std::out_of_range for an input that does not exist.
    void getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types) override;
    void getOutputNameSubclass(UT_String& name, int i) const override;
    VOP_Type getOutputTypeSubclass(int i) override;

private:
    static void nodeEventHandler(OP_Node* caller, void* callee, OP_EventType type, void* data);

    const ShaderDesc& desc() const;
    const char* inputName(int i) const;
    bool updateParmFlags(int i);

    /// Tells the running render about one edited parameter. Silent for what no render has: interface-only
    /// parameters, array elements, the image shader's file, and a camera shader that no camera uses.
    void handleParmChanged(int parmIndex);
    void sendToNode(const ParmDesc& parm, const NodeLife::Watch& life) const;
    /// To those that look through this node, which must have a wire.
    void sendToCameras(const ParmDesc& parm, const NodeLife::Watch& life) const;
    /// Puts the entry's name and the parameter's value into a record. False when that ended this node.
    bool fill(ipr::Delta& delta, const ParmDesc& parm, const NodeLife::Watch& life) const;
    std::string fullPath() const;

    NodeLife m_life;
};

} // namespace shop
} // namespace zelk

#endif
