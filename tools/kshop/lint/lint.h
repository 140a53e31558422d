#ifndef KSHOP_LINT_LINT_H
#define KSHOP_LINT_LINT_H

#include "finding.h"

#include <string>
#include <vector>

namespace kshop
{

struct LintOptions
{
    /// Metadata files to look at: findings in them, and about shaders that they have tables of. Empty: everything that
    /// the plug-in loads.
    std::vector<std::string> files;
};

/// Looks for mistakes in the metadata of all shaders, sorted by file, line, column and rule.
///
/// Wants a running Session: what the plug-in made of the metadata is read from the operators that it registered, so a
/// file counts as it was when the session began. The renderer is started once more and loads the same files, then those
/// of `options` that are not among them (see ExtraMetadata for those that the plug-in is to load as well). Findings name
/// a file as `options` does. Prints nothing.
std::vector<Finding> lint(const LintOptions& options);

} // namespace kshop

#endif
