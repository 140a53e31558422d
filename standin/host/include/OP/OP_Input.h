#ifndef OP_INPUT_H
#define OP_INPUT_H

class OP_Node;

/// One input slot of a node: which output of which node feeds it. The node that has the slot owns it; the
/// slot stays at its address for as long as the node lives.
class OP_Input
{
public:
    OP_Input() : myNode(0), myOutputIndex(0) {}

    /// The feeding node; null while nothing is connected.
    OP_Node* getNode() const { return myNode; }

    /// Which of the feeding node's outputs, from 0; 0 while nothing is connected.
    int getNodeOutputIndex() const { return myOutputIndex; }

private:
    friend class OP_Node;

    OP_Node* myNode;
    int myOutputIndex;
};

#endif
