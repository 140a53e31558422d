#ifndef STANDIN_HOST_H
#define STANDIN_HOST_H

#include <functional>
#include <string>
#include <vector>

class OP_Network;
class OP_Node;
class OP_Operator;
class OP_OperatorTable;

/// What the stand-in host shows of itself to the programs around it. No plug-in includes this.
namespace standin
{

// --- start-up -----------------------------------------------------------------------------------

/// Opens the plug-ins, makes the Vop, Shop, Object and Driver tables (in that order, running the plug-ins'
/// hooks), then the root and its managers. Later calls do nothing. Reads HOUDINI_DSO_PATH and HOUDINI_PATH
/// the first time.
void startHost();

/// One shared object that was found on the search path.
struct PluginReport
{
    std::string path;               ///< absolute
    bool loaded;                    ///< in use
    std::string reason;             ///< why it is not: a sentence with the remedy; empty when it is
    std::vector<std::string> hooks; ///< entry points it exports, in alphabetical order
};

/// In loading order: directories in path order, files sorted within each. A hook that failed leaves its
/// plug-in loaded; that complaint is in the messages.
std::vector<PluginReport> pluginReports();

/// The directories, and single files, that plug-ins were looked for in; existing or not.
std::vector<std::string> pluginSearchPath();

/// The directory that holds bin/, lib/, dso/, korvan/ and python/; empty when it cannot be found out.
std::string treeRoot();

// --- operators ----------------------------------------------------------------------------------

/// Every operator table that was made so far, in the order of their making.
std::vector<OP_OperatorTable*> operatorTables();
/// All operators of a table, in the order of registration.
std::vector<OP_Operator*> operatorsOf(const OP_OperatorTable& table);
/// Those of them that plug-ins registered.
std::vector<OP_Operator*> pluginOperatorsOf(const OP_OperatorTable& table);
/// Path of the plug-in that registered an operator; empty for the host's own types.
std::string pluginOf(const OP_Operator& op);

/// "[scope::][namespace::]name[::version]" taken apart; absent parts are empty.
struct OperatorName
{
    std::string scope;
    std::string nameSpace;
    std::string name;
    std::string version; ///< digits and dots
};
OperatorName splitOperatorName(const std::string& fullName);

/// The network mask of a VOP operator; false for operators of other tables.
bool vopnetMaskOf(const OP_Operator& op, std::string& mask);

// --- messages -----------------------------------------------------------------------------------

enum class Severity
{
    Information,
    Warning,
    Error
};

struct Message
{
    Severity severity;
    std::string text;
};

/// Says something to the person: prints it to standard error and adds it to the log. Any thread.
void report(Severity severity, const std::string& text);

/// Everything reported so far, oldest first.
std::vector<Message> messages();
/// The same, and empties the log.
std::vector<Message> takeMessages();

/// Called with each message from now on, besides log and standard error; an empty function ends that. One at
/// a time.
void setMessageObserver(std::function<void(const Message&)> observer);

// --- networks -----------------------------------------------------------------------------------

/// An entry of the tab menu.
struct TabEntry
{
    std::string name;    ///< operator type
    std::string label;   ///< shown text
    std::string subMenu; ///< levels separated by '/'; empty at the top
};

/// What the tab menu offers inside a network, in table order; nothing when it takes no nodes.
std::vector<TabEntry> tabMenu(OP_Network& network);

/// True when a person may make this wire. Otherwise `why` is a sentence with both nodes, connectors and
/// types. The connectors must be visible, the nodes siblings, the types must fit, and no circle may arise.
bool canConnect(OP_Node& from, unsigned output, OP_Node& to, unsigned input, std::string& why);

/// Makes a node as a person's tool does: checks type, mask and filter, creates it, runs its creation script,
/// places it. An empty `name` gives an automatic one. Null, and a sentence in `why`, when that cannot be,
/// also when the creation script deleted the node.
/// @param runScripts  false leaves the creation script out
/// @param exactType   take the type name as it is
OP_Node* createNodeByUser(OP_Network& network, const std::string& type, const std::string& name,
                          std::string& why, bool runScripts = true, bool exactType = false);

/// True for one or more letters, digits, '_', '.' and '-', but neither "." nor "..".
bool isValidNodeName(const std::string& name);

/// How many redraws of the node's tile were asked for so far.
int redrawCount(const OP_Node& node);

} // namespace standin

#endif
