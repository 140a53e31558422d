#include "commands.h"
#include "output.h"
#include "records/delta_log.h"
#include "records/record_file.h"

#include <standin/python.h>

namespace kshop
{

namespace
{

int runArguments(const std::vector<std::string>& arguments)
{
    if (!standin::startPython())
        return exit_failure;
    if (arguments.empty())
        return standin::runPythonShell();
    return standin::runPythonFile(arguments.front(), {arguments.begin() + 1, arguments.end()});
}

} // namespace

int runPython(const GlobalOptions& global, const PythonOptions& options)
{
    if (!options.arguments.empty() && !isReadable(options.arguments.front(), "script", "a Python script"))
        return exit_failure;
    const std::shared_ptr<DeltaLog> log = options.deltas.empty() ? nullptr : DeltaLog::start(options.deltas);
    if (!options.deltas.empty() && !log)
        return exit_failure;
    const Session session(global);
    session.showComplaints();
    const int status = runArguments(options.arguments);
    return status == exit_ok && log && log->failed() ? exit_failure : status;
}

} // namespace kshop
