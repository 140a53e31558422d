#ifndef KSHOP_OUTPUT_H
#define KSHOP_OUTPUT_H

#include <string>

namespace kshop
{

/// Exit statuses of kshop.
enum ExitStatus
{
    exit_ok = 0,
    exit_failure = 1,
    exit_usage = 2
};

/// Writes a whole text to standard output. Returns exit_ok, or exit_failure after a sentence about what kept it from
/// being written. A reader that went away is no mistake worth a sentence.
int writeOut(const std::string& text);

/// A sentence about a mistake, on standard error, with the program's name in front.
void complain(const std::string& sentence);

} // namespace kshop

#endif
