#include "operator_facts.h"

#include <OP/OP_Director.h>
#include <OP/OP_Operator.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Node.h>
#include <standin/host.h>

#include <cxxabi.h>
#include <fnmatch.h>

#include <cstdlib>
#include <memory>
#include <sstream>
#include <typeinfo>

namespace kshop
{

namespace
{

std::string unqualified(const std::string& name)
{
    const std::size_t end = name.find('<');
    const std::size_t colons = name.rfind("::", end);
    return colons == std::string::npos ? name : name.substr(colons + 2);
}

std::optional<std::string> vopnetMask(const OP_Operator& op)
{
    std::string mask;
    return standin::vopnetMaskOf(op, mask) ? std::optional<std::string>(mask) : std::nullopt;
}

/// True when one of the blank-separated patterns of a mask fits the name of a network type.
bool fits(const std::string& mask, const std::string& networkType)
{
    std::istringstream patterns(mask);
    for (std::string pattern; patterns >> pattern;)
        if (fnmatch(pattern.c_str(), networkType.c_str(), 0) == 0)
            return true;
    return false;
}

std::vector<ConnectorFacts> inputsOf(VOP_Node& node)
{
    std::vector<ConnectorFacts> result;
    for (unsigned i = 0; i < node.getNumVisibleInputs(); ++i)
    {
        UT_String name;
        node.getInputName(name, static_cast<int>(i));
        const char* label = node.inputLabel(i);
        result.push_back({name.toStdString(), label ? label : "", node.getInputType(static_cast<int>(i))});
    }
    return result;
}

std::vector<ConnectorFacts> outputsOf(VOP_Node& node)
{
    std::vector<ConnectorFacts> result;
    for (unsigned i = 0; i < node.getNumVisibleOutputs(); ++i)
    {
        UT_String name;
        node.getOutputName(name, static_cast<int>(i));
        const char* label = node.outputLabel(i);
        result.push_back({name.toStdString(), label ? label : "", node.getOutputType(static_cast<int>(i))});
    }
    return result;
}

OP_Network* shopManager() { return OPgetDirector()->getManager("shop"); }

} // namespace

std::string classNameOf(const OP_Operator& op)
{
    const char* mangled = typeid(op).name();
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> readable(
        abi::__cxa_demangle(mangled, nullptr, nullptr, &status), std::free);
    return unqualified(status == 0 ? readable.get() : mangled);
}

NodeSampler::~NodeSampler()
{
    if (m_container)
        m_container->getParent()->destroyNode(m_container);
}

OP_Network* makeContainer(const std::string& mask)
{
    OP_Network* shop = shopManager();
    for (OP_Operator* op : standin::operatorsOf(*shop->getOperatorTable()))
    {
        if (!op->getIsNetwork() || !fits(mask, op->getName().toStdString()))
            continue;
        OP_Node* node = shop->createNode(op->getName());
        return node ? node->castToOPNetwork() : nullptr;
    }
    return nullptr;
}

OP_Network* NodeSampler::containerFor(const std::string& mask)
{
    if (m_container && m_mask == mask)
        return m_container;
    if (m_container)
        shopManager()->destroyNode(m_container);
    m_container = makeContainer(mask);
    m_mask = mask;
    return m_container;
}

void NodeSampler::readConnectors(const OP_Operator& op, OperatorFacts& facts)
{
    // Only nodes of shader networks have typed connectors.
    if (!facts.vopnetMask)
    {
        facts.connectorsKnown = true;
        return;
    }
    OP_Network* container = containerFor(*facts.vopnetMask);
    OP_Node* node = container ? container->createNode(op.getName()) : nullptr;
    VOP_Node* vop = node ? node->castToVOPNode() : nullptr;
    facts.connectorsKnown = vop != nullptr;
    if (vop)
    {
        facts.inputs = inputsOf(*vop);
        facts.outputs = outputsOf(*vop);
    }
    if (node)
        container->destroyNode(node);
}

OperatorFacts readOperator(OP_Operator& op)
{
    OperatorFacts facts;
    facts.name = op.getName().toStdString();
    facts.label = op.getEnglish().toStdString();
    facts.icon = op.getIconName().toStdString();
    facts.className = classNameOf(op);
    UT_String text;
    if (op.getOpTabSubMenuPath(text))
        facts.tabMenu = text.toStdString();
    if (op.getOpHelpURL(text))
        facts.helpUrl = text.toStdString();
    facts.minInputs = op.getMinSources();
    facts.maxInputs = op.getMaxSources();
    facts.numOutputs = op.maxOutputs();
    facts.vopnetMask = vopnetMask(op);
    facts.flags = op.getFlags();
    facts.connectorsKnown = false;
    facts.templates = readTemplates(op.getParmTemplates());
    return facts;
}

OperatorFacts readOperator(OP_Operator& op, NodeSampler& sampler)
{
    OperatorFacts facts = readOperator(op);
    sampler.readConnectors(op, facts);
    return facts;
}

} // namespace kshop
