#ifndef KORVAN_TESTS_EDITED_NODES_H
#define KORVAN_TESTS_EDITED_NODES_H

#include "sent_records.h"
#include "standin_session.h"

#include <PRM/PRM_Include.h>

inline OP_Node& newNode(OP_Network& net, const char* type) { return *net.createNode(type); }

inline OP_Network& objects() { return *OPgetDirector()->getManager("obj"); }

/// A camera object that looks through the shader at a path.
inline OP_Node& cameraObject(const char* shaderPath)
{
    static PRM_Name name("kv_camera_shader", "Camera Shader");
    static PRM_Template templates[] = {PRM_Template(PRM_STRING, 1, &name), PRM_Template()};
    OP_Node& camera = newNode(objects(), "cam");
    camera.addSpareParms(templates);
    camera.setString(shaderPath, CH_STRING_LITERAL, "kv_camera_shader", 0, 0);
    return camera;
}

#endif
