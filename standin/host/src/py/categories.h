#ifndef STANDIN_PY_CATEGORIES_H
#define STANDIN_PY_CATEGORIES_H

#include <string>

class OP_Node;

namespace standin
{
namespace python
{

/// Name of the table that a node's type is in; "Director" for the root, whose type is in none.
std::string categoryOf(const OP_Node& node);

} // namespace python
} // namespace standin

#endif
