#ifndef KSHOP_OPERATOR_FACTS_H
#define KSHOP_OPERATOR_FACTS_H

#include "template_facts.h"

#include <optional>
#include <string>
#include <vector>

class OP_Network;
class OP_Operator;

namespace kshop
{

struct ConnectorFacts
{
    std::string name;
    std::string label;
    int type; ///< VOP_Type
};

/// What describe shows of one operator type.
struct OperatorFacts
{
    std::string name;
    std::string label;
    std::string icon;
    std::string className;              ///< C++ class without its namespaces
    std::optional<std::string> tabMenu; ///< absent when the operator gives none
    std::optional<std::string> helpUrl; ///< absent when the operator gives none
    unsigned minInputs;
    unsigned maxInputs;
    unsigned numOutputs;
    std::optional<std::string> vopnetMask; ///< absent for anything that is no shader-network type
    unsigned flags;                        ///< OP_FLAG_... bits
    bool connectorsKnown;                  ///< false: no node of the type could be made
    std::vector<ConnectorFacts> inputs;    ///< visible connectors of a fresh node, in order
    std::vector<ConnectorFacts> outputs;
    std::vector<TemplateFacts> templates; ///< up to the first terminator
};

/// Makes a node of a type for looking at, and takes it away again.
///
/// A shader-network node wants a container that its network mask fits; one is made in "/shop" when first needed and
/// taken away with this object. The host must run.
class NodeSampler
{
public:
    NodeSampler() = default;
    ~NodeSampler();
    NodeSampler(const NodeSampler&) = delete;
    NodeSampler& operator=(const NodeSampler&) = delete;

    /// Fills the connectors of `facts` from a fresh node of `op`.
    void readConnectors(const OP_Operator& op, OperatorFacts& facts);

private:
    OP_Network* containerFor(const std::string& mask);

    OP_Network* m_container = nullptr;
    std::string m_mask; ///< the mask that m_container was made for
};

/// Makes a network in "/shop" that takes nodes of this network mask; null when no type of network does.
OP_Network* makeContainer(const std::string& mask);

/// C++ class of an operator, without its namespaces.
std::string classNameOf(const OP_Operator& op);

/// Everything but the connectors.
OperatorFacts readOperator(OP_Operator& op);

/// The whole of it.
OperatorFacts readOperator(OP_Operator& op, NodeSampler& sampler);

} // namespace kshop

#endif
