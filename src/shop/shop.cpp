#include "shop.h"

#include "shop_contents.h"
#include "utils_host_memory.h"
#include "vop_outputs.h"
#include "vop_shaders.h"
#include "vop_utility.h"

#include <FS/FS_IndexFile.h>
#include <OP/OP_OTLLibrary.h>
#include <OP/OP_OperatorTable.h>
#include <SHOP/SHOP_Operator.h>
#include <SHOP/SHOP_OperatorInfo.h>
#include <UT/UT_String.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace
{
/// Release of the toolkit that the sources are written for.
const char* const toolkit_version = "15.5";

/// That release's compiler: GCC 4.8, as major * 100 + minor. The host refuses any other tag.
const unsigned toolkit_compiler = 408;
} // namespace

void HoudiniDSOVersion(const char** version) { *version = toolkit_version; }

unsigned HoudiniCompilerVersion() { return toolkit_compiler; }

extern "C" SYS_VISIBILITY_EXPORT void newVopOperator(OP_OperatorTable* table)
{
    // Outputs first: a new container makes a material output.
    zelk::shop::registerOutputs(table);
    zelk::shop::registerShaders(table);
    zelk::shop::registerUtilities(table);
}

extern "C" SYS_VISIBILITY_EXPORT void newShopOperator(OP_OperatorTable* table)
{
    using zelk::shop::SHOP_KorvanMaterial;
    table->addOperator(zelk::shop::leakForHost<SHOP_Operator>(
                           "korvan_vopnet", "Korvan Shader Network", SHOP_KorvanMaterial::myConstructor,
                           SHOP_KorvanMaterial::myTemplateList, 0u, 0u, nullptr,
                           static_cast<unsigned>(OP_FLAG_MANAGER), static_cast<int>(SHOP_AUTOADD_ANY)),
                       nullptr);
}

namespace zelk
{
namespace shop
{

PRM_Template SHOP_KorvanMaterial::myTemplateList[] = {PRM_Template()};

namespace
{

bool isOurs(OP_Operator* op)
{
    return dynamic_cast<VOP_KorvanOperator*>(op) || dynamic_cast<VOP_KorvanOutputOperator*>(op) ||
           dynamic_cast<VOP_KorvanUtilityOperator*>(op);
}

/// Whether an asset file belongs to the host: it lies under the host's directory, which the variable HH names. Deliberate:
/// plain text, so an empty variable makes every file the host's; a variable that is not set makes none.
bool isHostsOwn(OP_OTLLibrary& library)
{
    const char* host = std::getenv("HH");
    const auto& source = library.getSource(); // the text class differs from release to release
    return host &&
           std::string(source.buffer() ? source.buffer() : "").compare(0, std::strlen(host), host) == 0;
}

} // namespace

bool OP_KorvanMaterialOperatorFilter::allowOperatorAsChild(OP_Operator* op)
{
    if (!op)
        return false;
    if (isOurs(op))
        return true;
    const UT_String name(op->getName());
    if (name == "subnet" || name == "null")
        return true;

    OP_OTLLibrary* library = op->getOTLLibrary();
    if (library && isHostsOwn(*library))
        return false;
    const FS_IndexFile* asset = op->getOTLIndexFile();
    return asset && isKorvanAsset(*asset);
}

OP_Node* SHOP_KorvanMaterial::myConstructor(OP_Network* net, const char* name, OP_Operator* op)
{
    return new SHOP_KorvanMaterial(net, name, op);
}

SHOP_KorvanMaterial::SHOP_KorvanMaterial(OP_Network* net, const char* name, OP_Operator* op)
    : SHOP_Node(net, name, op, SHOP_SURFACE)
{
    setOperatorTable(createAndGetOperatorTable());
}

SHOP_KorvanMaterial::~SHOP_KorvanMaterial() {}

OP_OperatorTable* SHOP_KorvanMaterial::createAndGetOperatorTable()
{
    OP_OperatorTable* table = OP_Network::getOperatorTable(VOP_TABLE_NAME, nullptr);
    table->notifyUpdateTableSinksOfUpdate();
    return table;
}

bool SHOP_KorvanMaterial::runCreateScript()
{
    if (!SHOP_Node::runCreateScript())
        return false;
    OP_Node* output = createNode("korvan_material", nullptr, 1, 1, 1, nullptr, nullptr, false);
    if (!output || !output->runCreateScript())
        return false;
    output->moveToGoodPosition(true, true, true, true);
    return true;
}

const char* SHOP_KorvanMaterial::getChildType() const { return VOP_OPTYPE_NAME; }

OP_OpTypeId SHOP_KorvanMaterial::getChildTypeID() const { return VOP_OPTYPE_ID; }

OP_OperatorFilter* SHOP_KorvanMaterial::getOperatorFilter() { return &m_filter; }

} // namespace shop
} // namespace zelk
