#include <VOP/VOP_Types.h>

#include <cstring>
#include <string>

namespace
{

struct TypeRow
{
    VOP_Type type;
    const char* name;
};

const TypeRow value_types[] = {
    {VOP_TYPE_UNDEF, "undefined"},
    {VOP_TYPE_VECTOR4, "vector4"},
    {VOP_TYPE_VECTOR, "vector"},
    {VOP_TYPE_FLOAT, "float"},
    {VOP_TYPE_INTEGER, "int"},
    {VOP_TYPE_STRING, "string"},
    {VOP_TYPE_MATRIX3, "matrix3"},
    {VOP_TYPE_MATRIX4, "matrix4"},
    {VOP_TYPE_BSDF, "bsdf"},
    {VOP_TYPE_VECTOR2, "vector2"},
    {VOP_TYPE_MATRIX2, "matrix2"},
    {VOP_TYPE_STRUCT, "struct"},
    {VOP_TYPE_VECTOR4_ARRAY, "vector4 array"},
    {VOP_TYPE_VECTOR_ARRAY, "vector array"},
    {VOP_TYPE_VECTOR2_ARRAY, "vector2 array"},
    {VOP_TYPE_FLOAT_ARRAY, "float array"},
    {VOP_TYPE_INTEGER_ARRAY, "int array"},
    {VOP_TYPE_STRING_ARRAY, "string array"},
    {VOP_TYPE_MATRIX2_ARRAY, "matrix2 array"},
    {VOP_TYPE_MATRIX3_ARRAY, "matrix3 array"},
    {VOP_TYPE_MATRIX4_ARRAY, "matrix4 array"},
    {VOP_TYPE_POINT, "point"},
    {VOP_TYPE_NORMAL, "normal"},
    {VOP_TYPE_COLOR, "color"},
    {VOP_TYPE_POINT_ARRAY, "point array"},
    {VOP_TYPE_NORMAL_ARRAY, "normal array"},
    {VOP_TYPE_COLOR_ARRAY, "color array"},
    {VOP_TYPE_ERROR, "error"},
    {VOP_TYPE_VOID, "void"},
    {VOP_TYPE_METHOD, "method"},
};

const TypeRow shader_types[] = {
    {VOP_SURFACE_SHADER, "surface"},
    {VOP_SURFACE_SHADOW_SHADER, "surfaceshadow"},
    {VOP_DISPLACEMENT_SHADER, "displacement"},
    {VOP_GEOMETRY_SHADER, "geometry"},
    {VOP_INTERIOR_SHADER, "interior"},
    {VOP_LIGHT_SHADER, "light"},
    {VOP_LIGHT_SHADOW_SHADER, "lightshadow"},
    {VOP_LIGHT_FILTER_SHADER, "lightfilter"},
    {VOP_ATMOSPHERE_SHADER, "atmosphere"},
    {VOP_LENS_SHADER, "lens"},
    {VOP_OUTPUT_SHADER, "output"},
    {VOP_BACKGROUND_SHADER, "background"},
    {VOP_PHOTON_SHADER, "photon"},
    {VOP_IMAGE3D_SHADER, "image3d"},
    {VOP_POP_SHADER, "pop"},
    {VOP_SOP_SHADER, "sop"},
    {VOP_CHOP_SHADER, "chop"},
    {VOP_COP2_SHADER, "cop2"},
    {VOP_CVEX_SHADER, "cvex"},
    {VOP_GENERIC_SHADER, "generic"},
    {VOP_BSDF_SHADER, "bsdf"},
    {VOP_COSHADER_SHADER, "coshader"},
    {VOP_COSHADER_ARRAY, "coshader array"},
    {VOP_PROPERTIES_SHADER, "properties"},
    {VOP_MUTABLE_SHADER, "mutable"},
    {VOP_MATERIAL_SHADER, "material"},
    {VOP_VOP_MATERIAL_SHADER, "vopmaterial"},
    {VOP_SHADER_CLASS_SHADER, "class"},
    {VOP_STRUCT_DEF_SHADER, "structdef"},
};

template <std::size_t Count>
const char* nameIn(const TypeRow (&rows)[Count], VOP_Type type)
{
    for (const TypeRow& row : rows)
        if (row.type == type)
            return row.name;
    return nullptr;
}

const char* keep(const std::string& text)
{
    thread_local std::string kept;
    kept = text;
    return kept.c_str();
}

} // namespace

const char* VOPgetShaderTypeName(VOP_Type type) { return nameIn(shader_types, type); }

const char* VOPgetTypeName(VOP_Type type)
{
    if (const char* name = nameIn(value_types, type))
        return name;
    if (const char* name = VOPgetShaderTypeName(type))
        return keep(std::string(name) + " shader");
    return keep("type " + std::to_string(static_cast<int>(type)));
}
