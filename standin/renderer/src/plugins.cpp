// Opening plug-ins.
#include "kr_observe.h"
#include "read_file.h"
#include "universe.h"
#include "work.h"

#include <common/cut_off.h>
#include <common/open_shared.h>

#include <dlfcn.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <optional>
#include <sstream>
#include <system_error>

namespace fs = std::filesystem;

namespace zelk::renderer
{

namespace
{
using DeclareFunction = void (*)();

std::string realPath(const std::string& file)
{
    std::error_code failed;
    const fs::path path = fs::canonical(file, failed);
    return failed ? file : path.string();
}

// dlsym() gives data pointers only.
DeclareFunction findDeclareFunction(void* handle)
{
    return reinterpret_cast<DeclareFunction>(dlsym(handle, "KrPluginDeclare"));
}

// The plug-ins of one directory, by name. An unreadable directory is reported and has none.
std::vector<std::string> pluginsIn(const std::string& directory)
{
    std::error_code failed;
    std::vector<std::string> files;
    for (fs::directory_iterator file(directory, failed), end; !failed && file != end; file.increment(failed))
        if (file->path().extension() == ".so")
            files.push_back(file->path().string());
    if (failed)
        KrMsgWarning("[kr] Cannot read the plug-in directory %s: %s. Skipping it; correct the plug-in path.",
                     directory.c_str(), failed.message().c_str());
    std::sort(files.begin(), files.end());
    return files;
}
} // namespace

Universe::~Universe()
{
    // Entries hold nothing of a plug-in, so the order does not matter to them; plug-ins that use one another
    // are closed in the reverse order of opening.
    for (auto plugin = m_plugins.rbegin(); plugin != m_plugins.rend(); ++plugin)
        dlclose(plugin->handle);
}

bool Universe::isLoaded(const std::string& file) const
{
    return std::any_of(m_plugins.begin(), m_plugins.end(),
                       [&file](const Plugin& plugin) { return plugin.file == file; });
}

void Universe::loadPlugin(const std::string& file)
{
    // One directory may stand on several search paths, under several names.
    const std::string path = realPath(file);
    if (isLoaded(path))
        return;
    const Work work(KR_WORK_PLUGIN, file.c_str());
    if (const std::string why = objectionToKind(file.c_str()); !why.empty())
    {
        KrMsgError("[kr] Cannot open the plug-in %s: %s. Skipping it; take it away.", file.c_str(),
                   why.c_str());
        return;
    }
    if (const std::optional<standin::CutOff> cut = standin::findCutOff(file))
    {
        KrMsgError(
            "[kr] The plug-in %s is cut off: it should have %llu bytes and has %llu. Skipping it; copy it "
            "again.",
            file.c_str(), static_cast<unsigned long long>(cut->promised),
            static_cast<unsigned long long>(cut->size));
        return;
    }
    const standin::OpenedShared opened = standin::openShared(file);
    if (!opened.handle)
    {
        KrMsgError(
            "[kr] Cannot open the plug-in %s: %s. Skipping it; rebuild it for this machine or take it away.",
            file.c_str(), opened.why.c_str());
        return;
    }
    m_plugins.push_back({path, opened.handle});
    declareEntriesOf({file, opened.handle});
}

void Universe::declareEntriesOf(const Plugin& plugin)
{
    const DeclareFunction declare = findDeclareFunction(plugin.handle);
    if (!declare)
    {
        KrMsgError(
            "[kr] The plug-in %s exports no KrPluginDeclare(). Skipping it; define that function or take the "
            "file away.",
            plugin.file.c_str());
        return;
    }
    // A plug-in may load others while it declares its entries.
    const char* outer = m_plugin;
    m_plugin = m_arena.keep(plugin.file);
    std::vector<const KtNodeEntry*> taken;
    taken.swap(m_taken);
    try
    {
        declare();
    }
    catch (const std::exception& problem)
    {
        KrMsgError(
            "[kr] The plug-in %s stopped declaring its entries: %s. What it has declared stays; repair it.",
            plugin.file.c_str(), problem.what());
    }
    catch (...)
    {
        KrMsgError(
            "[kr] The plug-in %s stopped declaring its entries. What it has declared stays; repair it.",
            plugin.file.c_str());
    }
    taken.swap(m_taken);
    reportTaken(m_plugin, taken);
    m_plugin = outer;
}

} // namespace zelk::renderer

void KrLoadPlugins(const char* path)
{
    if (!path || !*path)
        return;
    zelk::renderer::Universe* universe = zelk::renderer::Universe::require("KrLoadPlugins");
    if (!universe)
        return;
    std::istringstream directories(path);
    for (std::string directory; std::getline(directories, directory, ':');)
        if (!directory.empty())
            for (const std::string& file : zelk::renderer::pluginsIn(directory))
                universe->loadPlugin(file);
}
