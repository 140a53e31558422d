#ifndef HOST_SCENES_SCENE_FIXTURE_H
#define HOST_SCENES_SCENE_FIXTURE_H

#include "op/op_archive.h"
#include "test_types.h"

#include <standin/scene.h>

#include <string>
#include <vector>

typedef std::vector<std::string> Texts;

/// Adds to the types of test_types.h:
///
/// | type         | what it is                                                                            |
/// |--------------|---------------------------------------------------------------------------------------|
/// | test::parms  | VOP: a parameter of every kind, a colour ramp, a list in a list                       |
/// | test::mirror | VOP: as many outputs, "m1" and on, as its user data "outputs" has characters          |
/// | test::spread | VOP: input "x" before "a" and "b", so that the numbers of "test::sink" do not fit     |
void startSceneHost();

/// A container "net", and a file of its own for each test. The scene is empty afterwards.
class SceneTest : public NetworkTest
{
protected:
    SceneTest();
    ~SceneTest() override;

    /// Saves and loads; whatever goes wrong, warnings too, is a failure.
    void roundTrip();
    /// Loads the file and gives what it warned of.
    Texts load();
    /// The file with one text in place of another, which must be there.
    void replaceInFile(const std::string& what, const std::string& by);
    std::string bytes() const;
    void setBytes(const std::string& bytes) const;
    /// Data of an entry of the file; "(none)" when there is none.
    std::string entry(const std::string& name) const;

    /// The node in "net" after loading. Null when there is none.
    OP_Node* find(const std::string& name) const;
    VOP_Node* findVop(const std::string& name) const { return CAST_VOPNODE(find(name)); }
    std::string netPath() const { return "/shop/test_vopnet1"; }

    std::string file;
};

/// Number of parameter events while it lives, of all nodes that come into being or are there already in a network.
class ParmEventCounter
{
public:
    explicit ParmEventCounter(OP_Network* network);
    ~ParmEventCounter();

    int parmEvents = 0;
    int isLoadingSeen = 0; ///< what OP_Director::isLoading() said when the last child came into being

private:
    static void receive(OP_Node* caller, void* callee, OP_EventType type, void* data);

    int m_networkId;
};

/// "source.output>input" for each wire into a node, by input.
Texts wiresOf(const OP_Node* node);

#endif
