#include "op_dialog_script.h"

#include "op_dialog_parms.h"

#include <OP/OP_Node.h>
#include <PRM/PRM_ParmList.h>

#include <algorithm>
#include <cstring>

namespace standin
{

namespace
{

/// Dialog scripts have a word of their own for one type.
const char* const matrix_word = "matrix";

const char* wordOf(VOP_Type type) { return type == VOP_TYPE_MATRIX4 ? matrix_word : VOPgetTypeName(type); }

/// Undefined for words that are unknown here.
VOP_Type typeOf(const std::string& word)
{
    for (int type = VOP_TYPE_UNDEF; type < VOP_SHADER_END; ++type)
        if (word == wordOf(static_cast<VOP_Type>(type)))
            return static_cast<VOP_Type>(type);
    return VOP_TYPE_UNDEF;
}

/// `input <type> <name> <label>`.
DialogConnector connectorOf(const DialogLine& line)
{
    return {typeOf(line.word(1)), line.word(2), line.words.size() > 3 ? line.word(3) : line.word(2)};
}

std::string connectorText(const char* key, const DialogConnector& connector)
{
    const std::string word = wordOf(connector.type);
    return std::string("    ") + key + "\t" + (word.find(' ') == std::string::npos ? word : quoteText(word)) +
           "\t" + nameText(connector.name) + "\t" + quoteText(connector.label) + "\n";
}

} // namespace

DialogScript readDialogScript(const std::string& text)
{
    DialogScript script{{}, {}, nullptr, {}};
    std::string why;
    std::vector<DialogLine> lines = readDialogLines(text, why);
    if (!why.empty())
        script.problems.push_back(why);
    // Everything stands in one block without a name.
    const auto body =
        std::find_if(lines.begin(), lines.end(), [](const DialogLine& line) { return line.words.empty(); });
    const std::vector<DialogLine> inside = body == lines.end() ? std::vector<DialogLine>() : body->inside;
    for (const DialogLine& line : inside)
        if (line.is("input"))
            script.inputs.push_back(connectorOf(line));
        else if (line.is("output"))
            script.outputs.push_back(connectorOf(line));
    script.templates = makeDialogTemplates(inside, script.problems);
    return script;
}

std::string writeDialogScript(const std::string& typeName, const std::string& coreName,
                              const std::string& label, const std::vector<DialogConnector>& inputs,
                              const std::vector<DialogConnector>& outputs, const OP_Node& node)
{
    std::string text = "# Dialog script for " + typeName + " automatically generated\n\n{\n";
    text += "    name\t" + typeName + "\n    script\t" + nameText(coreName) + "\n    label\t" +
            quoteText(label) + "\n\n";
    for (const DialogConnector& connector : inputs)
        text += connectorText("input", connector);
    for (const DialogConnector& connector : outputs)
        text += connectorText("output", connector);
    for (const DialogConnector& connector : inputs)
        text += "    inputflags\t" + nameText(connector.name) + "\t0\n";
    text += "    signature\t\"Default Inputs\"\tdefault\t{ ";
    for (const std::vector<DialogConnector>* side : {&inputs, &outputs})
        for (const DialogConnector& connector : *side)
            text += nameText(wordOf(connector.type)) + " ";
    text += "}\n\n    help {\n\t\"\"\n    }\n\n";
    const PRM_ParmList& parms = *node.getParmList();
    for (int i = 0; i < parms.getTopLevelEntries(); ++i)
        if (parms.getParmPtr(i)->isSpareParm())
            text += dialogParmText(*parms.getParmPtr(i)->getTemplatePtr());
    return text + "}\n";
}

} // namespace standin
