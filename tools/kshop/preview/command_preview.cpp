#include "../commands.h"
#include "../interruption.h"
#include "../output.h"
#include "../text.h"
#include "front_requests.h"

#include <fmt/format.h>

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace kshop
{

namespace
{

const std::chrono::milliseconds watch_interval(150);

/// A descriptor that the person closed is taken, so that no socket gets its number and what is printed goes there.
void fillStandardDescriptors()
{
    for (int fd = 0; fd < 3; ++fd)
        if (fcntl(fd, F_GETFD) == -1)
            open("/dev/null", O_RDONLY); // the lowest free number: this one
}

/// What was said against the files while the shaders were registered; the page that would show it does not open.
void showComplaints(const Json& messages)
{
    for (const Json& message : messages)
        if (message["severity"] != "info")
            complain(message["severity"].get<std::string>() + ": " + message["text"].get<std::string>());
}

/// The type that --open names: itself, or the shader's or type's name without what is in front of it. Empty, after a
/// sentence, when there is none.
std::string typeToOpen(const std::string& name, const Json& types)
{
    std::vector<std::string> known;
    for (const Json& type : types)
    {
        std::string candidate = type["name"];
        if (candidate == name || candidate == operatorName(name))
            return candidate;
        known.push_back(candidate);
    }
    const std::string hint = didYouMean(name, known);
    complain(fmt::format("--open: there is no shader {}; {}'kshop list' shows all", kshop::quoted(name),
                         hint.empty() ? hint : hint + " "));
    return "";
}

/// The address that a browser is to open. On standard error when nobody reads standard output.
void printAddress(const std::string& address)
{
    if (writeOut(address + "\n") != exit_ok)
        complain(address);
}

void watchUntilInterrupted(const Interruption& interruption, Supervisor& supervisor)
{
    while (!interruption.came())
    {
        supervisor.watchFiles();
        std::this_thread::sleep_for(watch_interval);
    }
}

/// Ends a wait for the worker when a signal comes before anything else can look for one.
class StopAtSignal
{
public:
    StopAtSignal(const Interruption& interruption, Supervisor& supervisor)
        : m_thread(
              [&interruption, &supervisor, this]
              {
                  while (!m_done && !interruption.came())
                      std::this_thread::sleep_for(std::chrono::milliseconds(50));
                  if (!m_done)
                      supervisor.stop();
              })
    {
    }
    ~StopAtSignal()
    {
        m_done = true;
        m_thread.join();
    }
    StopAtSignal(const StopAtSignal&) = delete;
    StopAtSignal& operator=(const StopAtSignal&) = delete;

private:
    std::atomic<bool> m_done{false};
    std::thread m_thread;
};

int servePort(HttpServer& server, int wanted)
{
    const int port = server.open(wanted);
    if (port == 0)
        complain(
            wanted == 0
                ? "there is no free port on 127.0.0.1"
                : fmt::format("port {} on 127.0.0.1 is in use, perhaps by another preview; name another with "
                              "--port, or any free one with --port 0",
                              wanted));
    return port;
}

/// The type that the page begins with; empty when none was asked for. False, after a sentence, when there is none of that
/// name.
bool findType(const std::string& open, Supervisor& supervisor, std::string& type)
{
    if (open.empty())
        return true;
    const Json state = supervisor.state();
    type = typeToOpen(open, state["types"]);
    if (type.empty())
        showComplaints(state["messages"]);
    return !type.empty();
}

/// Opens the port, starts the worker and serves the page until Ctrl-C.
int serve(HttpServer& server, Guard& guard, Supervisor& supervisor, const Interruption& interruption,
          const PreviewOptions& options)
{
    const int port = servePort(server, options.port);
    if (port == 0)
        return exit_failure;
    guard.setPort(port);
    const StopAtSignal stopAtSignal(interruption, supervisor);
    if (!supervisor.start())
        return interruption.came() ? exit_ok : exit_failure;
    std::string type;
    if (!findType(options.open, supervisor, type))
        return exit_failure;
    server.serve();
    printAddress(
        fmt::format("http://127.0.0.1:{}/?token={}{}", port, guard.token(), type.empty() ? "" : "#" + type));
    complain("the preview runs; Ctrl-C ends it");
    watchUntilInterrupted(interruption, supervisor);
    supervisor.stop();
    server.stop();
    return exit_ok;
}

} // namespace

int runPreview(const GlobalOptions& global, const PreviewOptions& options)
{
    fillStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN); // a page or a reader that went away is no reason to end
    const Interruption interruption;
    PageFiles pages;
    std::string why;
    if (!pages.read(why))
    {
        complain(why);
        return exit_failure;
    }
    Guard guard;
    Supervisor supervisor(global.dso);
    const FrontRequests requests(guard, pages, supervisor);
    const std::unique_ptr<HttpServer> server =
        loadHttpServer([&requests](const HttpRequest& request) { return requests.answer(request); }, why);
    if (!server)
    {
        complain(why);
        return exit_failure;
    }
    return serve(*server, guard, supervisor, interruption, options);
}

} // namespace kshop
