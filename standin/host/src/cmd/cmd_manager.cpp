#include <CMD/CMD_Manager.h>

#include "cmd_commands.h"
#include "cmd_words.h"
#include "op/op_working_node.h"

#include <CH/CH_Manager.h>
#include <PRM/PRM_ParmOwner.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_UndoManager.h>
#include <standin/host.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>

namespace
{

void complain(const std::string& sentence, std::ostream* err)
{
    const std::string text = "hscript: " + sentence;
    if (err)
        *err << text << '\n';
    else
        standin::report(standin::Severity::Error, text);
}

std::string readVariable(const CMD_Manager& manager, const std::string& name, bool& found)
{
    UT_String value;
    found = manager.getVariable(name.c_str(), value);
    return value.toStdString();
}

OP_Node& workingNode() { return *OPgetDirector()->getCwd(SYSgetSTID()); }

/// Variables of the session and the environment; then what only expressions know, such as the frame.
std::string readScriptVariable(const CMD_Manager& manager, const std::string& name, bool& found)
{
    std::string value = readVariable(manager, name, found);
    if (found)
        return value;
    const std::string typed = "${" + name + "}";
    std::string error;
    found = workingNode().expandString(typed.c_str(), CHgetEvalTime(), SYSgetSTID(), value, error) &&
            value != typed;
    return value;
}

std::string evaluateBackquoted(const std::string& text, std::string& problem)
{
    CH_ExprValue value;
    std::string error;
    if (workingNode().evalExpression(text.c_str(), CH_OLD_EXPR_LANGUAGE, CHgetEvalTime(), SYSgetSTID(), value,
                                     error))
        return value.asText();
    problem = "in `" + text + "`: " + error + "; the command is not run.";
    return std::string();
}

/// A menu script prints tokens and labels in turn.
bool runMenuScript(OP_Parameters* node, const PRM_Parm*, const char* script, PRM_MenuItems& items,
                   std::string& error)
{
    const standin::WorkingNode working(SYSgetSTID(), dynamic_cast<OP_Node*>(node));
    std::ostringstream out, err;
    // No undo block: menus are also asked for on other threads, and change nothing.
    CMD_Manager().execute(script, false, &out, &err, true, false);
    std::vector<std::string> words;
    const std::string problem = standin::splitQuoted(out.str(), words);
    error = err.str().empty() ? problem : err.str();
    for (std::size_t i = 0; i + 1 < words.size(); i += 2)
        items.push_back({words[i], words[i + 1]});
    return error.empty();
}

} // namespace

CMD_Manager::CMD_Manager() : m_echo(false)
{
    if (!PRMscriptHooks().runHscriptMenu)
        PRMscriptHooks().runHscriptMenu = runMenuScript;
}

CMD_Manager::~CMD_Manager() {}

void CMD_Manager::sendInput(const char* input, bool create_block)
{
    execute(input, false, nullptr, nullptr, true, create_block);
}

void CMD_Manager::execute(const char* cmd, bool, std::ostream* out, std::ostream* err, bool,
                          bool create_block)
{
    const std::unique_ptr<UT_AutoUndoBlock> block(create_block ? new UT_AutoUndoBlock("hscript", ANYLEVEL)
                                                               : nullptr);
    const auto lookUp = [this](const std::string& name, bool& found)
    { return readScriptVariable(*this, name, found); };
    standin::CommandReader reader(cmd ? cmd : "", lookUp, evaluateBackquoted);
    std::vector<std::string> words;
    std::string problem;
    std::ostream& output = out ? *out : std::cout;
    // Variables are replaced when their command is read, so that a command sees what the ones before it set.
    while (reader.next(words, problem))
    {
        if (m_echo && !words.empty())
            output << reader.source() << '\n';
        if (problem.empty() && !words.empty())
            problem = standin::runCommand({*this, words, output});
        if (!problem.empty())
            complain(problem, err);
    }
    if (!out)
        std::cout.flush();
}

void CMD_Manager::setVariable(const char* name, const char* value, bool exported)
{
    if (!name || !*name)
        return;
    CHgetManager()->setVariable(name, value ? value : "");
    if (exported)
        ::setenv(name, value ? value : "", 1);
}

void CMD_Manager::unsetVariable(const char* name)
{
    if (!name || !*name)
        return;
    CHgetManager()->unsetVariable(name);
}

bool CMD_Manager::getVariable(const char* name, UT_String& value) const
{
    std::string text;
    if (!name || !CHgetManager()->getVariable(name, text))
        return false;
    value.harden(text.c_str());
    return true;
}

std::string CMD_Manager::expandVariables(const std::string& text) const
{
    return standin::expandVariables(text, [this](const std::string& name, bool& found)
                                    { return readVariable(*this, name, found); });
}
