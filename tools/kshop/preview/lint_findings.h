#ifndef KSHOP_PREVIEW_LINT_FINDINGS_H
#define KSHOP_PREVIEW_LINT_FINDINGS_H

#include "../interface_json.h"

namespace kshop
{

/// {"findings": [...]}, as `lint --json` prints them, about the metadata files that the session loaded.
Json lintFindings();

} // namespace kshop

#endif
