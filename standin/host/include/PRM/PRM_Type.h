#pragma once

// Category bits of a PRM_Type.

enum PRM_BasicType
{
    PRM_BASIC_NONE = 0,
    PRM_BASIC_ORDINAL = 1,
    PRM_BASIC_FLOAT = 2,
    PRM_BASIC_STRING = 4,
    PRM_BASIC_DATA = 8,
    PRM_BASIC_MASK = 0xF
};

enum PRM_FloatType
{
    PRM_FLOAT_NONE = 0,
    PRM_FLOAT_INTEGER = 1,
    PRM_FLOAT_POLAR = 4,
    PRM_FLOAT_POLARJACK = 8,
    PRM_FLOAT_ANGLEJACK = 0x10,
    PRM_FLOAT_SPINNER = 0x20,
    PRM_FLOAT_RANGE = 0x80,
    PRM_FLOAT_HUECIRCLE = 0x100,
    PRM_FLOAT_GREYRANGE = 0x200,
    PRM_FLOAT_SLIDERFRAC = 0x800,
    PRM_FLOAT_MINMAX_R = 0x2000,
    PRM_FLOAT_MINMAX_G = 0x4000,
    PRM_FLOAT_MINMAX_B = 0x8000,
    PRM_FLOAT_MINMAX_A = 0x10000,
    PRM_FLOAT_MINMAX_RGBA = 0x20000,
    PRM_FLOAT_MINMAX_MASK = 0x3E000,
    PRM_FLOAT_PALETTE = 0x40000,
    PRM_FLOAT_RAMPEDIT = 0x80000,
    PRM_FLOAT_RGBA = 0x100000,
    PRM_FLOAT_LOGARITHMIC = 0x200000
};

enum PRM_OrdinalType
{
    PRM_ORD_NONE = 0,
    PRM_ORD_TOGGLE = 1,
    PRM_ORD_CALLBACK = 2,
    PRM_ORD_SWITCHERLIST = 4,
    PRM_ORD_RGBAMASK = 8,
    PRM_ORD_BUTTONSTRIP = 0x10,
    PRM_ORD_ICONSTRIP = 0x20
};

enum PRM_StringType
{
    PRM_STR_NONE = 0,
    PRM_STR_CMD = 1,
    PRM_STR_PATH = 2,
    PRM_STR_ALPHA = 4,
    PRM_STR_OP_REF_LIST = 8,
    PRM_STR_OP_REF_NAME = 0x10,
    PRM_STR_OP_REF_DATA = 0x20,
    PRM_STR_OP_REF_PARM = 0x40,
    PRM_STR_OP_REF_CHILD = 0x80,
    PRM_STR_OP_REF_MASK = 0xF8
};

// The numbers of the four enums below are the stand-in's own.

enum PRM_PathType
{
    PRM_PATH_NONE = 0,
    PRM_PATH_FILE = 1,
    PRM_PATH_PICTURE = 2,
    PRM_PATH_GEOMETRY = 4,
    PRM_PATH_DIRECTORY = 8
};

enum PRM_ChannelType
{
    PRM_CHAN_NONE = 0,
    PRM_CHAN_EXPRESSION = 1,
    PRM_CHAN_JACK = 2,
    PRM_CHAN_NAMES_XYZ = 0x10,  ///< component suffixes x y z w
    PRM_CHAN_NAMES_RGBA = 0x20, ///< r g b a
    PRM_CHAN_NAMES_UVW = 0x40,  ///< u v w
    PRM_CHAN_NAMES_MASK = 0x70
};

enum PRM_InterfaceType
{
    PRM_IFACE_NONE = 0,
    PRM_IFACE_PLAIN = 1,
    PRM_IFACE_JOIN_NEXT = 2,
    PRM_IFACE_LABEL_NONE = 4,
    PRM_IFACE_INVISIBLE = 8,
    PRM_IFACE_BASEPARM = 0x10,
    PRM_IFACE_EXCLUSIVE = 0x20,
    PRM_IFACE_FLAGS = 0x3F, ///< all of the above: what modifies a kind without being one
    PRM_IFACE_LABEL = 0x100,
    PRM_IFACE_HEADING = 0x200,
    PRM_IFACE_SEPARATOR = 0x400,
    PRM_IFACE_SHARED_ROW = 0x800, ///< of the joined toggle, which is a kind of its own
    PRM_IFACE_ALPHA = 0x1000      ///< colour with an alpha component
};

enum PRM_BehaviorType
{
    PRM_BEHAVE_NONE = 0,
    PRM_BEHAVE_TERMINATOR = 1
};

enum PRM_DataType
{
    PRM_DATA_NONE = 0
};

/// Kind of a template: bits in several categories. The kinds are the constants below.
///
/// Equality compares all categories, the modifier flags among them: a template's type stops being equal to
/// PRM_FLT when its join-next flag is set.
class PRM_Type
{
public:
    constexpr PRM_Type()
        : m_basic(0),
          m_float(0),
          m_ordinal(0),
          m_string(0),
          m_path(0),
          m_channel(0),
          m_interface(0),
          m_behavior(0),
          m_data(0)
    {
    }
    constexpr PRM_Type(unsigned basicType, unsigned floatType, unsigned ordinalType, unsigned stringType,
                       unsigned pathType = 0, unsigned channelType = 0, unsigned interfaceType = 0,
                       unsigned behaviorType = 0, unsigned dataType = 0)
        : m_basic(basicType),
          m_float(floatType),
          m_ordinal(ordinalType),
          m_string(stringType),
          m_path(pathType),
          m_channel(channelType),
          m_interface(interfaceType),
          m_behavior(behaviorType),
          m_data(dataType)
    {
    }

    PRM_BasicType getBasicType() const { return static_cast<PRM_BasicType>(m_basic); }

    bool isBasicType(PRM_BasicType type) const { return m_basic == static_cast<unsigned>(type); }
    bool isFloatType() const { return isBasicType(PRM_BASIC_FLOAT); }
    bool isOrdinalType() const { return isBasicType(PRM_BASIC_ORDINAL); }
    bool isStringType() const { return isBasicType(PRM_BASIC_STRING); }
    bool isSwitcher() const { return hasOrdinalType(PRM_ORD_SWITCHERLIST); }

    bool hasFloatType(unsigned mask) const { return (m_float & mask) != 0; }
    bool hasOrdinalType(unsigned mask) const { return (m_ordinal & mask) != 0; }
    bool hasChannelType(unsigned mask) const { return (m_channel & mask) != 0; }
    bool hasInterfaceType(unsigned mask) const { return (m_interface & mask) != 0; }

    bool operator==(const PRM_Type& o) const
    {
        return m_basic == o.m_basic && m_float == o.m_float && m_ordinal == o.m_ordinal &&
               m_string == o.m_string && m_path == o.m_path && m_channel == o.m_channel &&
               m_interface == o.m_interface && m_behavior == o.m_behavior && m_data == o.m_data;
    }
    bool operator!=(const PRM_Type& o) const { return !(*this == o); }
    PRM_Type operator|(const PRM_Type& o) const
    {
        return PRM_Type(m_basic | o.m_basic, m_float | o.m_float, m_ordinal | o.m_ordinal,
                        m_string | o.m_string, m_path | o.m_path, m_channel | o.m_channel,
                        m_interface | o.m_interface, m_behavior | o.m_behavior, m_data | o.m_data);
    }
    PRM_Type operator&(const PRM_Type& o) const
    {
        return PRM_Type(m_basic & o.m_basic, m_float & o.m_float, m_ordinal & o.m_ordinal,
                        m_string & o.m_string, m_path & o.m_path, m_channel & o.m_channel,
                        m_interface & o.m_interface, m_behavior & o.m_behavior, m_data & o.m_data);
    }
    PRM_Type& operator|=(const PRM_Type& o) { return *this = *this | o; }
    PRM_Type& operator&=(const PRM_Type& o) { return *this = *this & o; }

    /// The type with the interface flags `mask` (PRM_IFACE_*) set or cleared.
    PRM_Type withInterfaceFlag(unsigned mask, bool on) const
    {
        PRM_Type result(*this);
        result.m_interface = on ? (m_interface | mask) : (m_interface & ~mask);
        return result;
    }

private:
    unsigned m_basic;
    unsigned m_float;
    unsigned m_ordinal;
    unsigned m_string;
    unsigned m_path;
    unsigned m_channel;
    unsigned m_interface;
    unsigned m_behavior;
    unsigned m_data;
};

// Modifiers.
extern const PRM_Type PRM_TYPE_ZERO; ///< nothing set; not the end of a list
extern const PRM_Type PRM_TYPE_JOIN_NEXT;
extern const PRM_Type PRM_TYPE_INVISIBLE;

// Kinds. _J has channels, _E takes expressions; both evaluate like the plain kind.
extern const PRM_Type PRM_INT;
extern const PRM_Type PRM_INT_J;
extern const PRM_Type PRM_INT_E;
extern const PRM_Type PRM_FLT;
extern const PRM_Type PRM_FLT_J;
extern const PRM_Type PRM_FLT_E;
extern const PRM_Type PRM_RGB;
extern const PRM_Type PRM_RGB_J;
extern const PRM_Type PRM_RGBA;
extern const PRM_Type PRM_RGBA_J;
extern const PRM_Type PRM_XYZ;
extern const PRM_Type PRM_XYZ_J;
extern const PRM_Type PRM_UVW;
extern const PRM_Type PRM_ORD;
extern const PRM_Type PRM_TOGGLE;
extern const PRM_Type PRM_JOINED_TOGGLE; ///< neither PRM_TOGGLE nor that with the join flag
extern const PRM_Type PRM_BUTTONSTRIP;
extern const PRM_Type PRM_CALLBACK;
extern const PRM_Type PRM_SWITCHER;
extern const PRM_Type PRM_STRING;
extern const PRM_Type PRM_ALPHASTRING;
extern const PRM_Type PRM_STRING_OPREF;
extern const PRM_Type PRM_STRING_OPLIST;
extern const PRM_Type PRM_FILE;
extern const PRM_Type PRM_PICFILE;
extern const PRM_Type PRM_GEOFILE;
extern const PRM_Type PRM_DIRECTORY;
extern const PRM_Type PRM_LABEL;
extern const PRM_Type PRM_HEADING;
extern const PRM_Type PRM_SEPARATOR;
extern const PRM_Type PRM_LIST_TERMINATOR;

/// Special looks; a template has one of them. Compare, do not mask.
enum PRM_TypeExtended
{
    PRM_TYPE_NONE = 0,
    PRM_TYPE_TOGGLE_JOIN = 1,
    PRM_TYPE_JOIN_PAIR = 2,
    PRM_TYPE_MENU_JOIN = 3,
    PRM_TYPE_NO_LABEL = 4,
    PRM_TYPE_DYNAMIC_PATH = 17
};

enum PRM_MultiType
{
    PRM_MULTITYPE_LIST = 0,
    PRM_MULTITYPE_SCROLL = 1,
    PRM_MULTITYPE_SWITCHER = 2,
    PRM_MULTITYPE_NONE = 4,
    PRM_MULTITYPE_RAMP_FLT = 8,
    PRM_MULTITYPE_RAMP_RGB = 0x10,
    PRM_MULTITYPE_RAMP_MASK = 0x18,
    PRM_MULTITYPE_TYPEMASK = 0x0FFFFFFF,
    PRM_MULTITYPE_NO_CONTROL_UI = 0x10000000
};

enum PRM_RampInterpType
{
    PRM_RAMP_INTERP_INVALID = -1,
    PRM_RAMP_INTERP_CONSTANT = 0,
    PRM_RAMP_INTERP_LINEAR = 1,
    PRM_RAMP_INTERP_CATMULLROM = 2,
    PRM_RAMP_INTERP_MONOTONECUBIC = 3,
    PRM_RAMP_INTERP_BEZIER = 4,
    PRM_RAMP_INTERP_BSPLINE = 5,
    PRM_RAMP_INTERP_HERMITE = 6,
    PRM_RAMP_INTERP_ITEMS = 7
};

/// Order of the parameters of one ramp key.
enum PRM_RampParmIndex
{
    PRM_RAMP_PARM_POS = 0,
    PRM_RAMP_PARM_VAL = 1,
    PRM_RAMP_PARM_INTERP = 2,
    PRM_RAMP_NUM_PARMS = 3
};

/// Name of the constant that a type is, its modifier flags left aside: "PRM_FLT". Null for the empty type and
/// for a combination that is none of the kinds.
const char* PRMtypeName(const PRM_Type& type);
/// The constant of that name; null for any other text.
const PRM_Type* PRMtypeOfName(const char* name);
/// "PRM_MULTITYPE_LIST", ...; null for a number that is no multi-parameter type.
const char* PRMmultiTypeName(PRM_MultiType type);
