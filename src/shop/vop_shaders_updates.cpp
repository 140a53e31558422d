#include "vop_shaders.h"

#include "shader_desc.h"
#include "utils_nodes.h"
#include "utils_publish.h"
#include "utils_rows.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Director.h>
#include <OP/OP_Network.h>
#include <PRM/PRM_Parm.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_String.h>
#include <UT/UT_ValArray.h>
#include <UT/UT_WorkBuffer.h>

#include <zelk/ipr/delta.h>

#include <algorithm>

namespace zelk
{
namespace shop
{

namespace
{

/// The parameter by which a camera object names the shader that it looks through.
const char* const camera_shader_parm = "kv_camera_shader";

/// Value of a type that is not published.
const char* const unhandled = "<unhandled>";

/// One parameter of a node, evaluated at the time at which the calling thread evaluates.
struct Evaluation
{
    Evaluation(const OP_Node& n, const char* p)
        : node(n), parm(p), time(CHgetEvalTime()), thread(SYSgetSTID())
    {
    }

    int integer() const { return static_cast<int>(node.evalIntT(parm, 0, time, thread)); }
    float number() const { return static_cast<float>(node.evalFloatT(parm, 0, time, thread)); }

    std::string text() const
    {
        UT_String value;
        node.evalStringT(value, parm, 0, time, thread);
        return value.isstring() ? value.buffer() : "";
    }

    void numbers(float* values, int count) const
    {
        fpreal evaluated[16] = {};
        node.evalFloats(parm, evaluated, time);
        for (int i = 0; i < count; ++i)
            values[i] = static_cast<float>(evaluated[i]);
    }

    const OP_Node& node;
    const char* const parm;
    const fpreal time;
    const int thread;
};

void encodeInteger(const Evaluation& source, ipr::DeltaParm& target) { target.value.int_ = source.integer(); }

void encodeBoolean(const Evaluation& source, ipr::DeltaParm& target)
{
    target.value.byte_ = source.integer() != 0 ? 1 : 0;
}

void encodeFloat(const Evaluation& source, ipr::DeltaParm& target) { target.value.flt = source.number(); }

template <int Count>
void encodeFloats(const Evaluation& source, ipr::DeltaParm& target)
{
    source.numbers(&target.value.flt, Count);
}

void encodeText(const Evaluation& source, ipr::DeltaParm& target) { target.str = source.text(); }

/// The renderer's matrices are the host's, transposed.
void encodeMatrix(const Evaluation& source, ipr::DeltaParm& target)
{
    float values[16];
    source.numbers(values, 16);
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            target.matrix.m[row][column] = values[4 * column + row];
}

struct EncodingRow
{
    int code;
    void (*encode)(const Evaluation&, ipr::DeltaParm&);
};

// A code without a row is sent with a marker in place of its value.
const EncodingRow encoding_rows[] = {
    {KR_TYPE_BYTE, encodeInteger},     {KR_TYPE_INT, encodeInteger},      {KR_TYPE_UINT, encodeInteger},
    {KR_TYPE_BOOLEAN, encodeBoolean},  {KR_TYPE_FLOAT, encodeFloat},      {KR_TYPE_RGB, encodeFloats<3>},
    {KR_TYPE_RGBA, encodeFloats<4>},   {KR_TYPE_VECTOR, encodeFloats<3>}, {KR_TYPE_POINT, encodeFloats<3>},
    {KR_TYPE_POINT2, encodeFloats<2>}, {KR_TYPE_STRING, encodeText},      {KR_TYPE_NODE, encodeText},
    {KR_TYPE_MATRIX, encodeMatrix},    {KR_TYPE_ENUM, encodeText},
};

/// Fills a fresh entry of a record with the parameter's value.
void encode(const OP_Node& node, const ParmDesc& parm, ipr::DeltaParm& target)
{
    target.type = static_cast<std::uint8_t>(parm.typeCode());
    if (const EncodingRow* row = findRow(encoding_rows, &EncodingRow::code, parm.typeCode()))
        row->encode(Evaluation(node, parm.name.c_str()), target);
    else
        target.str = unhandled;
}

/// The file of the image shader is never published: the render reads its images at its own pace.
bool isImageFile(const ShaderDesc& desc, const ParmDesc& parm)
{
    return parm.typeCode() == KR_TYPE_STRING && desc.opName == "korvan::image" && parm.name == "filename";
}

/// Whether a camera object looks through the shader of that path. Deliberate: any beginning of the path will do, so that an
/// empty text covers every shader and "/shop/net/c1" covers "/shop/net/c10" too. See
/// CameraEdit.ReachesEveryCameraWhosePathIsAPrefix.
bool looksThrough(const OP_Node& camera, const std::string& shaderPath)
{
    UT_String chosen;
    if (!camera.evalParameterOrPropertyT(camera_shader_parm, 0, CHgetEvalTime(), chosen, SYSgetSTID()))
        return false;
    const std::string prefix = chosen.isstring() ? chosen.buffer() : "";
    return shaderPath.compare(0, prefix.size(), prefix) == 0;
}

/// The camera objects, in their order. One that is deleted meanwhile, as an expression may do, is null from then on: their
/// network tells, through one listener, so that a camera costs an edit no more than the question where it looks.
class Cameras
{
public:
    Cameras() : m_objects(*OPgetDirector()->getManager("obj"))
    {
        UT_ValArray<OP_Node*> cameras;
        m_objects.getOpsByName("cam", cameras);
        for (int i = 0; i < static_cast<int>(cameras.entries()); ++i)
            m_cameras.push_back(cameras(i));
        m_objects.addOpInterest(this, forgetDeleted);
    }
    ~Cameras() { m_objects.removeOpInterest(this, forgetDeleted); }

    /// Paths of those that look through the shader node at that path.
    std::vector<std::string> lookingThrough(const std::string& shaderPath) const
    {
        std::vector<std::string> paths;
        // By reference: a camera may become null while it is evaluated.
        for (const OP_Node* const& camera : m_cameras)
            if (camera && looksThrough(*camera, shaderPath) && camera)
                paths.push_back(fullPathOf(*camera));
        return paths;
    }

private:
    Cameras(const Cameras&);
    Cameras& operator=(const Cameras&);

    static void forgetDeleted(OP_Node*, void* self, OP_EventType type, void* child)
    {
        std::vector<const OP_Node*>& cameras = static_cast<Cameras*>(self)->m_cameras;
        if (type == OP_CHILD_DELETED)
            std::replace(cameras.begin(), cameras.end(), static_cast<const OP_Node*>(child),
                         static_cast<const OP_Node*>(nullptr));
    }

    OP_Network& m_objects;
    std::vector<const OP_Node*> m_cameras;
};

} // namespace

std::string VOP_KorvanShader::fullPath() const
{
    UT_WorkBuffer path;
    doGetFullPath(path);
    return path.buffer();
}

void VOP_KorvanShader::handleParmChanged(int parmIndex)
{
    // Whoever hears of the redraw may delete this node; so may an expression that is evaluated.
    const NodeLife::Watch life(m_life);
    triggerUIChanged(OP_UICHANGE_ANY);
    if (life.isOver() || parmIndex < 0 || parmIndex >= getNumParms())
        return;
    const ParmDesc* parm = desc().parmDesc(getParm(parmIndex).getToken());
    if (!parm || parm->isExtra || isImageFile(desc(), *parm))
        return;
    if (desc().nodeType == KR_NODE_CAMERA)
        sendToCameras(*parm, life);
    else
        sendToNode(*parm, life);
}

void VOP_KorvanShader::sendToNode(const ParmDesc& parm, const NodeLife::Watch& life) const
{
    ipr::Delta delta;
    delta.nodePath = fullPath();
    if (fill(delta, parm, life))
        publish(delta);
}

void VOP_KorvanShader::sendToCameras(const ParmDesc& parm, const NodeLife::Watch& life) const
{
    if (!wireCount(*this, every_output))
        return;
    const std::vector<std::string> cameras = Cameras().lookingThrough(fullPath());
    ipr::Delta delta;
    if (!cameras.empty() && !life.isOver() && fill(delta, parm, life))
        publish(delta, cameras);
}

bool VOP_KorvanShader::fill(ipr::Delta& delta, const ParmDesc& parm, const NodeLife::Watch& life) const
{
    delta.entryName = desc().name;
    encode(*this, parm, delta[parm.name]);
    return !life.isOver();
}

} // namespace shop
} // namespace zelk
