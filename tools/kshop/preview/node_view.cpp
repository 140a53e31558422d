#include "node_view.h"

#include "parm_view.h"

#include <OP/OP_Operator.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Node.h>

namespace kshop
{

namespace
{

Json textOrNull(bool given, const UT_String& text)
{
    return given ? Json(text.toStdString()) : Json(nullptr);
}

struct DetailRow
{
    char flag;
    const char* word;
};

const DetailRow detail_rows[] = {
    {VOP_OPT_LOW_FLAG, "low"},
    {VOP_OPT_MEDIUM_FLAG, "medium"},
    {VOP_OPT_HIGH_FLAG, "high"},
};

Json detailJson(VOP_Node& node)
{
    for (const DetailRow& row : detail_rows)
        if (node.getExtraFlag(row.flag))
            return row.word;
    return nullptr;
}

Json connectorJson(const UT_String& name, const char* label, VOP_Type type)
{
    return {{"name", name.toStdString()},
            {"label", label ? label : ""},
            {"type", static_cast<int>(type)},
            {"type_name", VOPgetTypeName(type)}};
}

Json wireJson(const PreviewScene& scene, const VOP_Node& node, unsigned index)
{
    const OP_Node* source = node.getInput(index);
    if (!source)
        return nullptr;
    const OP_Input* input = node.getInputReferenceConst(index);
    return {{"path", source->getFullPath().toStdString()},
            {"type", scene.typeOf(*source)},
            {"output", input ? input->getNodeOutputIndex() : 0}};
}

Json inputsJson(const PreviewScene& scene, VOP_Node& node)
{
    Json list = Json::array();
    for (unsigned i = 0; i < node.getNumVisibleInputs(); ++i)
    {
        UT_String name;
        node.getInputName(name, static_cast<int>(i));
        Json input = connectorJson(name, node.inputLabel(i), node.getInputType(static_cast<int>(i)));
        input["connected"] = wireJson(scene, node, i);
        list.push_back(std::move(input));
    }
    return list;
}

Json outputsJson(VOP_Node& node)
{
    Json list = Json::array();
    for (unsigned i = 0; i < node.getNumVisibleOutputs(); ++i)
    {
        UT_String name;
        node.getOutputName(name, static_cast<int>(i));
        list.push_back(connectorJson(name, node.outputLabel(i), node.getOutputType(static_cast<int>(i))));
    }
    return list;
}

void addTile(const PreviewScene& scene, VOP_Node& node, Json& view)
{
    view["lod"] = detailJson(node);
    view["inputs"] = inputsJson(scene, node);
    view["outputs"] = outputsJson(node);
    view["tile_height"] = node.getH();
}

} // namespace

Json nodeJson(const PreviewScene& scene, OP_Node& node, const ParameterNames& names)
{
    node.refreshParms();
    OP_Operator& op = *node.getOperator();
    const std::string type = op.getName().toStdString();
    UT_String help, category;
    const bool hasHelp = op.getOpHelpURL(help), hasCategory = op.getOpTabSubMenuPath(category);
    Json view = {{"type", type},
                 {"label", op.getEnglish().toStdString()},
                 {"path", node.getFullPath().toStdString()},
                 {"name", node.getName().toStdString()},
                 {"icon", op.getIconName().toStdString()},
                 {"help_url", textOrNull(hasHelp, help)},
                 {"category", textOrNull(hasCategory, category)}};
    if (VOP_Node* vop = node.castToVOPNode())
        addTile(scene, *vop, view);
    const auto own = names.find(type);
    view["parms"] = paneJson(node, own == names.end() ? nullptr : &own->second);
    view["errors"] = parmErrorsOf(node);
    return view;
}

Json typeJson(const OperatorFacts& facts)
{
    return {{"name", facts.name},
            {"label", facts.label},
            {"icon", facts.icon},
            {"class", facts.className},
            {"tab_menu", facts.tabMenu ? Json(*facts.tabMenu) : Json(nullptr)},
            {"inputs", facts.inputs.size()},
            {"outputs", facts.outputs.size()}};
}

} // namespace kshop
