#include "renderer_walk.h"

#include "operator_facts.h"

#include <OP/OP_Operator.h>
#include <UT/UT_PathSearch.h>
#include <UT/UT_StringArray.h>
#include <kr.h>
#include <kr_observe.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string_view>

namespace fs = std::filesystem;

namespace kshop
{

namespace
{

struct KindRow
{
    int kind;
    const char* word;
};

const KindRow kind_rows[] = {
    {KR_NODE_CAMERA, "camera"},
    {KR_NODE_LIGHT, "light"},
    {KR_NODE_SHAPE, "shape"},
    {KR_NODE_SHADER, "shader"},
};

const int all_kinds = KR_NODE_CAMERA | KR_NODE_LIGHT | KR_NODE_SHAPE | KR_NODE_SHADER;

std::string kindText(int kind)
{
    for (const KindRow& row : kind_rows)
        if (row.kind == kind)
            return std::string("a ") + row.word;
    return fmt::format("of the unknown kind {}", kind);
}

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

/// The renderer, running and loaded, for the time of this object; its console is silent.
class RunningRenderer
{
public:
    RunningRenderer() : m_consoleFlags(KrMsgGetConsoleFlags())
    {
        KrMsgSetConsoleFlags(0);
        KrBegin();
        const RendererFiles files = findRendererFiles();
        for (const std::string& directory : files.pluginDirectories)
            KrLoadPlugins(directory.c_str());
        for (const std::string& file : files.metadataFiles)
            KrMetaDataLoadFile(file.c_str());
    }
    ~RunningRenderer()
    {
        KrEnd();
        KrMsgSetConsoleFlags(m_consoleFlags);
    }
    RunningRenderer(const RunningRenderer&) = delete;
    RunningRenderer& operator=(const RunningRenderer&) = delete;

private:
    int m_consoleFlags;
};

/// The type name that the plug-in gives an entry.
std::string operatorName(const std::string& entryName)
{
    const std::string_view prefix = "zelk__";
    const bool prefixed = entryName.compare(0, prefix.size(), prefix) == 0;
    return "korvan::" + (prefixed ? entryName.substr(prefix.size()) : entryName);
}

bool asksToBeSkipped(const KtNodeEntry* entry)
{
    bool skip = false;
    return KrMetaDataGetBool(entry, nullptr, "houdini.skip", &skip) && skip;
}

/// Why an entry is none that the plug-in registers; empty when it is one.
std::string whyNotWanted(const KtNodeEntry* entry)
{
    const int kind = KrNodeEntryGetType(entry);
    if (kind != KR_NODE_CAMERA && kind != KR_NODE_SHADER)
        return fmt::format("it is {}, neither a shader nor a camera", kindText(kind));
    if (asksToBeSkipped(entry))
        return "its metadata skips it (\"houdini.skip\" is true)";
    if (kind == KR_NODE_CAMERA && !KrNodeEntryGetFilename(entry))
        return "it is a camera built into the renderer; only cameras of plug-ins become node types";
    return "";
}

/// Goes through the entries in their order and remembers who took which name.
class Walk
{
public:
    explicit Walk(const std::vector<OP_Operator*>& registered)
    {
        for (const OP_Operator* op : registered)
        {
            const bool isShader = classNameOf(*op) == "VOP_KorvanOperator";
            (isShader ? m_registered : m_handWritten).insert(op->getName().toStdString());
        }
    }

    void visit(const KtNodeEntry* entry)
    {
        const std::string name = KrNodeEntryGetName(entry);
        std::string reason = whyNotWanted(entry);
        if (reason.empty())
            reason = whyNotRegistered(name);
        if (!reason.empty())
            m_unregistered.push_back({name, reason});
    }

    const std::vector<UnregisteredEntry>& unregistered() const { return m_unregistered; }

private:
    /// For an entry that the plug-in wants: empty when it has its type.
    std::string whyNotRegistered(const std::string& name)
    {
        const std::string type = operatorName(name);
        const auto [owner, isFirst] = m_ownerOf.emplace(type, name);
        if (!isFirst)
            return fmt::format("its type name {} is taken by the entry {}; rename one of them", type,
                               owner->second);
        if (m_handWritten.count(type) != 0)
            return fmt::format("its type {} is hand-written; set houdini.skip on the shader", type);
        if (m_registered.count(type) == 0)
            return fmt::format("the plug-in did not register {}; see the messages of 'kshop describe --json'",
                               type);
        return "";
    }

    std::set<std::string> m_registered;
    std::set<std::string> m_handWritten; ///< types that no entry makes
    std::map<std::string, std::string> m_ownerOf;
    std::vector<UnregisteredEntry> m_unregistered;
};

std::set<std::string> parameterNamesOf(const KtNodeEntry* entry)
{
    std::set<std::string> names;
    KtParamIterator* parms = KrNodeEntryGetParamIterator(entry);
    while (!KrParamIteratorFinished(parms))
        names.insert(KrParamGetName(KrParamIteratorGetNext(parms)));
    KrParamIteratorDestroy(parms);
    return names;
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

std::map<std::string, std::set<std::string>> findParameterNames()
{
    const RunningRenderer renderer;
    std::map<std::string, std::set<std::string>> names;
    KtNodeEntryIterator* entries = KrUniverseGetNodeEntryIterator(KR_NODE_SHADER | KR_NODE_CAMERA);
    while (!KrNodeEntryIteratorFinished(entries))
    {
        const KtNodeEntry* entry = KrNodeEntryIteratorGetNext(entries);
        names.emplace(operatorName(KrNodeEntryGetName(entry)),
                      parameterNamesOf(entry)); // the first one has the name
    }
    KrNodeEntryIteratorDestroy(entries);
    return names;
}

std::vector<UnregisteredEntry> findUnregistered(const std::vector<OP_Operator*>& registered)
{
    const RunningRenderer renderer;
    Walk walk(registered);
    KtNodeEntryIterator* entries = KrUniverseGetNodeEntryIterator(all_kinds);
    while (!KrNodeEntryIteratorFinished(entries))
        walk.visit(KrNodeEntryIteratorGetNext(entries));
    KrNodeEntryIteratorDestroy(entries);
    return walk.unregistered();
}

} // namespace kshop
