#include "categories.h"
#include "module.h"
#include "template_facts.h"

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <standin/host.h>

#include <pybind11/pybind11.h>

#include <algorithm>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

const char* const root_category = "Director"; // the root is its only node and has no operator
const char* const root_type = "root";

struct CategoryRow
{
    const char* name;
    const char* label;
};

const CategoryRow category_rows[] = {
    {"Director", "Directors"}, {"Manager", "Managers"}, {"Object", "Objects"},
    {"Shop", "Shaders"},       {"Driver", "Outputs"},   {"Vop", "VEX Builder"},
};

py::list categories()
{
    py::list names;
    for (const CategoryRow& row : category_rows)
        names.append(row.name);
    return names;
}

std::string labelOfCategory(const Text& name)
{
    const CategoryRow* row = std::find_if(std::begin(category_rows), std::end(category_rows),
                                          [&](const CategoryRow& one) { return name.value == one.name; });
    return row == std::end(category_rows) ? name.value : row->label;
}

bool isRootType(const Text& category, const Text& name)
{
    return category.value == root_category && name.value == root_type;
}

/// Null for the root's category.
OP_OperatorTable* tableOf(const Text& category)
{
    OPgetDirector(); // tables are complete once the host has started
    return category.value == root_category ? nullptr : OP_Network::getOperatorTable(category.c_str());
}

OP_Operator* findOperator(const Text& category, const Text& name)
{
    const OP_OperatorTable* table = tableOf(category);
    return table ? table->getOperator(name.c_str()) : nullptr;
}

OP_Operator& operatorOf(const Text& category, const Text& name)
{
    OP_Operator* op = findOperator(category, name);
    if (!op)
        throw HouError("ObjectWasDeleted", "The node type \"" + name.value + "\" no longer exists.");
    return *op;
}

py::list typeNames(const Text& category)
{
    py::list names;
    if (const OP_OperatorTable* table = tableOf(category))
        for (const OP_Operator* op : operatorsOf(*table))
            names.append(py::cast(Text(op->getName().buffer())));
    else
        names.append(root_type);
    return names;
}

py::dict typeFacts(const Text& category, const Text& name)
{
    using namespace pybind11::literals;
    if (isRootType(category, name))
        return py::dict("label"_a = "Root", "icon"_a = "", "min_inputs"_a = 0, "max_inputs"_a = 0,
                        "max_outputs"_a = 0, "unordered"_a = false);
    OP_Operator& op = operatorOf(category, name);
    return py::dict("label"_a = Text(op.getEnglish().buffer()), "icon"_a = Text(op.getIconName().buffer()),
                    "min_inputs"_a = op.getMinSources(), "max_inputs"_a = op.getMaxSources(),
                    "max_outputs"_a = op.maxOutputs(), "unordered"_a = op.getIsUnordered());
}

py::list typeTemplates(const Text& category, const Text& name)
{
    return isRootType(category, name) ? py::list()
                                      : factsOfList(operatorOf(category, name).getParmTemplates());
}

} // namespace

std::string categoryOf(const OP_Node& node)
{
    const OP_Operator* op = node.getOperator();
    return op && op->getTable() ? op->getTable()->getName().toStdString() : root_category;
}

void bindTypes(py::module_& module)
{
    module.def("categories", &categories);
    module.def("category_label", [](const Text& name) { return Text(labelOfCategory(name)); });
    module.def("type_names", &typeNames);
    module.def("type_exists", [](const Text& category, const Text& name)
               { return isRootType(category, name) || findOperator(category, name) != nullptr; });
    module.def("type_facts", &typeFacts);
    module.def("type_templates", &typeTemplates);
}

} // namespace python
} // namespace standin
