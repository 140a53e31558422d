#ifndef ZELK_SHOP_UTILS_RENDERER_H
#define ZELK_SHOP_UTILS_RENDERER_H

#include <kr.h>

// The renderer's iterators (begin, finished, next, destroy), each written as a walk once. The renderer must
// be running; the visited objects live until it ends.

namespace zelk
{
namespace shop
{

/// Calls `visit(const KtNodeEntry*)` for each entry whose kind is in `mask`.
template <typename Visit>
void forEachNodeEntry(int mask, Visit visit)
{
    KtNodeEntryIterator* iterator = KrUniverseGetNodeEntryIterator(mask);
    while (!KrNodeEntryIteratorFinished(iterator))
        visit(KrNodeEntryIteratorGetNext(iterator));
    KrNodeEntryIteratorDestroy(iterator);
}

/// Calls `visit(const KtParamEntry*)` for each parameter of an entry.
template <typename Visit>
void forEachParam(const KtNodeEntry* entry, Visit visit)
{
    KtParamIterator* iterator = KrNodeEntryGetParamIterator(entry);
    while (!KrParamIteratorFinished(iterator))
        visit(KrParamIteratorGetNext(iterator));
    KrParamIteratorDestroy(iterator);
}

/// Calls `visit(const KtMetaDataEntry*)` for each metadata item of the entry itself.
template <typename Visit>
void forEachNodeMetaData(const KtNodeEntry* entry, Visit visit)
{
    KtMetaDataIterator* iterator = KrNodeEntryGetMetaDataIterator(entry, nullptr);
    while (!KrMetaDataIteratorFinished(iterator))
        visit(KrMetaDataIteratorGetNext(iterator));
    KrMetaDataIteratorDestroy(iterator);
}

} // namespace shop
} // namespace zelk

#endif
