#include "lint_findings.h"

#include "../lint/finding_json.h"
#include "../lint/lint.h"

namespace kshop
{

Json lintFindings() { return findingsJson(lint(LintOptions())); }

} // namespace kshop
