#ifndef KSHOP_LINT_EXTRA_METADATA_H
#define KSHOP_LINT_EXTRA_METADATA_H

#include <string>
#include <vector>

namespace kshop
{

/// Lets the plug-in load metadata files that are on no search path, after all others.
///
/// To be made before the Session: it adds a directory of links to HOUDINI_PATH. Files that are on the path already are
/// left as they are. The directory goes with this object, which may be after the session has begun.
class ExtraMetadata
{
public:
    /// The files exist. Throws std::runtime_error when the directory cannot be made.
    explicit ExtraMetadata(const std::vector<std::string>& files);
    ~ExtraMetadata();
    ExtraMetadata(const ExtraMetadata&) = delete;
    ExtraMetadata& operator=(const ExtraMetadata&) = delete;

private:
    std::string m_directory; ///< empty when none was needed
};

} // namespace kshop

#endif
