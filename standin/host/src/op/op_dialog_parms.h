#ifndef STANDIN_OP_DIALOG_PARMS_H
#define STANDIN_OP_DIALOG_PARMS_H

#include "op_dialog_block.h"

#include <PRM/PRM_Include.h>

#include <string>
#include <vector>

/// @file
/// The parameters of a dialog script: "parm" and "group" blocks from and to templates.

namespace standin
{

/// The templates of the script's parameters, ended as any list. Groups that follow each other are the tabs of one set.
/// They stay for the process, as all templates of types do. A parameter of a kind that is unknown here is left out, with
/// a sentence in `problems`; so is one whose name is taken.
PRM_Template* makeDialogTemplates(const std::vector<DialogLine>& lines, std::vector<std::string>& problems);

/// The "parm" block of a template that holds no others; empty for kinds that dialog scripts do not have.
std::string dialogParmText(const PRM_Template& tmpl);

/// How a kind of parameter is called in dialog scripts.
struct DialogKind
{
    const char* word;
    const PRM_Type* type;
};
const DialogKind* findDialogKind(const std::string& word);
const DialogKind* findDialogKind(const PRM_Type& type);

} // namespace standin

#endif
