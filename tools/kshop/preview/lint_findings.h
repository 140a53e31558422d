#ifndef KSHOP_PREVIEW_LINT_FINDINGS_H
#define KSHOP_PREVIEW_LINT_FINDINGS_H

#include "interface_json.h"

namespace kshop
{

/// {"findings": [...]} about the metadata files that are there now.
Json lintFindings();

} // namespace kshop

#endif
