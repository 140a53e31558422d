// Numbers, vectors and colours in, numbers, vectors and colours out.
#include "library.h"

namespace zelk::library
{

Shaders math()
{
    return {
        {"zelk__float_math",
         KR_NODE_SHADER,
         KR_TYPE_FLOAT,
         {
             enumParm("operation",
                      {"add", "subtract", "multiply", "divide", "power", "minimum", "maximum", "sine"}, 0),
             floatParm("a", 0),
             floatParm("b", 0),
             boolParm("clamp", false),
         }},
        {"zelk__vector_math",
         KR_NODE_SHADER,
         KR_TYPE_VECTOR,
         {
             enumParm("operation", {"add", "subtract", "cross", "normalize", "transform"}, 0),
             vectorParm("a", 0, 0, 0),
             vectorParm("b", 0, 0, 0),
             matrixParm("matrix"),
         }},
        {"zelk__mix_color",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             rgbParm("base", 0, 0, 0),
             rgbParm("layer", 1, 1, 1),
             floatParm("mix", 1),
             enumParm("mode", {"over", "multiply", "screen", "overlay", "difference"}, 0),
         }},
        {"zelk__color_correct",
         KR_NODE_SHADER,
         KR_TYPE_RGBA,
         {
             rgbaParm("input", 1, 1, 1, 1),
             floatParm("exposure", 0),
             floatParm("gamma", 1),
             floatParm("hue_shift", 0),
             floatParm("saturation", 1),
             floatParm("contrast", 1),
             boolParm("use_mask", false),
             floatParm("mask", 1),
             boolParm("invert", false),
         }},
        {"zelk__remap",
         KR_NODE_SHADER,
         KR_TYPE_FLOAT,
         {
             floatParm("input", 0.5),
             floatParm("input_min", 0),
             floatParm("input_max", 1),
             arrayParm("curve_positions", KR_TYPE_FLOAT, {0, 1}),
             arrayParm("curve_values", KR_TYPE_FLOAT, {0, 1}),
             arrayParm("curve_interpolations", KR_TYPE_INT, {2, 2}),
             floatParm("output_min", 0),
             floatParm("output_max", 1),
         }},
        {"zelk__uv_transform",
         KR_NODE_SHADER,
         KR_TYPE_POINT2,
         {
             point2Parm("uv", 0, 0),
             point2Parm("offset", 0, 0),
             point2Parm("scale", 1, 1),
             floatParm("rotate", 0),
             point2Parm("pivot", 0.5, 0.5),
         }},
        {"zelk__switch_color",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             intParm("index", 0),
             arrayParm("colors", KR_TYPE_RGB, {1, 0, 0, 0, 1, 0, 0, 0, 1}),
             arrayParm("weights", KR_TYPE_FLOAT, {1, 1, 1}),
         }},
        {"zelk__user_data",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             constant(stringParm("attribute", "Cd")),
             constant(arrayParm("fallbacks", {"color", "diffuse"})),
             rgbParm("default_color", 0, 0, 0),
             constant(stringParm("components", "r g b")),
             constant(stringParm("scope", "object")),
         }},
    };
}

} // namespace zelk::library
