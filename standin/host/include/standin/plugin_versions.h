#ifndef STANDIN_PLUGIN_VERSIONS_H
#define STANDIN_PLUGIN_VERSIONS_H

#include <string>

namespace standin
{

/// What a plug-in says it was made for.
struct PluginVersions
{
    std::string release;  ///< of the toolkit, as "15.5"; "(none)" for a null text
    std::string compiler; ///< tag of the compiler, as "408"
};

/// Asks the plug-in in use at that path (see pluginReports()). Both texts are empty when none is.
PluginVersions pluginVersions(const std::string& path);

} // namespace standin

#endif
