#include "op_placeholder.h"

#include <OP/OP_OperatorTable.h>
#include <SHOP/SHOP_Node.h>
#include <VOP/VOP_Node.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace standin
{

namespace
{

void need(std::vector<std::string>& names, unsigned index, const std::string& name)
{
    if (index >= OP_MULTI_INPUT_MAX)
        return;
    names.resize(std::max<std::size_t>(names.size(), index + 1));
    if (!name.empty())
        names[index] = name;
}

void tell(UT_String& answer, const std::vector<std::string>& names, int index, const char* kind)
{
    const bool there = index >= 0 && static_cast<std::size_t>(index) < names.size();
    const std::string name = there ? names[static_cast<std::size_t>(index)] : std::string();
    answer.harden(name.empty() ? (kind + std::to_string(index + 1)).c_str() : name.c_str());
}

/// The placeholder of a network's kind. It shows the connectors that were wired or named, and no others.
template <typename Base>
class PlaceholderOf : public Base, public Placeholder
{
public:
    PlaceholderOf(OP_Network* parent, const char* name, OP_Operator* op) : Base(parent, name, op) {}

    static OP_Node* make(OP_Network* parent, const char* name, OP_Operator* op)
    {
        return new PlaceholderOf(parent, name, op);
    }

    unsigned getNumVisibleInputs() const override
    {
        return std::max(static_cast<unsigned>(inputNames.size()), this->nInputs());
    }
    unsigned getNumVisibleOutputs() const override { return static_cast<unsigned>(outputNames.size()); }
};

class PlaceholderVop : public PlaceholderOf<VOP_Node>
{
public:
    using PlaceholderOf<VOP_Node>::PlaceholderOf;

    static OP_Node* make(OP_Network* parent, const char* name, OP_Operator* op)
    {
        return new PlaceholderVop(parent, name, op);
    }

protected:
    void getInputNameSubclass(UT_String& in, int index) const override
    {
        tell(in, inputNames, index, "input");
    }
    void getOutputNameSubclass(UT_String& out, int index) const override
    {
        tell(out, outputNames, index, "output");
    }
};

/// A material; what it holds are shader nodes.
class PlaceholderShop : public PlaceholderOf<SHOP_Node>
{
public:
    PlaceholderShop(OP_Network* parent, const char* name, OP_Operator* op) : PlaceholderOf(parent, name, op)
    {
        if (op->getIsNetwork())
            setOperatorTable(getOperatorTable(VOP_TABLE_NAME));
    }

    static OP_Node* make(OP_Network* parent, const char* name, OP_Operator* op)
    {
        return new PlaceholderShop(parent, name, op);
    }
};

/// Of any other kind. What it holds is not known either.
class PlaceholderNode : public PlaceholderOf<OP_Network>
{
public:
    PlaceholderNode(OP_Network* parent, const char* name, OP_Operator* op)
        : PlaceholderOf(parent, name, op), m_type(parent->getChildType()), m_typeId(parent->getChildTypeID())
    {
    }

    static OP_Node* make(OP_Network* parent, const char* name, OP_Operator* op)
    {
        return new PlaceholderNode(parent, name, op);
    }

    const char* getOpType() const override { return m_type.c_str(); }
    OP_OpTypeId getOpTypeID() const override
    {
        return m_typeId == MGR_OPTYPE_ID ? INVALID_OPTYPE_ID : m_typeId;
    }

private:
    std::string m_type;
    OP_OpTypeId m_typeId;
};

OP_Constructor constructorFor(const std::string& table)
{
    if (table == VOP_TABLE_NAME)
        return &PlaceholderVop::make;
    return table == SHOP_TABLE_NAME ? &PlaceholderShop::make : &PlaceholderNode::make;
}

/// The operators of placeholders live as long as the process, like all others.
OP_Operator& typeFor(OP_OperatorTable* table, const std::string& type, bool holdsNodes)
{
    typedef std::pair<OP_OperatorTable*, std::pair<std::string, bool>> Key;
    static auto* all = new std::map<Key, std::unique_ptr<OP_Operator>>;
    std::unique_ptr<OP_Operator>& op = (*all)[Key(table, {type, holdsNodes})];
    if (!op)
    {
        const std::string tableName = table ? table->getName().toStdString() : std::string();
        op.reset(new OP_Operator(type.c_str(), type.c_str(), constructorFor(tableName), nullptr, 0,
                                 OP_MULTI_INPUT_MAX, nullptr, holdsNodes ? OP_FLAG_NETWORK : 0u, nullptr,
                                 OP_MULTI_INPUT_MAX));
        if (table)
            table->adoptPlaceholder(*op);
    }
    return *op;
}

} // namespace

void Placeholder::needInput(unsigned index, const std::string& name) { need(inputNames, index, name); }
void Placeholder::needOutput(unsigned index, const std::string& name) { need(outputNames, index, name); }

Placeholder* placeholderOf(const OP_Node* node)
{
    return const_cast<Placeholder*>(dynamic_cast<const Placeholder*>(node));
}

OP_Node* createPlaceholder(OP_Network& network, const std::string& type, const std::string& name,
                           bool holdsNodes)
{
    OP_Operator& op = typeFor(network.getOperatorTable(), type, holdsNodes);
    return network.createNodeOfOperator(op, name.c_str());
}

} // namespace standin
