#include "lint.h"

#include "../running_renderer.h"
#include "model.h"
#include "rules.h"

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <standin/host.h>

#include <algorithm>
#include <filesystem>
#include <tuple>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

std::vector<OP_Operator*> shaderOperators()
{
    const OP_OperatorTable* table = OP_Network::getOperatorTable("Vop");
    return table ? standin::pluginOperatorsOf(*table) : std::vector<OP_Operator*>();
}

bool isSameFile(const std::string& a, const std::string& b)
{
    std::error_code error;
    return a == b || fs::equivalent(a, b, error);
}

/// What the plug-in loads, then what it does not; each as `wanted` names it.
std::vector<std::string> filesToLoad(const std::vector<std::string>& wanted)
{
    std::vector<std::string> files = findRendererFiles().metadataFiles;
    for (const std::string& file : wanted)
    {
        bool found = false;
        for (std::string& loaded : files)
            if (isSameFile(loaded, file))
            {
                loaded = file;
                found = true;
            }
        if (!found)
            files.push_back(file);
    }
    return files;
}

std::vector<Finding> findingsOf(const Library& library)
{
    std::vector<Finding> findings;
    for (const Rule& rule : allRules())
    {
        Report all(rule, "", findings);
        if (rule.checkLibrary)
            rule.checkLibrary(library, all);
        for (const Shader& shader : library.shaders)
        {
            Report one(rule, shader.name, findings);
            if (rule.checkShader)
                rule.checkShader(shader, one);
        }
    }
    return findings;
}

/// Keeps findings in these files, and about shaders that they have tables of.
void keepThoseOf(const std::vector<std::string>& files, const Library& library,
                 std::vector<Finding>& findings)
{
    std::set<std::string> shaders;
    for (const Shader& shader : library.shaders)
        for (const std::string& file : files)
            if (shader.files.count(file) != 0)
                shaders.insert(shader.name);
    const auto isOther = [&](const Finding& finding)
    {
        return std::find(files.begin(), files.end(), finding.file) == files.end() &&
               shaders.count(finding.shader) == 0;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isOther), findings.end());
}

auto rankOf(const Finding& finding)
{
    return std::tie(finding.file, finding.line, finding.column, finding.rule, finding.shader,
                    finding.parameter, finding.message);
}

} // namespace

std::vector<Finding> lint(const LintOptions& options)
{
    const RunningRenderer renderer(filesToLoad(options.files));
    Library library(shaderOperators());
    library.pluginMessages = renderer.pluginComplaints();
    std::vector<Finding> findings = findingsOf(library);
    if (!options.files.empty())
        keepThoseOf(options.files, library, findings);
    std::sort(findings.begin(), findings.end(),
              [](const Finding& a, const Finding& b) { return rankOf(a) < rankOf(b); });
    // A file that is loaded twice is wrong once.
    const auto isSame = [](const Finding& a, const Finding& b) { return rankOf(a) == rankOf(b); };
    findings.erase(std::unique(findings.begin(), findings.end(), isSame), findings.end());
    return findings;
}

} // namespace kshop
