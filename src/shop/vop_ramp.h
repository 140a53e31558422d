#ifndef ZELK_SHOP_VOP_RAMP_H
#define ZELK_SHOP_VOP_RAMP_H

#include "utils_nodes.h"
#include "vop_utility.h"

#include <OP/OP_Value.h>
#include <PRM/PRM_Template.h>

#include <vector>

struct KtArray;

namespace zelk
{
namespace ipr
{
class Delta;
}

namespace shop
{

/// All that a float and a colour ramp differ in.
struct RampKind
{
    struct Output
    {
        const char* label; ///< name too
        VOP_Type type;
    };

    const char* opName;
    const char* opLabel;
    const char* entryName;       ///< renderer's name of the ramp's shader
    const char* valueParm;       ///< a key's value, '#' for the instance: "ramp#value"
    int valueSize;               ///< components of a value
    const char* valueInputName;  ///< before the key's number: "value"
    const char* valueInputLabel; ///< after it: " : Value"
    VOP_Type valueInputType;
    const char* valueKey;        ///< of the value array in a change record
    int valueElementType;        ///< KR_TYPE_... of that array
    std::vector<Output> outputs; ///< in order
};

/// An editable ramp. Every key is offered as three inputs too: position, value, interpolation.
///
/// Parameters, by index: 0 "input", 1 "type", 2 "ramp", then three of each key. Inputs: 0 "Input", then three of each key.
class VOP_KorvanRamp : public VOP_KorvanUtility
{
public:
    /// The text is overwritten by the next call.
    const char* inputLabel(unsigned i) const override;
    const char* outputLabel(unsigned i) const override;
    /// One, and three of each key that the ramp has at time 0.
    unsigned getNumVisibleInputs() const override;
    unsigned getNumVisibleOutputs() const override;

    /// Shows connected connectors only, keeping the tile's middle in place, then runs the host's own script.
    bool runCreateScript() override;

protected:
    VOP_KorvanRamp(OP_Network* net, const char* name, OP_Operator* op);
    ~VOP_KorvanRamp() override;

    /// Makes the type of a kind's nodes; the caller adds it to a table.
    static VOP_KorvanUtilityOperator* makeOperator(const RampKind& kind, OP_Constructor construct,
                                                   PRM_Template* templates);

    virtual const RampKind& kind() const = 0;

    /// Disables what connected inputs drive.
    bool updateParmsFlags() override;

    void getInputNameSubclass(UT_String& name, int i) const override;
    /// Always 0, whatever the name.
    int getInputFromNameSubclass(const UT_String& name) const override;
    VOP_Type getInputTypeSubclass(int i) override;
    /// Appends nothing.
    void getAllowedInputTypesSubclass(unsigned i, UT_Array<VOP_Type>& types) override;
    VOP_Type getOutputTypeSubclass(int i) override;

private:
    static void nodeEventHandler(OP_Node* caller, void* callee, OP_EventType type, void* data);

    int keyCount(double time) const;
    void disconnectRemovedKeys(const NodeLife::Watch& life);

    /// Drops the wires of keys that are gone, and tells the running render about one edit; any edit of a key sends the
    /// whole ramp.
    void handleParmChanged(int parmIndex);
    void publishInput(const NodeLife::Watch& life);
    void publishPattern(const NodeLife::Watch& life);
    void publishKeys(const NodeLife::Watch& life);
    void publishRecord(ipr::Delta& delta) const;

    NodeLife m_life;
};

/// The three parameters of a ramp node, in order. What they are made of lives for the process.
PRM_Template rampInputTemplate();
PRM_Template rampPatternTemplate();
PRM_Template rampKeysTemplate(PRM_MultiType type);

} // namespace shop
} // namespace zelk

#endif
