#ifndef VOP_TYPES_H
#define VOP_TYPES_H

/// What flows through a connector.
// A type of its own width: a damaged scene may name a connector type that is none of these.
typedef enum : int
{
    VOP_TYPE_UNDEF = 0,
    VOP_TYPE_VECTOR4 = 1,
    VOP_TYPE_VECTOR = 2,
    VOP_TYPE_FLOAT = 3,
    VOP_TYPE_INTEGER = 4,
    VOP_TYPE_STRING = 5,
    VOP_TYPE_MATRIX3 = 6,
    VOP_TYPE_MATRIX4 = 7,
    VOP_TYPE_BSDF = 8,
    VOP_TYPE_VECTOR2 = 9,
    VOP_TYPE_MATRIX2 = 10,
    VOP_TYPE_CUSTOM = 11,
    VOP_TYPE_STRUCT = VOP_TYPE_CUSTOM,
    VOP_TYPE_VECTOR4_ARRAY = 12,
    VOP_TYPE_VECTOR_ARRAY = 13,
    VOP_TYPE_VECTOR2_ARRAY = 14,
    VOP_TYPE_FLOAT_ARRAY = 15,
    VOP_TYPE_INTEGER_ARRAY = 16,
    VOP_TYPE_STRING_ARRAY = 17,
    VOP_TYPE_MATRIX2_ARRAY = 18,
    VOP_TYPE_MATRIX3_ARRAY = 19,
    VOP_TYPE_MATRIX4_ARRAY = 20,
    VOP_TYPE_POINT = 21,
    VOP_TYPE_NORMAL = 22,
    VOP_TYPE_COLOR = 23,
    VOP_TYPE_POINT_ARRAY = 24,
    VOP_TYPE_NORMAL_ARRAY = 25,
    VOP_TYPE_COLOR_ARRAY = 26,
    VOP_TYPE_ERROR = 27,
    VOP_TYPE_VOID = 28,
    VOP_TYPE_METHOD = 29,
    VOP_SHADER_START = 30,
    VOP_SURFACE_SHADER = 31,
    VOP_SURFACE_SHADOW_SHADER = 32,
    VOP_DISPLACEMENT_SHADER = 33,
    VOP_GEOMETRY_SHADER = 34,
    VOP_INTERIOR_SHADER = 35,
    VOP_LIGHT_SHADER = 36,
    VOP_LIGHT_SHADOW_SHADER = 37,
    VOP_LIGHT_FILTER_SHADER = 38,
    VOP_ATMOSPHERE_SHADER = 39,
    VOP_LENS_SHADER = 40,
    VOP_OUTPUT_SHADER = 41,
    VOP_BACKGROUND_SHADER = 42,
    VOP_PHOTON_SHADER = 43,
    VOP_IMAGE3D_SHADER = 51,
    VOP_POP_SHADER = 52,
    VOP_SOP_SHADER = 53,
    VOP_CHOP_SHADER = 54,
    VOP_COP2_SHADER = 55,
    VOP_CVEX_SHADER = 56,
    VOP_GENERIC_SHADER = 57,
    VOP_BSDF_SHADER = 58,
    VOP_COSHADER_SHADER = 59,
    VOP_COSHADER_ARRAY = 60,
    VOP_PROPERTIES_SHADER = 61,
    VOP_MUTABLE_SHADER = 62,
    VOP_MATERIAL_SHADER = 63,
    VOP_VOP_MATERIAL_SHADER = 64,
    VOP_SHADER_CLASS_SHADER = 65,
    VOP_STRUCT_DEF_SHADER = 66,
    VOP_SHADER_END = 67
} VOP_Type;

/// "surface", "light", ...; null for anything that is no shader type.
const char* VOPgetShaderTypeName(VOP_Type type);
/// A word for messages: "float", "vector", "surface shader"; "type 123" for a number nobody knows. The text
/// stays until the thread's next call with such a number.
const char* VOPgetTypeName(VOP_Type type);

#endif
