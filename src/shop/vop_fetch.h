#ifndef ZELK_SHOP_VOP_FETCH_H
#define ZELK_SHOP_VOP_FETCH_H

#include "utils_nodes.h"
#include "vop_utility.h"

#include <OP/OP_Value.h>

#include <cstdint>
#include <vector>

namespace zelk
{
namespace shop
{

/// A node that has the outputs of another VOP node, its target.
///
/// The outputs are those that the target had when the parameter "target" was set last. They are kept in the node's user
/// data "outputs", as "NAME:LABEL:TYPE;" for each, so that they are there in a scene that was just loaded, even before
/// the target is. A ':' or ';' in a name or label is not escaped, and such an output does not read back correctly.
class VOP_KorvanFetch : public VOP_KorvanUtility
{
public:
    /// One output, as the target has it.
    struct OutputData
    {
        std::string name;
        std::string label;
        std::int32_t type; ///< VOP_Type
    };

    static OP_Node* myConstructor(OP_Network* net, const char* name, OP_Operator* op);
    static OP_Operator* newOperator();

    /// Returns "<none>": there is no input.
    const char* inputLabel(unsigned i) const override;
    /// Null for an output that does not exist.
    const char* outputLabel(unsigned i) const override;
    unsigned getNumVisibleInputs() const override;
    unsigned getNumVisibleOutputs() const override;

    /// The target's path as it was typed; "Invalid Path" when there is no VOP node at it.
    void getDescriptiveName(UT_String& name) const override;

protected:
    VOP_KorvanFetch(OP_Network* net, const char* name, OP_Operator* op);
    ~VOP_KorvanFetch() override;

    VOP_Type getInputTypeSubclass(int i) override;
    /// Appends nothing.
    void getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types) override;
    /// VOP_TYPE_UNDEF for an output that does not exist.
    VOP_Type getOutputTypeSubclass(int i) override;

private:
    static void nodeEventHandler(OP_Node* caller, void* callee, OP_EventType type, void* data);

    void handleParmChanged(int parmIndex);
    VOP_Node* findTarget(const std::string& path) const;
    // Whoever hears of a wire may delete this node, or the one at the other end.
    void dropWires(const NodeLife::Watch& life);
    void moveWiresToLastOutput(unsigned oldCount, const NodeLife::Watch& life);
    /// Feeds the first input that reads `output` (any with `every_output`) from the last output instead; from nothing
    /// when there is none.
    void moveOneWire(int output);

    std::vector<OutputData> userDataOutputs() const;
    void storeUserData();
    const OutputData* loadedOutput(unsigned i) const;

    mutable std::vector<OutputData> outputs;
    std::string descriptive_name;
    mutable bool outputs_loaded; ///< `outputs` is what the user data says
    NodeLife m_life;
};

} // namespace shop
} // namespace zelk

#endif
