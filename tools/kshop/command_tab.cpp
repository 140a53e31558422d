#include "commands.h"
#include "interface_json.h"
#include "output.h"
#include "text.h"

#include <OP/OP_Director.h>
#include <OP/OP_Network.h>
#include <standin/host.h>

#include <fmt/format.h>

namespace kshop
{

namespace
{

/// The network at a path; null after a sentence.
OP_Network* findNetwork(const std::string& path)
{
    OP_Director* root = OPgetDirector();
    OP_Node* node = path == "/" ? root : root->findNode(path.c_str());
    if (!node)
    {
        complain(fmt::format("there is no node {}; a fresh scene has /obj, /shop, /out and /vex", path));
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
    OP_Network* network = findNetwork(options.path);
    if (network && !options.create.empty())
        network = createNetwork(*network, options.create);
    if (!network)
        return exit_failure;
    const std::vector<standin::TabEntry> entries = standin::tabMenu(*network);
    return writeOut(options.json ? jsonText(menuJson(entries)) : menuText(entries));
}

} // namespace kshop
