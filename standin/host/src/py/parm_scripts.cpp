#include "interpreter.h"

#include "module.h"
#include "op/op_working_node.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Node.h>
#include <PRM/PRM_ParmOwner.h>
#include <SYS/SYS_SequentialThreadIndex.h>

#include <pybind11/stl.h>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

/// Runs a script; false with the reason in `error` when it raises.
template <typename Function>
bool tryScript(std::string& error, Function run)
{
    const Session session;
    if (!session.started())
    {
        error = "Python is not available";
        return false;
    }
    try
    {
        run(py::module_::import("hou._expressions"));
        return true;
    }
    catch (const py::error_already_set& raised)
    {
        passOnInterrupt(raised);
        error = summaryOf(raised);
    }
    catch (const std::exception& thrown)
    {
        error = thrown.what();
    }
    return false;
}

bool evaluatePython(OP_Parameters* parameters, const char* text, fpreal time, int thread, CH_ExprValue& value,
                    std::string& error)
{
    const WorkingNode working(thread, dynamic_cast<OP_Node*>(parameters));
    const CH_AutoEvalTime now(thread, time);
    return tryScript(error,
                     [&](const py::module_& expressions)
                     {
                         const py::object result = expressions.attr("evaluate")(Text(text));
                         value = py::isinstance<py::str>(result) ? CH_ExprValue(result.cast<Text>().value)
                                                                 : CH_ExprValue(result.cast<double>());
                     });
}

bool runPythonMenu(OP_Parameters* parameters, const PRM_Parm* parm, const char* script, PRM_MenuItems& items,
                   std::string& error)
{
    OP_Node* node = dynamic_cast<OP_Node*>(parameters);
    const WorkingNode working(SYS_SequentialThreadIndex::get(), node);
    return tryScript(
        error,
        [&](const py::module_& expressions)
        {
            const py::object token = parm ? py::cast(Text(parm->getToken())) : py::object(py::none());
            const auto flat =
                expressions.attr("menu")(Text(script), idOf(node), token).cast<std::vector<Text>>();
            for (std::size_t i = 0; i + 1 < flat.size(); i += 2)
                items.push_back(std::make_pair(flat[i].value, flat[i + 1].value));
        });
}

/// The host's parameters find Python as soon as this library is there.
struct Registration
{
    Registration()
    {
        PRMscriptHooks().evaluatePython = &evaluatePython;
        PRMscriptHooks().runPythonMenu = &runPythonMenu;
    }
};

const Registration registration;

} // namespace
} // namespace python
} // namespace standin
