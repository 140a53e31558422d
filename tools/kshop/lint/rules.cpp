#include "rules.h"

#include "../text.h"

#include <algorithm>

namespace kshop
{

void Report::add(const KtPlace& place, const std::string& shader, const std::string& parameter,
                 const Words& words)
{
    m_findings.push_back({m_rule.name, m_rule.severity, place.file ? place.file : "",
                          static_cast<int>(place.line), static_cast<int>(place.column), shader, parameter,
                          words.message, words.effect, words.remedy});
}

std::vector<Rule> allRules()
{
    std::vector<Rule> all;
    for (const auto family :
         {&fileRules, &keyRules, &menuRules, &folderRules, &extraRules, &rampRules, &orderRules, &rangeRules,
          &conditionRules, &scriptRules, &nameRules, &adviceRules})
        all.insert(all.end(), family().begin(), family().end());
    return all;
}

std::string suggestion(const std::string& name, const std::vector<std::string>& candidates)
{
    std::vector<std::string> near;
    for (const std::string& candidate : nearestNames(name, candidates))
        near.push_back(quoted(candidate));
    return near.empty() ? "" : "; did you mean " + joined(near, " or ") + "?";
}

std::string listed(const std::vector<std::string>& names)
{
    const std::size_t most = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
    {
        const bool last = i + 1 == names.size();
        text += (i == 0 ? "" : last ? " and " : ", ") + printable(names[i]);
    }
    return names.size() > most ? text + " and " + std::to_string(names.size() - most) + " more" : text;
}

std::vector<std::string> fieldNames(const Shader& shader)
{
    std::vector<std::string> names;
    for (const Parameter& parameter : shader.parameters)
        if (parameter.unseen.empty() && !shader.isPartOfRamp(parameter.name))
            names.push_back(parameter.name);
    for (const Extra& extra : shader.extras)
        names.push_back(extra.name);
    return names;
}

} // namespace kshop
