#ifndef KSHOP_SESSION_H
#define KSHOP_SESSION_H

#include <string>
#include <vector>

class OP_Operator;

namespace kshop
{

class StartupTimings;

/// One message that the renderer was asked to say.
struct RendererMessage
{
    int severity; ///< KR_MSG_... bit
    std::string text;
};

/// "info", "warning" or "error".
const char* severityWord(int severity);

/// Options that every command has.
struct GlobalOptions
{
    std::string dso; ///< plug-in file or directory; empty for the usual search
};

/// A running host with its plug-ins loaded.
///
/// Unless ZELK_STARTUP_LOG says otherwise the renderer's console is silent while plug-ins register, and what was said
/// is kept here. One per process: the host cannot be ended.
class Session
{
public:
    /// @param timings  gets to know where the time goes; null: nobody does
    explicit Session(const GlobalOptions& options, StartupTimings* timings = nullptr);

    /// What was said during registration, in order.
    const std::vector<RendererMessage>& messages() const { return m_messages; }

    /// Prints the warnings and errors of registration to standard error, unless the console had them already.
    void showComplaints() const;

    /// True when at least one plug-in is in use. Otherwise a sentence about where they were looked for has been printed.
    bool hasPlugins() const;

    /// What plug-ins registered in the table of that name, in order.
    std::vector<OP_Operator*> operators(const char* table) const;

private:
    std::vector<RendererMessage> m_messages;
    bool m_consoleWasSilent;
};

/// The tables that commands look at, in the order in which they show them.
extern const char* const table_names[2];

} // namespace kshop

#endif
