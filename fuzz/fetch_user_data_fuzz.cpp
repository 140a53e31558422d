// Text as what a fetch node's scene says about its outputs: counts, labels, types, wires, then a target of its own.
#include "fuzzing.h"
#include "host_world.h"

#include <CH/CH_ExprLanguage.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Node.h>

#include <algorithm>

namespace
{
struct World
{
    World()
    {
        startQuietHost();
        container = &newNetwork("shop", "korvan_vopnet");
    }
    OP_Network* container;
};

// Every question about every output, and about those next to them.
void askOutputs(VOP_Node& node)
{
    const int count = static_cast<int>(node.getNumVisibleOutputs());
    for (int i = -1; i <= std::min(count, 64); ++i)
    {
        UT_String name;
        node.getOutputName(name, i);
        const bool isThere = i >= 0 && i < count;
        require((node.outputLabel(static_cast<unsigned>(i)) != nullptr) == isThere,
                "each output has a label");
        if (!isThere)
            require(node.getOutputType(i) == VOP_TYPE_UNDEF, "no output, no type");
        else
            node.getOutputType(i);
    }
    require(static_cast<int>(node.getNumVisibleOutputs()) == count, "asking changes nothing");
}

void retarget(VOP_Node& node, const char* path)
{
    node.setString(UT_String(path), CH_STRING_LITERAL, "target", 0, 0);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static World world;
    Input input(data, size);
    const unsigned wired = input.byte();
    const std::string text = input.rest();

    VOP_Node& fetch = *world.container->createNode("korvan::fetch")->castToVOPNode();
    OP_Node& reader = *world.container->createNode("null");
    VOP_Node& other = *world.container->createNode("korvan::fetch")->castToVOPNode();
    fetch.setUserData("outputs", text.c_str(), false);
    askOutputs(fetch);
    reader.setInput(0, &fetch, wired);

    UT_String path;
    fetch.getFullPath(path);
    retarget(other, path.buffer()); // mirrors whatever the text said
    require(other.getNumVisibleOutputs() == fetch.getNumVisibleOutputs(), "a fetch node mirrors its target");
    askOutputs(other);

    retarget(fetch, path.buffer()); // itself: no outputs
    require(fetch.getNumVisibleOutputs() == 0, "a node that fetches itself mirrors nothing");
    require(reader.getInput(0) == nullptr, "wires of outputs that are gone are dropped");
    retarget(fetch, "");
    for (OP_Node* node : {static_cast<OP_Node*>(&fetch), &reader, static_cast<OP_Node*>(&other)})
        world.container->destroyNode(node);
    forgetMessages();
    return 0;
}
