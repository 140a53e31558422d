#include "parm_access.h"
#include "template_facts.h"

#include <CH/CH_Manager.h>
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_ParmList.h>
#include <SYS/SYS_SequentialThreadIndex.h>

#include <pybind11/pybind11.h>

namespace py = pybind11;

namespace standin
{
namespace python
{

PRM_Parm& parmOf(int id, const Text& token)
{
    OP_Node& node = nodeOf(id);
    PRM_Parm* parm = node.getParmPtr(token.c_str());
    if (!parm)
        throw HouError("ObjectWasDeleted",
                       "\"" + pathOf(node) + "\" no longer has a parameter \"" + token.value + "\".");
    return *parm;
}

PRM_Parm& parmOf(int id, const Text& token, int component)
{
    PRM_Parm& parm = parmOf(id, token);
    if (component < 0 || component >= parm.getVectorSize())
        throw HouError("ObjectWasDeleted", "The parameter \"" + token.value + "\" of \"" +
                                               pathOf(nodeOf(id)) + "\" no longer has a component " +
                                               std::to_string(component) + ".");
    return parm;
}

std::string channelPath(const OP_Node& node, const PRM_Parm& parm, int component)
{
    return pathOf(node) + "/" + parm.getChannelToken(component).toStdString();
}

int currentThread() { return SYS_SequentialThreadIndex::get(); }

namespace
{

// Which parameters there are

py::list tokensOf(int id)
{
    const PRM_ParmList& parms = *nodeOf(id).getParmList();
    py::list tokens;
    for (int i = 0; i < parms.getEntries(); ++i)
        tokens.append(py::cast(Text(parms.getParmPtr(i)->getToken())));
    return tokens;
}

py::tuple channelsOf(int id, const Text& token)
{
    const PRM_Parm& parm = parmOf(id, token);
    py::tuple channels(static_cast<std::size_t>(parm.getVectorSize()));
    for (int i = 0; i < parm.getVectorSize(); ++i)
        channels[static_cast<std::size_t>(i)] = Text(parm.getChannelToken(i).buffer());
    return channels;
}

/// (token, component) of a channel; the token of a parameter of several components is no channel.
py::object findParm(int id, const Text& channel)
{
    PRM_ParmList& parms = *nodeOf(id).getParmList();
    int component = 0;
    const PRM_Parm* parm = parms.getParmPtrFromChannel(channel.c_str(), &component);
    if (!parm || channel.value != parm->getChannelToken(component).buffer())
        return py::none();
    return py::make_tuple(Text(parm->getToken()), component);
}

/// What hou.Parm.set() takes and eval() gives.
const char* kindOf(const PRM_Parm& parm)
{
    if (parm.isMultiParm())
        return parm.isRampType() ? "ramp" : "multi";
    const PRM_Type& type = parm.getType();
    if (type.isStringType())
        return type.hasInterfaceType(PRM_IFACE_LABEL) ? "none" : "string";
    if (type.isFloatType())
        return type.hasFloatType(PRM_FLOAT_INTEGER) ? "int" : "float";
    return type.isOrdinalType() ? "ordinal" : "none";
}

py::dict templateOf(int id, const Text& token)
{
    const PRM_Parm& parm = parmOf(id, token);
    py::dict facts = factsOf(*parm.getTemplatePtr());
    facts["token"] = Text(parm.getToken());
    facts["label"] = Text(parm.getLabel());
    return facts;
}

py::list templatesOf(int id)
{
    const PRM_ParmList& parms = *nodeOf(id).getParmList();
    py::list facts;
    for (int i = 0; i < parms.getTopLevelEntries(); ++i)
        facts.append(factsOf(*parms.getParmPtr(i)->getTemplatePtr()));
    return facts;
}

// Values

std::string stringValue(const PRM_Parm& parm, int component, double time, bool expand)
{
    UT_String text;
    parm.getValue(time, text, component, expand, currentThread());
    return text.toStdString();
}

int64 intValue(const PRM_Parm& parm, int component, double time)
{
    int64 value = 0;
    parm.getValue(time, value, component, currentThread());
    return value;
}

double floatValue(const PRM_Parm& parm, int component, double time)
{
    fpreal value = 0;
    parm.getValue(time, value, component, currentThread());
    return value;
}

py::object evaluate(int id, const Text& token, int component, double time)
{
    const PRM_Parm& parm = parmOf(id, token, component);
    const std::string kind = kindOf(parm);
    if (kind == "float")
        return py::cast(floatValue(parm, component, time));
    if (kind == "string" || kind == "none")
        return py::cast(Text(stringValue(parm, component, time, true)));
    return py::cast(intValue(parm, component, time));
}

Text rawText(int id, const Text& token, int component)
{
    return stringValue(parmOf(id, token, component), component, CHgetEvalTime(), false);
}

void requireStored(bool stored, int id, const Text& token, int component)
{
    // The event of a change may have deleted the node; then there is nobody left to complain about.
    if (stored || !OP_Node::lookupNode(id))
        return;
    fail("The parameter \"" + channelPath(nodeOf(id), parmOf(id, token, component), component) +
         "\" does not take this value.");
}

template <typename Value>
void setNumber(int id, const Text& token, int component, Value value)
{
    PRM_Parm& parm = parmOf(id, token, component);
    if (!parm.hasExpression(component)) // it stays in force until deleteAllKeyframes()
        requireStored(parm.setValue(CHgetEvalTime(), value, true, PRM_AK_NEVER, component), id, token,
                      component);
}

void setText(int id, const Text& token, int component, const Text& text)
{
    PRM_Parm& parm = parmOf(id, token, component);
    if (!parm.hasExpression(component))
        requireStored(
            parm.setValue(CHgetEvalTime(), text.c_str(), CH_STRING_LITERAL, true, PRM_AK_NEVER, component),
            id, token, component);
}

// Expressions

void setExpression(int id, const Text& token, int component, const Text& text, bool isPython)
{
    PRM_Parm& parm = parmOf(id, token, component);
    if (std::string(kindOf(parm)) == "none")
        fail("The parameter \"" + channelPath(nodeOf(id), parm, component) + "\" holds no value.");
    requireStored(parm.setExpression(CHgetEvalTime(), text.c_str(),
                                     isPython ? CH_PYTHON : CH_OLD_EXPR_LANGUAGE, true, component),
                  id, token, component);
}

py::object expressionOf(int id, const Text& token, int component)
{
    const PRM_Parm& parm = parmOf(id, token, component);
    if (!parm.hasExpression(component))
        return py::none();
    return py::make_tuple(Text(parm.getExpression(component)),
                          parm.getExpressionLanguage(component) == CH_PYTHON);
}

// Menus and buttons

py::object menuOf(int id, const Text& token)
{
    const PRM_Parm& parm = parmOf(id, token);
    const PRM_ChoiceList* menu = parm.getTemplatePtr()->getChoiceListPtr();
    if (!menu)
        return py::none();
    const PRM_Name* names = nullptr;
    menu->getChoiceNames(names, nodeOf(id).parmData(), parm.getSparePtr(), &parm);
    py::list items;
    for (; names && names->getToken() && *names->getToken(); ++names)
        items.append(py::make_tuple(Text(names->getToken()), Text(names->getLabel())));
    return std::move(items);
}

/// Chooses an item of an action menu; the index was checked against the menu.
int pressItem(int id, const Text& token, int item)
{
    return nodeOf(id).pressParm(parmOf(id, token), item, CHgetEvalTime());
}

int press(int id, const Text& token, int component)
{
    return pressItem(id, token, parmOf(id, token, component).isActionMenu() ? 0 : component);
}

void bindValues(py::module_& module)
{
    module.def("parm_eval", &evaluate);
    module.def("parm_eval_int", [](int id, const Text& token, int component, double time)
               { return intValue(parmOf(id, token, component), component, time); });
    module.def("parm_eval_float", [](int id, const Text& token, int component, double time)
               { return floatValue(parmOf(id, token, component), component, time); });
    module.def("parm_eval_string", [](int id, const Text& token, int component, double time)
               { return Text(stringValue(parmOf(id, token, component), component, time, true)); });
    module.def("parm_raw", &rawText);
    module.def("parm_set_float", &setNumber<fpreal>);
    module.def("parm_set_int", &setNumber<int64>);
    module.def("parm_set_string", &setText);
    module.def("parm_is_default", [](int id, const Text& token, int component)
               { return parmOf(id, token, component).isDefault(component); });
    module.def("parm_revert", [](int id, const Text& token, int component)
               { parmOf(id, token, component).revertToDefault(CHgetEvalTime(), component); });
}

void bindStates(py::module_& module)
{
    module.def("parm_enabled", [](int id, const Text& token, int component)
               { return parmOf(id, token, component).getEnableState(component); });
    module.def("parm_visible", [](int id, const Text& token, int component)
               { return parmOf(id, token, component).getVisibleState(component); });
    module.def("parm_set_enabled", [](int id, const Text& token, int component, bool on)
               { parmOf(id, token, component).setEnableState(on, component); });
    module.def("parm_set_visible", [](int id, const Text& token, int component, bool on)
               { parmOf(id, token, component).setVisibleState(on, component); });
}

} // namespace

void bindParms(py::module_& module)
{
    module.def("parm_tokens", &tokensOf);
    module.def("parm_channels", &channelsOf);
    module.def("find_parm", &findParm);
    module.def("has_parm", [](int id, const Text& token) { return nodeOf(id).hasParm(token.c_str()); });
    module.def("parm_kind", [](int id, const Text& token) { return kindOf(parmOf(id, token)); });
    module.def("parm_label", [](int id, const Text& token) { return Text(parmOf(id, token).getLabel()); });
    module.def("parm_template", &templateOf);
    module.def("node_templates", &templatesOf);
    module.def("parm_is_spare", [](int id, const Text& token) { return parmOf(id, token).isSpareParm(); });
    module.def("parm_set_expression", &setExpression);
    module.def("parm_expression", &expressionOf);
    module.def("parm_delete_keyframes", [](int id, const Text& token, int component)
               { parmOf(id, token, component).deleteExpression(CHgetEvalTime(), component); });
    module.def("parm_is_time_dependent", [](int id, const Text& token, int component)
               { return parmOf(id, token, component).isTimeDependent(); });
    module.def("parm_menu", &menuOf);
    module.def("parm_menu_index", [](int id, const Text& token, const Text& item)
               { return parmOf(id, token).findMenuItem(item.c_str()); });
    module.def("parm_press", &press);
    module.def("parm_press_item", &pressItem);
    module.def("parm_is_action_menu",
               [](int id, const Text& token) { return parmOf(id, token).isActionMenu(); });
    bindValues(module);
    bindStates(module);
}

} // namespace python
} // namespace standin
