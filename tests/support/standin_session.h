#ifndef KORVAN_TESTS_STANDIN_SESSION_H
#define KORVAN_TESTS_STANDIN_SESSION_H

#include "standin_renderer.h"

#include "shop.h"
#include "vop_shaders.h"

#include <OP/OP_Director.h>
#include <OP/OP_Network.h>
#include <OP/OP_Node.h>
#include <OP/OP_OperatorTable.h>
#include <UT/UT_PathSearch.h>
#include <standin/host.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

/// A folder of its own, gone with the object.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "korvan_XXXXXX").string();
        m_path = ::mkdtemp(&pattern[0]);
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

    /// Writes a file, and the folders above it.
    std::string write(const std::string& name, const std::string& text) const
    {
        const std::filesystem::path file = m_path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
        return file.string();
    }

private:
    std::filesystem::path m_path;
};

/// The host and the renderer, both running, with nothing on the search path but an empty folder. The plug-in is
/// linked into the test; registerAll() does what the host does when it finds it.
///
/// One test a process: the host is started once and its tables keep what was registered.
class StandinSession
{
public:
    StandinSession()
    {
        ::setenv("HOUDINI_PATH", folder.path().c_str(), 1);
        ::unsetenv("HOUDINI_DSO_PATH");
        ::unsetenv("KORVAN_PLUGIN_PATH");
        standin::startHost();
    }

    /// The plug-in's turn: both tables.
    void registerAll() const
    {
        newVopOperator(OP_Network::getOperatorTable("Vop"));
        newShopOperator(OP_Network::getOperatorTable("Shop"));
    }

    OP_Operator* vop(const char* name) const
    {
        return OP_Network::getOperatorTable("Vop")->getOperator(name);
    }

    /// A new container in /shop.
    OP_Network& container() const
    {
        OP_Node* node = OPgetDirector()->getManager("shop")->createNode("korvan_vopnet");
        return *static_cast<OP_Network*>(node);
    }

    TemporaryFolder folder;
    StandinRenderer renderer;
};

#endif
