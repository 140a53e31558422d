#ifndef VOP_OPERATOR_H
#define VOP_OPERATOR_H

#include <OP/OP_Operator.h>
#include <VOP/VOP_OperatorInfo.h>

/// A type of shader-network node.
class VOP_Operator : public OP_Operator
{
public:
    /// @param vopnetMask   network types in which nodes of this type may appear, see VOP_OperatorInfo
    /// @param num_outputs  the most outputs that a node can have
    VOP_Operator(const char* name, const char* english, OP_Constructor construct, PRM_Template* templates,
                 unsigned min_sources, unsigned max_sources, const char* vopnetMask,
                 CH_LocalVariable* variables = 0, unsigned flags = 0, unsigned num_outputs = 1);
    virtual ~VOP_Operator();

    virtual OP_SpecificData* getOpSpecificData();
    virtual const OP_SpecificData* getOpSpecificData() const;
    virtual unsigned maxOutputs();

private:
    VOP_OperatorInfo myInfo;
    unsigned myNumOutputs;
};

#endif
