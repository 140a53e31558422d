#ifndef KSHOP_COMMANDS_H
#define KSHOP_COMMANDS_H

#include "session.h"

#include <string>
#include <vector>

/// @file
/// The commands of kshop. Each returns the program's exit status and has printed what there is to say.

namespace kshop
{

struct ListOptions
{
    bool why = false;
    bool json = false;
};
int runList(const GlobalOptions& global, const ListOptions& options);

struct DescribeOptions
{
    std::vector<std::string> types; ///< empty: all
    bool json = false;
};
int runDescribe(const GlobalOptions& global, const DescribeOptions& options);

/// `arguments`: the script and its own arguments; empty for a shell.
int runPython(const GlobalOptions& global, const std::vector<std::string>& arguments);

struct EnvOptions
{
    bool json = false;
};
int runEnv(const GlobalOptions& global, const EnvOptions& options);

struct TabOptions
{
    std::string path;
    std::string create; ///< type of a node to make in that network, whose own menu is shown; empty: none
    bool json = false;
};
int runTab(const GlobalOptions& global, const TabOptions& options);

} // namespace kshop

#endif
