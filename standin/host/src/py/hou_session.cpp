#include "module.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Director.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_PathSearch.h>

#include <pybind11/pybind11.h>

#include <sstream>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

int thisThread() { return SYS_SequentialThreadIndex::get(); }

OP_Node& workingNode()
{
    OP_Node* node = OPgetDirector()->getCwd(thisThread());
    return node ? *node : *OPgetDirector();
}

/// Replaces the top of the thread's stack, so that going somewhere does not pile up and ends with an expression.
void setWorkingNode(int id)
{
    OP_Node& node = nodeOf(id);
    OPgetDirector()->popCwd(thisThread());
    OPgetDirector()->pushCwd(thisThread(), &node);
}

py::tuple runHscript(const Text& command)
{
    std::ostringstream output, errors;
    OPgetDirector()->getCommandManager()->execute(command.c_str(), false, &output, &errors);
    return py::make_tuple(Text(output.str()), Text(errors.str()));
}

py::object evaluateHscript(const Text& text)
{
    CH_ExprValue value;
    std::string error;
    if (!workingNode().evalExpression(text.c_str(), CH_OLD_EXPR_LANGUAGE, CHgetEvalTime(), thisThread(),
                                      value, error))
        fail(error);
    return value.isText ? py::cast(Text(value.text)) : py::cast(value.number);
}

Text expand(const Text& text)
{
    std::string result, error;
    if (!workingNode().expandString(text.c_str(), CHgetEvalTime(), thisThread(), result, error))
        fail(error);
    return result;
}

py::tuple tupleOf(const UT_StringArray& texts)
{
    py::tuple made(static_cast<std::size_t>(texts.entries()));
    for (exint i = 0; i < texts.entries(); ++i)
        made[static_cast<std::size_t>(i)] = Text(texts(i).buffer());
    return made;
}

py::tuple findDirectories(const Text& name)
{
    UT_StringArray found;
    UT_PathSearch::getInstance(UT_HOUDINI_PATH)->findAllDirectories(name.c_str(), found);
    return tupleOf(found);
}

py::tuple findFiles(const Text& name)
{
    UT_StringArray found;
    UT_PathSearch::getInstance(UT_HOUDINI_PATH)->findAllFiles(name.c_str(), found);
    return tupleOf(found);
}

py::tuple searchPath()
{
    const UT_PathSearch& search = *UT_PathSearch::getInstance(UT_HOUDINI_PATH);
    UT_StringArray entries;
    for (int i = 0; i < search.getEntries(); ++i)
        entries.append(UT_StringHolder(search.getEntry(i)));
    return tupleOf(entries);
}

} // namespace

void bindSession(py::module_& module)
{
    module.def("time", [] { return CHgetEvalTime(); });
    module.def("set_time", [](double time) { CHgetManager()->setEvalTime(time); });
    module.def("fps", [] { return CHgetManager()->getSamplesPerSec(); });
    module.def("set_fps", [](double rate) { CHgetManager()->setSamplesPerSec(rate); });
    module.def("time_to_frame", [](double time) { return CHgetManager()->getSample(time); });
    module.def("frame_to_time", [](double frame) { return CHgetManager()->getTime(frame); });
    module.def("root", [] { return idOf(OPgetDirector()); });
    module.def("cwd", [] { return idOf(&workingNode()); });
    module.def("set_cwd", &setWorkingNode);
    module.def("hscript", &runHscript);
    module.def("hscript_expression", &evaluateHscript);
    module.def("expand_string", &expand);
    module.def("find_directories", &findDirectories);
    module.def("find_files", &findFiles);
    module.def("houdini_path", &searchPath);
}

} // namespace python
} // namespace standin
