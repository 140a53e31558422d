#ifndef STANDIN_PY_TEMPLATE_FACTS_H
#define STANDIN_PY_TEMPLATE_FACTS_H

#include <pybind11/pybind11.h>

class PRM_Template;

namespace standin
{
namespace python
{

/// A template as a dictionary; hou/_translate.py says what is in it and makes people's classes from it.
pybind11::dict factsOf(const PRM_Template& tmpl);

/// One dictionary per template up to the terminator; a null list is an empty one.
pybind11::list factsOfList(const PRM_Template* templates);

} // namespace python
} // namespace standin

#endif
