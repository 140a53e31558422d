// What light does on its way: volumes, the atmosphere, and filters in front of lights.
#include "library.h"

namespace zelk::library
{

Shaders volumes()
{
    return {
        {"zelk__standard_volume",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             floatParm("density", 1),
             constant(stringParm("density_channel", "density")),
             rgbParm("scatter_color", 0.5, 0.5, 0.5),
             floatParm("anisotropy", 0),
             rgbParm("transparent", 0.37, 0.37, 0.37),
             enumParm("emission_mode", {"none", "channel", "blackbody"}, 0),
             floatParm("emission", 1),
             rgbParm("emission_color", 1, 1, 1),
             floatParm("temperature", 1),
             floatParm("kelvin", 5000),
             constant(stringParm("cache", "")),
             constant(floatParm("time", 0)),
             floatParm("displacement_scale", 0),
         }},
        {"zelk__fog",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             rgbParm("color", 0.7, 0.8, 1),
             floatParm("distance", 0.02),
             floatParm("height", 5),
             floatParm("falloff", 1),
             vectorParm("ground_normal", 0, 1, 0),
             pointParm("ground_point", 0, 0, 0),
         }},
        {"zelk__gobo",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             stringParm("slide", ""),
             rgbParm("tint", 1, 1, 1),
             floatParm("density", 1),
             floatParm("rotate", 0),
             point2Parm("offset", 0, 0),
             point2Parm("scale", 1, 1),
             enumParm("wrap", {"clamp", "periodic", "mirror", "black"}, 0),
         }},
        {"zelk__light_decay",
         KR_NODE_SHADER,
         KR_TYPE_RGB,
         {
             boolParm("use_near", false),
             floatParm("near_start", 0),
             floatParm("near_end", 1),
             boolParm("use_far", false),
             floatParm("far_start", 10),
             floatParm("far_end", 20),
         }},
    };
}

} // namespace zelk::library
