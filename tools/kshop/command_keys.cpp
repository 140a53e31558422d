#include "commands.h"
#include "output.h"
#include "text.h"

#include <zelk/ipr/keys.h>

#include <fmt/format.h>

namespace kshop
{

int runKeys(const KeysOptions& options)
{
    std::string error;
    if (!zelk::ipr::makeKeys(options.file, error))
    {
        complain(error);
        return exit_failure;
    }
    return writeOut(fmt::format(
        "{} holds new keys. Copy it, safely, to the machines of hosts and renders, and name it there "
        "by ZELK_IPR_KEYS; whoever has it can read edits and send them.\n",
        printable(options.file)));
}

} // namespace kshop
