#ifndef STANDIN_PLUGINS_H
#define STANDIN_PLUGINS_H

#include <OP/OP_OpTypeId.h>

#include <string>

class CMD_Manager;
class OP_Operator;
class OP_OperatorTable;

/// @file
/// Shared objects of others: finding, checking, opening, and running their entry points.

namespace standin
{

/// One operator table of the host and the entry point that plug-ins add to it with.
struct TableRow
{
    const char* name; ///< "Vop"
    OP_OpTypeId type;
    const char* hook; ///< "newVopOperator"; null for the host's own tables
};

/// The row of a table; null for a name that the host does not know.
const TableRow* findTable(const char* name);

/// Opens every plug-in of the search path, once, and reports those that cannot be used.
void openPlugins();

/// Runs the entry points for one table, in loading order. What they throw is reported and ends that plug-in's only.
void runTableHooks(const TableRow& row, OP_OperatorTable& table);
/// Lets the plug-ins add their commands.
void runCommandHooks(CMD_Manager& commands);

/// Path of the plug-in whose entry point is running now; empty when none is.
std::string runningPlugin();

/// Keeps, or forgets, which plug-in an operator came from.
void rememberOperator(const OP_Operator& op);
void forgetOperator(const OP_Operator& op);

} // namespace standin

#endif
