#include "running_renderer.h"

#include <UT/UT_PathSearch.h>
#include <UT/UT_StringArray.h>
#include <kr.h>
#include <kr_observe.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

std::vector<std::string> textsOf(const UT_StringArray& array)
{
    std::vector<std::string> result;
    for (const UT_StringHolder& text : array)
        result.emplace_back(static_cast<const char*>(text));
    return result;
}

std::vector<std::string> splitPath(const char* path)
{
    std::vector<std::string> result;
    std::istringstream stream(path ? path : "");
    for (std::string entry; std::getline(stream, entry, ':');)
        if (!entry.empty())
            result.push_back(entry);
    return result;
}

std::vector<std::string> sharedObjectsIn(const std::string& directory)
{
    std::vector<std::string> result;
    std::error_code error;
    for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error))
        if (it->path().extension() == ".so")
            result.push_back(it->path().string());
    std::sort(result.begin(), result.end());
    return result;
}

void keepComplaint(int severity, const char* text, void* user)
{
    if (severity != KR_MSG_INFO)
        static_cast<std::vector<std::string>*>(user)->push_back(text);
}

} // namespace

RendererFiles findRendererFiles()
{
    const UT_PathSearch* path = UT_PathSearch::getInstance(UT_HOUDINI_PATH);
    RendererFiles files;
    UT_StringArray found;
    path->findAllDirectories("korvan/plugins", found);
    files.pluginDirectories = textsOf(found);
    for (const std::string& directory : splitPath(std::getenv("KORVAN_PLUGIN_PATH")))
        files.pluginDirectories.push_back(directory);
    for (const std::string& directory : files.pluginDirectories)
        for (const std::string& plugin : sharedObjectsIn(directory))
            files.plugins.push_back(plugin);
    UT_StringArray metadata;
    path->matchAllFilesInSubdirectory(".mtd", "korvan/metadata", true, metadata, true, false);
    files.metadataFiles = textsOf(metadata);
    return files;
}

RunningRenderer::RunningRenderer(const std::vector<std::string>& metadataFiles)
    : m_consoleFlags(KrMsgGetConsoleFlags())
{
    KrMsgSetConsoleFlags(0);
    KrBegin();
    KrMsgSetObserver(keepComplaint, &m_complaints);
    for (const std::string& directory : findRendererFiles().pluginDirectories)
        KrLoadPlugins(directory.c_str());
    KrMsgSetObserver(nullptr, nullptr);
    for (const std::string& file : metadataFiles)
        KrMetaDataLoadFile(file.c_str());
}

RunningRenderer::~RunningRenderer()
{
    KrEnd();
    KrMsgSetConsoleFlags(m_consoleFlags);
}

} // namespace kshop
