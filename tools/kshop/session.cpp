#include "session.h"

#include "output.h"
#include "progress.h"
#include "startup_timings.h"
#include "text.h"

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <kr_observe.h>
#include <standin/host.h>
#include <standin/startup.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>

namespace kshop
{

const char* const table_names[2] = {"Vop", "Shop"};

namespace
{

struct SeverityRow
{
    int bit;
    const char* word;
};

const SeverityRow severity_rows[] = {
    {KR_MSG_INFO, "info"},
    {KR_MSG_WARNING, "warning"},
    {KR_MSG_ERROR, "error"},
};

void keepMessage(int severity, const char* text, void* user)
{
    static_cast<std::vector<RendererMessage>*>(user)->push_back({severity, text});
}

/// Silences the console of registration unless the person said what they want. True when it was silenced here.
bool silenceStartup()
{
    const char* const variable = "ZELK_STARTUP_LOG";
    if (std::getenv(variable))
        return false;
    return setenv(variable, "0", 1) == 0;
}

/// Starts the host while somebody may watch it: the person, unless the console tells them what goes on, and the timings.
void startWatchedHost(bool showProgress, StartupTimings* timings)
{
    Progress progress("registering", "types");
    standin::setStartupObserver(
        [&](standin::StartupStep step, const std::string& subject)
        {
            if (timings)
                timings->hostStep(step, subject);
            if (showProgress && step == standin::StartupStep::addedOperator)
                progress.step();
        });
    if (timings)
        timings->begin();
    standin::startHost();
    if (timings)
        timings->finish();
    standin::setStartupObserver(nullptr);
}

} // namespace

const char* severityWord(int severity)
{
    for (const SeverityRow& row : severity_rows)
        if (row.bit == severity)
            return row.word;
    return "info";
}

Session::Session(const GlobalOptions& options, StartupTimings* timings) : m_consoleWasSilent(silenceStartup())
{
    if (!options.dso.empty())
        setenv("HOUDINI_DSO_PATH", options.dso.c_str(), 1);
    const int consoleFlags = KrMsgGetConsoleFlags();
    KrMsgSetObserver(keepMessage, &m_messages);
    startWatchedHost(m_consoleWasSilent, timings);
    KrMsgSetObserver(nullptr, nullptr);
    if (m_consoleWasSilent)
    {
        // The variable is ours alone: scripts and programs that they start must not inherit it.
        unsetenv("ZELK_STARTUP_LOG");
        KrMsgSetConsoleFlags(consoleFlags);
    }
}

void Session::showComplaints() const
{
    if (!m_consoleWasSilent)
        return;
    for (const RendererMessage& message : m_messages)
        if (message.severity != KR_MSG_INFO)
            complain(fmt::format("{}: {}", severityWord(message.severity), message.text));
}

namespace
{

/// A remedy for the search path that leaves out kshop's own tree, or nothing.
std::string pathRemedy()
{
    const char* const path = std::getenv("HOUDINI_PATH");
    if (!path || std::getenv("HOUDINI_DSO_PATH") || std::string(path).find('&') != std::string::npos)
        return "";
    return " HOUDINI_PATH has no '&', which stands for what is searched without it: write \"" +
           std::string(path) + ";&\".";
}

} // namespace

bool Session::hasPlugins() const
{
    const std::vector<standin::PluginReport> reports = standin::pluginReports();
    if (std::any_of(reports.begin(), reports.end(),
                    [](const standin::PluginReport& report) { return report.loaded; }))
        return true;
    complain(fmt::format(
        "no plug-in could be loaded; looked in: {}.{} 'kshop env' tells more, and --dso names one",
        joined(standin::pluginSearchPath(), ", "), pathRemedy()));
    return false;
}

std::vector<OP_Operator*> Session::operators(const char* table) const
{
    const OP_OperatorTable* found = OP_Network::getOperatorTable(table);
    return found ? standin::pluginOperatorsOf(*found) : std::vector<OP_Operator*>();
}

} // namespace kshop
