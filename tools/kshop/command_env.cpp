#include "commands.h"
#include "interface_json.h"
#include "output.h"
#include "renderer_walk.h"
#include "text.h"

#include <SYS/SYS_Version.h>
#include <UT/UT_PathSearch.h>
#include <standin/host.h>
#include <standin/python.h>

#include <fmt/format.h>

#include <cstdlib>
#include <sstream>

namespace kshop
{

namespace
{

const char* const variable_names[] = {
    "HOUDINI_PATH", "HOUDINI_DSO_PATH", "KORVAN_PLUGIN_PATH", "KORVAN_CATALOGUE", "ZELK_STARTUP_LOG", "HH",
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
        list.push_back({{"path", report.path},
                        {"loaded", report.loaded},
                        {"reason", report.loaded ? Json(nullptr) : Json(report.reason)},
                        {"entry_points", report.hooks}});
    return list;
}

Json environmentJson(const Json& variables)
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
            {"catalogue_files", catalogueFiles()}};
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

std::string pluginsText(const Json& plugins)
{
    std::string text;
    for (const Json& plugin : plugins)
    {
        const bool loaded = plugin["loaded"].get<bool>();
        const std::string state = loaded ? "loaded; exports " + joined(plugin["entry_points"], ", ")
                                         : "not loaded: " + valueText(plugin["reason"]);
        text += fmt::format("  {}\n    {}\n", valueText(plugin["path"]), state);
    }
    return text;
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
    const Json environment = environmentJson(variables);
    return writeOut(options.json ? jsonText(environment)
                                 : environmentText(environment, Style::forStandardOutput()));
}

} // namespace kshop
