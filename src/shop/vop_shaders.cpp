#include "vop_shaders.h"

#include "shader_desc.h"
#include "utils.h"
#include "utils_host_memory.h"
#include "utils_nodes.h"
#include "utils_renderer.h"

#include <OP/OP_OperatorTable.h>
#include <UT/UT_PathSearch.h>
#include <UT/UT_StringArray.h>

#include <cstdint>
#include <cstdlib>

namespace zelk
{
namespace shop
{

namespace
{

/// The renderer's message categories that a start-up shows.
const int startup_console_flags = 0xE47;
const int silent_console_flags = 0;

/// A variable that is not set means "show"; text that does not begin with a number counts as 0.
bool wantsStartupLog()
{
    const char* value = std::getenv("ZELK_STARTUP_LOG");
    return !value || static_cast<std::uint32_t>(std::strtol(value, nullptr, 10)) != 0;
}

void loadRendererPlugins(const UT_PathSearch& path)
{
    UT_StringArray directories;
    path.findAllDirectories("korvan/plugins", directories);
    for (int i = 0; i < static_cast<int>(directories.entries()); ++i)
        KrLoadPlugins(directories(i));
    KrLoadPlugins(std::getenv("KORVAN_PLUGIN_PATH"));
}

void loadMetaDataFiles(const UT_PathSearch& path)
{
    const bool full_paths = true, recurse = true, skip_duplicates = false;
    UT_StringArray files;
    path.matchAllFilesInSubdirectory(".mtd", "korvan/metadata", full_paths, files, recurse, skip_duplicates);
    for (int i = 0; i < static_cast<int>(files.entries()); ++i)
    {
        const char* file = files(i);
        KrMsgInfo("[vop_shaders] Loading metadata file: %s", file);
        KrMetaDataLoadFile(file);
    }
}

/// Only cameras that come from plug-ins become node types: the host's own camera stands for the built-in
/// ones.
bool isWanted(const KtNodeEntry* entry)
{
    if (getNodeMetaDataBool(entry, "houdini.skip", false))
        return false;
    return KrNodeEntryGetType(entry) != KR_NODE_CAMERA || KrNodeEntryGetFilename(entry);
}

void registerShader(OP_OperatorTable& table, const KtNodeEntry* entry)
{
    ShaderDesc* desc = leakForHost<ShaderDesc>(entry);
    if (desc->nodeType == KR_NODE_CAMERA)
        desc->category = "Camera";

    VOP_KorvanOperator* op = leakForHost<VOP_KorvanOperator>(
        desc->opName.c_str(), desc->label.c_str(), VOP_KorvanShader::myConstructor, desc->getTemplates(), 0u,
        static_cast<unsigned>(VOP_VARIABLE_INOUT_MAX), network_mask, nullptr, 0u,
        static_cast<unsigned>(desc->outputCount()));
    op->shaderDesc = desc;
    op->setIconName(desc->icon.c_str());
    table.addOperator(op, nullptr);
}

} // namespace

void registerShaders(OP_OperatorTable* table)
{
    KrBegin();
    KrMsgSetConsoleFlags(wantsStartupLog() ? startup_console_flags : silent_console_flags);
    KrMsgInfo("[vop_shaders] Registering shaders ...");

    const UT_PathSearch* path = UT_PathSearch::getInstance(UT_HOUDINI_PATH);
    loadRendererPlugins(*path);
    loadMetaDataFiles(*path);
    forEachNodeEntry(KR_NODE_CAMERA | KR_NODE_SHADER,
                     [table](const KtNodeEntry* entry)
                     {
                         if (isWanted(entry))
                             registerShader(*table, entry);
                     });

    KrMsgInfo("[vop_shaders] shader registration done.");
    KrEnd();
}

bool VOP_KorvanOperator::getOpHelpURL(UT_String& url)
{
    const bool ownPage = shaderDesc && !shaderDesc->helpUrl.empty();
    setText(url, (ownPage ? shaderDesc->helpUrl : std::string(help_root) + "Shaders").c_str());
    return true;
}

bool VOP_KorvanOperator::getOpTabSubMenuPath(UT_String& path)
{
    if (!shaderDesc || shaderDesc->category.empty())
        return false;
    setText(path, shaderDesc->category.c_str());
    return true;
}

} // namespace shop
} // namespace zelk
