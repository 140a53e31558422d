#include "meta_data.h"

#include "universe.h"

namespace zelk::renderer
{

namespace
{
constexpr std::size_t usual_count = 4; // keys of one parameter
}

void MetaData::setText(Arena& arena, std::string_view key, std::string_view value, const KtPlace& written)
{
    KtMetaDataEntry& item = itemOf(arena, key, written);
    item.value.str = arena.keep(value);
    item.type = KR_TYPE_STRING;
}

void MetaData::setBool(Arena& arena, std::string_view key, bool value, const KtPlace& written)
{
    KtMetaDataEntry& item = itemOf(arena, key, written);
    item.value.bool_ = value;
    item.type = KR_TYPE_BOOLEAN;
}

void MetaData::setFloat(Arena& arena, std::string_view key, float value, const KtPlace& written)
{
    KtMetaDataEntry& item = itemOf(arena, key, written);
    item.value.flt = value;
    item.type = KR_TYPE_FLOAT;
}

const MetaData::Item* MetaData::find(std::string_view key) const
{
    const std::uint32_t position = m_keys.find(key);
    return position == NameIndex::npos ? nullptr : &m_items[position];
}

KtMetaDataEntry& MetaData::itemOf(Arena& arena, std::string_view key, const KtPlace& written)
{
    const std::uint32_t position = m_keys.find(key);
    if (position != NameIndex::npos)
    {
        m_items[position].written = written;
        return m_items[position].entry;
    }
    // The same few dozen keys stand on every parameter of every shader.
    const char* name = arena.share(key);
    m_keys.add(std::string_view(name, key.size()));
    if (m_items.empty())
        m_items.reserve(usual_count);
    m_items.push_back({{name, {}, KR_TYPE_UNDEFINED}, written});
    return m_items.back().entry;
}

} // namespace zelk::renderer

using zelk::renderer::MetaData;

namespace
{
const KtMetaDataEntry* findItem(const KtNodeEntry* entry, const char* param, const char* key, int type)
{
    const MetaData* metaData = entry->metaDataOf(param);
    const MetaData::Item* item = metaData ? metaData->find(key) : nullptr;
    return item && item->entry.type == type ? &item->entry : nullptr;
}
} // namespace

struct KtMetaDataIterator
{
    const MetaData* metaData; // null for a parameter that does not exist
    std::size_t next;
};

bool KrMetaDataGetStr(const KtNodeEntry* entry, const char* param, const char* key, const char** value)
{
    const KtMetaDataEntry* item = findItem(entry, param, key, KR_TYPE_STRING);
    if (item)
        *value = item->value.str;
    return item != nullptr;
}

bool KrMetaDataGetBool(const KtNodeEntry* entry, const char* param, const char* key, bool* value)
{
    const KtMetaDataEntry* item = findItem(entry, param, key, KR_TYPE_BOOLEAN);
    if (item)
        *value = item->value.bool_;
    return item != nullptr;
}

bool KrMetaDataGetFlt(const KtNodeEntry* entry, const char* param, const char* key, float* value)
{
    const KtMetaDataEntry* item = findItem(entry, param, key, KR_TYPE_FLOAT);
    if (item)
        *value = item->value.flt;
    return item != nullptr;
}

KtMetaDataIterator* KrNodeEntryGetMetaDataIterator(const KtNodeEntry* entry, const char* param)
{
    return new KtMetaDataIterator{entry->metaDataOf(param), 0};
}

bool KrMetaDataIteratorFinished(const KtMetaDataIterator* iterator)
{
    return !iterator->metaData || iterator->next >= iterator->metaData->items().size();
}

const KtMetaDataEntry* KrMetaDataIteratorGetNext(KtMetaDataIterator* iterator)
{
    if (KrMetaDataIteratorFinished(iterator))
        return nullptr;
    return &iterator->metaData->items()[iterator->next++].entry;
}

void KrMetaDataIteratorDestroy(KtMetaDataIterator* iterator) { delete iterator; }
