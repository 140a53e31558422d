#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <PY/PY_EvaluationContext.h>
#include <PY/PY_Python.h>
#include <UT/UT_PathSearch.h>
#include <standin/host.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace
{

/// The directories below "scripts" that creation scripts of a table lie in.
struct ScriptDirectory
{
    const char* table;
    const char* directory;
};

const ScriptDirectory script_directories[] = {
    {VOP_TABLE_NAME, "vop"},
    {SHOP_TABLE_NAME, "shop"},
    {OBJ_TABLE_NAME, "obj"},
    {ROP_TABLE_NAME, "out"},
};

const char* directoryOf(const OP_OperatorTable& table)
{
    for (const ScriptDirectory& row : script_directories)
        if (table.getName() == row.table)
            return row.directory;
    return nullptr;
}

std::string replaceAll(std::string text, const std::string& what, const std::string& by)
{
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

/// "scripts/vop/ns--name" without an ending; empty when the type can have no script.
std::string scriptOf(const OP_Operator& op)
{
    const char* directory = op.getTable() ? directoryOf(*op.getTable()) : nullptr;
    const std::string name = op.getName().toStdString();
    if (!directory || name.find('/') != std::string::npos)
        return std::string();
    return std::string("scripts/") + directory + "/" + replaceAll(name, "::", "--");
}

bool findScript(const std::string& script, const char* ending, std::string& path)
{
    UT_String found;
    if (!UT_PathSearch::getInstance(UT_HOUDINI_PATH)->findFile(found, (script + ending).c_str()))
        return false;
    path = found.toStdString();
    return true;
}

std::string contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file)
        standin::report(standin::Severity::Error,
                        "The creation script " + path + " cannot be read. Check the file's permissions.");
    return text.str();
}

std::string pythonLiteral(const std::string& text)
{
    return UT_String(text).makeSmartQuotedString('"', true).toStdString();
}

/// Runs a Python creation script, which finds its node in kwargs["node"].
void runPython(const std::string& path, const std::string& nodePath, const std::string& type)
{
    PY_EvaluationContext context;
    const std::string set = "import hou\nkwargs = {'node': hou.node(" + pythonLiteral(nodePath) +
                            "), 'type': " + pythonLiteral(type) + "}\n";
    const std::string run = "exec(compile(open(" + pythonLiteral(path) + ", encoding='utf-8').read(), " +
                            pythonLiteral(path) + ", 'exec'))\n";
    PYrunPythonStatementsAndExpectNoErrors((set + run).c_str(), ("Creation script " + path).c_str(),
                                           &context);
}

/// Runs an hscript creation script, which finds the node's path in $arg1.
void runHscript(const std::string& path, const std::string& nodePath)
{
    OP_CommandManager* commands = OPgetDirector()->getCommandManager();
    commands->setVariable("arg1", nodePath.c_str(), false);
    commands->sendInput(contentsOf(path).c_str());
    commands->unsetVariable("arg1");
}

} // namespace

bool OP_Node::runCreateScript()
{
    const std::string script = getOperator() ? scriptOf(*getOperator()) : std::string();
    std::string path;
    if (script.empty())
        return true;
    const int id = getUniqueId();
    if (findScript(script, ".py", path))
        runPython(path, getFullPath().toStdString(), getOperator()->getName().toStdString());
    else if (findScript(script, ".cmd", path))
        runHscript(path, getFullPath().toStdString());
    return lookupNode(id) != nullptr;
}
