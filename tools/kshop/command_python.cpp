#include "commands.h"
#include "output.h"

#include <standin/python.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace kshop
{

namespace
{

/// Complains when a script cannot be read. "-" is standard input.
bool isReadable(const std::string& script)
{
    if (script == "-")
        return true;
    std::error_code error;
    if (std::filesystem::is_directory(script, error))
    {
        complain(fmt::format("{} is a directory; give the path of a Python script", script));
        return false;
    }
    errno = 0;
    if (std::ifstream(script))
        return true;
    complain(fmt::format("cannot read the script {}: {}", script, std::strerror(errno)));
    return false;
}

} // namespace

int runPython(const GlobalOptions& global, const std::vector<std::string>& arguments)
{
    if (!arguments.empty() && !isReadable(arguments.front()))
        return exit_failure;
    const Session session(global);
    session.showComplaints();
    if (!standin::startPython())
        return exit_failure;
    if (arguments.empty())
        return standin::runPythonShell();
    return standin::runPythonFile(arguments.front(), {arguments.begin() + 1, arguments.end()});
}

} // namespace kshop
