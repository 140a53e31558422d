#ifndef STANDIN_CMD_COMMANDS_H
#define STANDIN_CMD_COMMANDS_H

#include <iosfwd>
#include <string>
#include <vector>

class CMD_Manager;

/// @file
/// The commands of hscript, by name.

namespace standin
{

/// What a command works with.
struct CommandCall
{
    CMD_Manager& manager;
    const std::vector<std::string>& words; ///< the command's name first
    std::ostream& out;
};

/// Runs a command. Returns what went wrong as a sentence; empty when nothing did.
std::string runCommand(const CommandCall& call);

} // namespace standin

#endif
