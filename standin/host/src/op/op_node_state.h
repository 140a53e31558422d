#ifndef STANDIN_OP_NODE_STATE_H
#define STANDIN_OP_NODE_STATE_H

#include <OP/OP_Node.h>

#include <map>
#include <string>
#include <vector>

/// What a node holds. It outlives the node for as long as somebody delivers an event, who sees by `alive` that the node
/// is gone.
struct OP_Node::State
{
    /// One end of a wire: an input of a node further down.
    struct Wire
    {
        OP_Node* node;
        unsigned input;
    };

    struct Interest
    {
        void* callee;
        OP_EventMethod method;

        bool operator==(const Interest& other) const
        {
            return callee == other.callee && method == other.method;
        }
    };

    bool alive = true;
    bool beingDeleted = false;
    int id = 0;
    OP_Network* parent = nullptr;
    OP_Operator* op = nullptr;

    std::vector<std::unique_ptr<OP_Input>> inputs; ///< slots; their addresses stay
    std::vector<Wire> outputs;                     ///< what this node feeds, in the order of wiring

    std::vector<Interest> interests;
    int uiChanges = 0;

    OP_NodeFlags flags;
    std::map<std::string, std::string> userData;
};

#endif
