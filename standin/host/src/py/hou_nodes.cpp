#include "module.h"

#include <OP/OP_Director.h>
#include <OP/OP_Network.h>
#include <OP/OP_Node.h>
#include <OP/OP_OperatorTable.h>
#include <UT/UT_StringArray.h>
#include <VOP/VOP_Node.h>
#include <standin/host.h>

#include "categories.h"

#include <pybind11/pybind11.h>

#include <algorithm>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

OP_Network& networkOf(int id)
{
    OP_Network* network = nodeOf(id).castToOPNetwork();
    if (!network)
        fail("\"" + pathOf(nodeOf(id)) + "\" holds no nodes.");
    return *network;
}

int findNode(int base, const Text& path) { return idOf(nodeOf(base).findNode(path.c_str())); }

py::tuple typeOf(int id)
{
    const OP_Operator* op = nodeOf(id).getOperator();
    return py::make_tuple(Text(categoryOf(nodeOf(id))), Text(op ? op->getName().buffer() : "root"));
}

py::list childrenOf(int id)
{
    py::list children;
    if (const OP_Network* network = nodeOf(id).castToOPNetwork())
        for (int i = 0; i < network->getNchildren(); ++i)
            children.append(idOf(network->getChild(i)));
    return children;
}

int childNamed(int id, const Text& name)
{
    const OP_Network* network = nodeOf(id).castToOPNetwork();
    return network ? idOf(network->getChild(name.c_str())) : 0;
}

py::object childTableOf(int id)
{
    const OP_Network* network = nodeOf(id).castToOPNetwork();
    if (!network || !network->getOperatorTable())
        return py::none();
    return py::cast(Text(network->getOperatorTable()->getName().buffer()));
}

void renameNode(int id, const Text& name)
{
    OP_Node& node = nodeOf(id);
    OP_Network* parent = node.getParent();
    if (!parent || !parent->renameNode(&node, name.c_str()))
        fail("\"" + pathOf(node) + "\" cannot be renamed to \"" + name.value + "\".");
}

int createNode(int id, const Text& type, const Text& name, bool runScripts, bool exactType)
{
    std::string why;
    OP_Node* node = createNodeByUser(networkOf(id), type.value, name.value, why, runScripts, exactType);
    if (!node)
        fail(why);
    return idOf(node);
}

void destroyNode(int id)
{
    OP_Node& node = nodeOf(id);
    const std::string path = pathOf(node);
    OP_Network* parent = node.getParent();
    if (!parent || !OP_Network::canDestroyNode(&node) || !parent->destroyNode(&node))
        fail("\"" + path + "\" cannot be deleted.");
}

void setPosition(int id, double x, double y) { nodeOf(id).setXYWithBoundsChecks(x, y); }

// User data

py::object userData(int id, const Text& name)
{
    UT_String value;
    if (!nodeOf(id).getUserData(UT_String(name.c_str()), value))
        return py::none();
    return py::cast(Text(value.buffer()));
}

py::dict userDataDict(int id)
{
    const OP_Node& node = nodeOf(id);
    UT_StringArray names;
    node.getUserDataNames(names);
    py::dict texts;
    for (exint i = 0; i < names.entries(); ++i)
    {
        UT_String value;
        node.getUserData(UT_String(names(i).buffer()), value);
        texts[py::cast(Text(names(i).buffer()))] = Text(value.buffer());
    }
    return texts;
}

// Flags

struct FlagRow
{
    const char* name; // of hou.nodeFlag
    bool (OP_NodeFlags::*get)() const;
    void (OP_NodeFlags::*set)(bool);
};

const FlagRow flag_rows[] = {
    {"Bypass", &OP_NodeFlags::getBypass, &OP_NodeFlags::setBypass},
    {"Display", &OP_NodeFlags::getDisplay, &OP_NodeFlags::setDisplay},
    {"Render", &OP_NodeFlags::getRender, &OP_NodeFlags::setRender},
    {"Template", &OP_NodeFlags::getTemplate, &OP_NodeFlags::setTemplate},
    {"Lock", &OP_NodeFlags::getHardLock, &OP_NodeFlags::setHardLock},
    {"Expose", &OP_NodeFlags::getExpose, &OP_NodeFlags::setExpose},
};

struct DetailRow
{
    const char* name; // of hou.nodeFlag
    char letter;
};

const DetailRow detail_rows[] = {
    {"VopLowDetail", VOP_OPT_LOW_FLAG},
    {"VopMediumDetail", VOP_OPT_MEDIUM_FLAG},
    {"VopHighDetail", VOP_OPT_HIGH_FLAG},
};

template <typename Row, std::size_t N>
const Row* findRow(const Row (&rows)[N], const std::string& name)
{
    const Row* row = std::find_if(rows, rows + N, [&](const Row& one) { return name == one.name; });
    return row == rows + N ? nullptr : row;
}

/// The letter of a detail flag, which only VOP nodes have.
char detailLetter(OP_Node& node, const Text& name)
{
    const DetailRow* row = findRow(detail_rows, name.value);
    if (!row || !node.castToVOPNode())
        fail("\"" + pathOf(node) + "\" has no flag " + name.value + ".");
    return row->letter;
}

bool isFlagSet(int id, const Text& name)
{
    OP_Node& node = nodeOf(id);
    if (const FlagRow* row = findRow(flag_rows, name.value))
        return (node.flags().*row->get)();
    return node.getExtraFlag(detailLetter(node, name)) != 0;
}

void setFlag(int id, const Text& name, bool on)
{
    OP_Node& node = nodeOf(id);
    const FlagRow* row = findRow(flag_rows, name.value);
    if (!row)
    {
        node.setExtraFlag(detailLetter(node, name), on);
        return;
    }
    if ((node.flags().*row->get)() == on)
        return;
    (node.flags().*row->set)(on);
    node.opChanged(OP_FLAG_CHANGED);
}

py::tuple errorsOf(int id)
{
    UT_StringArray errors;
    nodeOf(id).getParmErrors(errors);
    py::tuple made(static_cast<std::size_t>(errors.entries()));
    for (exint i = 0; i < errors.entries(); ++i)
        made[static_cast<std::size_t>(i)] = Text(errors(i).buffer());
    return made;
}

} // namespace

void bindNodes(py::module_& module)
{
    module.def("find_node", &findNode);
    module.def("node_name", [](int id) { return Text(nodeOf(id).getName().buffer()); });
    module.def("node_path", [](int id) { return Text(pathOf(nodeOf(id))); });
    module.def("node_type", &typeOf);
    module.def("node_parent", [](int id) { return idOf(nodeOf(id).getParent()); });
    module.def("node_children", &childrenOf);
    module.def("node_is_network", [](int id) { return nodeOf(id).isNetwork() != 0; });
    module.def("child_named", &childNamed);
    module.def("child_table", &childTableOf);
    module.def("is_valid_name", [](const Text& name) { return isValidNodeName(name.value); });
    module.def("rename_node", &renameNode);
    module.def("create_node", &createNode);
    module.def("destroy_node", &destroyNode);
    module.def("node_position", [](int id) { return py::make_tuple(nodeOf(id).getX(), nodeOf(id).getY()); });
    module.def("set_node_position", &setPosition);
    module.def("move_to_good_position", [](int id, bool relative, bool inputs, bool outputs, bool unconnected)
               { nodeOf(id).moveToGoodPosition(relative, inputs, outputs, unconnected); });
    module.def("set_user_data", [](int id, const Text& name, const Text& value)
               { nodeOf(id).setUserData(UT_String(name.value), UT_String(value.value), true); });
    module.def("user_data", &userData);
    module.def("user_data_dict", &userDataDict);
    module.def("destroy_user_data", [](int id, const Text& name)
               { return nodeOf(id).deleteUserData(UT_String(name.value), true); });
    module.def("flag", &isFlagSet);
    module.def("set_flag", &setFlag);
    module.def("node_errors", &errorsOf);
}

} // namespace python
} // namespace standin
