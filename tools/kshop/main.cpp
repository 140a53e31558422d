#include "commands.h"
#include "help_texts.h"
#include "output.h"
#include "text.h"

#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <csignal>
#include <exception>
#include <filesystem>
#include <functional>
#include <limits>
#include <new>
#include <string>
#include <system_error>
#include <vector>

namespace kshop
{

namespace
{

/// The options of all commands, where the command line parser leaves them.
struct Options
{
    GlobalOptions global;
    ListOptions list;
    DescribeOptions describe;
    DiffOptions diff;
    HelpPagesOptions helpPages;
    PythonOptions python;
    EnvOptions env;
    TabOptions tab;
    ListenOptions listen;
    ReplayOptions replay;
    KeysOptions keys;
    LintCommandOptions lint;
    PreviewOptions preview;
    std::function<int()> command;
};

/// What a command line with that command comes to.
void runs(CLI::App& command, Options& options, const std::function<int()>& run)
{
    command.callback([&options, run] { options.command = run; });
}

void addJson(CLI::App& command, bool& json) { command.add_flag("--json", json, "For programs"); }

void addList(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("list", "The registered node types");
    command->add_flag("--why", options.list.why,
                      "Add each renderer entry without a node type, with the reason");
    command->add_flag("--timings", options.list.timings, "Add where the time of the start-up went");
    addJson(*command, options.list.json);
    command->footer(list_examples);
    runs(*command, options, [&options] { return runList(options.global, options.list); });
}

void addDescribe(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("describe", "The whole interface of one or all node types");
    command->add_option("TYPE", options.describe.types,
                        "Node types, as in korvan::image; all when none is given");
    addJson(*command, options.describe.json);
    command->footer(describe_examples);
    runs(*command, options, [&options] { return runDescribe(options.global, options.describe); });
}

void addDiff(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("diff", "Which differences of two interfaces scenes would feel");
    command->add_option("OLD", options.diff.before, "As 'describe --json' prints it; - is standard input")
        ->required();
    command->add_option("NEW", options.diff.after, "The same, later")->required();
    addJson(*command, options.diff.json);
    command->footer(diff_examples);
    runs(*command, options, [&options] { return runDiff(options.diff); });
}

void addHelpPages(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("help-pages", "Writes a help page for each node type");
    command->add_option("DIR", options.helpPages.directory, "Where to; made when it does not exist")
        ->required();
    command->footer(help_pages_examples);
    runs(*command, options, [&options] { return runHelpPages(options.global, options.helpPages); });
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
    command->add_option(
        "--deltas", options.python.deltas,
        "Write every change record to this file, one JSON object a line, whether or not a render listens");
    command->footer(python_examples);
    command->callback(
        [&options, command]
        {
            options.python.arguments = command->remaining();
            refuseOptions(options.python.arguments);
            options.command = [&options] { return runPython(options.global, options.python); };
        });
}

void addEnv(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("env", "Search paths, plug-ins, metadata files and versions");
    addJson(*command, options.env.json);
    command->footer(env_examples);
    runs(*command, options, [&options] { return runEnv(options.global, options.env); });
}

void addTab(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("tab", "What the tab menu offers inside a network");
    command->add_option("PATH", options.tab.path, "The network, as in /shop")->required();
    command->add_option("--scene", options.tab.scene,
                        "The scene that the network is in, instead of a fresh one");
    command->add_option("--create", options.tab.create, "Make a node of this type there and look inside it");
    addJson(*command, options.tab.json);
    command->footer(tab_examples);
    runs(*command, options, [&options] { return runTab(options.global, options.tab); });
}

void addEndpoint(CLI::App& command, std::string& endpoints)
{
    command.add_option(
        "--endpoint", endpoints,
        "In place of ZELK_IPR_ENDPOINT: ipc://PATH or tcp://HOST:PORT, several separated by commas");
}

/// An option whose value is a number that `fits`; else `problem` says why not, behind what was given. Read the same under
/// every locale, unlike by the parser itself.
template <typename T, typename Fits>
void addNumber(CLI::App& command, const std::string& name, T& number, Fits fits, const std::string& problem,
               const std::string& description)
{
    const auto read = [name, problem, fits, &number](const std::string& text)
    {
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        if (error != std::errc() || stop != end || !fits(number))
            throw CLI::ValidationError(name, text + problem);
    };
    command.add_option_function<std::string>(name, read, description)->type_name("NUMBER");
}

template <typename T>
void addPositive(CLI::App& command, const std::string& name, T& number, const std::string& description)
{
    const auto fits = [](T given) { return given > 0 && given <= std::numeric_limits<T>::max(); };
    addNumber(command, name, number, fits, " is no number above 0", description);
}

void addListen(CLI::App& app, Options& options)
{
    CLI::App* command =
        app.add_subcommand("listen", "Prints each change record that arrives, as a render would");
    addPositive(*command, "--count", options.listen.count, "End after so many records");
    addEndpoint(*command, options.listen.endpoints);
    addJson(*command, options.listen.json);
    command->footer(listen_examples);
    runs(*command, options, [&options] { return runListen(options.listen); });
}

void addReplay(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("replay", "Sends a file of change records again");
    command->add_option("FILE", options.replay.file, "As 'listen --json' prints it; - is standard input")
        ->required();
    addPositive(*command, "--rate", options.replay.rate, "So many records a second at most");
    addEndpoint(*command, options.replay.endpoints);
    command->footer(replay_examples);
    runs(*command, options, [&options] { return runReplay(options.replay); });
}

void addKeys(CLI::App& app, Options& options)
{
    CLI::App* command =
        app.add_subcommand("keys", "Makes the keys for endpoints that other machines can reach");
    command->add_option("FILE", options.keys.file, "To be made; one that exists is left as it is")
        ->required();
    command->footer(keys_examples);
    runs(*command, options, [&options] { return runKeys(options.keys); });
}

void addLint(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("lint", "Mistakes in the metadata of shaders");
    command->add_option("FILE", options.lint.files, "Metadata files (.mtd); everything when none is given");
    command->add_flag("--strict", options.lint.strict, "Warnings, too, make the exit status 1");
    command->add_flag("--rules", options.lint.rules,
                      "Show the rules, with a line about each, and look at nothing");
    addJson(*command, options.lint.json);
    command->footer(lint_examples);
    runs(*command, options, [&options] { return runLint(options.global, options.lint); });
}

void addPort(CLI::App& command, int& port)
{
    const auto fits = [](int given) { return given >= 0 && given <= 65535; };
    addNumber(command, "--port", port, fits, " is no port; they go from 0 (any free one) to 65535",
              "Port on 127.0.0.1; 8741 unless given, 0 for any free one");
}

void addPreview(CLI::App& app, Options& options)
{
    CLI::App* command = app.add_subcommand("preview", "A page that draws the nodes and lets them be tried");
    addPort(*command, options.preview.port);
    command->add_option("--open", options.preview.open, "Shader or node type to begin with");
    command->footer(preview_examples);
    runs(*command, options, [&options] { return runPreview(options.global, options.preview); });
    CLI::App* worker = app.add_subcommand("preview-worker")->group(""); // not shown: the preview's own
    runs(*worker, options, [&options] { return runPreviewWorker(options.global); });
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

/// The first word that is neither the program's own option nor its value: a command, when all is well. Empty when
/// there is none.
std::string firstWord(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
    {
        std::string word = argv[i];
        if (word == "--dso")
            ++i;
        else if (word.rfind("--dso=", 0) != 0)
            return word;
    }
    return "";
}

/// Complains about a first word that is no command and no option, which the parser itself does not name.
bool refuseUnknownWord(const CLI::App& app, const std::string& word)
{
    std::vector<std::string> commands;
    for (const CLI::App* command : app.get_subcommands({}))
        commands.push_back(command->get_name());
    const bool known = std::find(commands.begin(), commands.end(), word) != commands.end();
    if (word.empty() || known || app.get_option_no_throw(word))
        return false;
    const std::string hint = didYouMean(word, commands);
    complain(fmt::format("there is no {} {}; {}'kshop --help' lists them",
                         word[0] == '-' ? "option" : "command", kshop::quoted(word),
                         hint.empty() ? hint : hint + " "));
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
    addDiff(app, options);
    addHelpPages(app, options);
    addPython(app, options);
    addEnv(app, options);
    addTab(app, options);
    addListen(app, options);
    addReplay(app, options);
    addKeys(app, options);
    addLint(app, options);
    addPreview(app, options);
    app.failure_message(
        [](const CLI::App*, const CLI::Error& error)
        { return fmt::format("kshop: {}\nRun with --help for more information.\n", error.what()); });
    if (refuseUnknownWord(app, firstWord(argc, argv)))
        return exit_usage;
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
    // A file that reaches the person's limit is a write that fails, with a sentence, and not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    try
    {
        return kshop::runProgram(argc, argv);
    }
    catch (const std::bad_alloc&)
    {
        kshop::complain("there is not enough memory for this");
        return kshop::exit_failure;
    }
    catch (const std::exception& error)
    {
        kshop::complain(std::string("stopped by an unexpected mistake: ") + error.what());
        return kshop::exit_failure;
    }
}
