#ifndef KSHOP_PREVIEW_KEPT_EDITS_H
#define KSHOP_PREVIEW_KEPT_EDITS_H

#include "../interface_json.h"
#include "scene.h"

#include <map>
#include <string>

namespace kshop
{

/// What was edited so far, as a value that a new worker can be given.
///
///     [{"type": TYPE, "parms": [PARM...], "wires": [{"input": i, "from": TYPE, "output": j}...]}...]
///
/// PARM is {"token", "count"} of a list or ramp, else {"token", "component"} with "number", "text", or "expression" and
/// "language". Only what differs from the default is there, lists before what is in them.
///
/// What has no place (a parameter or type that the metadata does not give at present) is not forgotten: it stays in the
/// snapshot until a node has a place for it.
class KeptEdits
{
public:
    explicit KeptEdits(PreviewScene& scene) : m_scene(scene) {}

    /// The nodes as they are now.
    Json snapshot() const;
    /// Makes the nodes of a snapshot and gives them its values, as loading a scene does: no callbacks, no events, no
    /// undo steps.
    void restore(const Json& snapshot);
    /// What waits for a place on this type's node is given up.
    void forget(const std::string& type);

private:
    bool restoreNode(const Json& node);
    void restoreWires(const Json& node);

    PreviewScene& m_scene;
    std::map<std::string, Json> m_waiting; ///< PARM lists by type
    Json m_waitingTypes = Json::array();   ///< whole nodes of types that there are not
};

} // namespace kshop

#endif
