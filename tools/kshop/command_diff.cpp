#include "commands.h"
#include "diff/description_file.h"
#include "diff/differences.h"
#include "output.h"

#include <algorithm>
#include <new>

namespace kshop
{

namespace
{

int compare(const DiffOptions& options)
{
    Json before;
    Json after;
    std::string why;
    if (!readDescription(options.before, before, why) || !readDescription(options.after, after, why))
    {
        complain(why);
        return exit_usage;
    }
    const std::vector<Difference> differences = findDifferences(before, after);
    const int written = writeOut(options.json ? jsonText(differencesJson(differences))
                                              : differencesText(differences, Style::forStandardOutput()));
    const bool breaks = std::any_of(differences.begin(), differences.end(),
                                    [](const Difference& one) { return one.severity == Severity::breaks; });
    return breaks ? exit_failure : written;
}

} // namespace

int runDiff(const DiffOptions& options)
{
    try
    {
        return compare(options);
    }
    catch (const std::bad_alloc&) // status 1 would say that a scene could break
    {
        complain("there is not enough memory to compare these files");
        return exit_usage;
    }
}

} // namespace kshop
