#include "shader_desc_callbacks.h"

#include "shader_desc_template_parts.h"
#include "shader_desc_text.h"
#include "utils_nodes.h"

#include <CH/CH_Manager.h>
#include <CMD/CMD_Manager.h>
#include <OP/OP_CommandManager.h>
#include <OP/OP_Director.h>
#include <OP/OP_Node.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Name.h>
#include <PRM/PRM_Parm.h>
#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_SpareData.h>
#include <PRM/PRM_Template.h>
#include <PY/PY_EvaluationContext.h>
#include <PY/PY_Python.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_IntArray.h>
#include <UT/UT_Options.h>
#include <UT/UT_String.h>
#include <UT/UT_UndoManager.h>

namespace zelk
{
namespace shop
{

namespace
{

/// Makes a node the one that scripts of this thread work in, for as long as this lives.
class WorkingNode
{
public:
    explicit WorkingNode(OP_Node* node) : m_thread(SYSgetSTID()) { OPgetDirector()->pushCwd(m_thread, node); }
    ~WorkingNode() { OPgetDirector()->popCwd(m_thread); }

private:
    WorkingNode(const WorkingNode&);
    WorkingNode& operator=(const WorkingNode&);

    const int m_thread;
};

/// Keeps the command manager from echoing commands, for as long as this lives. Which of the manager's state flags
/// a callback switches off is ours to choose.
class QuietCommands
{
public:
    explicit QuietCommands(CMD_Manager& commands) : m_commands(commands), m_echo(commands.getEcho())
    {
        m_commands.setEcho(false);
    }
    ~QuietCommands() { m_commands.setEcho(m_echo); }

private:
    QuietCommands(const QuietCommands&);
    QuietCommands& operator=(const QuietCommands&);

    CMD_Manager& m_commands;
    const bool m_echo;
};

/// The arguments as local hscript variables, for as long as this lives.
class ScriptVariables
{
public:
    ScriptVariables(CMD_Manager& commands, const UT_Options& args) : m_commands(commands), m_args(args)
    {
        const bool exported = false;
        for (UT_Options::iterator arg = m_args.begin(); !arg.atEnd(); ++arg)
            m_commands.setVariable(arg.name(), m_args.getOptionS(arg.name()).buffer(), exported);
    }

    ~ScriptVariables()
    {
        for (UT_Options::iterator arg = m_args.begin(); !arg.atEnd(); ++arg)
            m_commands.unsetVariable(arg.name());
    }

private:
    ScriptVariables(const ScriptVariables&);
    ScriptVariables& operator=(const ScriptVariables&);

    CMD_Manager& m_commands;
    const UT_Options& m_args;
};

/// The script that a template carries; null when it has none.
const char* scriptOf(const PRM_Template* tmpl)
{
    const PRM_SpareData* spare = tmpl ? tmpl->getSparePtr() : nullptr;
    const char* script = spare ? spare->getValue("script_callback") : nullptr;
    return script && *script ? script : nullptr;
}

void setArg(UT_Options& args, const std::string& key, const std::string& value)
{
    args.setOptionS(key.c_str(), value.c_str());
}

/// The nesting and the instance numbers: the innermost under the plain key, the one around it with 2 appended, and
/// so on.
void addMultiParmArgs(const PRM_Parm& parm, UT_Options& args)
{
    const std::string key = "script_multiparm_index";
    UT_IntArray indices;
    parm.getMultiInstanceIndex(indices);
    const int nesting = static_cast<int>(indices.entries());
    setArg(args, "script_multiparm_nesting", std::to_string(nesting));
    if (nesting == 0)
        setArg(args, key, "-1");
    for (int i = 0; i < nesting; ++i)
    {
        const int depth = nesting - i;
        setArg(args, depth == 1 ? key : key + std::to_string(depth), std::to_string(indices(i)));
    }
}

/// One component as expanded text, at the time at which the thread evaluates.
std::string valueText(const OP_Node& node, const PRM_Parm& parm, int component)
{
    UT_String text;
    node.evalStringT(text, parm.getToken(), component, CHgetEvalTime(), SYSgetSTID());
    return text.isstring() ? text.buffer() : "";
}

/// Token of an action menu's chosen item; false when the button has no menu or nothing was chosen.
bool chosenItem(OP_Node* node, const PRM_Parm& parm, const PRM_Template& tmpl, int index, std::string& token)
{
    const PRM_ChoiceList* menu = tmpl.getChoiceListPtr();
    const PRM_Name* names = nullptr;
    if (menu)
        menu->getChoiceNames(names, node, tmpl.getSparePtr(), &parm);
    if (!names || index < 0)
        return false;
    for (int i = 0; names[i].getToken() && *names[i].getToken(); ++i)
    {
        if (i == index)
        {
            token = names[i].getToken();
            return true;
        }
    }
    return false;
}

void addButtonArgs(OP_Node* node, const PRM_Parm& parm, const PRM_Template& tmpl, int index, UT_Options& args)
{
    std::string value;
    if (!chosenItem(node, parm, tmpl, index, value))
        value = valueText(*node, parm, 0);
    setArg(args, "script_value", value);
    setArg(args, "script_value0", value);
}

void addValueArgs(const OP_Node& node, const PRM_Parm& parm, int size, const NodeWatch& life,
                  UT_Options& args)
{
    for (int c = 0; c < size && !life.isOver(); ++c)
    {
        const std::string value = valueText(node, parm, c);
        if (c == 0)
            setArg(args, "script_value", value);
        setArg(args, "script_value" + std::to_string(c), value);
    }
}

std::string quoted(const char* text)
{
    const UT_String quotedText = UT_String(text ? text : "").makeSmartQuotedString('\'');
    return quotedText.buffer();
}

void runHscriptCallback(const UT_Options& args, const char* script)
{
    CMD_Manager& commands = *OPgetDirector()->getCommandManager();
    const QuietCommands quiet(commands);
    const ScriptVariables variables(commands, args);
    commands.sendInput(script);
}

} // namespace

void storeCallbackScript(const std::string& script, PRM_SpareData& spare)
{
    std::string text = script;
    if (stripPrefix(text, prefix_hscript))
        spare.setCallbackLanguage(CH_HSCRIPT);
    else if (stripPrefix(text, prefix_python))
        spare.setCallbackLanguage(CH_PYTHON_SCRIPT);
    spare.addTokenValue("script_callback", text.c_str());
}

void buildCallbackArgs(OP_Node* node, const PRM_Template* tmpl, int index, UT_Options& args)
{
    setArg(args, "script_parm", tmpl->getToken());
    const PRM_Parm* parm = node->getParmList()->getParmPtr(tmpl->getToken());
    if (!parm)
        return;

    const NodeWatch life(*node);
    UT_String channel;
    parm->getChannelToken(channel, 0);
    setArg(args, "parm_name", channel.buffer());
    addMultiParmArgs(*parm, args);
    // Plain equality: a button that is joined or invisible has those flags in its type, and is read as a value.
    if (parm->getType() == PRM_CALLBACK)
        addButtonArgs(node, *parm, *tmpl, index, args);
    else
        addValueArgs(*node, *parm, tmpl->getVectorSize(), life, args);
}

void runPythonCallback(OP_Node* node, const UT_Options& args, const char* script)
{
    UT_String pathText;
    node->getFullPath(pathText);
    const std::string path = pathText.buffer();

    std::string kwargs = "kwargs = {'node': hou.node('" + path + "')";
    if (args.hasOption("parm_name"))
        kwargs += ", 'parm': hou.parm('" + path + "/" + args.getOptionS("parm_name").buffer() + "')";
    for (UT_Options::iterator arg = args.begin(); !arg.atEnd(); ++arg)
        kwargs += std::string(", '") + arg.name() + "': " + quoted(args.getOptionS(arg.name()).buffer());
    kwargs += "}";

    PY_EvaluationContext context;
    PYrunPythonStatementsAndExpectNoErrors(kwargs.c_str(), "Error setting kwargs:", &context);
    PYrunPythonStatementsAndExpectNoErrors(script, "Error running callback:", &context);
}

int parmCallback(void* data, int index, double, const PRM_Template* tmpl)
{
    OP_Node* node = static_cast<OP_Node*>(data);
    const char* script = scriptOf(tmpl);
    if (!node || !script)
        return 0;

    const UT_AutoUndoBlock undo("Parameter Callback", ANYLEVEL);
    const WorkingNode workingNode(node);
    const NodeWatch life(*node);
    UT_Options args;
    buildCallbackArgs(node, tmpl, index, args);
    if (life.isOver()) // an expression that was evaluated deleted it
        return 1;
    const CH_ScriptLanguage language = tmpl->getSparePtr()->getCallbackLanguage();
    if (language == CH_PYTHON_SCRIPT)
        runPythonCallback(node, args, script);
    else if (language == CH_HSCRIPT)
        runHscriptCallback(args, script);
    return 1;
}

} // namespace shop
} // namespace zelk
