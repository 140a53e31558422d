#include "op_otl_types.h"

#include "../vop/vop_builtin.h"

#include <OP/OP_Network.h>
#include <SHOP/SHOP_Node.h>
#include <SHOP/SHOP_Operator.h>
#include <VOP/VOP_Node.h>
#include <VOP/VOP_Operator.h>
#include <standin/host.h>

namespace standin
{

namespace
{

/// Where the asset's own types stand in the tab menu.
const char* const sub_menu = "Digital Assets";

/// What all operators of asset files have in common besides being operators of their table.
class AssetType
{
public:
    virtual ~AssetType() {}

    const DialogScript& script() const
    {
        if (!m_script)
            m_script.reset(new DialogScript(read()));
        return *m_script;
    }

protected:
    void forget() { m_script.reset(); }

private:
    /// Reading opens the type's index, which operators do on first use.
    virtual OP_Operator& self() const = 0;

    DialogScript read() const
    {
        UT_WorkBuffer text;
        const FS_IndexFile* index = self().getOTLIndexFile();
        if (index)
            index->readSection("DialogScript", text);
        DialogScript script =
            readDialogScript(std::string(text.buffer(), static_cast<std::size_t>(text.length())));
        for (const std::string& problem : script.problems)
            report(Severity::Warning, "\"" + self().getOTLLibrary()->filePath() + "\", dialog script of \"" +
                                          self().getName().toStdString() + "\": " + problem +
                                          ". Get an undamaged copy, or a newer release of this program.");
        return script;
    }

    mutable std::unique_ptr<DialogScript> m_script;
};

template <typename Base>
class AssetOperator : public Base, public AssetType
{
public:
    using Base::Base;

    PRM_Template* getParmTemplates() const override { return script().templates; }

    unsigned maxOutputs() override
    {
        const std::size_t declared = script().outputs.size();
        return declared ? static_cast<unsigned>(declared) : Base::maxOutputs();
    }

    void setOTLLibrary(const std::shared_ptr<OP_OTLLibrary>& library, int definition) override
    {
        Base::setOTLLibrary(library, definition);
        forget();
        if (auto* info = dynamic_cast<VOP_OperatorInfo*>(Base::getOpSpecificData()))
            info->setVopnetMask(library->getDefinition(definition).getExtra());
    }

private:
    OP_Operator& self() const override { return const_cast<AssetOperator&>(*this); }
};

// --- nodes of other kinds than VOP ------------------------------------------------------------------------------

/// A node of an asset that holds nodes of its own kind, if any.
template <typename Base>
class AssetNode : public Base
{
public:
    AssetNode(OP_Network* net, const char* name, OP_Operator* op) : Base(net, name, op)
    {
        if (op->getIsNetwork() && op->getTable())
            this->setOperatorTable(op->getTable());
    }
};

class PlainNode : public OP_Network
{
public:
    PlainNode(OP_Network* net, const char* name, OP_Operator* op) : OP_Network(net, name, op) {}

    const char* getOpType() const override;
    OP_OpTypeId getOpTypeID() const override { return getOperator()->getTable()->getOpTypeID(); }
};

template <typename Base>
OP_Node* makeNode(OP_Network* net, const char* name, OP_Operator* op)
{
    return new AssetNode<Base>(net, name, op);
}

// --- tables -----------------------------------------------------------------------------------------------------

OP_Operator* makeVopType(const OP_OTLDefinition& definition, unsigned flags)
{
    return new AssetOperator<VOP_Operator>(definition.getName(), definition.getLabel(), makeSubnetVop,
                                           nullptr, definition.getMinInputs(), definition.getMaxInputs(),
                                           definition.getExtra(), nullptr, flags, VOP_VARIABLE_INOUT_MAX);
}

OP_Operator* makeShopType(const OP_OTLDefinition& definition, unsigned flags)
{
    return new AssetOperator<SHOP_Operator>(definition.getName(), definition.getLabel(), makeNode<SHOP_Node>,
                                            nullptr, definition.getMinInputs(), definition.getMaxInputs(),
                                            nullptr, flags);
}

OP_Operator* makePlainType(const OP_OTLDefinition& definition, unsigned flags)
{
    return new AssetOperator<OP_Operator>(definition.getName(), definition.getLabel(), makeNode<PlainNode>,
                                          nullptr, definition.getMinInputs(), definition.getMaxInputs(),
                                          nullptr, flags);
}

struct TableRow
{
    const char* table;
    const char* opType;
    OP_Operator* (*make)(const OP_OTLDefinition& definition, unsigned flags);
};

const TableRow table_rows[] = {
    {VOP_TABLE_NAME, VOP_OPTYPE_NAME, makeVopType},
    {SHOP_TABLE_NAME, SHOP_OPTYPE_NAME, makeShopType},
    {OBJ_TABLE_NAME, "OBJ", makePlainType},
    {ROP_TABLE_NAME, "ROP", makePlainType},
};

const TableRow* findRow(const std::string& table)
{
    for (const TableRow& row : table_rows)
        if (table == row.table)
            return &row;
    return nullptr;
}

const char* PlainNode::getOpType() const
{
    const TableRow* row = findRow(getOperator()->getTable()->getName().toStdString());
    return row ? row->opType : "";
}

} // namespace

bool canMakeAssets(const std::string& table) { return findRow(table) != nullptr; }

OP_Operator* makeAssetOperator(const std::shared_ptr<OP_OTLLibrary>& library, int index)
{
    const OP_OTLDefinition& definition = library->getDefinition(index);
    const TableRow* row = findRow(definition.getTable().toStdString());
    OP_Operator* op = row->make(definition, definition.isSubnet() ? OP_FLAG_NETWORK : 0);
    op->setOpTabSubMenuPath(sub_menu);
    op->setOTLLibrary(library, index);
    return op;
}

const DialogScript* assetScriptOf(const OP_Operator* op)
{
    const auto* asset = dynamic_cast<const AssetType*>(op);
    return asset ? &asset->script() : nullptr;
}

} // namespace standin
