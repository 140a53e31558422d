// Pins the values and member signatures of the operators' headers. Most of it is checked by the compiler.
#include <CMD/CMD_Manager.h>
#include <OP/OP_Director.h>
#include <OP/OP_OTLLibrary.h>
#include <OP/OP_OperatorTable.h>
#include <SHOP/SHOP_Node.h>
#include <VOP/VOP_Node.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

// --- values -----------------------------------------------------------------------------------------------------

static_assert(OP_CHILD_CREATED == 0 && OP_NODE_DELETED == 2 && OP_NAME_CHANGED == 10 &&
                  OP_INPUT_REWIRED == 11,
              "");
static_assert(OP_INPUT_CHANGED == 12 && OP_FLAG_CHANGED == 13 && OP_PARM_UICHANGED == 14 &&
                  OP_PARM_CHANGED == 15,
              "");
static_assert(OP_PARM_ANIMATED == 16 && OP_PARM_CHANNELS == 17 && OP_UI_CHANGED == 18 && OP_UI_MOVED == 22,
              "");

static_assert(OP_UICHANGE_ANY == 0 && OP_UICHANGE_CONNECTIONS == 10 && OP_UICHANGE_POSTIT == 13, "");
static_assert(OP_UICHANGE_OPTYPE_VOP == 11 << 8, "");
static_assert(OP_RENAME_NORMAL == 1 && OP_RENAME_NO_EVENTS == 2 && OP_RENAME_NUM_ACTIONS == 5, "");

static_assert(INVALID_OPTYPE_ID == -1 && OBJ_OPTYPE_ID == 0 && ROP_OPTYPE_ID == 6 && SHOP_OPTYPE_ID == 7, "");
static_assert(VOP_OPTYPE_ID == 10 && VOPNET_OPTYPE_ID == 11 && DOP_OPTYPE_ID == 12, "");

static_assert(OP_FLAG_NETWORK == 1 && OP_FLAG_GENERATOR == 2 && OP_FLAG_UNORDERED == 4 &&
                  OP_FLAG_SCRIPTDEF == 8,
              "");
static_assert(OP_FLAG_MANAGER == 0x10 && OP_FLAG_PRIMARYSUBNET == 0x20 && OP_FLAG_OUTPUT == 0x40, "");
static_assert(OP_MULTI_INPUT_MAX == 9999 && VOP_VARIABLE_INOUT_MAX == 2048 && UT_ERROR_NONE == 0, "");

static_assert(VOP_TYPE_UNDEF == 0 && VOP_TYPE_VECTOR4 == 1 && VOP_TYPE_VECTOR == 2 && VOP_TYPE_FLOAT == 3,
              "");
static_assert(VOP_TYPE_INTEGER == 4 && VOP_TYPE_STRING == 5 && VOP_TYPE_MATRIX4 == 7 && VOP_TYPE_VECTOR2 == 9,
              "");
static_assert(VOP_TYPE_CUSTOM == 11 && VOP_TYPE_STRUCT == 11 && VOP_TYPE_COLOR == 23 && VOP_TYPE_VOID == 28,
              "");
static_assert(VOP_SURFACE_SHADER == 31 && VOP_LIGHT_SHADER == 36 && VOP_LIGHT_FILTER_SHADER == 38, "");
static_assert(VOP_ATMOSPHERE_SHADER == 39 && VOP_LENS_SHADER == 40 && VOP_IMAGE3D_SHADER == 51, "");
static_assert(VOP_CVEX_SHADER == 56 && VOP_MATERIAL_SHADER == 63, "");

static_assert(int(SHOP_SURFACE) == int(VOP_SURFACE_SHADER) && int(SHOP_LENS) == int(VOP_LENS_SHADER), "");
static_assert(int(SHOP_IMAGE3D) == int(VOP_IMAGE3D_SHADER) && int(SHOP_MATERIAL) == int(VOP_MATERIAL_SHADER),
              "");
static_assert(SHOP_AUTOADD_NONE == 0 && SHOP_AUTOADD_STRING == 1 && SHOP_AUTOADD_ANY == 2, "");

static_assert(VOP_OPT_LOW_FLAG == 'L' && VOP_OPT_MEDIUM_FLAG == 'M' && VOP_OPT_HIGH_FLAG == 'H', "");

// --- signatures -------------------------------------------------------------------------------------------------

template <typename Wanted, Wanted member>
struct Has : std::true_type
{
};

static_assert(std::is_same<OP_Constructor, OP_Node* (*)(OP_Network*, const char*, OP_Operator*)>::value, "");
static_assert(std::is_same<OP_EventMethod, void (*)(OP_Node*, void*, OP_EventType, void*)>::value, "");
static_assert(std::is_same<VOP_VopTypeArray, UT_Array<VOP_Type>>::value, "");
static_assert(std::is_same<VOP_VopTypeInfoArray, UT_Array<VOP_TypeInfo>>::value, "");
static_assert(std::is_same<OP_NodeList, UT_ValArray<OP_Node*>>::value, "");
static_assert(std::is_same<OP_ERROR, UT_ErrorSeverity>::value, "");

static_assert(
    std::is_constructible<VOP_Operator, const char*, const char*, OP_Constructor, PRM_Template*, unsigned,
                          unsigned, const char*, CH_LocalVariable*, unsigned, unsigned>::value,
    "the form with ten arguments");
static_assert(std::is_constructible<SHOP_Operator, const char*, const char*, OP_Constructor, PRM_Template*,
                                    unsigned, unsigned, CH_LocalVariable*, unsigned, int>::value,
              "the form with nine arguments");
static_assert(
    std::is_constructible<OP_Operator, const char*, const char*, OP_Constructor, PRM_Template*, unsigned,
                          unsigned, CH_LocalVariable*, unsigned, const char**, int, const char*>::value,
    "");
static_assert(std::is_constructible<SHOP_Node, OP_Network*, const char*, OP_Operator*, SHOP_TYPE>::value, "");
static_assert(std::is_convertible<VOP_Type, VOP_TypeInfo>::value, "");

static_assert(std::is_base_of<OP_Parameters, OP_Node>::value &&
                  std::is_base_of<OP_NetworkBoxItem, OP_Node>::value,
              "");
static_assert(std::is_base_of<OP_Network, VOP_Node>::value && std::is_base_of<OP_Network, SHOP_Node>::value,
              "");
static_assert(std::is_base_of<CMD_Manager, OP_CommandManager>::value, "");
static_assert(std::is_base_of<OP_SpecificData, VOP_OperatorInfo>::value, "");
static_assert(std::is_base_of<OP_SpecificData, SHOP_OperatorInfo>::value, "");

static_assert(Has<bool (OP_Operator::*)(UT_String&), &OP_Operator::getOpHelpURL>::value, "");
static_assert(Has<bool (OP_Operator::*)(UT_String&), &OP_Operator::getOpTabSubMenuPath>::value, "");
static_assert(Has<const UT_String& (OP_Operator::*)() const, &OP_Operator::getName>::value, "");
static_assert(Has<unsigned (OP_Operator::*)(), &OP_Operator::maxOutputs>::value, "");
static_assert(Has<OP_OTLLibrary* (OP_Operator::*)(), &OP_Operator::getOTLLibrary>::value, "");
static_assert(Has<FS_IndexFile* (OP_Operator::*)(), &OP_Operator::getOTLIndexFile>::value, "");

static_assert(
    Has<bool (OP_OperatorTable::*)(OP_Operator*, std::ostream*), &OP_OperatorTable::addOperator>::value, "");
static_assert(
    Has<OP_Operator* (OP_OperatorTable::*)(const char*) const, &OP_OperatorTable::getOperator>::value, "");
static_assert(Has<void (OP_OperatorTable::*)(), &OP_OperatorTable::notifyUpdateTableSinksOfUpdate>::value,
              "");

static_assert(Has<OP_OperatorTable* (*)(const char*, const char*), &OP_Network::getOperatorTable>::value, "");
static_assert(Has<OP_OperatorTable* (OP_Network::*)() const, &OP_Network::getOperatorTable>::value, "");
static_assert(Has<OP_OperatorFilter* (OP_Network::*)(), &OP_Network::getOperatorFilter>::value, "");
static_assert(Has<const char* (OP_Network::*)() const, &OP_Network::getChildType>::value, "");
static_assert(Has<OP_OpTypeId (OP_Network::*)() const, &OP_Network::getChildTypeID>::value, "");
static_assert(Has<OP_Node* (OP_Network::*)(const char*, const char*, int, int, int, int*, char*, bool),
                  &OP_Network::createNode>::value,
              "");
static_assert(
    Has<int (OP_Network::*)(OP_Node*, const char*, OP_RenameAction), &OP_Network::renameNode>::value, "");
static_assert(Has<int (OP_Network::*)(const char*, UT_ValArray<OP_Node*>&), &OP_Network::getOpsByName>::value,
              "");
static_assert(Has<bool (OP_OperatorFilter::*)(OP_Operator*), &OP_OperatorFilter::allowOperatorAsChild>::value,
              "");

static_assert(Has<OP_ERROR (OP_Node::*)(unsigned, OP_Node*, unsigned), &OP_Node::setInput>::value, "");
static_assert(Has<unsigned (OP_Node::*)(int) const, &OP_Node::nOutputs>::value, "");
static_assert(Has<OP_Node* (OP_Node::*)(unsigned, int) const, &OP_Node::getOutput>::value, "");
static_assert(Has<unsigned (OP_Node::*)() const, &OP_Node::getInputsArraySize>::value, "");
static_assert(Has<void (OP_Node::*)(void*, OP_EventMethod), &OP_Node::addOpInterest>::value, "");
static_assert(Has<void (OP_Node::*)(void*, OP_EventMethod), &OP_Node::removeOpInterest>::value, "");
static_assert(Has<int (OP_Node::*)(void*, OP_EventMethod) const, &OP_Node::hasOpInterest>::value, "");
static_assert(Has<void (OP_Node::*)(OP_EventType, void*), &OP_Node::opChanged>::value, "");
static_assert(Has<void (OP_Node::*)(OP_UIChangeType), &OP_Node::triggerUIChanged>::value, "");
static_assert(Has<bool (OP_Node::*)(), &OP_Node::runCreateScript>::value, "");
static_assert(Has<int (OP_Node::*)(char, int), &OP_Node::setExtraFlag>::value, "");
static_assert(Has<bool (OP_Node::*)(fpreal, fpreal), &OP_Node::setXYWithBoundsChecks>::value, "");
static_assert(Has<void (OP_Node::*)(bool, bool, bool, bool), &OP_Node::moveToGoodPosition>::value, "");
static_assert(Has<void (OP_Node::*)(UT_String&) const, &OP_Node::getDescriptiveName>::value, "");
static_assert(Has<const char* (OP_Node::*)(unsigned) const, &OP_Node::inputLabel>::value, "");

static_assert(Has<int (VOP_Node::*)(const UT_String&) const, &VOP_Node::getOutputFromName>::value, "");
static_assert(Has<bool (VOP_Node::*)(int, bool), &VOP_Node::isConnected>::value, "");
static_assert(Has<VOP_Node* (VOP_Node::*)(int), &VOP_Node::findSimpleInput>::value, "");
static_assert(Has<VOP_Type (VOP_Node::*)(int), &VOP_Node::getInputType>::value, "");

static_assert(Has<OP_Network* (OP_Director::*)(const char*) const, &OP_Director::getManager>::value, "");
static_assert(Has<void (OP_Director::*)(int, OP_Node*), &OP_Director::pushCwd>::value, "");
static_assert(Has<void (OP_Director::*)(int), &OP_Director::popCwd>::value, "");
static_assert(Has<void (CMD_Manager::*)(const char*, bool), &CMD_Manager::sendInput>::value, "");

/// A class as plug-ins write them: it compiles only if every override fits its base, const and all.
class Probe : public VOP_Node
{
public:
    Probe() : VOP_Node(nullptr, "probe", nullptr) {}
    ~Probe() override {}

    const char* inputLabel(unsigned) const override { return "in"; }
    const char* outputLabel(unsigned) const override { return "out"; }
    unsigned getNumVisibleInputs() const override { return 1; }
    unsigned getNumVisibleOutputs() const override { return 1; }
    unsigned orderedInputs() const override { return 1; }
    unsigned maxOutputs() const override { return 1; }
    bool runCreateScript() override { return true; }
    int getOutputFromName(const UT_String&) const override { return 0; }
    VOP_Type getShaderType() const override { return VOP_SURFACE_SHADER; }
    void getDescriptiveName(UT_String&) const override {}

    using VOP_Node::getAllowedInputTypeInfosSubclass;
    using VOP_Node::getInputTypeInfoSubclass;

protected:
    bool updateParmsFlags() override { return false; }
    void getInputNameSubclass(UT_String& in, int) const override { in = "in"; }
    int getInputFromNameSubclass(const UT_String&) const override { return 0; }
    VOP_Type getInputTypeSubclass(int) override { return VOP_TYPE_COLOR; }
    void getAllowedInputTypesSubclass(unsigned, VOP_VopTypeArray& types) override
    {
        types.append(VOP_TYPE_NORMAL);
    }
    void getOutputNameSubclass(UT_String& out, int) const override { out = "out"; }
    VOP_Type getOutputTypeSubclass(int) override { return VOP_TYPE_POINT; }
};

TEST(OperatorHeaders, LetTheNewTypeFormsAskTheOldOnes)
{
    Probe probe;
    VOP_TypeInfo info;
    probe.getInputTypeInfoSubclass(info, 0);
    EXPECT_EQ(info.getType(), VOP_TYPE_COLOR);
    VOP_VopTypeInfoArray infos;
    probe.getAllowedInputTypeInfosSubclass(0, infos);
    ASSERT_EQ(infos.entries(), 1);
    EXPECT_EQ(infos(0), VOP_TypeInfo(VOP_TYPE_NORMAL));
    EXPECT_EQ(probe.getOutputType(0), VOP_TYPE_POINT);
}

TEST(OperatorHeaders, NameTheTables)
{
    EXPECT_STREQ(VOP_TABLE_NAME, "Vop");
    EXPECT_STREQ(VOP_OPTYPE_NAME, "VOP");
    EXPECT_STREQ(SHOP_TABLE_NAME, "Shop");
    EXPECT_STREQ(SHOP_OPTYPE_NAME, "SHOP");
    EXPECT_STREQ(OBJ_TABLE_NAME, "Object");
    EXPECT_STREQ(ROP_TABLE_NAME, "Driver");
}

TEST(OperatorHeaders, CastNothingToNothing)
{
    EXPECT_EQ(CAST_VOPNODE(static_cast<OP_Node*>(nullptr)), nullptr);
    EXPECT_EQ(CAST_SHOPNODE(static_cast<OP_Node*>(nullptr)), nullptr);
}

} // namespace
