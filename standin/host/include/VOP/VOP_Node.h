#ifndef VOP_NODE_H
#define VOP_NODE_H

#include <OP/OP_Network.h>
#include <OP/OP_OperatorTable.h>
#include <SYS/SYS_Visibility.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Operator.h>
#include <VOP/VOP_OperatorInfo.h>
#include <VOP/VOP_TypeInfo.h>
#include <VOP/VOP_Types.h>

#define VOP_VARIABLE_INOUT_MAX 2048 ///< the most inputs and the most outputs

/// Extra flags: how much of its connectors the tile shows. At most one is on; none counts as high.
#define VOP_OPT_LOW_FLAG 'L'    ///< no connectors
#define VOP_OPT_MEDIUM_FLAG 'M' ///< a row for each connected one
#define VOP_OPT_HIGH_FLAG 'H'   ///< a row for each visible one

extern "C"
{
    /// A plug-in's hook for the VOP table, called once when that table is made.
    SYS_VISIBILITY_EXPORT extern void newVopOperator(OP_OperatorTable* table);
}

/// A node of a shader network. Its connectors are typed and named; a class overrides the "Subclass" forms,
/// everybody else calls the public ones, which ask the class directly and pass on what it throws for an index
/// out of range.
class VOP_Node : public OP_Network
{
public:
    virtual const char* getOpType() const;
    virtual OP_OpTypeId getOpTypeID() const;
    virtual const char* getChildType() const;
    virtual OP_OpTypeId getChildTypeID() const;
    virtual VOP_Node* castToVOPNode();
    virtual const VOP_Node* castToVOPNode() const;

    /// "Input 1" and "Output 1" unless the operator gave labels.
    virtual const char* inputLabel(unsigned idx) const;
    virtual const char* outputLabel(unsigned idx) const;
    virtual unsigned getNumVisibleInputs() const;
    virtual unsigned getNumVisibleOutputs() const;
    virtual unsigned orderedInputs() const;
    virtual unsigned maxOutputs() const;

    virtual bool runCreateScript();

    void getInputName(UT_String& in, int idx) const;
    void getOutputName(UT_String& out, int idx) const;
    /// The input of that name; -1 when there is none.
    int getInputFromName(const UT_String& in) const;
    /// The output of that name; -1 when there is none.
    virtual int getOutputFromName(const UT_String& out) const;
    VOP_Type getInputType(int idx);
    VOP_Type getOutputType(int idx);
    /// Appends the types that the input takes besides its own.
    void getAllowedInputTypes(unsigned idx, VOP_VopTypeArray& types);

    /// True when the input has a wire; `recursive` looks through the inputs of subnets to what really feeds
    /// it.
    virtual bool isConnected(int inputidx, bool recursive);
    /// What really feeds an input, past nulls and the borders of subnets; null when nothing does.
    VOP_Node* findSimpleInput(int idx);

    virtual VOP_Type getShaderType() const;

    /// 'H', 'M' and 'L': turning one on turns the others off, and the tile's height follows.
    virtual int setExtraFlag(char flag, int on);
    virtual int getExtraFlag(char flag);

    virtual fpreal getW() const;
    virtual fpreal getH() const;

protected:
    VOP_Node(OP_Network* parent, const char* name, OP_Operator* entry);
    virtual ~VOP_Node();

    /// Disables the parameter named like each connected input, and enables it again when the wire goes unless
    /// the parameter's own condition says otherwise.
    virtual bool updateParmsFlags();

    virtual void getInputNameSubclass(UT_String& in, int idx) const;
    virtual int getInputFromNameSubclass(const UT_String& in) const;
    virtual void getOutputNameSubclass(UT_String& out, int idx) const;

    /// The old and the new form of the type functions. The host asks the new one, which asks the old one
    /// unless it is overridden.
    virtual VOP_Type getInputTypeSubclass(int idx);
    virtual void getInputTypeInfoSubclass(VOP_TypeInfo& info, int idx);
    virtual void getAllowedInputTypesSubclass(unsigned idx, VOP_VopTypeArray& types);
    virtual void getAllowedInputTypeInfosSubclass(unsigned idx, VOP_VopTypeInfoArray& infos);
    virtual VOP_Type getOutputTypeSubclass(int idx);
    virtual void getOutputTypeInfoSubclass(VOP_TypeInfo& info, int idx);

private:
    unsigned shownRows() const;
    unsigned connectedOutputs() const;

    char myDetail;
};

#endif
