#include "module.h"

#include <OP/OP_Network.h>
#include <standin/scene.h>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <vector>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

void save(const Text& path)
{
    std::string why;
    if (!saveScene(path.value, why))
        fail(why);
}

typedef bool (*Reader)(const std::string& path, std::vector<std::string>& warnings, std::string& why);

/// The warnings.
template <Reader reader>
py::list read(const Text& path)
{
    std::vector<std::string> warnings;
    std::string why;
    if (!reader(path.value, warnings, why))
        fail(why);
    py::list made;
    for (const std::string& warning : warnings)
        made.append(Text(warning));
    return made;
}

void clear()
{
    std::string why;
    if (!clearScene(why))
        fail(why);
}

py::tuple copy(const std::vector<int>& ids, int networkId)
{
    std::vector<OP_Node*> nodes(ids.size());
    std::transform(ids.begin(), ids.end(), nodes.begin(), [](int id) { return &nodeOf(id); });
    OP_Network* network = nodeOf(networkId).castToOPNetwork();
    if (!network)
        fail("\"" + pathOf(nodeOf(networkId)) + "\" holds no nodes.");
    std::vector<OP_Node*> copies;
    std::string why;
    if (!copyNodes(nodes, *network, copies, why))
        fail(why);
    py::tuple made(copies.size());
    for (std::size_t i = 0; i < copies.size(); ++i)
        made[i] = idOf(copies[i]);
    return made;
}

} // namespace

void bindScenes(py::module_& module)
{
    module.def("scene_path", [] { return Text(scenePath()); });
    module.def("save_scene", &save);
    module.def("load_scene", &read<&loadScene>);
    module.def("merge_scene", &read<&mergeScene>);
    module.def("clear_scene", &clear);
    module.def("copy_nodes", &copy);
}

} // namespace python
} // namespace standin
