#include "../commands.h"
#include "../output.h"
#include "worker_line.h"
#include "worker_requests.h"

#include <PY/PY_Python.h>
#include <standin/python.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace kshop
{

namespace
{

/// What scripts printed reaches the console before the answer does.
void flushConsole()
{
    PYrunPythonStatementsAndExpectNoErrors("import sys\n"
                                           "for stream in (sys.stdout, sys.stderr):\n"
                                           "    try:\n"
                                           "        stream.flush()\n"
                                           "    except (AttributeError, OSError, ValueError):\n"
                                           "        pass\n");
    std::cout.flush();
    std::fflush(nullptr);
}

std::string answerText(WorkerRequests& requests, const std::string& text)
{
    const Json request = Json::parse(text, nullptr, false);
    const Json answer = requests.answer(request);
    flushConsole();
    return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

int runPreviewWorker(const GlobalOptions& global)
{
    WorkerLine line;
    if (!line.open())
        return exit_usage;
    const Session session(global);
    if (!session.hasPlugins() || !standin::startPython())
        return exit_failure;
    WorkerRequests requests(session);
    for (std::string text; line.receive(text);)
        if (!line.send(answerText(requests, text)))
            break;
    // Not by way of the destructors: a thread of a script may still be at work.
    std::_Exit(exit_ok);
}

} // namespace kshop
