#include "commands.h"
#include "interface_json.h"
#include "output.h"
#include "renderer_walk.h"
#include "text.h"

#include <SYS/SYS_Version.h>
#include <UT/UT_PathSearch.h>
#include <standin/host.h>
#include <standin/plugin_versions.h>
#include <standin/python.h>
#include <zelk/ipr/endpoint.h>
#include <zelk/ipr/keys.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace kshop
{

namespace
{

const char* const variable_names[] = {
    "HOUDINI_PATH",     "HOUDINI_DSO_PATH",  "KORVAN_PLUGIN_PATH", "KORVAN_CATALOGUE",
    "ZELK_STARTUP_LOG", "ZELK_IPR_ENDPOINT", "ZELK_IPR_KEYS",      "HH",
};

/// Environment variables as they are before anything sets one.
Json readVariables()
{
    Json result = Json::object();
    for (const char* name : variable_names)
    {
        const char* value = std::getenv(name);
        result[name] = value ? Json(value) : Json(nullptr);
    }
    return result;
}

std::vector<std::string> hostPath()
{
    const UT_PathSearch* path = UT_PathSearch::getInstance(UT_HOUDINI_PATH);
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(path->getEntries()));
    for (int i = 0; i < path->getEntries(); ++i)
        result.emplace_back(path->getEntry(i));
    return result;
}

std::vector<std::string> catalogueFiles()
{
    const char* value = std::getenv("KORVAN_CATALOGUE");
    std::vector<std::string> result;
    std::istringstream stream(value ? value : "");
    for (std::string file; std::getline(stream, file, ':');)
        if (!file.empty())
            result.push_back(file);
    return result;
}

Json versionsJson()
{
    return {{"kshop", KSHOP_VERSION}, {"host", SYS_VERSION_FULL}, {"compiler_tag", SYS_COMPILER_TAG}};
}

Json pluginsJson()
{
    Json list = Json::array();
    for (const standin::PluginReport& report : standin::pluginReports())
    {
        const standin::PluginVersions made = standin::pluginVersions(report.path);
        list.push_back({{"path", report.path},
                        {"loaded", report.loaded},
                        {"reason", report.loaded ? Json(nullptr) : Json(report.reason)},
                        {"made_for", report.loaded ? Json(made.release) : Json(nullptr)},
                        {"compiler_tag", report.loaded ? Json(std::stoul(made.compiler)) : Json(nullptr)},
                        {"entry_points", report.hooks}});
    }
    return list;
}

/// Where change records go, and where a render listens.
Json endpointsJson()
{
    Json list = Json::array();
    std::istringstream stream(zelk::ipr::configuredEndpoints());
    const char* const blanks = " \t";
    for (std::string endpoint; std::getline(stream, endpoint, ',');)
    {
        const std::size_t first = endpoint.find_first_not_of(blanks);
        if (first != std::string::npos)
            list.push_back(endpoint.substr(first, endpoint.find_last_not_of(blanks) - first + 1));
    }
    return list;
}

/// The file of keys for endpoints that other machines can reach; null when none is named.
Json keysJson()
{
    const char* path = std::getenv("ZELK_IPR_KEYS");
    if (!path || !*path)
        return nullptr;
    std::string reason;
    const bool usable = zelk::ipr::checkKeys(path, reason);
    return {{"path", path}, {"usable", usable}, {"reason", usable ? Json(nullptr) : Json(reason)}};
}

bool isAnyLoaded()
{
    const std::vector<standin::PluginReport> reports = standin::pluginReports();
    return std::any_of(reports.begin(), reports.end(), [](const auto& report) { return report.loaded; });
}

/// How many types plug-ins registered, by table.
Json registeredJson(const Session& session)
{
    Json counts = Json::object();
    for (const char* table : table_names)
        counts[table] = session.operators(table).size();
    return counts;
}

/// The renderer entries without a node type, by reason. None while no plug-in asks for them.
Json leftOutJson(const Session& session)
{
    Json reasons = Json::object();
    if (isAnyLoaded())
        for (const UnregisteredEntry& entry : findUnregistered(session.operators("Vop")))
            reasons[entry.reason].push_back(entry.name);
    return reasons;
}

/// How often something was said while plug-ins registered.
Json saidJson(const Session& session)
{
    Json counts = {{"info", 0}, {"warning", 0}, {"error", 0}};
    for (const RendererMessage& message : session.messages())
        counts[severityWord(message.severity)] = counts[severityWord(message.severity)].get<int>() + 1;
    return counts;
}

Json environmentJson(const Json& variables, const Session& session)
{
    const RendererFiles files = findRendererFiles();
    return {{"versions", versionsJson()},
            {"tree", standin::treeRoot()},
            {"python", standin::pythonDirectory()},
            {"variables", variables},
            {"host_path", hostPath()},
            {"plugin_path", standin::pluginSearchPath()},
            {"plugins", pluginsJson()},
            {"renderer_plugin_path", files.pluginDirectories},
            {"renderer_plugins", files.plugins},
            {"metadata_files", files.metadataFiles},
            {"catalogue_files", catalogueFiles()},
            {"registered", registeredJson(session)},
            {"left_out", leftOutJson(session)},
            {"said", saidJson(session)},
            {"endpoints", endpointsJson()},
            {"keys", keysJson()}};
}

std::string valueText(const Json& value)
{
    if (value.is_null())
        return "(not set)";
    return value.is_string() ? printable(value.get<std::string>()) : value.dump();
}

std::string section(const char* title, const std::string& body, const Style& style)
{
    return style.title(title) + "\n" + (body.empty() ? "  none\n" : body);
}

std::string pairsText(const Json& object)
{
    std::vector<std::vector<std::string>> rows;
    for (const auto& [key, value] : object.items())
        rows.push_back({key, valueText(value)});
    return tableText(rows, "  ");
}

std::string listText(const Json& list)
{
    std::string text;
    for (const Json& item : list)
        text += "  " + valueText(item) + "\n";
    return text;
}

std::string keysText(const Json& keys)
{
    if (keys.is_null())
        return "";
    const std::string state =
        keys["usable"].get<bool>() ? "can be used" : "not used: " + valueText(keys["reason"]);
    return fmt::format("  {}\n    {}\n", valueText(keys["path"]), state);
}

std::string pluginsText(const Json& plugins)
{
    std::string text;
    for (const Json& plugin : plugins)
    {
        const bool loaded = plugin["loaded"].get<bool>();
        const std::string state = loaded ? "loaded; exports " + joined(plugin["entry_points"], ", ")
                                         : "not loaded: " + valueText(plugin["reason"]);
        text += fmt::format("  {}\n    {}\n", valueText(plugin["path"]), state);
        if (loaded)
            text += fmt::format("    made for {} and compiler tag {}\n", valueText(plugin["made_for"]),
                                valueText(plugin["compiler_tag"]));
    }
    return text;
}

/// One line for each reason.
std::string leftOutText(const Json& reasons)
{
    std::vector<std::vector<std::string>> rows;
    for (const auto& [reason, names] : reasons.items())
        rows.push_back({std::to_string(names.size()), printable(reason)});
    return rows.empty() ? "" : tableText(rows, "  ") + "  (kshop list --why names them)\n";
}

std::string environmentText(const Json& environment, const Style& style)
{
    const Json places = {{"tree", environment["tree"]}, {"python", environment["python"]}};
    const std::pair<const char*, std::string> sections[] = {
        {"Versions", pairsText(environment["versions"])},
        {"Own tree", pairsText(places)},
        {"Environment variables", pairsText(environment["variables"])},
        {"Host search path", listText(environment["host_path"])},
        {"Host plug-ins are looked for in", listText(environment["plugin_path"])},
        {"Host plug-ins", pluginsText(environment["plugins"])},
        {"Renderer plug-ins are looked for in", listText(environment["renderer_plugin_path"])},
        {"Renderer plug-ins", listText(environment["renderer_plugins"])},
        {"Metadata files", listText(environment["metadata_files"])},
        {"Catalogue files", listText(environment["catalogue_files"])},
        {"Registered node types", pairsText(environment["registered"])},
        {"Renderer entries without a node type", leftOutText(environment["left_out"])},
        {"Said while they were registered", pairsText(environment["said"])},
        {"Change records go to", listText(environment["endpoints"])},
        {"Keys of endpoints that other machines can reach", keysText(environment["keys"])},
    };
    std::string text;
    for (const auto& [title, body] : sections)
        text += (text.empty() ? "" : "\n") + section(title, body, style);
    return text;
}

} // namespace

int runEnv(const GlobalOptions& global, const EnvOptions& options)
{
    const Json variables = readVariables();
    const Session session(global);
    session.showComplaints();
    const Json environment = environmentJson(variables, session);
    return writeOut(options.json ? jsonText(environment)
                                 : environmentText(environment, Style::forStandardOutput()));
}

} // namespace kshop
