#include "preview/lint_findings.h"

#include "lint/finding_json.h"
#include "lint/lint.h"

namespace kshop
{

Json lintFindings() { return findingsJson(lint({})); }

} // namespace kshop
