#ifndef KSHOP_RUNNING_RENDERER_H
#define KSHOP_RUNNING_RENDERER_H

#include <string>
#include <vector>

namespace kshop
{

/// Where the renderer's files are looked for: what the plug-in loads, in its order.
struct RendererFiles
{
    std::vector<std::string>
        pluginDirectories;            ///< "korvan/plugins" on the host's path, then KORVAN_PLUGIN_PATH
    std::vector<std::string> plugins; ///< the shared objects in them
    std::vector<std::string> metadataFiles;
};
RendererFiles findRendererFiles();

/// The renderer, started once more for the time of this object, with the plug-ins that the host's plug-in loads. Its
/// console is silent: what there is to say was said when that one loaded them.
class RunningRenderer
{
public:
    /// Loads these metadata files, in their order.
    explicit RunningRenderer(const std::vector<std::string>& metadataFiles);
    ~RunningRenderer();
    RunningRenderer(const RunningRenderer&) = delete;
    RunningRenderer& operator=(const RunningRenderer&) = delete;

    /// Warnings and errors while plug-ins were loaded.
    const std::vector<std::string>& pluginComplaints() const { return m_complaints; }

private:
    int m_consoleFlags;
    std::vector<std::string> m_complaints;
};

} // namespace kshop

#endif
