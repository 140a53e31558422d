#include "module.h"

#include "../op/op_otl_create.h"
#include "../op/op_otl_manager.h"

#include <OP/OP_Director.h>
#include <OP/OP_OperatorTable.h>
#include <standin/host.h>

#include <pybind11/pybind11.h>

#include <memory>

namespace py = pybind11;

namespace standin
{
namespace python
{
namespace
{

/// The installed state of a file, else the file as it is now; raises hou.OperationFailed when it is no asset file.
std::shared_ptr<OP_OTLLibrary> libraryOf(const Text& path)
{
    if (std::shared_ptr<OP_OTLLibrary> held = installedLibrary(path.value))
        return held;
    std::string why;
    std::shared_ptr<OP_OTLLibrary> opened = openLibrary(path.value, why);
    if (!opened)
        fail(why);
    return opened;
}

void install(const Text& path)
{
    std::string why;
    if (!installLibrary(path.value, why))
        fail(why);
}

void uninstall(const Text& path)
{
    std::string why;
    if (!uninstallLibrary(path.value, why))
        fail(why);
}

py::tuple loaded()
{
    py::list paths;
    for (const std::string& path : installedLibraries())
        paths.append(py::cast(Text(path)));
    return py::tuple(paths);
}

/// Table and name of each definition.
py::list definitions(const Text& path)
{
    const std::shared_ptr<OP_OTLLibrary> library = libraryOf(path);
    py::list found;
    for (int i = 0; i < library->getNumDefinitions(); ++i)
        found.append(py::make_tuple(Text(library->getDefinition(i).getTable().buffer()),
                                    Text(library->getDefinition(i).getName().buffer())));
    return found;
}

OP_OTLDefinition definitionOf(const OP_OTLLibrary& library, const Text& table, const Text& name)
{
    const int index = library.findDefinition(table.c_str(), name.c_str());
    if (index < 0)
        throw HouError("ObjectWasDeleted", "\"" + library.filePath() + "\" no longer defines the " +
                                               table.value + " type \"" + name.value + "\".");
    return library.getDefinition(index);
}

py::dict definitionFacts(const Text& path, const Text& table, const Text& name)
{
    using namespace pybind11::literals;
    const OP_OTLDefinition definition = definitionOf(*libraryOf(path), table, name);
    return py::dict(
        "label"_a = Text(definition.getLabel().buffer()), "icon"_a = Text(definition.getIcon().buffer()),
        "extra"_a = Text(definition.getExtra().buffer()), "min_inputs"_a = definition.getMinInputs(),
        "max_inputs"_a = definition.getMaxInputs(), "mod_time"_a = definition.getModTime());
}

/// The sections of a type, name to size in bytes.
py::dict sections(const Text& path, const Text& table, const Text& name)
{
    const std::shared_ptr<OP_OTLLibrary> library = libraryOf(path);
    const std::string section = definitionOf(*library, table, name).sectionName();
    const std::unique_ptr<FS_Reader> reader(library->getSectionReader(section.c_str()));
    const FS_IndexFile index(reader.get());
    py::dict sizes;
    for (int i = 0; i < index.getNumSections(); ++i)
        sizes[py::cast(Text(index.getSectionName(i)))] = index.getSectionDataSize(index.getSectionName(i));
    return sizes;
}

py::object sectionBytes(const Text& path, const Text& table, const Text& name, const Text& section)
{
    const std::shared_ptr<OP_OTLLibrary> library = libraryOf(path);
    const std::string place = definitionOf(*library, table, name).sectionName();
    const std::unique_ptr<FS_Reader> reader(library->getSectionReader(place.c_str()));
    const FS_IndexFile index(reader.get());
    UT_WorkBuffer bytes;
    if (!index.readSection(section.c_str(), bytes))
        fail("\"" + library->filePath() + "\": the section \"" + section.value + "\" of \"" + name.value +
             "\" cannot be read.");
    return py::bytes(bytes.buffer(), static_cast<std::size_t>(bytes.length()));
}

/// Path of the file that a type comes from; None for other types.
py::object libraryOfType(const Text& table, const Text& name)
{
    OPgetDirector(); // tables are complete once the host has started
    for (const OP_OperatorTable* types : operatorTables())
    {
        OP_Operator* op = types->getName() == table.c_str() ? types->getOperator(name.c_str()) : nullptr;
        if (op && op->getOTLLibrary())
            return py::cast(Text(op->getOTLLibrary()->filePath()));
    }
    return py::none();
}

int createAsset(int id, const Text& name, const Text& file, const Text& description, int minInputs,
                int maxInputs)
{
    std::string why;
    OP_Node* made = createDigitalAsset(
        nodeOf(id), {name.value, file.value, description.value, minInputs, maxInputs}, why);
    if (!made)
        fail(why);
    return idOf(made);
}

} // namespace

void bindAssets(py::module_& module)
{
    module.def("install_library", &install);
    module.def("uninstall_library", &uninstall);
    module.def("library_path", [](const Text& path) { return Text(libraryPath(path.value)); });
    module.def("loaded_libraries", &loaded);
    module.def("definitions", &definitions);
    module.def("definition_facts", &definitionFacts);
    module.def("definition_sections", &sections);
    module.def("section_bytes", &sectionBytes);
    module.def("library_of_type", &libraryOfType);
    module.def("create_asset", &createAsset);
    module.def("can_create_asset", [](int id) { return canCreateDigitalAsset(nodeOf(id)); });
}

} // namespace python
} // namespace standin
