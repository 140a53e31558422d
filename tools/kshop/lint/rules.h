#ifndef KSHOP_LINT_RULES_H
#define KSHOP_LINT_RULES_H

#include "finding.h"
#include "model.h"

#include <string>
#include <vector>

/// @file
/// The rules, a table for each family. docs/lint.md has a section for each rule; a check holds both together.

namespace kshop
{

/// What a finding says.
struct Words
{
    std::string message; ///< one sentence without its full stop
    std::string effect;
    std::string remedy;
};

class Report;

struct Rule
{
    const char* name;
    const char* severity; ///< "error", "warning" or "advice"
    const char* summary;  ///< what it finds, for people who read the table
    void (*checkShader)(const Shader& shader, Report& report);    ///< null when it is about all of them
    void (*checkLibrary)(const Library& library, Report& report); ///< null when it is about one shader
};

/// Takes the findings of one rule, about one shader or about all.
class Report
{
public:
    Report(const Rule& rule, const std::string& shader, std::vector<Finding>& findings)
        : m_rule(rule), m_shader(shader), m_findings(findings)
    {
    }

    void add(const KtPlace& place, const std::string& shader, const std::string& parameter,
             const Words& words);
    void add(const KtPlace& place, const std::string& parameter, const Words& words)
    {
        add(place, m_shader, parameter, words);
    }

private:
    const Rule& m_rule;
    const std::string m_shader;
    std::vector<Finding>& m_findings;
};

const std::vector<Rule>& fileRules();
const std::vector<Rule>& keyRules();
const std::vector<Rule>& menuRules();
const std::vector<Rule>& folderRules();
const std::vector<Rule>& extraRules();
const std::vector<Rule>& rampRules();
const std::vector<Rule>& orderRules();
const std::vector<Rule>& rangeRules();
const std::vector<Rule>& conditionRules();
const std::vector<Rule>& scriptRules();
const std::vector<Rule>& nameRules();
const std::vector<Rule>& adviceRules();

/// All of them, in the order of the families.
std::vector<Rule> allRules();

// --- Words that several families need ----------------------------------------------------------------------

/// "; did you mean "A" or "B"?", or nothing: didYouMean() with the names in quotes.
std::string suggestion(const std::string& name, const std::vector<std::string>& candidates);

/// "a, b and c", at most eight of them, then "and 3 more".
std::string listed(const std::vector<std::string>& names);

/// Names of all fields, extra ones too, as conditions and "houdini.order" name them.
std::vector<std::string> fieldNames(const Shader& shader);

} // namespace kshop

#endif
