// Cameras that go beyond the built-in ones.
#include "library.h"

namespace zelk::library
{

namespace
{

Parameters cameraWith(const Parameters& own)
{
    Parameters all = cameraParms();
    all.insert(all.end(), own.begin(), own.end());
    return all;
}

} // namespace

Shaders cameras()
{
    return {
        {"zelk__anamorphic_camera", KR_NODE_CAMERA, KR_TYPE_UNDEFINED,
         cameraWith({
             floatParm("fov", 40),
             floatParm("squeeze", 2),
             floatParm("focus_distance", 10),
             floatParm("f_stop", 2.8),
             constant(intParm("blades", 9)),
             floatParm("blade_rotation", 0),
             rgbParm("streak_tint", 0.4, 0.6, 1),
             floatParm("streaks", 0),
             floatParm("distortion", 0.02),
         })},
        {"zelk__panorama_camera", KR_NODE_CAMERA, KR_TYPE_UNDEFINED,
         cameraWith({
             floatParm("fov", 360),
             constant(enumParm("projection", {"lat_long", "cube_map", "mirror_ball"}, 0)),
             constant(enumParm("stereo", {"mono", "left", "right", "over_under", "side_by_side"}, 0)),
             floatParm("eye_separation", 0.065),
             floatParm("convergence", 0),
             boolParm("merge_poles", true),
             floatParm("pole_angle", 80),
         })},
    };
}

} // namespace zelk::library
