#include "commands.h"
#include "lint/extra_metadata.h"
#include "lint/finding_json.h"
#include "lint/lint.h"
#include "lint/rules.h"
#include "output.h"
#include "running_renderer.h"
#include "text.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

/// Why a file cannot be looked at; empty when it can.
std::string whyNotUsable(const std::string& file)
{
    std::error_code error;
    if (!fs::exists(file, error))
        return "there is no file " + file;
    if (fs::is_directory(file, error))
        return file + " is a directory; name the metadata files in it";
    if (fs::path(file).extension() != ".mtd")
        return file + " is no metadata file: its name does not end with .mtd";
    if (!fs::is_regular_file(file, error))
        return file + " is a pipe or a device and no file; name a metadata file";
    if (!std::ifstream(file))
        return file + " cannot be read; make it readable";
    return "";
}

bool areUsable(const std::vector<std::string>& files)
{
    bool usable = true;
    for (const std::string& file : files)
        if (const std::string why = whyNotUsable(file); !why.empty())
        {
            complain(why);
            usable = false;
        }
    return usable;
}

std::size_t countOf(const std::vector<Finding>& findings, const char* severity)
{
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(),
                                                  [severity](const Finding& finding)
                                                  { return finding.severity == severity; }));
}

std::string placeText(const Finding& finding)
{
    std::string place = finding.file.empty() ? std::string("renderer") : printable(finding.file);
    if (finding.line > 0)
        place += fmt::format(":{}:{}", finding.line, finding.column);
    return place;
}

/// Whose it is, unless the message says it.
std::string ownerText(const Finding& finding)
{
    if (finding.shader.empty())
        return "";
    const std::string parameter = finding.parameter.empty() ? "" : "." + printable(finding.parameter);
    return printable(finding.shader) + parameter + ": ";
}

std::string findingText(const Finding& finding, const Style& style)
{
    std::string text =
        fmt::format("{}: {}: {}{} {}\n", style.title(placeText(finding)), finding.severity,
                    ownerText(finding), printable(finding.message), style.faint("[" + finding.rule + "]"));
    for (const std::string& line : {finding.effect, finding.remedy})
        text += line.empty() ? "" : "    " + printable(line) + "\n";
    return text;
}

/// The files that were looked at, and what others say about their shaders.
std::string summaryText(const std::vector<Finding>& findings, const std::vector<std::string>& lookedAt)
{
    std::set<std::string> files(lookedAt.begin(), lookedAt.end());
    if (findings.empty())
        return fmt::format("nothing found in {}\n", countText(files.size(), "file"));
    for (const Finding& finding : findings)
        if (!finding.file.empty())
            files.insert(finding.file);
    const std::size_t advice = countOf(findings, "advice");
    return fmt::format("{}, {}, {} {} of advice in {}\n", countText(countOf(findings, "error"), "error"),
                       countText(countOf(findings, "warning"), "warning"), advice,
                       advice == 1 ? "piece" : "pieces", countText(files.size(), "file"));
}

std::string findingsText(const std::vector<Finding>& findings, const std::vector<std::string>& lookedAt,
                         const Style& style)
{
    std::string text;
    for (const Finding& finding : findings)
        text += findingText(finding, style);
    return text + summaryText(findings, lookedAt);
}

Json rulesJson()
{
    Json list = Json::array();
    for (const Rule& rule : allRules())
        list.push_back({{"rule", rule.name}, {"severity", rule.severity}, {"summary", rule.summary}});
    return {{"rules", list}};
}

std::string rulesText()
{
    std::vector<std::vector<std::string>> rows;
    for (const Rule& rule : allRules())
        rows.push_back({rule.name, rule.severity, rule.summary});
    return tableText(rows);
}

/// Runs the host with the files, and prints what is found.
int lintAndPrint(const GlobalOptions& global, const LintCommandOptions& options)
{
    const ExtraMetadata loadedToo(options.files);
    const Session session(global);
    if (!session.hasPlugins())
        return exit_failure;
    const std::vector<Finding> findings = lint({options.files});
    const std::vector<std::string> lookedAt =
        options.files.empty() ? findRendererFiles().metadataFiles : options.files;
    const int written = writeOut(options.json ? jsonText(findingsJson(findings))
                                              : findingsText(findings, lookedAt, Style::forStandardOutput()));
    const bool bad = countOf(findings, "error") > 0 || (options.strict && countOf(findings, "warning") > 0);
    return bad ? static_cast<int>(exit_failure) : written;
}

} // namespace

int runLint(const GlobalOptions& global, const LintCommandOptions& options)
{
    if (options.rules)
        return writeOut(options.json ? jsonText(rulesJson()) : rulesText());
    if (!areUsable(options.files))
        return exit_failure;
    try
    {
        return lintAndPrint(global, options);
    }
    catch (const std::runtime_error& problem)
    {
        complain(problem.what());
        return exit_failure;
    }
}

} // namespace kshop
