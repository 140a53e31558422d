#include "commands.h"
#include "interface_json.h"
#include "output.h"
#include "text.h"

#include <OP/OP_Director.h>
#include <OP/OP_Network.h>
#include <standin/host.h>
#include <standin/scene.h>

#include <fmt/format.h>

namespace kshop
{

namespace
{

/// False after a sentence. What the scene misses is said too, but the rest of it can be asked.
bool loadScene(const std::string& file)
{
    std::vector<std::string> warnings;
    std::string why;
    const bool loaded = standin::loadScene(file, warnings, why);
    for (const std::string& warning : warnings)
        complain(warning);
    if (!loaded)
        complain(why);
    return loaded;
}

/// The network at a path; null after a sentence.
OP_Network* findNetwork(const std::string& path, bool isFresh)
{
    OP_Director* root = OPgetDirector();
    OP_Node* node = path == "/" ? root : root->findNode(path.c_str());
    if (!node)
    {
        complain(fmt::format("there is no node {}{}", path,
                             isFresh ? "; a fresh scene has /obj, /shop, /out and /vex" : " in the scene"));
        return nullptr;
    }
    OP_Network* network = node->castToOPNetwork();
    if (!network || !network->getOperatorTable())
    {
        complain(fmt::format("{} is no network that nodes can be made in", path));
        return nullptr;
    }
    return network;
}

/// Makes a node the way a person's tool does and gives its inside; null after a sentence.
OP_Network* createNetwork(OP_Network& parent, const std::string& type)
{
    std::string why;
    OP_Node* node = standin::createNodeByUser(parent, type, "", why);
    if (!node)
    {
        complain(why);
        return nullptr;
    }
    OP_Network* network = node->castToOPNetwork();
    if (!network || !network->getOperatorTable())
    {
        complain(fmt::format("a node of type {} holds no nodes", type));
        return nullptr;
    }
    return network;
}

std::string menuText(const std::vector<standin::TabEntry>& entries)
{
    std::vector<std::vector<std::string>> rows = {{"sub-menu", "label", "type"}};
    for (const standin::TabEntry& entry : entries)
        rows.push_back({entry.subMenu.empty() ? "-" : printable(entry.subMenu), printable(entry.label),
                        printable(entry.name)});
    return entries.empty() ? "The tab menu is empty here.\n" : tableText(rows);
}

Json menuJson(const std::vector<standin::TabEntry>& entries)
{
    Json list = Json::array();
    for (const standin::TabEntry& entry : entries)
        list.push_back({{"name", entry.name}, {"label", entry.label}, {"sub_menu", entry.subMenu}});
    return list;
}

} // namespace

int runTab(const GlobalOptions& global, const TabOptions& options)
{
    const Session session(global);
    session.showComplaints();
    if (!options.scene.empty() && !loadScene(options.scene))
        return exit_failure;
    OP_Network* network = findNetwork(options.path, options.scene.empty());
    if (network && !options.create.empty())
        network = createNetwork(*network, options.create);
    if (!network)
        return exit_failure;
    const std::vector<standin::TabEntry> entries = standin::tabMenu(*network);
    return writeOut(options.json ? jsonText(menuJson(entries)) : menuText(entries));
}

} // namespace kshop
