#ifndef HOST_OPERATORS_TEST_TYPES_H
#define HOST_OPERATORS_TEST_TYPES_H

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <SHOP/SHOP_Node.h>
#include <VOP/VOP_Node.h>
#include <standin/host.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

/// Starts the host, and adds the node types that the tests need:
///
/// | type              | what it is                                                                          |
/// |-------------------|-------------------------------------------------------------------------------------|
/// | test_vopnet       | SHOP: container of VOPs that admits "test::...", "subnet" and "null"                  |
/// | test::source      | VOP: outputs "f" (float) and "v" (vector), no inputs                                |
/// | test::sink        | VOP: inputs "a" (float), "b" (vector); parameters a, b, mode; b is disabled by mode |
/// | test::lights      | VOP: unordered inputs after the first, growing, all float                           |
/// | test::elsewhere   | VOP: its network mask is "elsewhere"                                                |
/// | test::throwing    | VOP: its constructor throws                                                         |
/// | test::suicidal    | VOP: its creation script deletes it                                                 |
/// | test::scripted    | VOP: has a creation script in hscript                                               |
/// | test::snake       | VOP: has a creation script in Python                                                |
void startTestHost();

/// What the host said while it started.
const std::vector<standin::Message>& startMessages();

/// A container of its own for each test, deleted afterwards.
class NetworkTest : public ::testing::Test
{
protected:
    NetworkTest();
    ~NetworkTest() override;

    /// A node of a test type: node("sink") is of type "test::sink".
    VOP_Node* node(const std::string& type, const char* name = nullptr);
    std::string nameOf(const OP_Node* node) const { return node->getName().toStdString(); }
    std::string pathOf(const OP_Node* node) const { return node->getFullPath().toStdString(); }

    OP_Network* net;
};

/// One event as a test sees it.
struct SeenEvent
{
    OP_EventType type;
    int index; ///< the event's pointer read as an index

    bool operator==(const SeenEvent& other) const { return type == other.type && index == other.index; }
};
std::ostream& operator<<(std::ostream& out, const SeenEvent& event);

/// Records the events of a node for as long as it lives.
class EventRecorder
{
public:
    explicit EventRecorder(OP_Node* node);
    ~EventRecorder();

    std::vector<SeenEvent> events;
    /// Those of one type.
    int count(OP_EventType type) const;

private:
    static void receive(OP_Node* caller, void* callee, OP_EventType type, void* data);

    int m_nodeId;
};

#endif
