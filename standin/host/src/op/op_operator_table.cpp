#include <OP/OP_OperatorTable.h>

#include "../standin/plugins.h"
#include "op_names.h"

#include <OP/OP_Network.h>
#include <OP/OP_Operator.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <unordered_map>
#include <vector>

struct OP_OperatorTable::Contents
{
    std::vector<OP_Operator*> operators; ///< in the order of registration
    std::unordered_map<std::string, OP_Operator*> byName;
};

namespace
{

std::string owner(const OP_Operator& op)
{
    const std::string plugin = standin::pluginOf(op);
    return plugin.empty() ? "the host itself" : plugin;
}

std::string duplicateSentence(const OP_OperatorTable& table, const OP_Operator& held)
{
    const std::string name = held.getName().toStdString();
    const std::string newcomer = standin::runningPlugin();
    const bool samePlugin = !newcomer.empty() && newcomer == standin::pluginOf(held);
    const std::string taken = "The operator type \"" + name + "\" is already in the " +
                              table.getName().toStdString() + " table, registered by " + owner(held) +
                              "; a second one";
    if (samePlugin)
        return taken + " of that name, from the same plug-in, is left out. `kshop list --why` names the two "
                       "renderer entries.";
    return taken + (newcomer.empty() ? "" : ", from " + newcomer + ",") +
           " is left out. Rename one of the two, or take one of them off the search path.";
}

} // namespace

OP_OperatorTable::OP_OperatorTable(const char* name, OP_OpTypeId type)
    : myName(UT_String::ALWAYS_DEEP, name ? name : ""), myType(type), myContents(new Contents)
{
}

OP_OperatorTable::~OP_OperatorTable()
{
    for (OP_Operator* op : myContents->operators)
    {
        standin::forgetOperator(*op);
        delete op;
    }
}

bool OP_OperatorTable::addOperator(OP_Operator* op, std::ostream* err)
{
    std::string complaint;
    if (!op || !op->getName().isstring())
        complaint = "An operator type without a name cannot go into the " + myName.toStdString() +
                    " table; it is left out. Give it a name.";
    else if (const OP_Operator* held = getOperator(op->getName()))
        complaint = duplicateSentence(*this, *held);

    if (!complaint.empty())
    {
        if (err)
            *err << complaint << '\n';
        else
            standin::report(standin::Severity::Error, complaint);
        return false;
    }
    myContents->operators.push_back(op);
    myContents->byName[op->getName().toStdString()] = op;
    op->myTable = this;
    standin::rememberOperator(*op);
    return true;
}

void OP_OperatorTable::adoptPlaceholder(OP_Operator& op) { op.myTable = this; }

OP_Operator* OP_OperatorTable::getOperator(const char* name) const
{
    const auto found = name ? myContents->byName.find(name) : myContents->byName.end();
    return found == myContents->byName.end() ? nullptr : found->second;
}

void OP_OperatorTable::removeOperator(OP_Operator* op)
{
    auto& operators = myContents->operators;
    const auto found = std::find(operators.begin(), operators.end(), op);
    if (found == operators.end())
        return;
    operators.erase(found);
    myContents->byName.erase(op->getName().toStdString());
    standin::forgetOperator(*op);
    delete op;
}

int OP_OperatorTable::entries() const { return static_cast<int>(myContents->operators.size()); }

int OP_OperatorTable::getOperators(OP_OperatorList& list, OP_Network* net, bool) const
{
    int count = 0;
    for (OP_Operator* op : myContents->operators)
        if (!net || net->allowsOperator(op))
        {
            list.append(op);
            ++count;
        }
    return count;
}

OP_Node* OP_OperatorTable::createNode(OP_Network* parent, const char* type, const char* name, int* aliased,
                                      bool exact_type)
{
    if (!parent || parent->getOperatorTable() != this)
        return nullptr;
    return parent->createNode(type, name, 1, 1, 1, aliased, nullptr, exact_type);
}

void OP_OperatorTable::getDefaultNodeName(const char* type, UT_String& name)
{
    const std::string base = standin::splitOperatorName(type ? type : "").name;
    name.harden(standin::validNodeName(base).c_str());
}

// Tab menus here are made afresh each time they are asked for, so nobody holds anything that could be out of date.
void OP_OperatorTable::notifyUpdateTableSinksOfUpdate() {}
