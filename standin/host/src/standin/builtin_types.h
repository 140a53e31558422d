#ifndef STANDIN_BUILTIN_TYPES_H
#define STANDIN_BUILTIN_TYPES_H

class OP_OperatorTable;

/// @file
/// The node types that the host brings itself.

namespace standin
{

/// Table of the managers' own types.
constexpr const char* manager_table = "Manager";
/// The managers below the root, in the order in which they are made; type and node have the same name.
constexpr const char* manager_names[] = {"obj", "shop", "out", "vex"};

/// Adds the host's own types to a table that was just made; tables without any get none.
void addBuiltinTypes(OP_OperatorTable& table);

// One function per table.
void addManagerTypes(OP_OperatorTable& table);
void addObjectTypes(OP_OperatorTable& table);
void addVopTypes(OP_OperatorTable& table);

} // namespace standin

#endif
