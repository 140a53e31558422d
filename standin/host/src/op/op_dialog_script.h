#ifndef STANDIN_OP_DIALOG_SCRIPT_H
#define STANDIN_OP_DIALOG_SCRIPT_H

#include <PRM/PRM_Template.h>
#include <VOP/VOP_Types.h>

#include <string>
#include <vector>

/// @file
/// The section "DialogScript" of a type in an asset file: its connectors and its parameters.

class OP_Node;

namespace standin
{

struct DialogConnector
{
    VOP_Type type; ///< undefined takes, or gives, what is wired to it
    std::string name;
    std::string label;
};

struct DialogScript
{
    std::vector<DialogConnector> inputs;
    std::vector<DialogConnector> outputs;
    PRM_Template* templates;           ///< never null; stays for the process
    std::vector<std::string> problems; ///< what was left out, half sentences
};

/// Reads a script. Lines of other kinds say nothing here.
DialogScript readDialogScript(const std::string& text);

/// The script of a type that is to be like a node: its spare parameters become the type's own.
/// @param coreName  of the type, without namespace and version
std::string writeDialogScript(const std::string& typeName, const std::string& coreName,
                              const std::string& label, const std::vector<DialogConnector>& inputs,
                              const std::vector<DialogConnector>& outputs, const OP_Node& node);

} // namespace standin

#endif
