#ifndef STANDIN_OP_OTL_ORPHANS_H
#define STANDIN_OP_OTL_ORPHANS_H

#include "op_archive.h"

#include <string>
#include <vector>

/// @file
/// Nodes whose types go away while they are there.

class OP_Operator;

namespace standin
{

/// Takes all nodes of some types out of the scene, and puts placeholders into their places once the types are gone. They
/// keep names, values, wires, user data and what is inside, as after loading a scene whose types are missing.
class Orphans
{
public:
    /// Takes the nodes out.
    explicit Orphans(const std::vector<OP_Operator*>& types);
    /// Puts the placeholders in.
    void restore();

    /// Paths of the nodes, without those inside one of them.
    const std::vector<std::string>& paths() const { return m_paths; }

private:
    struct WireOut
    {
        std::string source;
        unsigned output;
        int target;
        unsigned input;
    };

    struct Group
    {
        int network;
        std::vector<ArchiveEntry> entries;
        std::vector<WireOut> wires; ///< to nodes that stay
    };

    void takeOut(int network, const std::vector<int>& nodes);
    static void rewire(const Group& group);

    std::vector<Group> m_groups;
    std::vector<std::string> m_paths;
};

} // namespace standin

#endif
