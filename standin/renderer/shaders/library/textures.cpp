// Patterns and pictures, and the ramps that colour them.
#include "library.h"

#include <utility>

namespace zelk::library
{

namespace
{

Parameters rampParms(Parameter input, Parameter values)
{
    return {
        std::move(input),
        constant(enumParm("type", {"custom", "u", "v", "diagonal", "radial", "circular", "box"}, 0)),
        arrayParm("position", KR_TYPE_FLOAT, {0, 1}),
        std::move(values),
        constant(arrayParm("interpolation", KR_TYPE_INT, {1, 1})),
    };
}

} // namespace

Shaders textures()
{
    return {
        {"zelk__image",
         KR_NODE_SHADER,
         KR_TYPE_RGBA,
         {
             stringParm("filename", ""),
             constant(stringParm("colorspace", "auto")),
             floatParm("gamma", 2.2),
             constant(stringParm("layer", "")),
             constant(enumParm("filter", {"closest", "bilinear", "bicubic", "smart_bicubic"}, 3)),
             constant(byteParm("mip_bias", 0)),
             constant(boolParm("sequence", false)),
             constant(intParm("frame", 1)),
             point2Parm("uv", 0, 0),
             constant(stringParm("uv_set", "uv")),
             enumParm("wrap_u", {"periodic", "clamp", "mirror", "black"}, 0),
             enumParm("wrap_v", {"periodic", "clamp", "mirror", "black"}, 0),
             point2Parm("scale", 1, 1),
             point2Parm("offset", 0, 0),
             rgbParm("multiply", 1, 1, 1),
             boolParm("ignore_missing", false),
             rgbaParm("missing_color", 1, 0, 1, 1),
             constant(enumParm("swizzle", {"rgba", "rgb1", "rrr1", "aaa1"}, 0)),
         }},
        {"zelk__fractal_noise",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             enumParm("pattern", {"perlin", "simplex", "turbulence", "ridged"}, 0),
             constant(intParm("octaves", 4)),
             floatParm("lacunarity", 2),
             floatParm("gain", 0.5),
             floatParm("amplitude", 1),
             floatParm("evolution", 0),
             enumParm("space", {"object", "world", "uv"}, 0),
             vectorParm("scale", 1, 1, 1),
             pointParm("offset", 0, 0, 0),
             rgbParm("color1", 0, 0, 0),
             rgbParm("color2", 1, 1, 1),
         }},
        {"zelk__cell_noise",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             enumParm("feature", {"nearest", "second_nearest", "edge", "cell_id"}, 0),
             floatParm("jitter", 1),
             floatParm("density", 1),
             constant(uintParm("seed", 1)),
             arrayParm("palette", KR_TYPE_RGB, {0.05, 0.1, 0.3, 0.9, 0.6, 0.2, 1, 1, 1}),
         }},
        {"zelk__checkerboard",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             rgbParm("color1", 0.1, 0.1, 0.1),
             rgbParm("color2", 0.9, 0.9, 0.9),
             point2Parm("size", 8, 8),
             point2Parm("offset", 0, 0),
             floatParm("softness", 0),
         }},
        {"zelk__gradient",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             constant(enumParm("direction", {"u", "v", "radial", "view_angle"}, 1)),
             arrayParm("stop_positions", KR_TYPE_FLOAT, {0, 1}),
             arrayParm("stop_colors", KR_TYPE_RGB, {0, 0, 0, 1, 1, 1}),
             arrayParm("stop_interpolations", KR_TYPE_INT, {1, 1}),
             boolParm("repeat", false),
             floatParm("repeat_count", 1),
         }},
        {"zelk__camera_projection",
         KR_NODE_SHADER,
         KR_TYPE_RGBA,
         {
             rgbaParm("image", 0, 0, 0, 0),
             constant(stringParm("camera", "")),
             constant(boolParm("use_matrix", false)),
             matrixParm("projection_matrix"),
             boolParm("mask_back_faces", true),
             rgbaParm("outside_color", 0, 0, 0, 0),
         }},
        {"zelk__triplanar",
         KR_NODE_SHADER,
         KR_TYPE_RGBA,
         {
             rgbaParm("input", 1, 1, 1, 1),
             floatParm("blend", 0.2),
             vectorParm("scale", 1, 1, 1),
             vectorParm("rotate", 0, 0, 0),
             constant(nodeParm("reference_shape")),
         }},
        {"zelk__curvature",
         KR_NODE_SHADER,
         KR_TYPE_FLOAT,
         {
             enumParm("output", {"convex", "concave", "both"}, 2),
             constant(byteParm("samples", 3)),
             floatParm("radius", 0.1),
             constant(stringParm("trace_set", "")),
             constant(stringParm("exclude", "")),
         }},
        {"zelk__ramp_float", KR_NODE_SHADER, KR_TYPE_FLOAT,
         rampParms(floatParm("input", 0), arrayParm("value", KR_TYPE_FLOAT, {0, 1}))},
        {"zelk__ramp_rgb", KR_NODE_SHADER, KR_TYPE_RGB,
         rampParms(floatParm("input", 0), arrayParm("color", KR_TYPE_RGB, {0, 0, 0, 1, 1, 1}))},
    };
}

} // namespace zelk::library
