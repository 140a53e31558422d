#include "universe.h"

#include "kr_observe.h"
#include "work.h"

#include <memory>

const KtParamEntry* KtNodeEntry::findParam(std::string_view paramName) const
{
    const std::uint32_t position = paramNames.find(paramName);
    return position == zelk::renderer::NameIndex::npos ? nullptr : &params[position];
}

KtParamEntry* KtNodeEntry::findParam(std::string_view paramName)
{
    return const_cast<KtParamEntry*>(static_cast<const KtNodeEntry*>(this)->findParam(paramName));
}

const zelk::renderer::MetaData* KtNodeEntry::metaDataOf(const char* param) const
{
    if (!param)
        return &metaData;
    const KtParamEntry* found = findParam(param);
    return found ? &found->metaData : nullptr;
}

zelk::renderer::MetaData* KtNodeEntry::metaDataOf(const char* param)
{
    return const_cast<zelk::renderer::MetaData*>(static_cast<const KtNodeEntry*>(this)->metaDataOf(param));
}

namespace zelk::renderer
{

namespace
{
struct Session
{
    std::unique_ptr<Universe> universe;
    unsigned begins = 0; // calls of KrBegin() without their KrEnd()
};

Session& session()
{
    static Session theSession;
    return theSession;
}
} // namespace

Universe* Universe::current() { return session().universe.get(); }

Universe* Universe::require(const char* caller)
{
    if (!current())
        KrMsgError("[kr] %s: the renderer is not running. Call KrBegin() first.", caller);
    return current();
}

KtNodeEntry* Universe::find(std::string_view name)
{
    const std::uint32_t position = m_names.find(name);
    return position == NameIndex::npos ? nullptr : &m_entries[position];
}

KtNodeEntry& Universe::add(std::string_view name, int nodeType, int outputType)
{
    KtNodeEntry& entry = m_entries.emplace_back();
    entry.name = m_arena.keep(name);
    entry.file = m_plugin;
    entry.source = m_plugin;
    entry.nodeType = nodeType;
    entry.outputType = outputType;
    m_names.add(std::string_view(entry.name, name.size()));
    return entry;
}

} // namespace zelk::renderer

using zelk::renderer::session;

void KrBegin(void)
{
    if (session().begins++ > 0)
        return;
    const zelk::renderer::Work work(KR_WORK_START, "");
    session().universe = std::make_unique<zelk::renderer::Universe>();
    zelk::renderer::declareBuiltins();
}

void KrEnd(void)
{
    if (session().begins == 0 || --session().begins > 0)
        return;
    const zelk::renderer::Work work(KR_WORK_END, "");
    session().universe.reset();
}
