#include "record_types.h"

#include <cstdint>

namespace kshop
{

namespace
{

// A single value comes from the host as it evaluates: signed 32 bits for every whole number, an item's name for an
// enumeration. The elements of an array are the renderer's own.
const RecordType type_rows[] = {
    {KR_TYPE_BYTE, "byte", Form::signed_integer, Form::byte, 0},
    {KR_TYPE_INT, "int", Form::signed_integer, Form::signed_integer, 0},
    {KR_TYPE_UINT, "uint", Form::signed_integer, Form::unsigned_integer, 0},
    {KR_TYPE_BOOLEAN, "boolean", Form::flag, Form::flag, 0},
    {KR_TYPE_FLOAT, "float", Form::floats, Form::floats, 1},
    {KR_TYPE_RGB, "rgb", Form::floats, Form::floats, 3},
    {KR_TYPE_RGBA, "rgba", Form::floats, Form::floats, 4},
    {KR_TYPE_VECTOR, "vector", Form::floats, Form::floats, 3},
    {KR_TYPE_POINT, "point", Form::floats, Form::floats, 3},
    {KR_TYPE_POINT2, "point2", Form::floats, Form::floats, 2},
    {KR_TYPE_STRING, "string", Form::text, Form::text, 0},
    {KR_TYPE_POINTER, "pointer", Form::text, Form::none, 0},
    {KR_TYPE_NODE, "node", Form::text, Form::none, 0},
    {KR_TYPE_ARRAY, "array", Form::text, Form::none, 0},
    {KR_TYPE_MATRIX, "matrix", Form::floats, Form::floats, 16},
    {KR_TYPE_ENUM, "enum", Form::text, Form::signed_integer, 0},
    {KR_TYPE_UNDEFINED, "undefined", Form::text, Form::none, 0},
};

const RecordType unknown_type = {-1, "unknown", Form::text, Form::none, 0};

} // namespace

const RecordType& recordType(int code)
{
    for (const RecordType& row : type_rows)
        if (row.code == code)
            return row;
    return unknown_type;
}

std::size_t elementBytes(const RecordType& type)
{
    switch (type.element)
    {
    case Form::none:
        return 0;
    case Form::byte:
    case Form::flag:
        return 1;
    case Form::signed_integer:
    case Form::unsigned_integer:
        return sizeof(std::int32_t);
    case Form::floats:
        return static_cast<std::size_t>(type.floats) * sizeof(float);
    case Form::text:
        return sizeof(const char*);
    }
    return 0;
}

void* valueCell(zelk::ipr::DeltaParm& parm)
{
    return parm.type == KR_TYPE_MATRIX ? static_cast<void*>(&parm.matrix) : &parm.value;
}

const void* valueCell(const zelk::ipr::DeltaParm& parm)
{
    return parm.type == KR_TYPE_MATRIX ? static_cast<const void*>(&parm.matrix) : &parm.value;
}

} // namespace kshop
