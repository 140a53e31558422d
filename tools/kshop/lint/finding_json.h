#ifndef KSHOP_LINT_FINDING_JSON_H
#define KSHOP_LINT_FINDING_JSON_H

#include "../interface_json.h"
#include "finding.h"

#include <vector>

namespace kshop
{

/// One finding; what is empty or 0 is null. See docs/schemas/lint.schema.json.
Json findingJson(const Finding& finding);

/// {"findings": [...]}
Json findingsJson(const std::vector<Finding>& findings);

} // namespace kshop

#endif
