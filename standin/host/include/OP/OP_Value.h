#ifndef OP_VALUE_H
#define OP_VALUE_H

#include <SYS/SYS_Types.h>

class OP_Node;

/// What happened to a node. The pointer that travels with an event is given behind each one; an index is cast
/// to the pointer and read back with `(int)(intptr_t)data`, -1 standing for "unknown or several".
enum OP_EventType
{
    OP_CHILD_CREATED = 0,            ///< the child
    OP_CHILD_REORDERED = 1,          ///< the child
    OP_NODE_DELETED = 2,             ///< nothing; the node still answers, its wires are gone
    OP_CHILD_DELETED = 3,            ///< the child, already out of the network, about to be destroyed
    OP_CHILD_UNSTOWED = 4,           ///< the child
    OP_NODE_STOWED = 5,              ///< nothing
    OP_NODE_HIDDEN = 6,              ///< nothing
    OP_CHILD_REVEALED = 7,           ///< the child
    OP_CHILD_HIDDEN = 8,             ///< the child
    OP_CHILD_SWITCHED = 9,           ///< the child
    OP_NAME_CHANGED = 10,            ///< nothing
    OP_INPUT_REWIRED = 11,           ///< index of the input
    OP_INPUT_CHANGED = 12,           ///< nothing; something upstream changed
    OP_FLAG_CHANGED = 13,            ///< nothing
    OP_PARM_UICHANGED = 14,          ///< index of the parameter; implied by the next three
    OP_PARM_CHANGED = 15,            ///< index of the parameter
    OP_PARM_ANIMATED = 16,           ///< index of the parameter
    OP_PARM_CHANNELS = 17,           ///< index of the parameter
    OP_UI_CHANGED = 18,              ///< an OP_UIChangeType: the tile is to be redrawn
    OP_UI_CURRENT_CHANGED = 19,      ///< a node
    OP_UI_EDIT_CURRENT_CHANGED = 20, ///< a node
    OP_UI_EDIT_NETWORK = 21,         ///< a network
    OP_UI_MOVED = 22,                ///< nothing
    OP_OUTPUT_CHANGED = 23           ///< nothing
};

/// Receives the events of a node it was registered with: the node, the object given at registration, what
/// happened, and the event's own pointer. May remove interests, its own too, and may delete the node.
typedef void (*OP_EventMethod)(OP_Node* caller, void* callee, OP_EventType type, void* data);

#endif
