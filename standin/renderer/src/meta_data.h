#pragma once

#include "arena.h"
#include "kr.h"
#include "kr_observe.h"
#include "name_index.h"

#include <string_view>
#include <vector>

namespace zelk::renderer
{

/// The metadata of one node entry or of one parameter, in the order in which the keys were first set.
class MetaData
{
public:
    struct Item
    {
        KtMetaDataEntry entry;
        KtPlace written; ///< the value in force
    };

    /// Each sets one key; a key that is there already keeps its rank and takes the new value, type and place.
    /// Key and text are copied into `arena`; the place's file must live as long.
    void setText(Arena& arena, std::string_view key, std::string_view value, const KtPlace& written);
    void setBool(Arena& arena, std::string_view key, bool value, const KtPlace& written);
    void setFloat(Arena& arena, std::string_view key, float value, const KtPlace& written);

    /// The item of that key, or null. Valid until the next set...().
    const Item* find(std::string_view key) const;

    const std::vector<Item>& items() const { return m_items; }

private:
    KtMetaDataEntry& itemOf(Arena& arena, std::string_view key, const KtPlace& written);

    NameIndex m_keys;
    std::vector<Item> m_items;
};

} // namespace zelk::renderer
