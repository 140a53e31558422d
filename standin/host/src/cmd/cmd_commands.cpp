#include "cmd_commands.h"

#include "cmd_words.h"

#include <CH/CH_Manager.h>
#include <CMD/CMD_Manager.h>
#include <OP/OP_Director.h>
#include <SYS/SYS_SequentialThreadIndex.h>

#include <ostream>

namespace standin
{

namespace
{

typedef std::vector<std::string> Words;

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string runEcho(const CommandCall& call)
{
    const bool bare = call.words.size() > 1 && call.words[1] == "-n";
    std::string separator;
    for (std::size_t i = bare ? 2 : 1; i < call.words.size(); ++i, separator = " ")
        call.out << separator << call.words[i];
    if (!bare)
        call.out << '\n';
    return std::string();
}

std::string unsetAll(const CommandCall& call)
{
    for (std::size_t i = 2; i < call.words.size(); ++i)
        call.manager.unsetVariable(call.words[i].c_str());
    return std::string();
}

std::string runSet(const CommandCall& call)
{
    const Words& words = call.words;
    if (words.size() > 2 && words[1] == "-u")
        return unsetAll(call);
    if (words.size() < 3 || words[2] != "=")
        return "set is used as \"set NAME = VALUE\" or \"set -u NAME\".";
    if (!isVariableName(words[1]))
        return quoted(words[1]) + " is no variable name: use letters, digits and '_', no digit first.";
    std::string value;
    for (std::size_t i = 3; i < words.size(); ++i)
        value += (i > 3 ? " " : "") + words[i];
    call.manager.setVariable(words[1].c_str(), value.c_str(), false);
    return std::string();
}

// Nodes

OP_Node* findNode(const std::string& path, std::string& problem)
{
    OP_Node* working = OPgetDirector()->getCwd(SYSgetSTID());
    OP_Node* node = working->findNode(path.c_str());
    if (!node)
        problem =
            "there is no node " + quoted(path) + ", seen from " + working->getFullPath().toStdString() + ".";
    return node;
}

std::string runOpcf(const CommandCall& call)
{
    if (call.words.size() != 2)
        return "opcf is used as \"opcf PATH\".";
    std::string problem;
    if (OP_Node* node = findNode(call.words[1], problem))
    {
        // In place of the present one: whoever pushed that, pops this.
        OPgetDirector()->popCwd(SYSgetSTID());
        OPgetDirector()->pushCwd(SYSgetSTID(), node);
    }
    return problem;
}

const char* const opparm_usage = "opparm is used as \"opparm NODE PARM VALUE\" or \"opparm NODE PARM ( VALUE "
                                 "... )\"; more of PARM and values "
                                 "may follow.";

/// A parameter and the values for its components, from the one that is named on.
struct Assignment
{
    std::string parm;
    Words values;
};

/// Takes the assignments out of the words from the third on. False when they are written wrongly.
bool readAssignments(const Words& words, std::vector<Assignment>& assignments)
{
    for (std::size_t i = 2; i < words.size();)
    {
        Assignment made = {words[i++], Words()};
        if (i == words.size())
            return false;
        if (words[i] != "(")
            made.values.push_back(words[i++]);
        else
        {
            for (++i; i < words.size() && words[i] != ")"; ++i)
                made.values.push_back(words[i]);
            if (i++ == words.size())
                return false;
        }
        assignments.push_back(made);
    }
    return !assignments.empty();
}

/// The parameter is looked up for each value: listeners may delete it, and the node.
std::string assign(int nodeId, const Assignment& assignment)
{
    for (std::size_t i = 0; i < assignment.values.size(); ++i)
    {
        OP_Node* node = OP_Node::lookupNode(nodeId);
        if (!node)
            return std::string();
        int component = 0;
        PRM_Parm* parm = node->getParmList()->getParmPtrFromChannel(assignment.parm.c_str(), &component);
        const std::string path = node->getFullPath().toStdString();
        if (!parm)
            return path + " has no parameter " + quoted(assignment.parm) + ".";
        const std::string& value = assignment.values[i];
        const bool stored = parm->setValue(CHgetEvalTime(), value.c_str(), CH_STRING_LITERAL, true,
                                           PRM_AK_NEVER, component + static_cast<int>(i));
        if (!stored && OP_Node::lookupNode(nodeId))
            return path + "/" + assignment.parm + " does not take the value " + quoted(value) +
                   " as number " + std::to_string(i + 1) + ".";
    }
    return std::string();
}

std::string runOpparm(const CommandCall& call)
{
    std::vector<Assignment> assignments;
    if (call.words.size() < 2 || !readAssignments(call.words, assignments))
        return opparm_usage;
    std::string problem;
    const OP_Node* node = findNode(call.words[1], problem);
    const int id = node ? node->getUniqueId() : 0;
    for (std::size_t i = 0; problem.empty() && i < assignments.size(); ++i)
        problem = assign(id, assignments[i]);
    return problem;
}

struct CommandRow
{
    const char* name;
    std::string (*run)(const CommandCall& call);
};

const CommandRow command_rows[] = {
    {"echo", runEcho},
    {"opcf", runOpcf},
    {"opparm", runOpparm},
    {"set", runSet},
};

std::string knownCommands()
{
    std::string names;
    for (const CommandRow& row : command_rows)
        names += (names.empty() ? "" : ", ") + std::string(row.name);
    return names;
}

} // namespace

std::string runCommand(const CommandCall& call)
{
    for (const CommandRow& row : command_rows)
        if (call.words.front() == row.name)
            return row.run(call);
    return "unknown command " + quoted(call.words.front()) + ". Known commands: " + knownCommands() + ".";
}

} // namespace standin
