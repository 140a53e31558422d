#include <CMD/CMD_Manager.h>

#include "cmd_words.h"

#include <CH/CH_Manager.h>
#include <PRM/PRM_ParmOwner.h>
#include <standin/host.h>

#include <cstdlib>
#include <iostream>
#include <sstream>

namespace
{

typedef std::vector<std::string> Words;

/// What a command works with.
struct Call
{
    CMD_Manager& manager;
    const Words& words; ///< the command's name first
    std::ostream& out;
};

/// Each returns what went wrong; empty when nothing did.
std::string runEcho(const Call& call)
{
    const bool bare = call.words.size() > 1 && call.words[1] == "-n";
    std::string separator;
    for (std::size_t i = bare ? 2 : 1; i < call.words.size(); ++i, separator = " ")
        call.out << separator << call.words[i];
    if (!bare)
        call.out << '\n';
    return std::string();
}

std::string unsetAll(const Call& call)
{
    for (std::size_t i = 2; i < call.words.size(); ++i)
        call.manager.unsetVariable(call.words[i].c_str());
    return std::string();
}

std::string runSet(const Call& call)
{
    const Words& words = call.words;
    if (words.size() > 2 && words[1] == "-u")
        return unsetAll(call);
    if (words.size() < 3 || words[2] != "=")
        return "set is used as \"set NAME = VALUE\" or \"set -u NAME\".";
    if (!standin::isVariableName(words[1]))
        return "\"" + words[1] + "\" is no variable name: use letters, digits and '_', no digit first.";
    std::string value;
    for (std::size_t i = 3; i < words.size(); ++i)
        value += (i > 3 ? " " : "") + words[i];
    call.manager.setVariable(words[1].c_str(), value.c_str(), false);
    return std::string();
}

struct CommandRow
{
    const char* name;
    std::string (*run)(const Call& call);
};

const CommandRow command_rows[] = {
    {"echo", runEcho},
    {"set", runSet},
};

std::string knownCommands()
{
    std::string names;
    for (const CommandRow& row : command_rows)
        names += (names.empty() ? "" : ", ") + std::string(row.name);
    return names;
}

std::string runCommand(const Call& call)
{
    for (const CommandRow& row : command_rows)
        if (call.words.front() == row.name)
            return row.run(call);
    return "unknown command \"" + call.words.front() + "\". Known commands: " + knownCommands() + ".";
}

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

/// A menu script prints tokens and labels in turn.
bool runMenuScript(OP_Parameters*, const PRM_Parm*, const char* script, PRM_MenuItems& items,
                   std::string& error)
{
    std::ostringstream out, err;
    CMD_Manager().execute(script, false, &out, &err);
    Words words;
    const std::string problem = standin::splitQuoted(out.str(), words);
    error = err.str().empty() ? problem : err.str();
    for (std::size_t i = 0; i + 1 < words.size(); i += 2)
        items.push_back({words[i], words[i + 1]});
    return error.empty();
}

} // namespace

CMD_Manager::CMD_Manager()
{
    if (!PRMscriptHooks().runHscriptMenu)
        PRMscriptHooks().runHscriptMenu = runMenuScript;
}

CMD_Manager::~CMD_Manager() {}

void CMD_Manager::sendInput(const char* input, bool create_block)
{
    execute(input, false, nullptr, nullptr, true, create_block);
}

void CMD_Manager::execute(const char* cmd, bool, std::ostream* out, std::ostream* err, bool, bool)
{
    const auto lookUp = [this](const std::string& name, bool& found)
    { return readVariable(*this, name, found); };
    standin::CommandReader reader(cmd ? cmd : "", lookUp);
    Words words;
    std::string problem;
    // Variables are replaced when their command is read, so that a command sees what the ones before it set.
    while (reader.next(words, problem))
    {
        if (problem.empty() && !words.empty())
            problem = runCommand({*this, words, out ? *out : std::cout});
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
