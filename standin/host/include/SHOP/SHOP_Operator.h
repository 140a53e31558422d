#ifndef SHOP_OPERATOR_H
#define SHOP_OPERATOR_H

#include <OP/OP_Operator.h>
#include <SHOP/SHOP_OperatorInfo.h>

/// A type of shader, or of container of shader networks.
class SHOP_Operator : public OP_Operator
{
public:
    /// @param auto_add_clerk  one of SHOP_AUTOADD_*; nothing here looks at it
    SHOP_Operator(const char* name, const char* english, OP_Constructor construct, PRM_Template* templates,
                  unsigned min_sources, unsigned max_sources = 9999, CH_LocalVariable* variables = 0,
                  unsigned flags = 0, int auto_add_clerk = SHOP_AUTOADD_ANY);
    virtual ~SHOP_Operator();

    virtual OP_SpecificData* getOpSpecificData();
    virtual const OP_SpecificData* getOpSpecificData() const;
    virtual unsigned maxOutputs();

private:
    SHOP_OperatorInfo myInfo;
};

#endif
