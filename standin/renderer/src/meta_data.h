#pragma once

#include "arena.h"
#include "kr.h"
#include "name_index.h"

#include <string_view>
#include <vector>

namespace zelk::renderer
{

/// The metadata of one node entry or of one parameter, in the order in which the keys were first set.
class MetaData
{
public:
    /// Each sets one key; a key that is there already keeps its place and takes the new value and type.
    /// Key and text are copied into `arena`.
    void setText(Arena& arena, std::string_view key, std::string_view value);
    void setBool(Arena& arena, std::string_view key, bool value);
    void setFloat(Arena& arena, std::string_view key, float value);

    /// The item of that key, or null. Valid until the next set...().
    const KtMetaDataEntry* find(std::string_view key) const;

    const std::vector<KtMetaDataEntry>& items() const { return m_items; }

private:
    KtMetaDataEntry& itemOf(Arena& arena, std::string_view key);

    NameIndex m_keys;
    std::vector<KtMetaDataEntry> m_items;
};

} // namespace zelk::renderer
