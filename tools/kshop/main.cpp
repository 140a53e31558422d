#include "commands.h"
#include "output.h"

#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include <clocale>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace kshop
{

namespace
{

const char* const program_help = "Looks at the node types that host plug-ins register, and tries them out.";

const char* const program_examples = R"(Examples:
  kshop list                                  what was registered
  kshop describe korvan::image                one type's whole interface
  kshop describe --json > interface.json      everything, for programs
  kshop python my_network.py                  a script inside the host, with hou
  kshop --dso build/dso/korvan_shop.so list   with another plug-in

Exit status: 0 when all went well, 1 after a mistake (its sentence is on standard error), 2 for wrong usage.
HOUDINI_PATH, HOUDINI_DSO_PATH, KORVAN_PLUGIN_PATH and KORVAN_CATALOGUE say where things are looked for;
'kshop env' shows what that comes to.)";

const char* const list_examples = R"(Examples:
  kshop list              the types in table order, and how many there are of each category
  kshop list --why        and each renderer entry without a node type, with the reason
  kshop list --json       for programs)";

const char* const describe_examples = R"(Examples:
  kshop describe korvan::image korvan::noise   two types
  kshop describe                               all of them
  kshop describe --json korvan::image          for programs; with the messages of registration)";

const char* const python_examples = R"(kshop python [SCRIPT [ARG...]]

Without SCRIPT it is an interactive shell; SCRIPT '-' is standard input. What follows SCRIPT is the script's own,
in sys.argv; the exit status is the script's.

Examples:
  kshop python
  kshop python build_network.py --scale 2
  echo 'print(hou.node("/shop").path())' | kshop python -)";

const char* const env_examples = R"(Examples:
  kshop env > environment.txt    what belongs into a report of a mistake
  kshop env --json)";

const char* const tab_examples = R"(Examples:
  kshop tab /shop                            what can be made in /shop
  kshop tab /shop --create korvan_vopnet     what can be made inside a new node of that type)";

/// The options of all commands, where the command line parser leaves them.
struct Options
{
    GlobalOptions global;
    ListOptions list;
    DescribeOptions describe;
    EnvOptions env;
    TabOptions tab;
    std::function<int()> command;
};

void addJson(CLI::App& command, bool& json) { command.add_flag("--json", json, "For programs"); }

void addList(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("list", "The registered node types");
    command->add_flag("--why", options.list.why,
                      "Add each renderer entry without a node type, with the reason");
    addJson(*command, options.list.json);
    command->footer(list_examples);
    command->callback([&options]
                      { options.command = [&options] { return runList(options.global, options.list); }; });
}

void addDescribe(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("describe", "The whole interface of one or all node types");
    command->add_option("TYPE", options.describe.types,
                        "Node types, as in korvan::image; all when none is given");
    addJson(*command, options.describe.json);
    command->footer(describe_examples);
    command->callback(
        [&options]
        { options.command = [&options] { return runDescribe(options.global, options.describe); }; });
}

/// What looks like an option before the script is none that python has.
void refuseOptions(const std::vector<std::string>& arguments)
{
    if (!arguments.empty() && arguments[0].size() > 1 && arguments[0][0] == '-')
        throw CLI::ExtrasError({arguments[0]});
}

void addPython(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("python", "A Python script, or a shell, inside the host");
    // From the script's name on everything is the script's own, also what looks like an option.
    command->prefix_command();
    command->footer(python_examples);
    command->callback(
        [&options, command]
        {
            const std::vector<std::string> arguments = command->remaining();
            refuseOptions(arguments);
            options.command = [&options, arguments] { return runPython(options.global, arguments); };
        });
}

void addEnv(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("env", "Search paths, plug-ins, metadata files and versions");
    addJson(*command, options.env.json);
    command->footer(env_examples);
    command->callback([&options]
                      { options.command = [&options] { return runEnv(options.global, options.env); }; });
}

void addTab(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("tab", "What the tab menu offers inside a network");
    command->add_option("PATH", options.tab.path, "The network, as in /shop")->required();
    command->add_option("--create", options.tab.create, "Make a node of this type there and look inside it");
    addJson(*command, options.tab.json);
    command->footer(tab_examples);
    command->callback([&options]
                      { options.command = [&options] { return runTab(options.global, options.tab); }; });
}

/// Complains when --dso names nothing; otherwise makes it absolute, since scripts may change the directory.
bool resolveDso(std::string& dso)
{
    if (dso.empty())
        return true;
    std::error_code error;
    if (!std::filesystem::exists(dso, error))
    {
        complain(fmt::format("--dso: there is no file or directory {}", dso));
        return false;
    }
    dso = std::filesystem::absolute(dso).string();
    return true;
}

int runProgram(int argc, char** argv)
{
    Options options;
    CLI::App app(program_help, "kshop");
    app.set_version_flag("--version", std::string("kshop ") + KSHOP_VERSION);
    app.add_option("--dso", options.global.dso,
                   "Host plug-in, or a directory of them, in place of the usual search");
    app.footer(program_examples);
    app.require_subcommand(1);
    addList(app, options);
    addDescribe(app, options);
    addPython(app, options);
    addEnv(app, options);
    addTab(app, options);
    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? exit_ok : exit_usage;
    }
    return resolveDso(options.global.dso) ? options.command() : exit_failure;
}

} // namespace

} // namespace kshop

int main(int argc, char** argv)
{
    // As the host does: what plug-ins print must not depend on the person's language, so they get to see it.
    std::setlocale(LC_ALL, "");
    try
    {
        return kshop::runProgram(argc, argv);
    }
    catch (const std::exception& error)
    {
        kshop::complain(std::string("stopped by an unexpected mistake: ") + error.what());
        return kshop::exit_failure;
    }
}
