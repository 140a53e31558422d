#include "record_input.h"

#include "../text.h"
#include "record_types.h"

#include <nlohmann/json.hpp>

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <set>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace kshop
{

namespace
{

/// Sorted keys, so that a record of very many parameters is read as fast as others.
using Value = nlohmann::json;

struct Mistake : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

[[noreturn]] void fail(const std::string& place, const std::string& what)
{
    throw Mistake(place.empty() ? what : place + ": " + what);
}

[[noreturn]] void failExpecting(const std::string& place, const std::string& expected, const Value& found)
{
    const std::size_t longest_shown = 40;
    std::string shown = found.is_structured() ? (found.is_array() ? "a list" : "an object") : found.dump();
    if (width(shown) > longest_shown)
        shown = std::string("a long ") + found.type_name();
    fail(place, fmt::format("{} belongs here, not {}", expected, shown));
}

/// A name from the line as part of a place: short, since messages quote it.
std::string nameInPlace(const std::string& name)
{
    const std::size_t longest_shown = 60;
    return name.size() <= longest_shown ? kshop::quoted(name)
                                        : kshop::quoted(name.substr(0, longest_shown) + "...");
}

template <typename T>
void store(void* cell, T value)
{
    std::memcpy(cell, &value, sizeof value);
}

template <typename T>
void storeInteger(const Value& value, void* cell, const std::string& place)
{
    const auto least = std::int64_t(std::numeric_limits<T>::min());
    const auto most = std::int64_t(std::numeric_limits<T>::max());
    const bool fits = value.is_number_unsigned()
                          ? value.get<std::uint64_t>() <= static_cast<std::uint64_t>(most)
                          : value.is_number_integer() && value.get<std::int64_t>() >= least;
    if (!fits)
        failExpecting(place, fmt::format("an integer from {} to {}", least, most), value);
    store(cell, value.get<T>());
}

void storeFlag(const Value& value, void* cell, const std::string& place)
{
    if (!value.is_boolean())
        failExpecting(place, "true or false", value);
    store(cell, static_cast<std::uint8_t>(value.get<bool>()));
}

void storeFloat(const Value& value, void* cell, const std::string& place)
{
    if (value.is_null())
        return store(cell, std::numeric_limits<float>::quiet_NaN());
    if (!value.is_number())
        failExpecting(place, "a number", value);
    const double number = value.get<double>();
    if (std::fabs(number) > double(std::numeric_limits<float>::max()))
        failExpecting(place, "a number that a 32-bit float can hold", value);
    store(cell, static_cast<float>(number));
}

void storeFloats(const Value& value, int count, void* cell, const std::string& place)
{
    if (count == 1)
        return storeFloat(value, cell, place);
    if (!value.is_array())
        failExpecting(place, fmt::format("a list of {} numbers", count), value);
    if (value.size() != static_cast<std::size_t>(count))
        fail(place, fmt::format("a list of {} numbers belongs here, not of {}", count, value.size()));
    for (std::size_t i = 0; i < value.size(); ++i)
        storeFloat(value[i], static_cast<char*>(cell) + i * sizeof(float), fmt::format("{}[{}]", place, i));
}

const std::string& textOf(const Value& value, const std::string& place)
{
    if (!value.is_string())
        failExpecting(place, "a text", value);
    return value.get_ref<const std::string&>();
}

/// A text that an array points to: it ends at its first zero byte.
const std::string& pointedTextOf(const Value& value, const std::string& place)
{
    const std::string& text = textOf(value, place);
    if (text.find('\0') != std::string::npos)
        fail(place, "texts of an array cannot hold a zero byte (\\u0000); take it out");
    return text;
}

void storeCell(const Value& value, Form form, int floats, void* cell, zelk::ipr::ReceivedDelta& owner,
               const std::string& place)
{
    switch (form)
    {
    case Form::none:
        return;
    case Form::byte:
        return storeInteger<std::uint8_t>(value, cell, place);
    case Form::signed_integer:
        return storeInteger<std::int32_t>(value, cell, place);
    case Form::unsigned_integer:
        return storeInteger<std::uint32_t>(value, cell, place);
    case Form::flag:
        return storeFlag(value, cell, place);
    case Form::floats:
        return storeFloats(value, floats, cell, place);
    case Form::text:
        return store(cell, owner.keepText(pointedTextOf(value, place)));
    }
}

/// A member that must be there.
const Value& member(const Value& object, const char* key, const std::string& place)
{
    if (!object.is_object())
        failExpecting(place, "an object", object);
    const auto found = object.find(key);
    if (found == object.end())
        fail(place, fmt::format("the key \"{}\" is missing", key));
    return *found;
}

std::uint8_t typeCode(const Value& value, const std::string& place)
{
    std::uint8_t code = 0;
    storeInteger<std::uint8_t>(value, &code, place);
    return code;
}

/// Motion keys of an array with that many values.
std::uint8_t keyCountOf(const Value& value, std::size_t count, const std::string& place)
{
    if (!value.contains("key_count"))
        return 1;
    const std::uint8_t keys = typeCode(value["key_count"], place + ".key_count");
    if (keys == 0 ? count != 0 : count % keys != 0)
        fail(place, fmt::format("{} cannot be shared out among {}", countText(count, "value"),
                                countText(keys, "motion key")));
    return keys;
}

KtArray* readArray(const Value& value, zelk::ipr::ReceivedDelta& owner, const std::string& place)
{
    const std::uint8_t code = typeCode(member(value, "element_type", place), place + ".element_type");
    const RecordType& type = recordType(code);
    const std::size_t bytes = elementBytes(type);
    if (bytes == 0)
        fail(place + ".element_type", fmt::format("there are no arrays of type {}", code));
    const Value& values = member(value, "values", place);
    const std::string valuesPlace = place + ".values";
    if (!values.is_array())
        failExpecting(valuesPlace, "a list", values);
    const std::uint8_t keys = keyCountOf(value, values.size(), place);
    KtArray* array = owner.makeArray(static_cast<std::uint32_t>(keys ? values.size() / keys : 0), keys, code);
    if (!array)
        fail(valuesPlace, fmt::format("there is no memory for {}", countText(values.size(), "value")));
    for (std::size_t i = 0; i < values.size(); ++i)
        storeCell(values[i], type.element, type.floats, static_cast<char*>(array->data) + i * bytes, owner,
                  fmt::format("{}[{}]", valuesPlace, i));
    return array;
}

void readParm(const Value& value, zelk::ipr::DeltaParm& parm, zelk::ipr::ReceivedDelta& owner,
              const std::string& place)
{
    parm.type = typeCode(member(value, "type", place), place + ".type");
    const Value& content = member(value, "value", place);
    const std::string valuePlace = place + ".value";
    const RecordType& type = recordType(parm.type);
    if (parm.type == KR_TYPE_ARRAY && !content.is_string())
        parm.value.array = readArray(content, owner, valuePlace);
    else if (type.single == Form::text)
        parm.str = textOf(content, valuePlace);
    else
        storeCell(content, type.single, type.floats, valueCell(parm), owner, valuePlace);
}

void readRecord(const Value& record, zelk::ipr::ReceivedDelta& delta)
{
    delta.nodePath = textOf(member(record, "node_path", ""), "node_path");
    delta.entryName = textOf(member(record, "entry_name", ""), "entry_name");
    const Value& parms = member(record, "parms", "");
    if (!parms.is_object())
        failExpecting("parms", "an object", parms);
    for (const auto& [name, value] : parms.items())
        readParm(value, delta.emplace(name, zelk::ipr::DeltaParm()).first->second, delta,
                 "parms." + nameInPlace(name));
}

/// Refuses keys that stand twice in an object: the parser would keep one of the values without a word.
class DuplicateKeys
{
public:
    bool operator()(int /*depth*/, Value::parse_event_t event, const Value& parsed)
    {
        if (event == Value::parse_event_t::object_start)
            m_objects.emplace_back();
        else if (event == Value::parse_event_t::object_end)
            m_objects.pop_back();
        else if (event == Value::parse_event_t::key &&
                 !m_objects.back().insert(parsed.get<std::string>()).second)
            fail("", fmt::format("the key {} appears twice in an object",
                                 nameInPlace(parsed.get<std::string>())));
        return true;
    }

private:
    std::vector<std::set<std::string>> m_objects; ///< keys of each object that is open
};

/// What the parser says, without its own numbering ("[json.exception.KIND.NUMBER] ") and its line, which is always
/// the first.
std::string plainMessage(std::string message)
{
    const std::size_t bracket = message.find("] ");
    if (message[0] == '[' && bracket != std::string::npos)
        message.erase(0, bracket + 2);
    const std::string place = "parse error at line 1, ";
    if (message.compare(0, place.size(), place) == 0)
        message.erase(0, place.size());
    return printable(message);
}

} // namespace

bool readRecordJson(const std::string& line, zelk::ipr::ReceivedDelta& delta, std::string& error)
{
    try
    {
        delta.reset();
        readRecord(Value::parse(line, DuplicateKeys()), delta);
        return true;
    }
    catch (const Value::exception& mistake)
    {
        error = plainMessage(mistake.what());
    }
    catch (const std::exception& mistake)
    {
        error = mistake.what();
    }
    delta.reset();
    return false;
}

} // namespace kshop
