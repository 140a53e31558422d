#include "builtin_types.h"

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <PRM/PRM_Include.h>

#include <iterator>

namespace standin
{

namespace
{

// --- managers ---------------------------------------------------------------------------------------------------

struct ManagerRow
{
    const char* name;
    const char* label;
    const char* childTable;
    const char* childType;
    OP_OpTypeId childTypeId;
    const char* contexts; ///< what network masks are matched with; null when the network has no filter
};

const ManagerRow manager_rows[] = {
    {"obj", "Objects", OBJ_TABLE_NAME, "OBJ", OBJ_OPTYPE_ID, nullptr},
    {"shop", "Shaders", SHOP_TABLE_NAME, SHOP_OPTYPE_NAME, SHOP_OPTYPE_ID, nullptr},
    {"out", "Outputs", ROP_TABLE_NAME, "ROP", ROP_OPTYPE_ID, nullptr},
    {"vex", "VEX Builders", VOP_TABLE_NAME, VOP_OPTYPE_NAME, VOP_OPTYPE_ID,
     "vex cvex surface displacement light shadow fog image3d chop pop sop cop2"},
};

const ManagerRow& managerRow(const OP_Operator& op)
{
    for (const ManagerRow& row : manager_rows)
        if (op.getName() == row.name)
            return row;
    return manager_rows[0];
}

class ManagerNode : public OP_Network
{
public:
    ManagerNode(OP_Network* parent, const char* name, OP_Operator* op)
        : OP_Network(parent, name, op), m_row(managerRow(*op))
    {
        setOperatorTable(getOperatorTable(m_row.childTable));
    }

    const char* getOpType() const override { return "MGR"; }
    OP_OpTypeId getOpTypeID() const override { return MGR_OPTYPE_ID; }
    const char* getChildType() const override { return m_row.childType; }
    OP_OpTypeId getChildTypeID() const override { return m_row.childTypeId; }

    /// With contexts, the mask decides and the filter has nothing to add.
    OP_OperatorFilter* getOperatorFilter() override { return m_row.contexts ? &m_filter : nullptr; }
    std::string maskContexts() const override
    {
        return m_row.contexts ? m_row.contexts : OP_Network::maskContexts();
    }

private:
    const ManagerRow& m_row;
    OP_OperatorFilter m_filter;
};

OP_Node* makeManager(OP_Network* net, const char* name, OP_Operator* op)
{
    return new ManagerNode(net, name, op);
}

// --- objects ----------------------------------------------------------------------------------------------------

class ObjectNode : public OP_Network
{
public:
    ObjectNode(OP_Network* parent, const char* name, OP_Operator* op) : OP_Network(parent, name, op) {}

    const char* getOpType() const override { return "OBJ"; }
    OP_OpTypeId getOpTypeID() const override { return OBJ_OPTYPE_ID; }
};

OP_Node* makeObject(OP_Network* net, const char* name, OP_Operator* op)
{
    return new ObjectNode(net, name, op);
}

PRM_Name translate_name("t", "Translate");
PRM_Name rotate_name("r", "Rotate");
PRM_Name scale_name("s", "Scale");
PRM_Name width_name("resx", "Resolution X");
PRM_Name height_name("resy", "Resolution Y");
PRM_Name focal_name("focal", "Focal Length");
PRM_Name aperture_name("aperture", "Aperture");
PRM_Name near_name("near", "Near Clipping");
PRM_Name far_name("far", "Far Clipping");

PRM_Default scale_defaults[] = {PRM_Default(1), PRM_Default(1), PRM_Default(1)};
PRM_Default width_default(1280);
PRM_Default height_default(720);
PRM_Default focal_default(50);
PRM_Default aperture_default(41.4214);
PRM_Default near_default(0.001);
PRM_Default far_default(10000);

PRM_Template null_templates[] = {
    PRM_Template(PRM_XYZ, 3, &translate_name),
    PRM_Template(PRM_XYZ, 3, &rotate_name),
    PRM_Template(PRM_XYZ, 3, &scale_name, scale_defaults),
    PRM_Template(),
};

PRM_Template camera_templates[] = {
    PRM_Template(PRM_XYZ, 3, &translate_name),
    PRM_Template(PRM_XYZ, 3, &rotate_name),
    PRM_Template(PRM_INT, 1, &width_name, &width_default),
    PRM_Template(PRM_INT, 1, &height_name, &height_default),
    PRM_Template(PRM_FLT, 1, &focal_name, &focal_default),
    PRM_Template(PRM_FLT, 1, &aperture_name, &aperture_default),
    PRM_Template(PRM_FLT, 1, &near_name, &near_default),
    PRM_Template(PRM_FLT, 1, &far_name, &far_default),
    PRM_Template(),
};

// --- tables -----------------------------------------------------------------------------------------------------

struct TableTypes
{
    const char* table;
    void (*add)(OP_OperatorTable& table);
};

const TableTypes table_types[] = {
    {manager_table, addManagerTypes},
    {OBJ_TABLE_NAME, addObjectTypes},
    {VOP_TABLE_NAME, addVopTypes},
};

} // namespace

void addManagerTypes(OP_OperatorTable& table)
{
    for (const ManagerRow& row : manager_rows)
        table.addOperator(
            new OP_Operator(row.name, row.label, makeManager, nullptr, 0, 0, nullptr, OP_FLAG_MANAGER));
}

void addObjectTypes(OP_OperatorTable& table)
{
    table.addOperator(new OP_Operator("cam", "Camera", makeObject, camera_templates, 0, 1));
    table.addOperator(new OP_Operator("null", "Null", makeObject, null_templates, 0, 1));
}

void addBuiltinTypes(OP_OperatorTable& table)
{
    for (const TableTypes& row : table_types)
        if (table.getName() == row.table)
            row.add(table);
}

} // namespace standin
