#include "kept_edits.h"

#include "parm_facts.h"
#include "request_error.h"

#include <CH/CH_Manager.h>
#include <OP/OP_Node.h>
#include <PRM/PRM_ParmList.h>
#include <UT/UT_UndoManager.h>
#include <standin/host.h>

#include <algorithm>

namespace kshop
{

namespace
{

/// While it lives the node sends no events.
class QuietNode
{
public:
    explicit QuietNode(OP_Node& node) : m_node(node) { m_node.setParmEvents(false); }
    ~QuietNode() { m_node.setParmEvents(true); }
    QuietNode(const QuietNode&) = delete;
    QuietNode& operator=(const QuietNode&) = delete;

private:
    OP_Node& m_node;
};

Json componentJson(const PRM_Parm& parm, int component)
{
    Json kept = {{"token", parm.getToken()}, {"component", component}};
    if (parm.hasExpression(component))
    {
        kept["expression"] = parm.getExpression(component);
        kept["language"] = expressionLanguageOf(parm, component);
    }
    else if (parm.getType().isStringType())
        kept["text"] = rawTextOf(parm, component);
    else
        kept["number"] = numberOf(parm, component);
    return kept;
}

Json parmsOf(const OP_Node& node)
{
    Json kept = Json::array();
    const PRM_ParmList& parms = *node.getParmList();
    for (int i = 0; i < parms.getEntries(); ++i)
    {
        const PRM_Parm& parm = *parms.getParmPtr(i);
        if (parm.isMultiParm() && !parm.isDefault(0))
            kept.push_back({{"token", parm.getToken()}, {"count", parm.getMultiParmNumItems()}});
        for (int c = 0; !parm.isMultiParm() && c < parm.getVectorSize(); ++c)
            if (!parm.isDefault(c))
                kept.push_back(componentJson(parm, c));
    }
    return kept;
}

bool samePlace(const Json& a, const Json& b)
{
    return a.at("token") == b.at("token") && a.value("component", -1) == b.value("component", -1);
}

void appendMissing(Json& kept, const Json& waiting)
{
    for (const Json& parm : waiting)
        if (std::none_of(kept.begin(), kept.end(),
                         [&parm](const Json& other) { return samePlace(parm, other); }))
            kept.push_back(parm);
}

Json wiresOf(const PreviewScene& scene, const OP_Node& node)
{
    Json wires = Json::array();
    for (unsigned i = 0; i < node.nInputs(); ++i)
    {
        const OP_Node* source = node.getInput(i);
        const std::string type = source ? scene.typeOf(*source) : "";
        if (!type.empty())
            wires.push_back({{"input", i},
                             {"from", type},
                             {"output", node.getInputReferenceConst(i)->getNodeOutputIndex()}});
    }
    return wires;
}

bool restoreCount(PRM_Parm& parm, const Json& kept)
{
    return parm.isMultiParm() && parm.setValue(CHgetEvalTime(), kept.at("count").get<int64>());
}

/// False when the parameter has no place for it.
bool restoreComponent(PRM_Parm& parm, const Json& kept)
{
    const int component = kept.at("component").get<int>();
    if (component < 0 || component >= parm.getVectorSize() || parm.isMultiParm())
        return false;
    if (kept.contains("expression"))
        return parm.setExpression(CHgetEvalTime(), kept.at("expression").get<std::string>().c_str(),
                                  kept.at("language") == "python" ? CH_PYTHON : CH_OLD_EXPR_LANGUAGE, true,
                                  component);
    if (parm.getType().isStringType() != kept.contains("text"))
        return false;
    if (kept.contains("text"))
        return parm.setValue(CHgetEvalTime(), kept.at("text").get<std::string>().c_str(), CH_STRING_LITERAL,
                             true, PRM_AK_NEVER, component);
    return parm.setValue(CHgetEvalTime(), kept.at("number").get<double>(), true, PRM_AK_NEVER, component);
}

bool restoreParm(OP_Node& node, const Json& kept)
{
    PRM_Parm* parm = node.getParmPtr(kept.at("token").get<std::string>().c_str());
    if (!parm)
        return false;
    return kept.contains("count") ? restoreCount(*parm, kept) : restoreComponent(*parm, kept);
}

} // namespace

Json KeptEdits::snapshot() const
{
    Json nodes = Json::array();
    for (const std::string& type : m_scene.typesWithNodes())
    {
        const OP_Node& node = *m_scene.findNode(type);
        Json parms = parmsOf(node);
        const auto waiting = m_waiting.find(type);
        if (waiting != m_waiting.end())
            appendMissing(parms, waiting->second);
        nodes.push_back({{"type", type}, {"parms", std::move(parms)}, {"wires", wiresOf(m_scene, node)}});
    }
    for (const Json& node : m_waitingTypes)
        nodes.push_back(node);
    return nodes;
}

void KeptEdits::restore(const Json& snapshot)
{
    const UT_AutoDisableUndos noSteps;
    for (const Json& node : snapshot)
        if (!restoreNode(node))
            m_waitingTypes.push_back(node);
    for (const Json& node : snapshot)
        restoreWires(node);
}

bool KeptEdits::restoreNode(const Json& kept)
{
    const std::string type = kept.at("type");
    if (!m_scene.hasType(type))
        return false;
    OP_Node& node = m_scene.node(type);
    const QuietNode quiet(node);
    Json waiting = Json::array();
    for (const Json& parm : kept.at("parms"))
        if (!restoreParm(node, parm))
            waiting.push_back(parm);
    if (!waiting.empty())
        m_waiting[type] = std::move(waiting);
    return true;
}

void KeptEdits::restoreWires(const Json& kept)
{
    OP_Node* node = m_scene.findNode(kept.at("type").get<std::string>());
    for (const Json& wire : kept.at("wires"))
    {
        OP_Node* source = m_scene.findNode(wire.at("from").get<std::string>());
        const auto input = wire.at("input").get<unsigned>(), output = wire.at("output").get<unsigned>();
        std::string why;
        if (node && source && standin::canConnect(*source, output, *node, input, why))
            node->setInput(input, source, output);
    }
}

void KeptEdits::forget(const std::string& type) { m_waiting.erase(type); }

} // namespace kshop
