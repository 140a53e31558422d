#include "module.h"

#include <UT/UT_UndoManager.h>

#include <pybind11/pybind11.h>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

UT_UndoManager& undos() { return *UTgetUndoManager(); }

py::tuple tupleOf(const std::vector<std::string>& labels)
{
    py::tuple made(labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i)
        made[i] = Text(labels[i]);
    return made;
}

bool perform(bool (UT_UndoManager::*run)())
{
    const std::string obstacle = undos().whyNotNow();
    if (!obstacle.empty())
        fail(obstacle);
    return (undos().*run)();
}

} // namespace

void bindUndos(py::module_& module)
{
    module.def("begin_undo_block",
               [](const Text& label) { return undos().beginUndoBlock(label.c_str(), ANYLEVEL); });
    module.def("end_undo_block", [](int level) { undos().endUndoBlock(level); });
    module.def("perform_undo", [] { return perform(&UT_UndoManager::performUndo); });
    module.def("perform_redo", [] { return perform(&UT_UndoManager::performRedo); });
    module.def("undo_labels", [] { return tupleOf(undos().getUndoLabels()); });
    module.def("redo_labels", [] { return tupleOf(undos().getRedoLabels()); });
    module.def("are_undos_enabled", [] { return undos().isRecording(); });
    module.def("disable_undos", [](bool on) { undos().disable(on); });
    module.def("clear_undos", [] { undos().clear(); });
}

} // namespace python
} // namespace standin
