#include "parm_access.h"

#include <CH/CH_Manager.h>
#include <UT/UT_IntArray.h>

#include <pybind11/pybind11.h>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

PRM_Parm& multiOf(int id, const Text& token)
{
    PRM_Parm& parm = parmOf(id, token);
    if (!parm.isMultiParm())
        fail("The parameter \"" + pathOf(nodeOf(id)) + "/" + token.value + "\" is not a multi-parameter.");
    return parm;
}

/// One list of tokens per instance.
py::list instancesOf(int id, const Text& token)
{
    const PRM_Parm& multi = multiOf(id, token);
    const int size = multi.getMultiParmInstanceSize();
    py::list instances;
    for (int i = 0; i < multi.getMultiParmNumItems(); ++i)
    {
        py::list tokens;
        for (int j = 0; j < size; ++j)
            if (const PRM_Parm* parm = multi.getMultiParm(i * size + j))
                tokens.append(py::cast(Text(parm->getToken())));
        instances.append(tokens);
    }
    return instances;
}

void checkPosition(int id, const Text& token, int position, int count)
{
    if (position < 0 || position >= count)
        fail("The multi-parameter \"" + pathOf(nodeOf(id)) + "/" + token.value + "\" has no place " +
             std::to_string(position) + "; it has " +
             std::to_string(multiOf(id, token).getMultiParmNumItems()) + " instances.");
}

void insertInstance(int id, const Text& token, int position)
{
    PRM_Parm& multi = multiOf(id, token);
    checkPosition(id, token, position, multi.getMultiParmNumItems() + 1);
    multi.insertMultiParmItem(position);
}

void removeInstance(int id, const Text& token, int position)
{
    PRM_Parm& multi = multiOf(id, token);
    checkPosition(id, token, position, multi.getMultiParmNumItems());
    multi.removeMultiParmItem(position);
}

const int64 most_instances = 100000; // beyond this a count is a slip, and would only fill the memory

void setCount(int id, const Text& token, int64 count)
{
    PRM_Parm& multi = multiOf(id, token);
    if (count < 0 || count > most_instances)
        fail("The multi-parameter \"" + pathOf(nodeOf(id)) + "/" + token.value + "\" cannot have " +
             std::to_string(count) + " instances; 0 to " + std::to_string(most_instances) + " are possible.");
    if (!multi.hasExpression(0))
        multi.setValue(CHgetEvalTime(), count);
}

py::list indicesOf(int id, const Text& token)
{
    UT_IntArray numbers;
    parmOf(id, token).getMultiInstanceIndex(numbers);
    py::list indices;
    for (exint i = 0; i < numbers.entries(); ++i)
        indices.append(numbers(i));
    return indices;
}

py::object parentOf(int id, const Text& token)
{
    const PRM_Parm* parent = parmOf(id, token).getParentMultiParm();
    return parent ? py::cast(Text(parent->getToken())) : py::object(py::none());
}

} // namespace

void bindMultiParms(py::module_& module)
{
    module.def("parm_is_multi", [](int id, const Text& token) { return parmOf(id, token).isMultiParm(); });
    module.def("parm_is_color_ramp",
               [](int id, const Text& token) { return parmOf(id, token).isRampTypeColor(); });
    module.def("multi_instances", &instancesOf);
    module.def("multi_insert", &insertInstance);
    module.def("multi_remove", &removeInstance);
    module.def("multi_set_count", &setCount);
    module.def("multi_parms_per_item",
               [](int id, const Text& token) { return multiOf(id, token).getMultiParmInstanceSize(); });
    module.def("multi_start_offset",
               [](int id, const Text& token) { return multiOf(id, token).getMultiStartOffset(); });
    module.def("multi_indices", &indicesOf);
    module.def("multi_parent", &parentOf);
}

} // namespace python
} // namespace standin
