#include "test_types.h"

#include <PRM/PRM_Include.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <stdexcept>

namespace
{

std::vector<standin::Message>& keptMessages()
{
    static std::vector<standin::Message> messages;
    return messages;
}

// --- node classes -----------------------------------------------------------------------------------------------

template <typename Node>
OP_Node* make(OP_Network* net, const char* name, OP_Operator* op)
{
    return new Node(net, name, op);
}

class SourceVop : public VOP_Node
{
public:
    SourceVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op) {}

protected:
    void getOutputNameSubclass(UT_String& out, int idx) const override { out.harden(idx == 0 ? "f" : "v"); }
    VOP_Type getOutputTypeSubclass(int idx) override { return idx == 0 ? VOP_TYPE_FLOAT : VOP_TYPE_VECTOR; }
};

/// Throws for connectors that do not exist, as classes may: the host never asks for those.
class SinkVop : public VOP_Node
{
public:
    SinkVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op) {}

protected:
    void getInputNameSubclass(UT_String& in, int idx) const override
    {
        in.harden(check(idx) == 0 ? "a" : "b");
    }
    VOP_Type getInputTypeSubclass(int idx) override
    {
        return check(idx) == 0 ? VOP_TYPE_FLOAT : VOP_TYPE_VECTOR;
    }
    void getAllowedInputTypesSubclass(unsigned idx, VOP_VopTypeArray& types) override
    {
        types.append(getInputTypeSubclass(static_cast<int>(idx)));
        if (idx == 1)
            types.append(VOP_TYPE_COLOR);
    }

private:
    static int check(int idx)
    {
        if (idx < 0 || idx > 1)
            throw std::out_of_range("connector");
        return idx;
    }
};

class LightsVop : public VOP_Node
{
public:
    LightsVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op) {}

    unsigned orderedInputs() const override { return 1; }
    unsigned getNumVisibleInputs() const override { return std::max(nInputs() + 1, 2u); }

protected:
    VOP_Type getInputTypeSubclass(int) override { return VOP_TYPE_FLOAT; }
};

class ThrowingVop : public VOP_Node
{
public:
    ThrowingVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op)
    {
        throw std::runtime_error("no memory");
    }
};

class SuicidalVop : public VOP_Node
{
public:
    SuicidalVop(OP_Network* net, const char* name, OP_Operator* op) : VOP_Node(net, name, op) {}

    bool runCreateScript() override
    {
        getParent()->destroyNode(this);
        return false;
    }
};

class TestFilter : public OP_OperatorFilter
{
public:
    bool allowOperatorAsChild(OP_Operator* op) override
    {
        return op->getName().startsWith("test::") || op->getName() == "subnet" || op->getName() == "null";
    }
};

class TestContainer : public SHOP_Node
{
public:
    TestContainer(OP_Network* net, const char* name, OP_Operator* op) : SHOP_Node(net, name, op)
    {
        setOperatorTable(getOperatorTable(VOP_TABLE_NAME));
    }

    const char* getChildType() const override { return VOP_OPTYPE_NAME; }
    OP_OpTypeId getChildTypeID() const override { return VOP_OPTYPE_ID; }
    OP_OperatorFilter* getOperatorFilter() override { return &m_filter; }

private:
    TestFilter m_filter;
};

// --- operators --------------------------------------------------------------------------------------------------

PRM_Name a_name("a", "A");
PRM_Name b_name("b", "B");
PRM_Name mode_name("mode", "Mode");
PRM_Conditional b_conditional("{ mode == 1 }");
PRM_Template sink_templates[] = {
    PRM_Template(PRM_FLT, 1, &a_name),
    PRM_Template(PRM_FLT, 3, &b_name, nullptr, nullptr, nullptr, 0, nullptr, 1, nullptr, &b_conditional),
    PRM_Template(PRM_INT, 1, &mode_name),
    PRM_Template(),
};

struct VopRow
{
    const char* name;
    OP_Constructor construct;
    PRM_Template* templates;
    unsigned maxInputs;
    const char* mask;
    unsigned flags;
    unsigned outputs;
};

const VopRow vop_rows[] = {
    {"test::source", make<SourceVop>, nullptr, 0, "test_vopnet", 0, 2},
    {"test::sink", make<SinkVop>, sink_templates, 2, "test_vopnet", 0, 0},
    {"test::lights", make<LightsVop>, nullptr, VOP_VARIABLE_INOUT_MAX, "test_*", OP_FLAG_UNORDERED, 1},
    {"test::elsewhere", make<SourceVop>, nullptr, 0, "elsewhere", 0, 2},
    {"test::throwing", make<ThrowingVop>, nullptr, 0, "test_vopnet", 0, 1},
    {"test::suicidal", make<SuicidalVop>, nullptr, 0, "test_vopnet", 0, 1},
    {"test::scripted", make<SourceVop>, nullptr, 0, "test_vopnet", 0, 2},
    {"test::snake", make<SourceVop>, nullptr, 0, "test_vopnet", 0, 2},
};

} // namespace

void startTestHost()
{
    standin::startHost();
    keptMessages() = standin::takeMessages();
    OP_OperatorTable* vops = OP_Network::getOperatorTable(VOP_TABLE_NAME);
    for (const VopRow& row : vop_rows)
        vops->addOperator(new VOP_Operator(row.name, row.name, row.construct, row.templates, 0, row.maxInputs,
                                           row.mask, nullptr, row.flags, row.outputs));
    vops->getOperator("test::lights")->setOpTabSubMenuPath("Outputs/Lights");
    OP_Network::getOperatorTable(SHOP_TABLE_NAME)
        ->addOperator(new SHOP_Operator("test_vopnet", "Test Network", make<TestContainer>, nullptr, 0, 0,
                                        nullptr, OP_FLAG_MANAGER));
}

const std::vector<standin::Message>& startMessages() { return keptMessages(); }

NetworkTest::NetworkTest() : net(nullptr)
{
    OP_Node* node = OPgetDirector()->getManager("shop")->createNode("test_vopnet");
    net = node->castToOPNetwork();
}

NetworkTest::~NetworkTest()
{
    OP_Network* shop = OPgetDirector()->getManager("shop");
    while (shop->getNchildren() > 0)
        shop->destroyNode(shop->getChild(0));
    for (const standin::Message& message : standin::takeMessages())
        ADD_FAILURE() << "Nobody claimed this message: " << message.text;
}

VOP_Node* NetworkTest::node(const std::string& type, const char* name)
{
    return CAST_VOPNODE(net->createNode(("test::" + type).c_str(), name));
}

std::ostream& operator<<(std::ostream& out, const SeenEvent& event)
{
    return out << "event " << event.type << " with " << event.index;
}

EventRecorder::EventRecorder(OP_Node* node) : m_nodeId(node->getUniqueId())
{
    node->addOpInterest(this, receive);
}

EventRecorder::~EventRecorder()
{
    if (OP_Node* node = OP_Node::lookupNode(m_nodeId))
        node->removeOpInterest(this, receive);
}

int EventRecorder::count(OP_EventType type) const
{
    return static_cast<int>(std::count_if(events.begin(), events.end(),
                                          [type](const SeenEvent& event) { return event.type == type; }));
}

void EventRecorder::receive(OP_Node*, void* callee, OP_EventType type, void* data)
{
    static_cast<EventRecorder*>(callee)->events.push_back(
        {type, static_cast<int>(reinterpret_cast<intptr_t>(data))});
}
