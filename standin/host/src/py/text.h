#ifndef STANDIN_PY_TEXT_H
#define STANDIN_PY_TEXT_H

#include <pybind11/pybind11.h>

#include <string>
#include <utility>

namespace standin
{
namespace python
{

/// A text on its way between Python and the host, whose texts are bytes ended by a zero.
///
/// Bytes that are no UTF-8 go to Python as escapes that turn back into them. A text with a zero inside is refused with a
/// ValueError, since the host would cut it there.
struct Text
{
    Text() {}
    Text(std::string text) : value(std::move(text)) {}
    Text(const char* text) : value(text ? text : "") {}

    const char* c_str() const { return value.c_str(); }

    std::string value;
};

} // namespace python
} // namespace standin

namespace pybind11
{
namespace detail
{

template <>
struct type_caster<standin::python::Text>
{
    PYBIND11_TYPE_CASTER(standin::python::Text, const_name("str"));

    bool load(handle source, bool)
    {
        if (!source || !PyUnicode_Check(source.ptr()))
            return false;
        object bytes =
            reinterpret_steal<object>(PyUnicode_AsEncodedString(source.ptr(), "utf-8", "surrogateescape"));
        if (!bytes)
            throw error_already_set();
        value.value.assign(PyBytes_AS_STRING(bytes.ptr()),
                           static_cast<size_t>(PyBytes_GET_SIZE(bytes.ptr())));
        if (value.value.find('\0') != std::string::npos)
            throw value_error("a text of the host cannot hold a null character");
        return true;
    }

    static handle cast(const standin::python::Text& text, return_value_policy, handle)
    {
        return PyUnicode_DecodeUTF8(text.value.data(), static_cast<Py_ssize_t>(text.value.size()),
                                    "surrogateescape");
    }
};

} // namespace detail
} // namespace pybind11

#endif
