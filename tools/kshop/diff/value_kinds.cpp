#include "value_kinds.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace kshop
{

namespace
{

struct KindRow
{
    const char* type; ///< without the endings for expressions and for jacks
    Stored stored;
    const char* components;
};

const KindRow kind_rows[] = {
    {"PRM_INT", Stored::whole, ""},
    {"PRM_FLT", Stored::number, ""},
    {"PRM_RGB", Stored::number, "rgba"},
    {"PRM_RGBA", Stored::number, "rgba"},
    {"PRM_XYZ", Stored::number, "xyz"},
    {"PRM_UVW", Stored::number, "uvw"},
    {"PRM_ORD", Stored::whole, ""},
    {"PRM_TOGGLE", Stored::whole, ""},
    {"PRM_JOINED_TOGGLE", Stored::whole, ""},
    {"PRM_BUTTONSTRIP", Stored::whole, ""},
    {"PRM_CALLBACK", Stored::look, ""},
    {"PRM_SWITCHER", Stored::look, ""},
    {"PRM_LABEL", Stored::look, ""},
    {"PRM_HEADING", Stored::nothing, ""},
    {"PRM_SEPARATOR", Stored::nothing, ""},
    {"PRM_MULTITYPE_LIST", Stored::instances, ""},
    {"PRM_MULTITYPE_RAMP_FLT", Stored::float_ramp, ""},
    {"PRM_MULTITYPE_RAMP_RGB", Stored::colour_ramp, ""},
};

/// Without "_J" or "_E".
std::string plainType(const Json& parameter)
{
    std::string type = parameter["type"].is_string() ? parameter["type"].get<std::string>() : "";
    const std::string ending = type.size() > 2 ? type.substr(type.size() - 2) : "";
    return ending == "_J" || ending == "_E" ? type.substr(0, type.size() - 2) : type;
}

const KindRow* findKind(const Json& parameter)
{
    const std::string type = plainType(parameter);
    const auto* row = std::find_if(std::begin(kind_rows), std::end(kind_rows),
                                   [&type](const KindRow& one) { return type == one.type; });
    return row == std::end(kind_rows) ? nullptr : row;
}

} // namespace

Stored storedBy(const Json& parameter)
{
    if (parameter["type"].is_null())
        return Stored::nothing;
    const KindRow* row = findKind(parameter);
    return row ? row->stored : Stored::text;
}

const char* componentNames(const Json& parameter)
{
    const KindRow* row = findKind(parameter);
    return row ? row->components : "";
}

bool isFolder(const Json& parameter) { return parameter["type"] == "PRM_SWITCHER"; }

} // namespace kshop
