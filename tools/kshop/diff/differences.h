#ifndef KSHOP_DIFF_DIFFERENCES_H
#define KSHOP_DIFF_DIFFERENCES_H

#include "../interface_json.h"
#include "../text.h"

#include <optional>
#include <string>
#include <vector>

/// @file
/// Two descriptions compared as an artist's scenes would feel it.
///
/// What decides: a scene stores each parameter's value under its token, whether or not somebody set it, a menu's choice as
/// the item's token, the number of a list's or ramp's instances and the values of each, and each wire with the names
/// and the numbers of both connectors. Names count first when it is loaded, numbers where no connector has the name.

namespace kshop
{

enum class Severity
{
    breaks,  ///< a saved scene loses or changes something
    changes, ///< saved scenes stay, an artist sees something else
    adds     ///< something new
};

/// "breaks", "changes" or "adds".
const char* severityName(Severity severity);

struct Difference
{
    Severity severity;
    std::string table;
    std::string type;
    std::optional<std::string>
        parameter;    ///< token, behind those of the lists around it: "keys/key_#"; absent: the type
    std::string what; ///< one of a fixed set of words, as in "menu item gone"
    Json before;      ///< null for what was not there
    Json after;
    std::string effect; ///< a sentence
};

/// Where differences of one type are gathered.
class Findings
{
public:
    Findings(std::vector<Difference>& all, std::string table, std::string type)
        : m_all(all), m_table(std::move(table)), m_type(std::move(type))
    {
    }

    /// Adds one that concerns the type itself.
    void add(Severity severity, const char* what, Json before, Json after, std::string effect);
    /// Adds one that concerns a parameter.
    void addTo(const std::string& parameter, Severity severity, const char* what, Json before, Json after,
               std::string effect);

private:
    std::vector<Difference>& m_all;
    std::string m_table;
    std::string m_type;
};

/// All differences, type by type, in the order of the tables. Both must have come through readDescription().
std::vector<Difference> findDifferences(const Json& before, const Json& after);

void compareConnectors(const Json& before, const Json& after, Findings& findings);
void compareParameters(const Json& before, const Json& after, Findings& findings);
/// What one parameter offers to choose from; `name` is for the findings.
void compareMenus(const Json& before, const Json& after, const std::string& name, Findings& findings);

/// {"differences": [...]}
Json differencesJson(const std::vector<Difference>& differences);
std::string differencesText(const std::vector<Difference>& differences, const Style& style);

} // namespace kshop

#endif
