#include "record_output.h"

#include "../interface_json.h"
#include "record_types.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace kshop
{

namespace
{

template <typename T>
T load(const void* cell)
{
    T value;
    std::memcpy(&value, cell, sizeof value);
    return value;
}

Json floatsJson(const void* cell, int count)
{
    if (count == 1)
        return load<float>(cell);
    Json list = Json::array();
    for (int i = 0; i < count; ++i)
        list.push_back(
            load<float>(static_cast<const char*>(cell) + static_cast<std::size_t>(i) * sizeof(float)));
    return list;
}

Json pointedTextJson(const void* cell)
{
    const char* text = load<const char*>(cell);
    return text ? text : "";
}

Json cellJson(Form form, int floats, const void* cell)
{
    switch (form)
    {
    case Form::none:
        return nullptr;
    case Form::byte:
        return load<std::uint8_t>(cell);
    case Form::signed_integer:
        return load<std::int32_t>(cell);
    case Form::unsigned_integer:
        return load<std::uint32_t>(cell);
    case Form::flag:
        return load<std::uint8_t>(cell) != 0;
    case Form::floats:
        return floatsJson(cell, floats);
    case Form::text:
        return pointedTextJson(cell);
    }
    return nullptr;
}

Json arrayJson(const KtArray& array, const RecordType& element)
{
    const std::size_t count = array.data ? std::size_t(array.nelements) * array.nkeys : 0;
    const std::size_t bytes = elementBytes(element);
    Json values = Json::array();
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(
            cellJson(element.element, element.floats, static_cast<const char*>(array.data) + i * bytes));
    Json result = {{"element_type", array.type}};
    if (array.nkeys != 1)
        result["key_count"] = array.nkeys;
    result["values"] = std::move(values);
    return result;
}

/// The array of a parameter that can be shown; null when there is none.
const KtArray* shownArray(const zelk::ipr::DeltaParm& parm)
{
    if (parm.type != KR_TYPE_ARRAY || !parm.value.array)
        return nullptr;
    return elementBytes(recordType(parm.value.array->type)) > 0 ? parm.value.array : nullptr;
}

Json valueJson(const zelk::ipr::DeltaParm& parm)
{
    if (const KtArray* array = shownArray(parm))
        return arrayJson(*array, recordType(array->type));
    const RecordType& type = recordType(parm.type);
    if (type.single == Form::text)
        return parm.str;
    return cellJson(type.single, type.floats, valueCell(parm));
}

/// Numbers as people write them: whole ones without a point, floats without the digits that only a double has.
std::string numberText(const Json& value)
{
    return value.is_number_float() ? fmt::format("{}", value.get<float>()) : value.dump();
}

std::string valueText(const Json& value);

std::string listText(const Json& list)
{
    const std::size_t most_shown = 16; // a matrix is shown in full
    std::vector<std::string> words;
    for (std::size_t i = 0; i < list.size() && i < most_shown; ++i)
        words.push_back(valueText(list[i]));
    if (list.size() > most_shown)
        words.push_back(fmt::format("... {} more", list.size() - most_shown));
    return "[" + joined(words, ", ") + "]";
}

std::string valueText(const Json& value)
{
    if (value.is_string())
        return kshop::quoted(value.get_ref<const std::string&>());
    if (value.is_array())
        return listText(value);
    return value.is_object() ? listText(value["values"]) : numberText(value);
}

std::string typeText(const zelk::ipr::DeltaParm& parm)
{
    if (const KtArray* array = shownArray(parm))
    {
        const std::string count = countText(array->nelements, "element");
        const std::string keys = array->nkeys == 1 ? "" : ", " + countText(array->nkeys, "motion key");
        return fmt::format("array of {}, {}{}", recordType(array->type).word, count, keys);
    }
    const RecordType& type = recordType(parm.type);
    return type.code < 0 ? fmt::format("unknown type {}", parm.type) : type.word;
}

} // namespace

std::string recordJson(const zelk::ipr::Delta& delta)
{
    Json parms = Json::object();
    // Names are different already; to let the object compare each with all the others would take long for many.
    Json::object_t& members = parms.get_ref<Json::object_t&>();
    for (const auto& [name, parm] : delta)
        members.emplace_back(name, Json{{"type", parm.type}, {"value", valueJson(parm)}});
    Json record = {{"node_path", delta.nodePath}, {"entry_name", delta.entryName}};
    record["parms"] = std::move(parms);
    return record.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string recordText(const zelk::ipr::Delta& delta, const Style& style)
{
    const std::string head =
        fmt::format("{} ({})", style.title(printable(delta.nodePath)), printable(delta.entryName));
    if (delta.empty())
        return head + "  no parameters\n";
    std::string text;
    for (const auto& [name, parm] : delta)
        text += fmt::format("{}  {} = {}  {}\n", head, printable(name), valueText(valueJson(parm)),
                            style.faint("(" + typeText(parm) + ")"));
    return text;
}

} // namespace kshop
