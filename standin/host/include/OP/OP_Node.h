#ifndef OP_NODE_H
#define OP_NODE_H

#include <OP/OP_DataTypes.h>
#include <OP/OP_Error.h>
#include <OP/OP_Input.h>
#include <OP/OP_NetworkBoxItem.h>
#include <OP/OP_NodeFlags.h>
#include <OP/OP_NodeList.h>
#include <OP/OP_OpTypeId.h>
#include <OP/OP_Operator.h>
#include <OP/OP_Parameters.h>
#include <OP/OP_Value.h>
#include <UT/UT_String.h>
#include <UT/UT_StringArray.h>
#include <UT/UT_StringHolder.h>
#include <UT/UT_WorkBuffer.h>

#include <memory>

class OP_Network;
class SHOP_Node;
class VOP_Node;

#define VOP_TABLE_NAME "Vop"
#define VOP_OPTYPE_NAME "VOP"
#define SHOP_TABLE_NAME "Shop"
#define SHOP_OPTYPE_NAME "SHOP"
#define VOPNET_TABLE_NAME "VopNet"
#define SOP_TABLE_NAME "Sop"
#define OBJ_TABLE_NAME "Object"
#define ROP_TABLE_NAME "Driver"

/// A node: an instance of an operator, inside a network.
///
/// OP_Network::createNode() makes nodes and OP_Network::destroyNode() ends them. Events are delivered on the
/// thread that caused them, in the order in which interests were registered; a callback may remove interests
/// and may delete the node, after which nothing here touches it any more. A caller that changes a node and
/// goes on using it asks lookupNode() whether it is still there.
class OP_Node : public OP_Parameters, public OP_NetworkBoxItem
{
public:
    virtual ~OP_Node();

    // --- identity -------------------------------------------------------------------------------

    /// getName() comes from OP_Parameters.
    /// Renames through the parent network; prefer OP_Network::renameNode(). Non-zero on success.
    virtual int setName(const UT_String& name, OP_RenameAction action = OP_RENAME_NORMAL);

    /// "/shop/korvan_vopnet1/noise1"; "/" for the root.
    void getFullPath(UT_String& path) const;
    UT_StringHolder getFullPath() const;

    OP_Network* getParent() const;
    OP_Operator* getOperator() const;

    virtual const char* getOpType() const;
    virtual OP_OpTypeId getOpTypeID() const;
    /// True for nodes that can hold other nodes.
    virtual int isNetwork() const;

    virtual VOP_Node* castToVOPNode();
    virtual const VOP_Node* castToVOPNode() const;
    virtual SHOP_Node* castToSHOPNode();
    virtual const SHOP_Node* castToSHOPNode() const;
    virtual OP_Network* castToOPNetwork();
    virtual const OP_Network* castToOPNetwork() const;

    /// A number that no other node of this process has or will have, from 1.
    int getUniqueId() const;
    /// The living node with that number; null after it was deleted.
    static OP_Node* lookupNode(int id);

    /// True from the moment that destroyNode() begins with this node.
    int isBeingDeleted() const;

    // --- looking up -----------------------------------------------------------------------------

    /// The node at an absolute path, or at one relative to this node ("../x", "child", "."). Null when there
    /// is none; an empty or null path gives null.
    OP_Node* findNode(const char* path) const;
    VOP_Node* findVOPNode(const char* path) const;

    // --- wires ----------------------------------------------------------------------------------

    /// The node that feeds input `idx`; null when unconnected or out of range.
    OP_Node* getInput(unsigned idx, bool mark_used = false) const;

    /// The slot of input `idx`; null when it was never made, unless `grow` asks to make it. The node owns it.
    virtual OP_Input* getInputReference(unsigned idx, bool grow);
    virtual OP_Input* getInputReferenceConst(unsigned idx) const;

    /// Feeds input `idx` from an output of `op`; null disconnects. Checks ranges only: UT_ERROR_ABORT when
    /// `idx` is not below maxInputs(), `outputIdx` is not below the source's maxOutputs(), or the two nodes
    /// are not in one network, and then nothing changes. Sends OP_INPUT_REWIRED, then OP_INPUT_CHANGED here
    /// and downstream.
    virtual OP_ERROR setInput(unsigned idx, OP_Node* op, unsigned outputIdx = 0);

    /// Index of the last connected input plus one; 0 when nothing is connected.
    unsigned nInputs() const;
    /// Number of slots, connected or not.
    unsigned getInputsArraySize() const;
    unsigned nConnectedInputs(bool mark_used = false) const;

    /// Number of wires that leave this node, from one output or, with -1, from all.
    unsigned nOutputs(int output_idx = -1) const;
    /// The node at the end of the n-th of those wires, in the order in which they were made; null out of
    /// range.
    OP_Node* getOutput(unsigned idx, int output_idx = -1) const;

    virtual unsigned minInputs() const;
    virtual unsigned maxInputs() const;
    virtual unsigned maxOutputs() const;
    /// How many connectors are shown. Nobody asks a node about connectors beyond these counts.
    virtual unsigned getNumVisibleInputs() const;
    virtual unsigned getNumVisibleOutputs() const;
    /// With unordered inputs: how many of the first inputs keep their places all the same.
    virtual unsigned orderedInputs() const;
    bool hasUnorderedInputs() const;

    virtual const char* inputLabel(unsigned idx) const;
    virtual const char* outputLabel(unsigned idx) const;

    // --- events ---------------------------------------------------------------------------------

    /// A pair is stored once however often it is added; removing an absent one does nothing.
    void addOpInterest(void* callee, OP_EventMethod method);
    void removeOpInterest(void* callee, OP_EventMethod method);
    int hasOpInterest(void* callee, OP_EventMethod method) const;

    /// The node's own reaction, then the interests, then OP_INPUT_CHANGED to what is downstream of a change
    /// of value or wiring. Parameter events are held back while a scene loads.
    virtual void opChanged(OP_EventType reason, void* data = 0);

    /// Asks for a redraw of the tile, connectors included: sends OP_UI_CHANGED with the type as its pointer.
    void triggerUIChanged(OP_UIChangeType type = OP_UICHANGE_ANY);
    /// How many redraws of the tile were asked for so far.
    int getUIChangeCount() const;

    // --- creation, flags, text ------------------------------------------------------------------

    /// Runs the type's creation script, if the search path has one. False: the script deleted the node. Tools
    /// call it after createNode(); loading a scene never does.
    virtual bool runCreateScript();

    /// Text beside the name on the tile; empty means none.
    virtual void getDescriptiveName(UT_String& name) const;

    OP_NodeFlags& flags();
    const OP_NodeFlags& flags() const;
    /// Flags named by letters, each class its own; unknown letters are ignored and read as 0. Returns
    /// non-zero when the letter is known.
    virtual int setExtraFlag(char flag, int on);
    virtual int getExtraFlag(char flag);

    // --- place ----------------------------------------------------------------------------------

    /// Moves the node, kept within -1e6 to 1e6 each way, and sends OP_UI_MOVED. True when it moved. Not a
    /// number is refused: the coordinate stays as it was.
    bool setXYWithBoundsChecks(fpreal x, fpreal y);

    /// Places the node beside its inputs, else beside its outputs, else below the others, overlapping
    /// nothing. The other nodes stay where they are whatever the last three arguments allow.
    void moveToGoodPosition(bool relativetoinputs = true, bool moveinputs = true, bool moveoutputs = true,
                            bool moveunconnected = true);

    // --- user data ------------------------------------------------------------------------------

    /// Texts stored under names; saved and copied with the node. An empty text is not an absent one.
    void setUserData(const UT_String& name, const UT_String& value, bool add_undo);
    /// False when absent; `value` then stays as it is.
    bool getUserData(const UT_String& name, UT_String& value) const;
    bool getUserData(const UT_String& name, UT_StringHolder& value) const;
    bool hasUserData(const UT_String& name) const;
    /// False when absent.
    bool deleteUserData(const UT_String& name, bool add_undo);
    /// Appends the names, sorted.
    void getUserDataNames(UT_StringArray& names) const;

    // --- answers for the parameter list, see OP_Parameters ---------------------------------------------------------

    /// Sends OP_PARM_CHANGED; the node may be gone afterwards.
    virtual void parmChanged(int index);
    /// This node as an OP_Node, for callbacks.
    virtual void* parmData();
    virtual int connectedInputCount() const;
    virtual bool isInputConnected(int index) const;

protected:
    OP_Node(OP_Network* parent, const char* name, OP_Operator* op);

    virtual void doGetFullPath(UT_WorkBuffer& str) const;
    virtual OP_Parameters* findRelative(const char* path);

    /// Makes slots up to `count`; there are never fewer slots than were made.
    void growInputs(unsigned count);

private:
    friend class OP_Network;
    struct State;

    OP_Node(const OP_Node&);
    OP_Node& operator=(const OP_Node&);

    bool deliver(OP_EventType reason, void* data);
    bool notifyDownstream();
    bool connectSlot(unsigned idx, OP_Node* op, unsigned outputIdx);
    void detachSlot(unsigned idx);
    void disconnectAll();
    unsigned closeGap(unsigned idx);

    std::shared_ptr<State> myState;
};

inline VOP_Node* OPcastToVOPNode(OP_Node* node) { return node ? node->castToVOPNode() : 0; }
inline const VOP_Node* OPcastToVOPNode(const OP_Node* node) { return node ? node->castToVOPNode() : 0; }
inline SHOP_Node* OPcastToSHOPNode(OP_Node* node) { return node ? node->castToSHOPNode() : 0; }
inline const SHOP_Node* OPcastToSHOPNode(const OP_Node* node) { return node ? node->castToSHOPNode() : 0; }

/// The node as one of its kind; null when it is another kind or null.
#define CAST_VOPNODE(node) OPcastToVOPNode(node)
#define CAST_SHOPNODE(node) OPcastToSHOPNode(node)

#endif
