#ifndef ZELK_SHOP_SHADER_DESC_CALLBACKS_H
#define ZELK_SHOP_SHADER_DESC_CALLBACKS_H

class OP_Node;
class PRM_Template;
class UT_Options;

namespace zelk
{
namespace shop
{

/// The host callback of every parameter that has a script: runs the script in the template's spare data.
///
/// Everything that the script changes is one undo step, "Parameter Callback", and `data` (an OP_Node) is the
/// working node meanwhile. Values are those of the thread's evaluation time, not of `time`. An error in the script is
/// the host's to report. The script may delete the node.
/// @param index  chosen item of an action menu, else a component
/// @return       1 when a script was run, 0 when there is no node, template or script
int parmCallback(void* data, int index, double time, const PRM_Template* tmpl);

/// Fills in what a script may ask about its parameter. Only "script_parm" when the node has no such parameter.
void buildCallbackArgs(OP_Node* node, const PRM_Template* tmpl, int index, UT_Options& args);

/// Runs a Python script in a namespace of its own that holds `kwargs`: the node, the parameter and the arguments.
/// Errors are reported by the host under "Error setting kwargs:" and "Error running callback:".
void runPythonCallback(OP_Node* node, const UT_Options& args, const char* script);

} // namespace shop
} // namespace zelk

#endif
