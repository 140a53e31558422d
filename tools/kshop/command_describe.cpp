#include "commands.h"
#include "interface_json.h"
#include "interface_text.h"
#include "operator_facts.h"
#include "output.h"
#include "progress.h"
#include "text.h"

#include <OP/OP_Operator.h>

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace kshop
{

namespace
{

std::string unknownTypeText(const std::string& type, const std::vector<std::string>& known)
{
    const std::string hint = didYouMean(type, known);
    return fmt::format("no plug-in registered a type called '{}'; {}", type,
                       hint.empty() ? "'kshop list' shows all" : hint);
}

std::vector<std::string> namesOf(const Session& session)
{
    std::vector<std::string> names;
    for (const char* table : table_names)
        for (const OP_Operator* op : session.operators(table))
            names.push_back(op->getName().toStdString());
    return names;
}

/// Complains about each asked type that does not exist. True when all do.
bool allKnown(const std::vector<std::string>& asked, const std::vector<std::string>& known)
{
    bool result = true;
    for (const std::string& type : asked)
        if (std::find(known.begin(), known.end(), type) == known.end())
        {
            complain(unknownTypeText(type, known));
            result = false;
        }
    return result;
}

/// The asked operators, or all, in table order.
std::vector<TableFacts> readTables(const Session& session, const std::vector<std::string>& asked)
{
    const std::set<std::string> wanted(asked.begin(), asked.end());
    NodeSampler sampler;
    Progress progress("describing", "types");
    std::vector<TableFacts> tables;
    for (const char* table : table_names)
    {
        tables.emplace_back(table, std::vector<OperatorFacts>());
        for (OP_Operator* op : session.operators(table))
        {
            if (!wanted.empty() && wanted.count(op->getName().toStdString()) == 0)
                continue;
            tables.back().second.push_back(readOperator(*op, sampler));
            progress.step();
        }
    }
    return tables;
}

std::string tablesText(const std::vector<TableFacts>& tables, const Style& style)
{
    std::string text;
    for (const auto& [name, operators] : tables)
        for (const OperatorFacts& facts : operators)
            text += (text.empty() ? "" : "\n") + interfaceText(facts, style);
    return text;
}

} // namespace

int runDescribe(const GlobalOptions& global, const DescribeOptions& options)
{
    const Session session(global);
    // With --json the messages are in the output.
    if (!options.json)
        session.showComplaints();
    if (!session.hasPlugins())
        return exit_failure;
    // The types that exist are described all the same.
    const bool known = allKnown(options.types, namesOf(session));
    const std::vector<TableFacts> tables = readTables(session, options.types);
    const int written = writeOut(options.json ? jsonText(interfaceJson(tables, session.messages()))
                                              : tablesText(tables, Style::forStandardOutput()));
    return known ? written : exit_failure;
}

} // namespace kshop
