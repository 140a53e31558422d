#include <OP/OP_Node.h>

#include "op_loading.h"
#include "op_node_state.h"

#include <algorithm>
#include <cstdint>
#include <set>

namespace
{

bool isParmEvent(OP_EventType type) { return type >= OP_PARM_UICHANGED && type <= OP_PARM_CHANNELS; }

/// True for changes that make what is downstream out of date.
bool reachesDownstream(OP_EventType type)
{
    return type == OP_PARM_CHANGED || type == OP_PARM_ANIMATED || type == OP_PARM_CHANNELS ||
           type == OP_INPUT_REWIRED;
}

/// True for changes that enable and hide conditions may depend on.
bool changesParmStates(OP_EventType type) { return reachesDownstream(type); }

/// The ids of all nodes downstream of one, nearest first, each once, that node itself not among them.
std::vector<int> idsDownstream(const OP_Node& start)
{
    std::vector<int> ids;
    std::set<const OP_Node*> seen{&start};
    std::vector<const OP_Node*> queue{&start};
    for (std::size_t next = 0; next < queue.size(); ++next)
    {
        const unsigned count = queue[next]->nOutputs();
        for (unsigned i = 0; i < count; ++i)
        {
            const OP_Node* node = queue[next]->getOutput(i);
            if (!seen.insert(node).second)
                continue;
            queue.push_back(node);
            ids.push_back(node->getUniqueId());
        }
    }
    return ids;
}

} // namespace

void OP_Node::addOpInterest(void* callee, OP_EventMethod method)
{
    if (!hasOpInterest(callee, method))
        myState->interests.push_back({callee, method});
}

void OP_Node::removeOpInterest(void* callee, OP_EventMethod method)
{
    auto& interests = myState->interests;
    interests.erase(std::remove(interests.begin(), interests.end(), State::Interest{callee, method}),
                    interests.end());
}

int OP_Node::hasOpInterest(void* callee, OP_EventMethod method) const
{
    const auto& interests = myState->interests;
    return std::find(interests.begin(), interests.end(), State::Interest{callee, method}) != interests.end();
}

// Callbacks may add and remove interests and may delete the node, so a copy of the list is walked, each entry is
// looked up again before it is called, and the state is held beyond the node's life. Returns whether the node lives.
bool OP_Node::deliver(OP_EventType reason, void* data)
{
    const std::shared_ptr<State> state = myState;
    for (const State::Interest& interest : std::vector<State::Interest>(state->interests))
    {
        if (!state->alive)
            return false;
        if (std::find(state->interests.begin(), state->interests.end(), interest) != state->interests.end())
            interest.method(this, interest.callee, reason, data);
    }
    return state->alive;
}

// Returns whether the node lives.
bool OP_Node::notifyDownstream()
{
    const std::shared_ptr<State> state = myState;
    if (state->outputs.empty())
        return true;
    for (const int id : idsDownstream(*this))
        if (OP_Node* node = lookupNode(id))
            node->opChanged(OP_INPUT_CHANGED);
    return state->alive;
}

void OP_Node::opChanged(OP_EventType reason, void* data)
{
    if (isParmEvent(reason) && standin::loadingDepth() > 0)
        return;
    if (changesParmStates(reason))
        refreshParms();
    if (reason == OP_UI_CHANGED)
        ++myState->uiChanges;
    if (deliver(reason, data) && reachesDownstream(reason))
        notifyDownstream();
}

void OP_Node::triggerUIChanged(OP_UIChangeType type)
{
    opChanged(OP_UI_CHANGED, reinterpret_cast<void*>(static_cast<std::intptr_t>(type)));
}

int OP_Node::getUIChangeCount() const { return myState->uiChanges; }
