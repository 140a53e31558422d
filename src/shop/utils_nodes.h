#ifndef ZELK_SHOP_UTILS_NODES_H
#define ZELK_SHOP_UTILS_NODES_H

#include <OP/OP_Value.h>

#include <memory>
#include <string>

class OP_Node;
class UT_String;
class VOP_Node;

// What the node classes share.

namespace zelk
{
namespace shop
{

/// Operator of the networks in which our nodes may be created; the mask of every type.
extern const char* const network_mask;

/// First part of the address of a type's page in the online help.
extern const char* const help_root;

/// Gives the host a copy of a text, which is not null: what it asks us for by a text of its own may be gone at once.
void setText(UT_String& target, const char* text);

/// Returns "/shop/korvan_vopnet1/noise1".
std::string fullPathOf(const OP_Node& node);

/// Returns the parameter index that a parameter event carries; negative when many parameters changed at once.
int parmIndexOf(const void* eventData);

/// Returns the first visible input with that label; -1 when there is none. A null name equals a null label only.
int findInputByLabel(const VOP_Node& node, const UT_String& name);

/// Number of input slots, connected or not.
unsigned inputSlotCount(const OP_Node& node);

/// For wireCount() and firstReader(): whichever output a wire leaves from.
const int every_output = -1;

/// Number of wires that leave one output of a node.
unsigned wireCount(const OP_Node& node, int output);

/// Returns the node that the first of those wires goes to; null when there is none.
OP_Node* firstReader(const OP_Node& node, int output);

/// Room for a label that is given out by pointer until the next one takes its place. Its address stays the same, so that a
/// pointer to an earlier label never dangles; the text of a std::string would move when it is assigned to.
class LabelText
{
public:
    LabelText() : m_text() {}
    /// Returns a copy of `label`, which is cut after 63 bytes.
    const char* keep(const std::string& label);

private:
    char m_text[64];
};

/// Lets a node of ours find out whether it survived something that calls foreign code. The node holds one; a Watch is made
/// before. Handlers of the node's own events use it, not NodeWatch: it allocates nothing for an event, and it leaves alone
/// the list of listeners, which the host is walking at that moment.
class NodeLife
{
public:
    NodeLife() : m_life(std::make_shared<char>()) {}

    class Watch
    {
    public:
        explicit Watch(const NodeLife& life) : m_life(life.m_life) {}
        /// True once the node is gone.
        bool isOver() const { return m_life.expired(); }

    private:
        std::weak_ptr<char> m_life;
    };

private:
    NodeLife(const NodeLife&);
    NodeLife& operator=(const NodeLife&);

    std::shared_ptr<char> m_life;
};

/// The same for a node of any class: it listens to the node for as long as it lives itself. Costs an entry in the node's
/// list of listeners.
class NodeWatch
{
public:
    explicit NodeWatch(OP_Node& node);
    ~NodeWatch();

    bool isOver() const { return !m_node; }

private:
    NodeWatch(const NodeWatch&);
    NodeWatch& operator=(const NodeWatch&);

    static void onEvent(OP_Node* node, void* self, OP_EventType type, void* data);

    OP_Node* m_node; ///< null once it is deleted
};

/// Shows another level of a node's connectors (VOP_OPT_..._FLAG; 0 leaves it as it is) and moves the node so that the
/// middle of its tile stays where it was. False when somebody who heard of it deleted the node.
bool showDetailAroundMiddle(VOP_Node& node, char detail);

} // namespace shop
} // namespace zelk

#endif
