#include <PRM/PRM_Type.h>

#include <cstring>

namespace
{
// Short rows below: each maker fills the categories that its kinds differ in. All are constant expressions, so the
// constants are there before any other static object is made.
constexpr PRM_Type flag(unsigned interfaceType) { return PRM_Type(0, 0, 0, 0, 0, 0, interfaceType); }
constexpr PRM_Type floating(unsigned floatType, unsigned channelType, unsigned interfaceType = 0)
{
    return PRM_Type(PRM_BASIC_FLOAT, floatType, 0, 0, 0, channelType, interfaceType);
}
constexpr PRM_Type ordinal(unsigned ordinalType, unsigned interfaceType = 0)
{
    return PRM_Type(PRM_BASIC_ORDINAL, 0, ordinalType, 0, 0, 0, interfaceType);
}
constexpr PRM_Type text(unsigned stringType, unsigned pathType = 0, unsigned interfaceType = 0)
{
    return PRM_Type(PRM_BASIC_STRING, 0, 0, stringType, pathType, 0, interfaceType);
}
} // namespace

const PRM_Type PRM_TYPE_ZERO = PRM_Type();
const PRM_Type PRM_TYPE_JOIN_NEXT = flag(PRM_IFACE_JOIN_NEXT);
const PRM_Type PRM_TYPE_INVISIBLE = flag(PRM_IFACE_INVISIBLE);

const PRM_Type PRM_INT = floating(PRM_FLOAT_INTEGER, 0);
const PRM_Type PRM_INT_J = floating(PRM_FLOAT_INTEGER, PRM_CHAN_JACK);
const PRM_Type PRM_INT_E = floating(PRM_FLOAT_INTEGER, PRM_CHAN_EXPRESSION);
const PRM_Type PRM_FLT = floating(0, 0);
const PRM_Type PRM_FLT_J = floating(0, PRM_CHAN_JACK);
const PRM_Type PRM_FLT_E = floating(0, PRM_CHAN_EXPRESSION);
const PRM_Type PRM_RGB = floating(PRM_FLOAT_RGBA, PRM_CHAN_NAMES_RGBA);
const PRM_Type PRM_RGB_J = floating(PRM_FLOAT_RGBA, PRM_CHAN_NAMES_RGBA | PRM_CHAN_JACK);
const PRM_Type PRM_RGBA = floating(PRM_FLOAT_RGBA, PRM_CHAN_NAMES_RGBA, PRM_IFACE_ALPHA);
const PRM_Type PRM_RGBA_J = floating(PRM_FLOAT_RGBA, PRM_CHAN_NAMES_RGBA | PRM_CHAN_JACK, PRM_IFACE_ALPHA);
const PRM_Type PRM_XYZ = floating(0, PRM_CHAN_NAMES_XYZ);
const PRM_Type PRM_XYZ_J = floating(0, PRM_CHAN_NAMES_XYZ | PRM_CHAN_JACK);
const PRM_Type PRM_UVW = floating(0, PRM_CHAN_NAMES_UVW);
const PRM_Type PRM_ORD = ordinal(0);
const PRM_Type PRM_TOGGLE = ordinal(PRM_ORD_TOGGLE);
const PRM_Type PRM_JOINED_TOGGLE = ordinal(PRM_ORD_TOGGLE, PRM_IFACE_SHARED_ROW);
const PRM_Type PRM_BUTTONSTRIP = ordinal(PRM_ORD_BUTTONSTRIP);
const PRM_Type PRM_CALLBACK = ordinal(PRM_ORD_CALLBACK);
const PRM_Type PRM_SWITCHER = ordinal(PRM_ORD_SWITCHERLIST);
const PRM_Type PRM_STRING = text(0);
const PRM_Type PRM_ALPHASTRING = text(PRM_STR_ALPHA);
const PRM_Type PRM_STRING_OPREF = text(PRM_STR_OP_REF_NAME);
const PRM_Type PRM_STRING_OPLIST = text(PRM_STR_OP_REF_LIST);
const PRM_Type PRM_FILE = text(PRM_STR_PATH, PRM_PATH_FILE);
const PRM_Type PRM_PICFILE = text(PRM_STR_PATH, PRM_PATH_PICTURE);
const PRM_Type PRM_GEOFILE = text(PRM_STR_PATH, PRM_PATH_GEOMETRY);
const PRM_Type PRM_DIRECTORY = text(PRM_STR_PATH, PRM_PATH_DIRECTORY);
const PRM_Type PRM_LABEL = text(0, 0, PRM_IFACE_LABEL);
const PRM_Type PRM_HEADING = flag(PRM_IFACE_HEADING);
const PRM_Type PRM_SEPARATOR = flag(PRM_IFACE_SEPARATOR);
const PRM_Type PRM_LIST_TERMINATOR = PRM_Type(0, 0, 0, 0, 0, 0, 0, PRM_BEHAVE_TERMINATOR);

namespace
{
struct TypeNameRow
{
    const PRM_Type* type;
    const char* name;
};

const TypeNameRow type_names[] = {
    {&PRM_INT, "PRM_INT"},
    {&PRM_INT_J, "PRM_INT_J"},
    {&PRM_INT_E, "PRM_INT_E"},
    {&PRM_FLT, "PRM_FLT"},
    {&PRM_FLT_J, "PRM_FLT_J"},
    {&PRM_FLT_E, "PRM_FLT_E"},
    {&PRM_RGB, "PRM_RGB"},
    {&PRM_RGB_J, "PRM_RGB_J"},
    {&PRM_RGBA, "PRM_RGBA"},
    {&PRM_RGBA_J, "PRM_RGBA_J"},
    {&PRM_XYZ, "PRM_XYZ"},
    {&PRM_XYZ_J, "PRM_XYZ_J"},
    {&PRM_UVW, "PRM_UVW"},
    {&PRM_ORD, "PRM_ORD"},
    {&PRM_TOGGLE, "PRM_TOGGLE"},
    {&PRM_JOINED_TOGGLE, "PRM_JOINED_TOGGLE"},
    {&PRM_BUTTONSTRIP, "PRM_BUTTONSTRIP"},
    {&PRM_CALLBACK, "PRM_CALLBACK"},
    {&PRM_SWITCHER, "PRM_SWITCHER"},
    {&PRM_STRING, "PRM_STRING"},
    {&PRM_ALPHASTRING, "PRM_ALPHASTRING"},
    {&PRM_STRING_OPREF, "PRM_STRING_OPREF"},
    {&PRM_STRING_OPLIST, "PRM_STRING_OPLIST"},
    {&PRM_FILE, "PRM_FILE"},
    {&PRM_PICFILE, "PRM_PICFILE"},
    {&PRM_GEOFILE, "PRM_GEOFILE"},
    {&PRM_DIRECTORY, "PRM_DIRECTORY"},
    {&PRM_LABEL, "PRM_LABEL"},
    {&PRM_HEADING, "PRM_HEADING"},
    {&PRM_SEPARATOR, "PRM_SEPARATOR"},
    {&PRM_LIST_TERMINATOR, "PRM_LIST_TERMINATOR"},
};

struct MultiNameRow
{
    PRM_MultiType type;
    const char* name;
};

const MultiNameRow multi_names[] = {
    {PRM_MULTITYPE_LIST, "PRM_MULTITYPE_LIST"},         {PRM_MULTITYPE_SCROLL, "PRM_MULTITYPE_SCROLL"},
    {PRM_MULTITYPE_SWITCHER, "PRM_MULTITYPE_SWITCHER"}, {PRM_MULTITYPE_RAMP_FLT, "PRM_MULTITYPE_RAMP_FLT"},
    {PRM_MULTITYPE_RAMP_RGB, "PRM_MULTITYPE_RAMP_RGB"},
};
} // namespace

const char* PRMtypeName(const PRM_Type& type)
{
    const PRM_Type kind = type.withInterfaceFlag(PRM_IFACE_FLAGS, false);
    for (const TypeNameRow& row : type_names)
        if (kind == *row.type)
            return row.name;
    return nullptr;
}

const PRM_Type* PRMtypeOfName(const char* name)
{
    for (const TypeNameRow& row : type_names)
        if (name && std::strcmp(row.name, name) == 0)
            return row.type;
    return nullptr;
}

const char* PRMmultiTypeName(PRM_MultiType type)
{
    const unsigned kind = static_cast<unsigned>(type) & PRM_MULTITYPE_TYPEMASK;
    for (const MultiNameRow& row : multi_names)
        if (kind == static_cast<unsigned>(row.type))
            return row.name;
    return nullptr;
}
