#include "commands.h"
#include "interruption.h"
#include "output.h"
#include "records/record_output.h"

#include <zelk/ipr/listener.h>
#include <zelk/ipr/reader.h>

#include <fmt/format.h>

#include <cstdint>

namespace kshop
{

namespace
{

/// A signal may come just before the wait, and would then be seen after it only.
const int longest_wait_ms = 100;

/// Prints one record, or says why it is none. `printed` tells which.
int showRecord(const std::string& text, const ListenOptions& options, const Style& style, bool& printed)
{
    zelk::ipr::ReceivedDelta delta;
    std::string error;
    printed = readDelta(text, delta, error);
    if (printed)
        return writeOut(options.json ? recordJson(delta) : recordText(delta, style));
    complain(fmt::format("a text of {} was skipped. {}", countText(text.size(), "byte"), error));
    return exit_ok;
}

} // namespace

int runListen(const ListenOptions& options)
{
    const Interruption interruption;
    zelk::ipr::Listener listener;
    std::string text;
    if (!listener.open(options.endpoints, text))
    {
        complain(text);
        return exit_failure;
    }
    complain("listening at " + joined(listener.endpoints(), ", "));
    const Style style = Style::forStandardOutput();
    std::uint64_t count = 0;
    while (!interruption.came() && (options.count == 0 || count < options.count))
    {
        if (!listener.receive(text, longest_wait_ms))
            continue;
        bool printed = false;
        if (showRecord(text, options, style, printed) != exit_ok)
            return exit_failure;
        count += printed ? 1 : 0;
    }
    return exit_ok;
}

} // namespace kshop
