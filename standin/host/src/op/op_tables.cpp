#include "../standin/builtin_types.h"
#include "../standin/plugins.h"

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <standin/host.h>

#include <map>
#include <string>
#include <vector>

namespace
{

struct Tables
{
    std::map<std::string, OP_OperatorTable*> byName;
    std::vector<OP_OperatorTable*> inOrder;
};

// Never destroyed: operators live as long as the process.
Tables& tables()
{
    static auto* all = new Tables;
    return *all;
}

OP_OperatorTable* makeTable(const std::string& name)
{
    const standin::TableRow* row = standin::findTable(name.c_str());
    auto* table = new OP_OperatorTable(name.c_str(), row ? row->type : INVALID_OPTYPE_ID);
    // It is there before anybody adds to it: the hooks may ask for their own table.
    tables().byName[name] = table;
    tables().inOrder.push_back(table);
    standin::addBuiltinTypes(*table);
    if (row && row->hook)
    {
        standin::openPlugins();
        standin::runTableHooks(*row, *table);
    }
    return table;
}

} // namespace

OP_OperatorTable* OP_Network::getOperatorTable(const char* table, const char*)
{
    if (!table || !*table)
        return nullptr;
    const auto found = tables().byName.find(table);
    return found != tables().byName.end() ? found->second : makeTable(table);
}

namespace standin
{

std::vector<OP_OperatorTable*> operatorTables() { return tables().inOrder; }

std::vector<OP_Operator*> operatorsOf(const OP_OperatorTable& table)
{
    OP_OperatorList list;
    table.getOperators(list);
    return std::vector<OP_Operator*>(list.begin(), list.end());
}

std::vector<OP_Operator*> pluginOperatorsOf(const OP_OperatorTable& table)
{
    std::vector<OP_Operator*> operators;
    for (OP_Operator* op : operatorsOf(table))
        if (!pluginOf(*op).empty())
            operators.push_back(op);
    return operators;
}

} // namespace standin
