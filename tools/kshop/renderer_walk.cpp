#include "renderer_walk.h"

#include "operator_facts.h"
#include "text.h"

#include <OP/OP_Operator.h>
#include <kr.h>

#include <fmt/format.h>

#include <map>
#include <set>
#include <string_view>

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

bool asksToBeSkipped(const KtNodeEntry* entry)
{
    bool skip = false;
    return KrMetaDataGetBool(entry, nullptr, "houdini.skip", &skip) && skip;
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

std::map<std::string, std::set<std::string>> findParameterNames()
{
    const RunningRenderer renderer(findRendererFiles().metadataFiles);
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
    const RunningRenderer renderer(findRendererFiles().metadataFiles);
    Walk walk(registered);
    KtNodeEntryIterator* entries = KrUniverseGetNodeEntryIterator(all_kinds);
    while (!KrNodeEntryIteratorFinished(entries))
        walk.visit(KrNodeEntryIteratorGetNext(entries));
    KrNodeEntryIteratorDestroy(entries);
    return walk.unregistered();
}

} // namespace kshop
