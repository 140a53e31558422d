#ifndef KSHOP_COMMANDS_H
#define KSHOP_COMMANDS_H

#include "session.h"

#include <cstdint>
#include <string>
#include <vector>

/// @file
/// The commands of kshop. Each returns the program's exit status and has printed what there is to say.

namespace kshop
{

struct ListOptions
{
    bool why = false;
    bool timings = false;
    bool json = false;
};
int runList(const GlobalOptions& global, const ListOptions& options);

struct DescribeOptions
{
    std::vector<std::string> types; ///< empty: all
    bool json = false;
};
int runDescribe(const GlobalOptions& global, const DescribeOptions& options);

struct DiffOptions
{
    std::string before; ///< what `describe --json` has written; "-" is standard input
    std::string after;
    bool json = false;
};
/// exit_ok when no scene can break, exit_failure when one could, exit_usage when a file cannot be compared.
int runDiff(const DiffOptions& options);

struct HelpPagesOptions
{
    std::string directory;
};
int runHelpPages(const GlobalOptions& global, const HelpPagesOptions& options);

struct PythonOptions
{
    std::vector<std::string> arguments; ///< the script and its own arguments; empty for a shell
    std::string deltas;                 ///< file that gets every change record; empty: none
};
int runPython(const GlobalOptions& global, const PythonOptions& options);

struct EnvOptions
{
    bool json = false;
};
int runEnv(const GlobalOptions& global, const EnvOptions& options);

struct TabOptions
{
    std::string path;
    std::string scene;  ///< file of the scene that the network is in; empty: a fresh one
    std::string create; ///< type of a node to make in that network, whose own menu is shown; empty: none
    bool json = false;
};
int runTab(const GlobalOptions& global, const TabOptions& options);

struct ListenOptions
{
    std::string endpoints;   ///< separated by commas; empty: the configured ones
    std::uint64_t count = 0; ///< ends after so many records; 0: never
    bool json = false;
};
int runListen(const ListenOptions& options);

struct ReplayOptions
{
    std::string file;      ///< "-" is standard input
    std::string endpoints; ///< separated by commas; empty: the configured ones
    double rate = 0;       ///< records a second at most; 0: as fast as they are taken
};
int runReplay(const ReplayOptions& options);

struct KeysOptions
{
    std::string file; ///< to be made
};
int runKeys(const KeysOptions& options);

struct LintCommandOptions
{
    std::vector<std::string> files; ///< empty: everything that the plug-in loads
    bool json = false;
    bool strict = false; ///< warnings, too, make the status 1
    bool rules = false;  ///< show the rules, and look at nothing
};
int runLint(const GlobalOptions& global, const LintCommandOptions& options);

struct PreviewOptions
{
    int port = 8741;  ///< 0: any free one
    std::string open; ///< shader or type to begin with; empty: none
};
int runPreview(const GlobalOptions& global, const PreviewOptions& options);
/// The process behind a preview that has the nodes; nobody calls it by hand.
int runPreviewWorker(const GlobalOptions& global);

} // namespace kshop

#endif
