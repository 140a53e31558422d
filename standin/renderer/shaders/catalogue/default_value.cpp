#include "default_value.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace zelk::catalogue
{

namespace
{

struct TypeRow
{
    const char* word;
    int code;
    std::size_t floats; // floats per value; 0 for anything that is not made of floats
    std::size_t bytes;  // of one array element
};

const TypeRow type_rows[] = {
    {"byte", KR_TYPE_BYTE, 0, sizeof(std::uint8_t)},
    {"int", KR_TYPE_INT, 0, sizeof(std::int32_t)},
    {"uint", KR_TYPE_UINT, 0, sizeof(std::uint32_t)},
    {"boolean", KR_TYPE_BOOLEAN, 0, sizeof(bool)},
    {"float", KR_TYPE_FLOAT, 1, sizeof(float)},
    {"rgb", KR_TYPE_RGB, 3, sizeof(KtRgb)},
    {"rgba", KR_TYPE_RGBA, 4, sizeof(KtRgba)},
    {"vector", KR_TYPE_VECTOR, 3, sizeof(KtVector)},
    {"point", KR_TYPE_POINT, 3, sizeof(KtPoint)},
    {"point2", KR_TYPE_POINT2, 2, sizeof(KtPoint2)},
    {"string", KR_TYPE_STRING, 0, sizeof(const char*)},
    {"pointer", KR_TYPE_POINTER, 0, sizeof(void*)},
    {"node", KR_TYPE_NODE, 0, sizeof(void*)},
    {"array", KR_TYPE_ARRAY, 0, sizeof(KtArray*)},
    {"matrix", KR_TYPE_MATRIX, 16, sizeof(KtMatrix)},
    {"enum", KR_TYPE_ENUM, 0, sizeof(std::int32_t)},
    {"undefined", KR_TYPE_UNDEFINED, 0, sizeof(KtParamValue)},
};

// A code without a row may come from a newer renderer; its values are whole records of zeros.
const TypeRow* findType(int code)
{
    const auto row = std::find_if(std::begin(type_rows), std::end(type_rows),
                                  [code](const TypeRow& r) { return r.code == code; });
    return row == std::end(type_rows) ? nullptr : row;
}

std::string allTypeWords()
{
    std::string words;
    for (const TypeRow& row : type_rows)
        words += (words.empty() ? "" : ", ") + std::string(row.word);
    return words;
}

template <typename T>
void put(void* memory, T value)
{
    *static_cast<T*>(memory) = value;
}

void putFloats(void* memory, std::size_t count, const Place& place)
{
    if (!place.json.is_array() || place.json.size() != count)
        throw Mistake(place,
                      "Expected a list of " + std::to_string(count) + " numbers, found " + quoted(place.json),
                      "write as many numbers as the type has components");
    for (std::size_t i = 0; i < count; ++i)
        put(static_cast<float*>(memory) + i, floatNumber(place.element(i)));
}

bool truth(const Place& place)
{
    if (!place.json.is_boolean())
        throw Mistake(place, "Expected true or false, found " + quoted(place.json), "write true or false");
    return place.json.get<bool>();
}

} // namespace

int typeOfWord(const Place& place)
{
    const std::string& word = textAt(place);
    for (const TypeRow& row : type_rows)
        if (word == row.word)
            return row.code;
    throw Mistake(place, "There is no type " + quoted(place.json), "write one of " + allTypeWords());
}

std::int64_t wholeNumber(const Place& place, std::int64_t least, std::int64_t most)
{
    const double number = place.json.is_number() ? place.json.get<double>() : std::nan("");
    if (number >= double(least) && number <= double(most) && number == std::floor(number))
        return static_cast<std::int64_t>(number);
    throw Mistake(place, "Expected a whole number, found " + quoted(place.json),
                  "write a whole number from " + std::to_string(least) + " to " + std::to_string(most));
}

float floatNumber(const Place& place)
{
    if (!place.json.is_number())
        throw Mistake(place, "Expected a number, found " + quoted(place.json), "write a number");
    const double number = place.json.get<double>();
    if (std::abs(number) <= std::numeric_limits<float>::max())
        return static_cast<float>(number);
    return std::copysign(std::numeric_limits<float>::infinity(), number < 0 ? -1.0f : 1.0f);
}

DefaultValue DefaultValue::read(int type, const Place& place)
{
    DefaultValue value;
    if (type == KR_TYPE_MATRIX)
    {
        value.store(type, place, &value.m_matrices.emplace_back());
        value.m_record.mtx = &value.m_matrices.back();
    }
    else
        value.store(type, place, &value.m_record);
    return value;
}

DefaultValue DefaultValue::readArray(std::uint8_t elementType, const Place& place)
{
    DefaultValue value;
    value.m_record.array = value.makeArray(elementType, place);
    return value;
}

// Writes one value as it stands in an array; all but a matrix stand in a value record likewise.
void DefaultValue::store(int type, const Place& place, void* memory)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const TypeRow* row = findType(type);
    if (row && row->floats == 1)
        return put(memory, floatNumber(place));
    if (row && row->floats > 1)
        return putFloats(memory, row->floats, place);
    switch (type)
    {
    case KR_TYPE_BYTE:
        return put(memory, static_cast<std::uint8_t>(wholeNumber(place, 0, 255)));
    case KR_TYPE_INT:
    case KR_TYPE_ENUM:
        return put(memory, static_cast<std::int32_t>(wholeNumber(place, Limits::min(), Limits::max())));
    case KR_TYPE_UINT:
        return put(memory, static_cast<std::uint32_t>(wholeNumber(place, 0, 0xffffffff)));
    case KR_TYPE_BOOLEAN:
        return put(memory, truth(place));
    case KR_TYPE_STRING:
        return put(memory, textAt(place).c_str());
    case KR_TYPE_ARRAY: // an array of arrays: the inner ones hold floats
        return put(memory, place.json.is_null() ? nullptr : makeArray(KR_TYPE_FLOAT, place));
    default: // references, and types without a word: the zeros that are there
        return;
    }
}

KtArray* DefaultValue::makeArray(std::uint8_t elementType, const Place& list)
{
    if (!list.json.is_array() && !list.json.is_null())
        throw Mistake(list, "Expected a list, found " + quoted(list.json), "write a list in square brackets");
    const TypeRow* row = findType(elementType);
    const std::size_t bytes = row ? row->bytes : sizeof(KtParamValue);
    const std::size_t count = list.json.size(); // null has none
    KtArray* array = KrArrayAllocate(static_cast<std::uint32_t>(count), 1, elementType);
    if (!array)
        throw Mistake(list, "There is no memory for the list", "write a shorter one");
    m_arrays.emplace_back(array);
    for (std::size_t i = 0; i < count; ++i)
        store(elementType, list.element(i), static_cast<char*>(array->data) + i * bytes);
    return array;
}

} // namespace zelk::catalogue
