// The entries that come with the renderer itself: cameras, lights and shapes, no shaders.
#include "universe.h"

#include <cstring>
#include <vector>

namespace zelk::renderer
{

namespace
{

struct Row
{
    const char* name;
    int type;
    std::vector<float> value; // components of the default; the first one for scalars
};

using Rows = std::vector<Row>;

const KtMatrix identity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

KtParamValue valueOf(const Row& row)
{
    KtParamValue value = KtParamValue();
    switch (row.type)
    {
    case KR_TYPE_MATRIX:
        value.mtx = &identity;
        break;
    case KR_TYPE_INT:
        value.int_ = static_cast<int>(row.value.front());
        break;
    case KR_TYPE_BOOLEAN:
        value.bool_ = row.value.front() != 0;
        break;
    default: // floats and tuples of floats; texts and nodes have no components and stay empty
        if (!row.value.empty())
            std::memcpy(&value, row.value.data(), row.value.size() * sizeof(float));
    }
    return value;
}

void declare(const char* name, int kind, int output, const Rows& rows)
{
    KtNodeDecl* node = KrDeclareNode(name, kind, output);
    for (const Row& row : rows)
    {
        const KtParamValue value = valueOf(row);
        KrDeclareParam(node, row.name, row.type, &value);
    }
}

Rows operator+(Rows rows, const Rows& more)
{
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

// What every camera has. A plug-in camera's node shows only what goes beyond these.
const Rows camera_rows = {
    {"name", KR_TYPE_STRING, {}},           {"position", KR_TYPE_POINT, {0, 0, 0}},
    {"look_at", KR_TYPE_POINT, {0, 0, -1}}, {"up", KR_TYPE_VECTOR, {0, 1, 0}},
    {"matrix", KR_TYPE_MATRIX, {}},         {"near_clip", KR_TYPE_FLOAT, {0.1f}},
    {"far_clip", KR_TYPE_FLOAT, {100000}},  {"screen_min", KR_TYPE_POINT2, {-1, -1}},
    {"screen_max", KR_TYPE_POINT2, {1, 1}}, {"shutter_start", KR_TYPE_FLOAT, {0}},
    {"shutter_end", KR_TYPE_FLOAT, {0}},    {"exposure", KR_TYPE_FLOAT, {0}},
};

const Rows lens_rows = {
    {"fov", KR_TYPE_FLOAT, {54}},
    {"focus_distance", KR_TYPE_FLOAT, {10}},
    {"aperture_size", KR_TYPE_FLOAT, {0}},
    {"aperture_blades", KR_TYPE_INT, {0}},
};

const Rows light_rows = {
    {"name", KR_TYPE_STRING, {}},      {"matrix", KR_TYPE_MATRIX, {}},
    {"color", KR_TYPE_RGB, {1, 1, 1}}, {"intensity", KR_TYPE_FLOAT, {1}},
    {"exposure", KR_TYPE_FLOAT, {0}},  {"cast_shadows", KR_TYPE_BOOLEAN, {1}},
    {"samples", KR_TYPE_INT, {1}},
};

const Rows shape_rows = {
    {"name", KR_TYPE_STRING, {}},
    {"matrix", KR_TYPE_MATRIX, {}},
    {"shader", KR_TYPE_NODE, {}},
    {"visibility", KR_TYPE_INT, {255}},
};

} // namespace

void declareBuiltins()
{
    declare("persp_camera", KR_NODE_CAMERA, KR_TYPE_UNDEFINED, camera_rows + lens_rows);
    declare("ortho_camera", KR_NODE_CAMERA, KR_TYPE_UNDEFINED, camera_rows);
    declare("fisheye_camera", KR_NODE_CAMERA, KR_TYPE_UNDEFINED,
            camera_rows + Rows{{"fov", KR_TYPE_FLOAT, {180}}, {"autocrop", KR_TYPE_BOOLEAN, {0}}});

    declare("point_light", KR_NODE_LIGHT, KR_TYPE_UNDEFINED,
            light_rows + Rows{{"radius", KR_TYPE_FLOAT, {0}}});
    declare("distant_light", KR_NODE_LIGHT, KR_TYPE_UNDEFINED,
            light_rows + Rows{{"angle", KR_TYPE_FLOAT, {0}}});
    declare("skydome_light", KR_NODE_LIGHT, KR_TYPE_UNDEFINED,
            light_rows + Rows{{"resolution", KR_TYPE_INT, {1000}}});

    declare("polymesh", KR_NODE_SHAPE, KR_TYPE_UNDEFINED,
            shape_rows + Rows{{"smoothing", KR_TYPE_BOOLEAN, {0}}});
    declare("sphere", KR_NODE_SHAPE, KR_TYPE_UNDEFINED, shape_rows + Rows{{"radius", KR_TYPE_FLOAT, {0.5f}}});
    declare("curves", KR_NODE_SHAPE, KR_TYPE_UNDEFINED, shape_rows + Rows{{"width", KR_TYPE_FLOAT, {0.01f}}});
}

} // namespace zelk::renderer
