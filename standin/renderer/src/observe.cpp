// What tools may ask that plug-ins may not: where metadata was written, and what was left out.
#include "kr_observe.h"
#include "universe.h"

using zelk::renderer::MetaData;
using zelk::renderer::Universe;

bool KrObserveMetaDataPlace(const KtNodeEntry* entry, const char* param, const char* key, KtPlace* place)
{
    const MetaData* metaData = entry->metaDataOf(param);
    const MetaData::Item* item = metaData ? metaData->find(key) : nullptr;
    if (item)
        *place = item->written;
    return item != nullptr;
}

bool KrObserveTablePlace(const KtNodeEntry* entry, const char* param, KtPlace* place)
{
    const KtParamEntry* found = param ? entry->findParam(param) : nullptr;
    if (param && !found)
        return false;
    const KtPlace& table = found ? found->table : entry->table;
    *place = table.file ? table : KtPlace{entry->source, 0, 0};
    return true;
}

int KrObserveGetNumLeftOut(void)
{
    const Universe* universe = Universe::current();
    return universe ? static_cast<int>(universe->leftOut().size()) : 0;
}

const KtLeftOut* KrObserveGetLeftOut(int index)
{
    if (index < 0 || index >= KrObserveGetNumLeftOut())
        return nullptr;
    return &Universe::current()->leftOut()[static_cast<std::size_t>(index)];
}
