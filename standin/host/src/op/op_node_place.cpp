#include <OP/OP_Network.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

constexpr fpreal far_edge = 1e6; // the editor's safe area reaches this far each way
constexpr fpreal gap = 0.5;      // free space that automatic placement leaves between tiles
constexpr fpreal column = 1.0;   // and between a node and what feeds it

fpreal clampToSafeArea(fpreal wanted, fpreal present)
{
    return std::isnan(wanted) ? present : std::min(std::max(wanted, -far_edge), far_edge);
}

struct Box
{
    fpreal x, y, w, h;

    fpreal right() const { return x + w; }
    fpreal top() const { return y + h; }
};

Box boxOf(const OP_Node& node) { return {node.getX(), node.getY(), node.getW(), node.getH()}; }

bool overlap(const Box& a, const Box& b)
{
    return a.x < b.right() + gap && b.x < a.right() + gap && a.y < b.top() + gap && b.y < a.top() + gap;
}

std::vector<Box> boxesOfInputs(const OP_Node& node)
{
    std::vector<Box> boxes;
    for (unsigned i = 0; i < node.nInputs(); ++i)
        if (const OP_Node* input = node.getInput(i))
            boxes.push_back(boxOf(*input));
    return boxes;
}

std::vector<Box> boxesOfOutputs(const OP_Node& node)
{
    std::vector<Box> boxes;
    const unsigned count = node.nOutputs();
    for (unsigned i = 0; i < count; ++i)
        boxes.push_back(boxOf(*node.getOutput(i)));
    return boxes;
}

std::vector<Box> boxesOfOthers(const OP_Node& node)
{
    std::vector<Box> boxes;
    const OP_Network* network = node.getParent();
    for (int i = 0; network && i < network->getNchildren(); ++i)
        if (network->getChild(i) != &node)
            boxes.push_back(boxOf(*network->getChild(i)));
    return boxes;
}

/// The box around boxes; there is at least one.
Box around(const std::vector<Box>& boxes)
{
    Box all = boxes.front();
    for (const Box& box : boxes)
    {
        const fpreal right = std::max(all.right(), box.right());
        const fpreal top = std::max(all.top(), box.top());
        all.x = std::min(all.x, box.x);
        all.y = std::min(all.y, box.y);
        all.w = right - all.x;
        all.h = top - all.y;
    }
    return all;
}

/// Where the node would stand if there were room: right of its inputs, else left of its outputs, else below the rest.
Box wantedPlace(const OP_Node& node, const std::vector<Box>& others, bool relativeToInputs)
{
    Box place = boxOf(node);
    const std::vector<Box> inputs = relativeToInputs ? boxesOfInputs(node) : std::vector<Box>();
    const std::vector<Box> outputs = boxesOfOutputs(node);
    if (!inputs.empty())
    {
        const Box all = around(inputs);
        place.x = all.right() + column;
        place.y = all.y + (all.h - place.h) / 2;
    }
    else if (!outputs.empty())
    {
        const Box all = around(outputs);
        place.x = all.x - column - place.w;
        place.y = all.y + (all.h - place.h) / 2;
    }
    else
    {
        const Box all = around(others);
        place.x = all.x;
        place.y = all.y - gap - place.h;
    }
    return place;
}

/// Moves a box down past everything that is in its way.
void makeRoom(Box& place, std::vector<Box> others)
{
    std::sort(others.begin(), others.end(), [](const Box& a, const Box& b) { return a.top() > b.top(); });
    for (const Box& other : others)
        if (overlap(place, other))
            place.y = other.y - gap - place.h;
}

} // namespace

bool OP_Node::setXYWithBoundsChecks(fpreal x, fpreal y)
{
    const fpreal newX = clampToSafeArea(x, getX());
    const fpreal newY = clampToSafeArea(y, getY());
    if (newX == getX() && newY == getY())
        return false;
    setXY(newX, newY);
    opChanged(OP_UI_MOVED);
    return true;
}

void OP_Node::moveToGoodPosition(bool relativetoinputs, bool, bool, bool)
{
    const std::vector<Box> others = boxesOfOthers(*this);
    if (others.empty())
        return;
    Box place = wantedPlace(*this, others, relativetoinputs);
    makeRoom(place, others);
    setXYWithBoundsChecks(place.x, place.y);
}
