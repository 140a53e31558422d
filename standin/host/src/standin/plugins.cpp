#include "plugins.h"

#include "paths.h"
#include "shared_object.h"
#include "startup_steps.h"

#include <CMD/CMD_Manager.h>
#include <OP/OP_Node.h>
#include <OP/OP_OperatorTable.h>
#include <SYS/SYS_Version.h>
#include <common/open_shared.h>
#include <standin/host.h>
#include <standin/plugin_versions.h>

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <functional>
#include <unordered_map>

namespace standin
{

namespace
{

const TableRow table_rows[] = {
    {"Object", OBJ_OPTYPE_ID, "newObjectOperator"}, {"Sop", SOP_OPTYPE_ID, "newSopOperator"},
    {"Chop", CHOP_OPTYPE_ID, "newChopOperator"},    {"Driver", ROP_OPTYPE_ID, "newDriverOperator"},
    {"Shop", SHOP_OPTYPE_ID, "newShopOperator"},    {"Cop2", COP2_OPTYPE_ID, "newCop2Operator"},
    {"Vop", VOP_OPTYPE_ID, "newVopOperator"},       {"VopNet", VOPNET_OPTYPE_ID, nullptr},
    {"Dop", DOP_OPTYPE_ID, "newDopOperator"},       {"Manager", MGR_OPTYPE_ID, nullptr},
};

constexpr const char* command_hook = "CMDextendLibrary";
constexpr const char* version_export = "HoudiniDSOVersion";
constexpr const char* compiler_export = "HoudiniCompilerVersion";

struct Plugin
{
    PluginReport report;
    void* handle; ///< null unless loaded
};

struct Registry
{
    bool opened = false;
    std::vector<Plugin> plugins;
    std::string running;
    std::unordered_map<const OP_Operator*, std::string> origins;
};

// Never destroyed, and plug-ins are never closed: their operators, templates and code are in use to the very end.
Registry& registry()
{
    static auto* all = new Registry;
    return *all;
}

// --- checking one file ------------------------------------------------------------------------------------------

std::vector<std::string> exportedHooks(void* handle)
{
    std::vector<std::string> hooks;
    for (const TableRow& row : table_rows)
        if (row.hook && dlsym(handle, row.hook))
            hooks.push_back(row.hook);
    if (dlsym(handle, command_hook))
        hooks.push_back(command_hook);
    std::sort(hooks.begin(), hooks.end());
    return hooks;
}

template <typename Function>
Function exported(void* handle, const char* name)
{
    return reinterpret_cast<Function>(dlsym(handle, name));
}

/// Empty texts for exports that are not there.
PluginVersions versionsOf(void* handle)
{
    PluginVersions versions;
    if (const auto release = exported<void (*)(const char**)>(handle, version_export))
    {
        const char* text = nullptr;
        release(&text);
        versions.release = text && *text ? text : "(none)";
    }
    if (const auto compiler = exported<unsigned (*)()>(handle, compiler_export))
        versions.compiler = std::to_string(compiler());
    return versions;
}

std::string missingExports(const PluginVersions& versions)
{
    const std::string first = versions.release.empty() ? version_export : "";
    const std::string second = versions.compiler.empty() ? compiler_export : "";
    return first.empty() || second.empty() ? first + second : first + " and " + second;
}

/// Why an open shared object cannot be used; empty when it can.
std::string objection(const PluginVersions& versions, const std::vector<std::string>& hooks)
{
    const std::string missing = missingExports(versions);
    if (hooks.empty())
        return "it has no entry points (such as newVopOperator or newShopOperator), so it is no plug-in. "
               "Export one, or move the file out of the plug-in path.";
    if (!missing.empty())
        return "it does not say what it was made for: it exports no " + missing +
               ". Build it with UT/UT_DSOVersion.h in one of its sources and MAKING_DSO defined.";
    if (versions.release != SYS_VERSION_RELEASE)
        return "it was made for version " + versions.release + ", and this is version " SYS_VERSION_RELEASE +
               ". Rebuild it for " SYS_VERSION_RELEASE ", or take it off the plug-in path.";
    if (versions.compiler != std::to_string(SYS_COMPILER_TAG))
        return "it was made with a compiler tagged " + versions.compiler + ", and this host needs tag " +
               std::to_string(SYS_COMPILER_TAG) +
               ". Rebuild it with the host's compiler, or take it off the plug-in path.";
    return std::string();
}

/// Runs what a plug-in wrote; returns what it threw, empty when nothing.
std::string thrownBy(const std::function<void()>& action)
{
    try
    {
        action();
        return std::string();
    }
    catch (const std::exception& error)
    {
        return std::string("exception: ") + error.what();
    }
    catch (...)
    {
        return "something that is no standard exception";
    }
}

/// Opens a file that has passed for a shared object; without a handle, `reason` says why.
void* openFile(const std::string& path, std::string& reason)
{
    const OpenedShared opened = openShared(path);
    if (opened.threw)
        reason = opened.why + ". This is a fault of the plug-in; repair it, or take it off the plug-in path.";
    else if (!opened.handle)
        reason = "the system cannot open it: " + opened.why +
                 ". Rebuild it, or put what it needs where it can be found.";
    return opened.handle;
}

Plugin openPlugin(const std::string& path)
{
    Plugin plugin{{path, false, "", {}}, nullptr};
    plugin.report.reason = objectionToFile(path);
    if (!plugin.report.reason.empty())
        return plugin;
    void* handle = openFile(path, plugin.report.reason);
    if (!handle)
        return plugin;
    plugin.report.hooks = exportedHooks(handle);
    PluginVersions versions;
    const std::string thrown = thrownBy([&] { versions = versionsOf(handle); });
    plugin.report.reason = thrown.empty() ? objection(versions, plugin.report.hooks)
                                          : "its version functions threw " + thrown + ". Rebuild it.";
    plugin.report.loaded = plugin.report.reason.empty();
    if (plugin.report.loaded)
        plugin.handle = handle;
    else
        dlclose(handle);
    return plugin;
}

/// The plug-in in use that has the file name of another; empty when there is none.
std::string namesakeInUse(const std::string& path)
{
    const std::filesystem::path name = std::filesystem::path(path).filename();
    for (const Plugin& plugin : registry().plugins)
        if (plugin.report.loaded && std::filesystem::path(plugin.report.path).filename() == name)
            return plugin.report.path;
    return std::string();
}

/// Opens a plug-in unless one of its file name is in use: two copies would only fight for the same operator names.
void takePlugin(const std::string& path)
{
    const std::string namesake = namesakeInUse(path);
    Plugin plugin = namesake.empty() ? openPlugin(path) : Plugin{{path, false, "", {}}, nullptr};
    if (!namesake.empty())
        plugin.report.reason = namesake +
                               ", which comes first on the plug-in path, has the same file name. Take one of "
                               "the two off the path, or rename it if both are wanted.";
    if (!plugin.report.loaded)
    {
        plugin.report.reason = "The plug-in " + path + " is not used: " + plugin.report.reason;
        report(namesake.empty() ? Severity::Error : Severity::Warning, plugin.report.reason);
    }
    registry().plugins.push_back(plugin);
}

// --- running entry points ---------------------------------------------------------------------------------------

void reportThrown(const std::string& path, const char* hook, const std::string& purpose,
                  const std::string& thrown)
{
    report(Severity::Error, "The plug-in " + path + " failed in " + hook + ", which " + purpose +
                                ": it threw " + thrown +
                                ". What it had added before stays. This is a fault of the plug-in.");
}

/// Runs one entry point of every plug-in that has it, in loading order.
template <typename Argument>
void runHooks(const char* hook, const std::string& purpose, Argument& argument)
{
    for (const Plugin& plugin : registry().plugins)
    {
        const auto function = plugin.handle ? exported<void (*)(Argument*)>(plugin.handle, hook) : nullptr;
        if (!function)
            continue;
        const std::string outer = registry().running;
        registry().running = plugin.report.path;
        tellStartup(StartupStep::enteringHook, hook);
        const std::string thrown = thrownBy([&] { function(&argument); });
        tellStartup(StartupStep::leavingHook, hook);
        registry().running = outer;
        if (!thrown.empty())
            reportThrown(plugin.report.path, hook, purpose, thrown);
    }
}

} // namespace

const TableRow* findTable(const char* name)
{
    for (const TableRow& row : table_rows)
        if (std::strcmp(row.name, name) == 0)
            return &row;
    return nullptr;
}

void openPlugins()
{
    if (registry().opened)
        return;
    registry().opened = true;
    for (const std::string& path : pluginFiles(pluginPathEntries()))
    {
        tellStartup(StartupStep::openingPlugin, path);
        takePlugin(path);
        tellStartup(StartupStep::openedPlugin, path);
    }
}

void runTableHooks(const TableRow& row, OP_OperatorTable& table)
{
    runHooks(row.hook, std::string("registers its ") + row.name + " types", table);
}

void runCommandHooks(CMD_Manager& commands) { runHooks(command_hook, "adds its commands", commands); }

std::string runningPlugin() { return registry().running; }

void rememberOperator(const OP_Operator& op)
{
    if (registry().running.empty())
        return;
    registry().origins[&op] = registry().running;
    tellStartup(StartupStep::addedOperator, op.getName());
}

void forgetOperator(const OP_Operator& op) { registry().origins.erase(&op); }

std::string pluginOf(const OP_Operator& op)
{
    const auto found = registry().origins.find(&op);
    return found == registry().origins.end() ? std::string() : found->second;
}

PluginVersions pluginVersions(const std::string& path)
{
    for (const Plugin& plugin : registry().plugins)
        if (plugin.handle && plugin.report.path == path)
            return versionsOf(plugin.handle);
    return PluginVersions();
}

std::vector<PluginReport> pluginReports()
{
    std::vector<PluginReport> reports;
    for (const Plugin& plugin : registry().plugins)
        reports.push_back(plugin.report);
    return reports;
}

std::vector<std::string> pluginSearchPath() { return pluginPathEntries(); }

} // namespace standin
