#ifndef STANDIN_SCENE_H
#define STANDIN_SCENE_H

#include <string>
#include <vector>

class OP_Network;
class OP_Node;

/// Scenes, and copies of nodes, for the programs around the host. No plug-in includes this.
///
/// A scene file is an archive of texts: the session's time and variables, then the nodes below the managers. Nodes whose
/// type is missing are loaded as placeholders, which keep their values, wires and user data and save them unchanged.
namespace standin
{

/// Absolute path of the scene's file; "untitled.hip" in the working directory before it was saved or loaded. Scripts
/// and expressions know it as $HIPFILE, its directory as $HIP, its name without the ending as $HIPNAME.
std::string scenePath();

/// Writes the scene to a file, which becomes the scene's file; an empty path means the present one. The new file takes
/// the old one's place when it is complete, so a full disk or a crash leaves the old one. False, with a sentence in
/// `why`, when it cannot be written.
bool saveScene(const std::string& path, std::string& why);

/// Replaces the scene by that of a file and forgets all undo steps. While it loads, no parameter events are sent, no
/// creation scripts run, and OP_Director::isLoading() is not 0.
/// @param warnings  gets a sentence for each missing type, and for each thing that could not be understood and was left
///                  out
/// False, with a sentence in `why` and the scene as it was, when the file cannot be read or is no complete scene.
bool loadScene(const std::string& path, std::vector<std::string>& warnings, std::string& why);

/// The same, but adds the file's nodes to the scene; names that are taken get another number. Time, variables and the
/// scene's own file stay.
bool mergeScene(const std::string& path, std::vector<std::string>& warnings, std::string& why);

/// Deletes all nodes but the managers, and goes back to 24 frames a second, frame 1 and "untitled.hip". Forgets all undo
/// steps. False, with a sentence in `why`, while a scene loads.
bool clearScene(std::string& why);

/// Copies nodes with all that is in them into a network. Taken names get another number. Wires among the copied nodes
/// are copied; wires from other nodes are when the copy stands in the same network. No creation scripts run, and no
/// parameter events are sent.
/// @param copies  gets the new nodes, in the order of `nodes`
/// False, with a sentence in `why` and nothing copied, when the network does not take one of them.
bool copyNodes(const std::vector<OP_Node*>& nodes, OP_Network& network, std::vector<OP_Node*>& copies,
               std::string& why);

} // namespace standin

#endif
