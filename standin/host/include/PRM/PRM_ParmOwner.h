#pragma once
// The seam between a parameter list and the node it belongs to. The stand-in's own: the toolkit has no such
// header.
#include <CH/CH_Expression.h>
#include <SYS/SYS_Types.h>

#include <string>
#include <utility>
#include <vector>

class OP_Parameters;
class PRM_Parm;

/// In place of a component: the error is that of the parameter's menu script.
const int PRM_MENU_ERROR = -1;
/// The same of its callback.
const int PRM_CALLBACK_ERROR = -2;

/// Index of a change of several parameters at once.
const int PRM_MANY_CHANGED = -1;

/// What a parameter list tells and asks its node. OP_Parameters is one; see there for what a node overrides.
class PRM_ParmOwner
{
public:
    virtual ~PRM_ParmOwner();

    /// A value, an expression or the number of instances of a multi-parameter changed; the new one is stored.
    /// `index` is that of the PRM_Parm, PRM_MANY_CHANGED when several changed at once.
    virtual void parmChanged(int index) = 0;

    /// The node as plug-in callbacks and menu generators get it: an OP_Node pointer.
    virtual void* parmData() = 0;
    /// The node as script hooks get it; null when the list has none.
    virtual OP_Parameters* parmNode() = 0;

    /// Parameter whose channel `path` names ("tx", "../node/tx"), and the component. Null when there is none.
    virtual PRM_Parm* findChannel(const char* path, int& component) = 0;
    /// Value of a node's or session's variable, the name without '$'. False when there is none.
    virtual bool findVariable(const char* name, std::string& value) = 0;

    /// For conditions: number of connected inputs, and whether input `index` (from 0) is connected.
    virtual int connectedInputCount() const = 0;
    virtual bool isInputConnected(int index) const = 0;

    /// Keeps `sentence` as the error of one component (or PRM_MENU_ERROR, PRM_CALLBACK_ERROR); an empty one says that
    /// all is well again.
    virtual void setParmError(const PRM_Parm& parm, int component, const std::string& sentence) = 0;
};

/// Items of a menu: token and label.
typedef std::vector<std::pair<std::string, std::string>> PRM_MenuItems;

/// What OP1 needs from the script languages, which live above it. Whoever brings a language sets its entries
/// once, before parameters are evaluated; a null entry makes the use of that language an error sentence on
/// the node. The functions never throw; they return false with a sentence in `error`.
struct PRM_ScriptHooks
{
    /// Value of a Python expression, or of a function body with `return`, with `node` as the working node.
    bool (*evaluatePython)(OP_Parameters* node, const char* text, fpreal time, int thread,
                           CH_ExprValue& value, std::string& error);
    /// Items of a menu script in Python or hscript. `parm` may be null.
    bool (*runPythonMenu)(OP_Parameters* node, const PRM_Parm* parm, const char* script, PRM_MenuItems& items,
                          std::string& error);
    bool (*runHscriptMenu)(OP_Parameters* node, const PRM_Parm* parm, const char* script,
                           PRM_MenuItems& items, std::string& error);
};

/// The hooks of the process.
PRM_ScriptHooks& PRMscriptHooks();
