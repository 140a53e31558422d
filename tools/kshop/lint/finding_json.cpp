#include "finding_json.h"

namespace kshop
{

namespace
{
Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json numberOrNull(int number) { return number == 0 ? Json() : Json(number); }
} // namespace

Json findingJson(const Finding& finding)
{
    return {{"rule", finding.rule},
            {"severity", finding.severity},
            {"file", textOrNull(finding.file)},
            {"line", numberOrNull(finding.line)},
            {"column", numberOrNull(finding.column)},
            {"shader", textOrNull(finding.shader)},
            {"parameter", textOrNull(finding.parameter)},
            {"message", finding.message},
            {"effect", finding.effect},
            {"remedy", finding.remedy}};
}

Json findingsJson(const std::vector<Finding>& findings)
{
    Json list = Json::array();
    for (const Finding& finding : findings)
        list.push_back(findingJson(finding));
    return {{"findings", list}};
}

} // namespace kshop
