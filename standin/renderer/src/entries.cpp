// Looking at node entries and their parameters.
#include "universe.h"

using zelk::renderer::Universe;

struct KtNodeEntryIterator
{
    const std::deque<KtNodeEntry>* entries; // null when the renderer is not running
    int mask;
    std::size_t next; // an entry whose kind is in the mask, or the end
};

struct KtParamIterator
{
    const KtNodeEntry* entry;
    std::size_t next;
};

namespace
{
void skipOtherKinds(KtNodeEntryIterator& iterator)
{
    while (!KrNodeEntryIteratorFinished(&iterator) &&
           !((*iterator.entries)[iterator.next].nodeType & iterator.mask))
        ++iterator.next;
}
} // namespace

KtNodeEntryIterator* KrUniverseGetNodeEntryIterator(int mask)
{
    const Universe* universe = Universe::require("KrUniverseGetNodeEntryIterator");
    auto* iterator = new KtNodeEntryIterator{universe ? &universe->entries() : nullptr, mask, 0};
    skipOtherKinds(*iterator);
    return iterator;
}

bool KrNodeEntryIteratorFinished(const KtNodeEntryIterator* iterator)
{
    return !iterator->entries || iterator->next >= iterator->entries->size();
}

const KtNodeEntry* KrNodeEntryIteratorGetNext(KtNodeEntryIterator* iterator)
{
    if (KrNodeEntryIteratorFinished(iterator))
        return nullptr;
    const KtNodeEntry* entry = &(*iterator->entries)[iterator->next++];
    skipOtherKinds(*iterator);
    return entry;
}

void KrNodeEntryIteratorDestroy(KtNodeEntryIterator* iterator) { delete iterator; }

const KtNodeEntry* KrNodeEntryLookUp(const char* name)
{
    Universe* universe = Universe::current();
    return universe ? universe->find(name) : nullptr;
}

const char* KrNodeEntryGetName(const KtNodeEntry* entry) { return entry->name; }

int KrNodeEntryGetType(const KtNodeEntry* entry) { return entry->nodeType; }

int KrNodeEntryGetOutputType(const KtNodeEntry* entry) { return entry->outputType; }

const char* KrNodeEntryGetFilename(const KtNodeEntry* entry) { return entry->file; }

int KrNodeEntryGetNumParams(const KtNodeEntry* entry) { return static_cast<int>(entry->params.size()); }

const KtParamEntry* KrNodeEntryGetParameter(const KtNodeEntry* entry, int index)
{
    if (index < 0 || index >= KrNodeEntryGetNumParams(entry))
        return nullptr;
    return &entry->params[static_cast<std::size_t>(index)];
}

KtParamIterator* KrNodeEntryGetParamIterator(const KtNodeEntry* entry)
{
    return new KtParamIterator{entry, 0};
}

bool KrParamIteratorFinished(const KtParamIterator* iterator)
{
    return iterator->next >= iterator->entry->params.size();
}

const KtParamEntry* KrParamIteratorGetNext(KtParamIterator* iterator)
{
    return KrParamIteratorFinished(iterator) ? nullptr : &iterator->entry->params[iterator->next++];
}

void KrParamIteratorDestroy(KtParamIterator* iterator) { delete iterator; }

const char* KrParamGetName(const KtParamEntry* param) { return param->name; }

int KrParamGetType(const KtParamEntry* param) { return param->type; }

const KtParamValue* KrParamGetDefault(const KtParamEntry* param)
{
    return param->hasDefault ? &param->value : nullptr;
}

const char** KrParamGetEnum(const KtParamEntry* param) { return param->items; }
