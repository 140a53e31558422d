// What an artist waits for: redrawing a tile asks for every label, each refresh of a node for its flags, each drag of a slider
// for an edit. None of them may allocate more than the host's and the library's own interfaces ask for.
#include "edited_nodes.h"

#include "vop_shaders.h"

#include <UT/UT_WorkBuffer.h>
#include <VOP/VOP_Node.h>
#include <zelk/ipr/delta.h>
#include <zelk/ipr/publisher.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace
{

thread_local std::size_t allocation_count = 0;

/// Allocations of this thread while something runs.
template <typename Run>
std::size_t allocationsOf(Run run)
{
    const std::size_t before = allocation_count;
    run();
    return allocation_count - before;
}

class OpenShader : public zelk::shop::VOP_KorvanShader
{
public:
    static bool updateFlagsOf(OP_Node& node)
    {
        return (static_cast<VOP_KorvanShader&>(node).*&OpenShader::updateParmsFlags)();
    }

    /// What the host is asked for each parameter, and nothing else.
    static void askHostFor(OP_Node& node, const char* parm, int index)
    {
        VOP_KorvanShader& shader = static_cast<VOP_KorvanShader&>(node);
        (shader.*&OpenShader::updateParmDisableConditional)(shader.getParm(index), true, nullptr);
        shader.enableParm(parm, 1);
    }

    /// The path, put together in a buffer of the host.
    static std::string pathOf(OP_Node& node)
    {
        UT_WorkBuffer path;
        (static_cast<VOP_KorvanShader&>(node).*&OpenShader::doGetFullPath)(path);
        return path.buffer();
    }
};

const int parm_count = 300;

/// A node with many parameters, each with an input, and a name that no short text holds.
class LongShader
{
public:
    LongShader()
    {
        Names names;
        for (int i = 0; i < parm_count; ++i)
            names.push_back("a_rather_long_parameter_name_" + std::to_string(i));
        session.renderer.shader("long").floats(names);
        session.registerAll();
        node = session.container().createNode("korvan::long")->castToVOPNode();
    }

    void sendEvent(int parm) const
    {
        node->opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(static_cast<std::intptr_t>(parm)));
    }

    StandinSession session;
    VOP_Node* node;
};

} // namespace

// Every form that the others might be made of, so that none is paired with another's.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++allocation_count;
    return std::malloc(size ? size : 1);
}

void* operator new(std::size_t size)
{
    if (void* memory = operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& none) noexcept
{
    return operator new(size, none);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

TEST(HotRoad, OfLabelsAllocatesNothing)
{
    const LongShader shader;
    const VOP_Node& node = *shader.node;
    ASSERT_EQ(node.getNumVisibleInputs(), unsigned(parm_count));
    std::size_t letters = 0;
    const std::size_t allocations = allocationsOf(
        [&]
        {
            for (unsigned i = 0; i < node.getNumVisibleInputs(); ++i)
                letters += std::strlen(node.inputLabel(i));
            for (unsigned i = 0; i < node.getNumVisibleOutputs(); ++i)
                letters += std::strlen(node.outputLabel(i));
        });
    EXPECT_GT(letters, 300u * 30);
    EXPECT_EQ(allocations, 0u);
}

TEST(HotRoad, OfParameterFlagsAllocatesWhatTheHostDoes)
{
    const LongShader shader;
    Names names;
    for (int i = 0; i < parm_count; ++i)
        names.push_back(shader.node->getParm(i).getToken());
    const std::size_t host = allocationsOf(
        [&]
        {
            for (int i = 0; i < parm_count; ++i)
                OpenShader::askHostFor(*shader.node, names[static_cast<std::size_t>(i)].c_str(), i);
        });
    bool changed = true;
    EXPECT_EQ(allocationsOf([&] { changed = OpenShader::updateFlagsOf(*shader.node); }), host);
    EXPECT_FALSE(changed);
}

TEST(HotRoad, OfAnEditAllocatesItsRecordAndItsPath)
{
    const LongShader shader;
    const int parm = parm_count - 1;
    const std::string name = shader.node->getParm(parm).getToken(),
                      path = shader.node->getFullPath().toStdString();
    const auto sendRecord = [&]
    {
        zelk::ipr::Delta delta;
        delta.nodePath = path.c_str(); // a text of its own: strings of the old ABI would share this one
        delta.entryName = "long";
        delta[name.c_str()].type = KR_TYPE_FLOAT;
        zelk::ipr::DeltaPublisher::instance().send(delta.serialize());
    };
    sendRecord();
    shader.sendEvent(parm);

    std::size_t letters = 0;
    const auto makeTexts = [&]
    {
        letters += OpenShader::pathOf(*shader.node).size();
        letters += std::string(name.c_str()).size(); // looked up as a text of its own
    };
    const std::size_t record = allocationsOf(sendRecord), texts = allocationsOf(makeTexts),
                      silent = allocationsOf([&] { shader.sendEvent(-1); }),
                      edit = allocationsOf([&] { shader.sendEvent(parm); });
    EXPECT_GT(letters, path.size());
    EXPECT_GE(edit, silent + record);
    EXPECT_LE(edit, silent + record + texts);
}
