#include "commands.h"
#include "help_pages/page.h"
#include "help_pages/page_names.h"
#include "help_pages/page_writer.h"
#include "operator_facts.h"
#include "output.h"
#include "progress.h"
#include "text.h"

#include <fmt/format.h>

namespace kshop
{

namespace
{

std::vector<OperatorFacts> readTypes(const Session& session)
{
    NodeSampler sampler;
    Progress progress("describing", "types");
    std::vector<OperatorFacts> types;
    for (const char* table : table_names)
        for (OP_Operator* op : session.operators(table))
        {
            types.push_back(readOperator(*op, sampler));
            progress.step();
        }
    return types;
}

std::vector<PageLink> linksTo(const std::vector<std::size_t>& users, const std::string& from,
                              const PageNames& names, const std::vector<OperatorFacts>& types)
{
    std::vector<PageLink> links;
    links.reserve(users.size());
    for (const std::size_t user : users)
        links.push_back({addressFrom(from, names.pages[user]), &types[user]});
    return links;
}

Pages makePages(const std::vector<OperatorFacts>& types)
{
    const char* const index = "index.html";
    const PageNames names = namePages(types);
    Pages pages;
    std::vector<std::size_t> all;
    for (std::size_t i = 0; i < types.size(); ++i)
    {
        pages[names.pages[i]] = typePage(types[i], addressFrom(names.pages[i], index));
        all.push_back(i);
    }
    for (const auto& [file, users] : names.shared)
        pages[file] = listPage(file.substr(0, file.find('/')), linksTo(users, file, names, types));
    pages[index] = listPage("Nodes", linksTo(all, index, names, types));
    return pages;
}

} // namespace

int runHelpPages(const GlobalOptions& global, const HelpPagesOptions& options)
{
    const Session session(global);
    session.showComplaints();
    if (!session.hasPlugins())
        return exit_failure;
    const std::vector<OperatorFacts> types = readTypes(session);
    std::string why;
    if (!writePages(options.directory, makePages(types), why))
    {
        complain(why);
        return exit_failure;
    }
    return writeOut(fmt::format("Help pages of {} in {}\n", countText(types.size(), "type"),
                                printable(options.directory)));
}

} // namespace kshop
