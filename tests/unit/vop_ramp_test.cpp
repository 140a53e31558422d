#include "sent_records.h"
#include "standin_session.h"

#include "vop_ramp.h"

#include <PRM/PRM_Parm.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Node.h>

#include <CH/CH_Manager.h>

#include <ostream>
#include <random>

namespace
{

VOP_Node& newRamp(StandinSession& session, const std::string& type)
{
    session.registerAll();
    return *session.container().createNode(type.c_str())->castToVOPNode();
}

/// Opens what only the host asks.
struct OpenRamp : zelk::shop::VOP_KorvanRamp
{
    using VOP_KorvanRamp::updateParmsFlags;
};

bool updateFlagsOf(VOP_Node& ramp)
{
    return (static_cast<zelk::shop::VOP_KorvanRamp&>(ramp).*&OpenRamp::updateParmsFlags)();
}

void setKeyCount(OP_Node& ramp, int count) { ramp.setInt("ramp", 0, 0, count); }

int channelIndex(const OP_Node& node, const char* token) { return node.getParmIndex(token); }

/// A node with an output to wire from.
OP_Node& newSource(OP_Node& sibling) { return *sibling.getParent()->createNode("korvan::ramp_float"); }

std::vector<float> floats(const zelk::ipr::DeltaParm& parm)
{
    const KtArray& array = *parm.value.array;
    const int components = array.type == KR_TYPE_RGB ? 3 : 1;
    const float* data = static_cast<const float*>(array.data);
    return std::vector<float>(data, data + array.nelements * components);
}

std::vector<std::int32_t> ints(const zelk::ipr::DeltaParm& parm)
{
    const KtArray& array = *parm.value.array;
    const std::int32_t* data = static_cast<const std::int32_t*>(array.data);
    return std::vector<std::int32_t>(data, data + array.nelements);
}

} // namespace

/// What a float and a colour ramp differ in.
struct RampCase
{
    const char* type;
    const char* entryName;
    const char* valueParm; ///< of the first key
    const char* valueName;
    const char* valueLabel;
    int valueType;
    const char* valueKey;
    int elementType;
    std::vector<float> newValues; ///< of a new ramp's two keys
    Names outputs;
    std::vector<int> outputTypes;
};

void PrintTo(const RampCase& c, std::ostream* out) { *out << c.type; }

class RampNode : public ::testing::TestWithParam<RampCase>
{
};

INSTANTIATE_TEST_SUITE_P(Kinds, RampNode,
                         ::testing::Values(RampCase{"korvan::ramp_float",
                                                    "zelk__ramp_float",
                                                    "ramp1value",
                                                    "value1",
                                                    "1 : Value",
                                                    3,
                                                    "value",
                                                    KR_TYPE_FLOAT,
                                                    {0, 1},
                                                    {"float"},
                                                    {3}},
                                           RampCase{"korvan::ramp_rgb",
                                                    "zelk__ramp_rgb",
                                                    "ramp1c",
                                                    "color1",
                                                    "1 : Color",
                                                    2,
                                                    "color",
                                                    KR_TYPE_RGB,
                                                    {0, 0, 0, 1, 1, 1},
                                                    {"rgb", "r", "g", "b"},
                                                    {2, 3, 3, 3}}),
                         [](const ::testing::TestParamInfo<RampCase>& info)
                         { return std::string(info.param.type + sizeof("korvan::ramp_") - 1); });

TEST_P(RampNode, StartsWithTwoKeysSevenInputsAndTheCustomPattern)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    UT_String pattern;
    ramp.evalString(pattern, "type", 0, 0);
    EXPECT_EQ(ramp.evalInt("ramp", 0, 0), 2);
    EXPECT_EQ(ramp.getNumVisibleInputs(), 7u);
    EXPECT_STREQ(pattern, "custom");
    EXPECT_EQ(ramp.evalFloat("input", 0, 0), 0);
    EXPECT_EQ(channelIndex(ramp, "input"), 0);
    EXPECT_EQ(channelIndex(ramp, "type"), 1);
    EXPECT_EQ(channelIndex(ramp, "ramp"), 2);
    EXPECT_EQ(channelIndex(ramp, GetParam().valueParm), 4);
}

TEST_P(RampNode, HasAParameterForItsInputItsPatternAndItsKeys)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    const PRM_Template& input = *ramp.getParm(0).getTemplatePtr();
    const PRM_Template& pattern = *ramp.getParm(1).getTemplatePtr();
    const PRM_Template& keys = *ramp.getParm(2).getTemplatePtr();
    EXPECT_TRUE(input.getType() == PRM_FLT_J);
    EXPECT_EQ(input.getFactoryDefaults(), nullptr);
    EXPECT_EQ(input.getChoiceListPtr(), nullptr);
    EXPECT_TRUE(pattern.getType() == PRM_STRING);
    EXPECT_EQ(keys.getMultiType(),
              GetParam().elementType == KR_TYPE_RGB ? PRM_MULTITYPE_RAMP_RGB : PRM_MULTITYPE_RAMP_FLT);
    EXPECT_EQ(keys.getMultiParmTemplate(), nullptr);
    EXPECT_EQ((Names{input.getLabel(), pattern.getLabel(), keys.getLabel()}),
              (Names{"Input", "Pattern", "Ramp"}));
    for (const PRM_Template* tmpl : {&input, &pattern})
    {
        EXPECT_EQ(tmpl->getVectorSize(), 1);
        EXPECT_EQ(tmpl->getParmGroup(), 1);
    }
}

TEST_P(RampNode, OffersItsPatternsByToken)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    const PRM_Parm& type = ramp.getParm("type");
    const PRM_ChoiceList* menu = type.getTemplatePtr()->getChoiceListPtr();
    const PRM_Name* items = nullptr;
    menu->getChoiceNames(items, &ramp, nullptr, &type);
    Names tokens, labels;
    for (; items->getToken() && *items->getToken(); ++items)
    {
        tokens.push_back(items->getToken());
        labels.push_back(items->getLabel());
    }
    EXPECT_EQ(menu->getType(), 0x1001);
    EXPECT_EQ(tokens, (Names{"custom", "u", "v", "diagonal", "radial", "circular", "box"}));
    EXPECT_EQ(labels, (Names{"Custom", "U", "V", "Diagonal", "Radial", "Circular", "Box"}));
}

TEST_P(RampNode, NamesLabelsAndTypesThreeInputsOfEachKey)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    Names names, labels;
    std::vector<int> types;
    for (int i = 0; i < 5; ++i)
    {
        UT_String name;
        ramp.getInputName(name, i);
        names.push_back(name.buffer());
        labels.push_back(ramp.inputLabel(static_cast<unsigned>(i)));
        types.push_back(ramp.getInputType(i));
    }
    EXPECT_EQ(names, (Names{"input", "position1", GetParam().valueName, "interp1", "position2"}));
    EXPECT_EQ(labels,
              (Names{"Input", "1 : Position", GetParam().valueLabel, "1 : Interpolation", "2 : Position"}));
    EXPECT_EQ(types, (std::vector<int>{3, 3, GetParam().valueType, 4, 3}));
}

TEST_P(RampNode, OverwritesALabelWithTheNext)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    const char* label = ramp.inputLabel(0);
    ramp.inputLabel(1);
    EXPECT_STREQ(label, "1 : Position");
}

TEST_P(RampNode, CallsAnInputBeforeTheFirstAnError)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    UT_String name;
    ramp.getInputName(name, -1);
    EXPECT_STREQ(name, "<error>");
    EXPECT_EQ(ramp.getInputType(-1), VOP_TYPE_UNDEF);
}

TEST_P(RampNode, AnswersTheFirstInputToEveryName)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    EXPECT_EQ(ramp.getInputFromName("position1"), 0);
    EXPECT_EQ(ramp.getInputFromName("nonsense"), 0);
}

TEST_P(RampNode, AllowsNoTypesBesidesAnInputsOwn)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    VOP_VopTypeArray types;
    ramp.getAllowedInputTypes(0, types);
    ramp.getAllowedInputTypes(2, types);
    EXPECT_EQ(types.entries(), 0);
}

TEST_P(RampNode, HasItsOutputs)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    Names labels, names;
    std::vector<int> types;
    for (unsigned i = 0; i < ramp.getNumVisibleOutputs(); ++i)
    {
        UT_String name;
        ramp.getOutputName(name, static_cast<int>(i));
        names.push_back(name.buffer());
        labels.push_back(ramp.outputLabel(i));
        types.push_back(ramp.getOutputType(static_cast<int>(i)));
    }
    EXPECT_EQ(labels, GetParam().outputs);
    EXPECT_EQ(names, GetParam().outputs);
    EXPECT_EQ(types, GetParam().outputTypes);
    EXPECT_EQ(ramp.outputLabel(static_cast<unsigned>(types.size())), nullptr);
    EXPECT_EQ(ramp.getOutputType(static_cast<int>(types.size())), VOP_TYPE_UNDEF);
    EXPECT_EQ(ramp.getOutputType(-1), VOP_TYPE_UNDEF);
}

TEST_P(RampNode, KeepsTheMiddleOfItsTileInPlaceWhenItIsCreated)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    ramp.setXYWithBoundsChecks(3, 4);
    const fpreal tall = ramp.getH();
    ASSERT_TRUE(ramp.runCreateScript());

    EXPECT_EQ(ramp.getExtraFlag('M'), 1);
    ASSERT_LT(ramp.getH(), tall);
    EXPECT_EQ(ramp.getX(), 3);
    EXPECT_DOUBLE_EQ(ramp.getY(), 4 - 0.5 * (tall - ramp.getH()));
}

TEST_P(RampNode, SendsItsInputAlone)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    SentRecords sent;
    ramp.setFloat("input", 0, 0, 0.1);

    ASSERT_EQ(sent.count(), 1u);
    const zelk::ipr::Delta& delta = sent.at(0);
    UT_String path;
    ramp.getFullPath(path);
    EXPECT_EQ(delta.nodePath, path.buffer());
    EXPECT_EQ(delta.entryName, GetParam().entryName);
    ASSERT_EQ(delta.size(), 1u);
    EXPECT_EQ(delta.at("input").type, KR_TYPE_FLOAT);
    EXPECT_EQ(delta.at("input").value.flt, 0.1f);
}

TEST_P(RampNode, SendsItsPatternAsToken)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    SentRecords sent;
    ramp.setString("radial", CH_STRING_LITERAL, "type", 0, 0);

    ASSERT_EQ(sent.count(), 1u);
    ASSERT_EQ(sent.at(0).size(), 1u);
    EXPECT_EQ(sent.at(0).at("type").type, KR_TYPE_ENUM);
    EXPECT_EQ(sent.at(0).at("type").str, "radial");
}

TEST_P(RampNode, SendsAllKeysWhenOneIsEdited)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    SentRecords sent;
    ramp.setInt("ramp2interp", 0, 0, 5);

    ASSERT_EQ(sent.count(), 1u);
    const zelk::ipr::Delta& delta = sent.at(0);
    EXPECT_EQ(delta.entryName, GetParam().entryName);
    ASSERT_EQ(delta.size(), 3u);
    for (const auto& entry : delta)
        EXPECT_EQ(entry.second.type, KR_TYPE_ARRAY) << entry.first;
    EXPECT_EQ(floats(delta.at("position")), (std::vector<float>{0, 1}));
    EXPECT_EQ(floats(delta.at(GetParam().valueKey)), GetParam().newValues);
    EXPECT_EQ(ints(delta.at("interpolation")), (std::vector<std::int32_t>{1, 5}))
        << "the host's number, unchanged";
    EXPECT_EQ(delta.at("position").value.array->type, KR_TYPE_FLOAT);
    EXPECT_EQ(delta.at(GetParam().valueKey).value.array->type, GetParam().elementType);
    EXPECT_EQ(delta.at("interpolation").value.array->type, KR_TYPE_INT);
    EXPECT_EQ(delta.at("position").value.array->nkeys, 1);
}

TEST_P(RampNode, SendsKeysInTheirOrderAndNotByPosition)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    SentRecords sent;
    ramp.setFloat("ramp1pos", 0, 0, 0.75);
    sent.clear();
    ramp.setFloat("ramp2pos", 0, 0, 0.1);
    ASSERT_EQ(sent.count(), 1u);
    EXPECT_EQ(floats(sent.at(0).at("position")), (std::vector<float>{0.75f, 0.1f}));
}

TEST_P(RampNode, SendsKeysAsTheyAreAtTheCurrentTime)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    ramp.getParm("ramp1pos").setExpression(0, "$T", CH_OLD_EXPR_LANGUAGE, true, 0);
    ramp.getParm("ramp1interp").setExpression(0, "4 * $T", CH_OLD_EXPR_LANGUAGE, true, 0);
    CHgetManager()->setEvalTime(0.5);
    SentRecords sent;
    ramp.setFloat("ramp2pos", 0, 0, 1);
    ASSERT_EQ(sent.count(), 1u);
    EXPECT_EQ(floats(sent.at(0).at("position")), (std::vector<float>{0.5f, 1}));
    EXPECT_EQ(ints(sent.at(0).at("interpolation")), (std::vector<std::int32_t>{2, 1}));
}

TEST_P(RampNode, SendsItsInputAndPatternAsTheyAreAtTheCurrentTime)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    CHgetManager()->setEvalTime(1);
    SentRecords sent;
    ramp.setString("$T", CH_OLD_EXPRESSION, "input", 0, 0);
    ramp.setString("'t' + str(int(hou.time()))", CH_PYTHON_EXPRESSION, "type", 0, 0);
    ASSERT_EQ(sent.count(), 2u);
    EXPECT_EQ(sent.at(0).at("input").value.flt, 1);
    EXPECT_EQ(sent.at(1).at("type").str, "t1");
}

TEST(RampColour, IsSentWithItsComponentsInTheirOrder)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_rgb");
    SentRecords sent;
    for (int c = 0; c < 3; ++c)
        ramp.setFloat("ramp2c", c, 0, 0.25 * (c + 1));
    ASSERT_EQ(sent.count(), 3u);
    EXPECT_EQ(floats(sent.at(2).at("color")), (std::vector<float>{0, 0, 0, 0.25f, 0.5f, 0.75f}));
}

class RampKeyCount : public ::testing::TestWithParam<std::tuple<std::string, int>>
{
};

INSTANTIATE_TEST_SUITE_P(Counts, RampKeyCount,
                         ::testing::Combine(::testing::Values(std::string("korvan::ramp_float"),
                                                              std::string("korvan::ramp_rgb")),
                                            ::testing::Values(0, 1, 2, 682, 5000)));

TEST_P(RampKeyCount, IsThatOfAllThreeArraysAndOfTheInputs)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, std::get<0>(GetParam()));
    const int count = std::get<1>(GetParam());
    setKeyCount(ramp, count == 2 ? 3 : 2);
    SentRecords sent;
    setKeyCount(ramp, count);

    ASSERT_GE(sent.count(), 1u);
    const zelk::ipr::Delta& delta = sent.at(sent.count() - 1);
    ASSERT_EQ(delta.size(), 3u);
    for (const auto& entry : delta)
        EXPECT_EQ(entry.second.value.array->nelements, static_cast<unsigned>(count)) << entry.first;
    EXPECT_EQ(ramp.getNumVisibleInputs(), static_cast<unsigned>(3 * count + 1));
}

TEST(RampInputs, OfTheLastKeyCanBeWiredUpTo682Keys)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    setKeyCount(ramp, 683);
    OP_Node& source = newSource(ramp);
    EXPECT_EQ(ramp.setInput(3 * 682, &source), UT_ERROR_NONE);
    EXPECT_EQ(ramp.setInput(3 * 683, &source), UT_ERROR_ABORT) << "the host takes 2048 inputs";
}

TEST(RampInputs, OfRemovedKeysAreDisconnectedAtTheNextChange)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    setKeyCount(ramp, 4);
    OP_Node& source = newSource(ramp);
    for (unsigned i : {0u, 6u, 7u, 12u})
        ramp.setInput(i, &source);
    setKeyCount(ramp, 2);

    EXPECT_EQ(ramp.getInput(0), &source);
    EXPECT_EQ(ramp.getInput(6), &source);
    EXPECT_EQ(ramp.getInput(7), nullptr);
    EXPECT_EQ(ramp.getInput(12), nullptr);
    EXPECT_EQ(source.nOutputs(-1), 2u);
}

TEST(RampInputs, OfRemovedKeysAreDisconnectedByAnEventForManyParametersToo)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    OP_Node& source = newSource(ramp);
    ramp.setInput(4, &source);
    ramp.setParmEvents(false);
    setKeyCount(ramp, 1);
    ramp.setParmEvents(true);
    SentRecords sent;
    const int redraws = ramp.getUIChangeCount();
    ramp.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(-1));

    EXPECT_EQ(ramp.getInput(4), nullptr);
    EXPECT_GT(ramp.getUIChangeCount(), redraws);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(RampEdit, OfAParameterBeyondTheListSendsTheWholeRamp)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    SentRecords sent;
    ramp.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(1000));
    ASSERT_EQ(sent.count(), 1u);
    EXPECT_EQ(sent.at(0).size(), 3u);
}

TEST(RampEdit, EndsWhenAnExpressionDeletesTheNode)
{
    StandinSession session;
    session.registerAll();
    SentRecords sent;
    for (const char* parm : {"input", "type", "ramp1pos", "ramp2value", "ramp2interp"})
    {
        OP_Node& ramp = *session.container().createNode("korvan::ramp_float");
        const int id = ramp.getUniqueId();
        ramp.setString("hou.pwd().destroy() or 1", CH_PYTHON_EXPRESSION, parm, 0, 0);
        EXPECT_EQ(OP_Node::lookupNode(id), nullptr) << parm;
    }
    EXPECT_EQ(sent.count(), 0u);
}

TEST(RampEdit, IsNoBusinessOfOtherEvents)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    SentRecords sent;
    ramp.opChanged(OP_NAME_CHANGED, nullptr);
    ramp.opChanged(OP_INPUT_REWIRED, nullptr);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(RampEdit, EndsWhenItsRedrawDeletesTheNode)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    const int id = ramp.getUniqueId();
    ramp.addOpInterest(&session,
                       [](OP_Node* caller, void*, OP_EventType type, void*)
                       {
                           if (type == OP_UI_CHANGED)
                               caller->getParent()->destroyNode(caller);
                       });
    SentRecords sent;
    ramp.setFloat("input", 0, 0, 1);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(RampEdit, EndsWhenAWireOfARemovedKeyTakesTheNodeWithIt)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    OP_Node& source = newSource(ramp);
    for (unsigned i = 1; i < 7; ++i)
        ramp.setInput(i, &source);
    const int id = ramp.getUniqueId();
    ramp.addOpInterest(&session,
                       [](OP_Node* caller, void*, OP_EventType type, void*)
                       {
                           if (type == OP_INPUT_REWIRED)
                               caller->getParent()->destroyNode(caller);
                       });
    SentRecords sent;
    setKeyCount(ramp, 0);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(RampEnabling, DisablesTheInputParameterWhileItsInputIsWired)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    ramp.setInput(0, &newSource(ramp));
    ramp.refreshParms();
    EXPECT_FALSE(ramp.getParm("input").getEnableState());
    ramp.setInput(0, nullptr);
    ramp.refreshParms();
    EXPECT_TRUE(ramp.getParm("input").getEnableState());
}

TEST(RampEnabling, GoesByTheInputBeforeTheParametersIndex)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    OP_Node& source = newSource(ramp);
    for (int i = 3; i < 8; ++i)
    {
        const unsigned input = static_cast<unsigned>(i - 1);
        ramp.setInput(input, &source);
        ramp.refreshParms();
        for (int other = 3; other < 9; ++other)
            EXPECT_EQ(ramp.getParm(other).getEnableState(), other != i)
                << "parameter " << other << ", input " << input;
        ramp.setInput(input, nullptr);
    }
}

TEST(RampEnabling, LeavesTheLastPerKeyParameterAlone)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    OP_Node& source = newSource(ramp);
    for (unsigned i = 0; i < ramp.getNumVisibleInputs(); ++i)
        ramp.setInput(i, &source);
    ramp.refreshParms();
    EXPECT_TRUE(ramp.getParm(8).getEnableState());
    EXPECT_FALSE(ramp.getParm(7).getEnableState());
    ramp.enableParm(8, false);
    updateFlagsOf(ramp);
    EXPECT_FALSE(ramp.getParm(8).getEnableState()) << "no input decides about it";
}

TEST(RampEnabling, SaysWhetherAStateChanged)
{
    StandinSession session;
    VOP_Node& ramp = newRamp(session, "korvan::ramp_float");
    updateFlagsOf(ramp);
    EXPECT_FALSE(updateFlagsOf(ramp));
    for (int i : {0, 3, 7})
    {
        ramp.enableParm(i, false);
        EXPECT_TRUE(updateFlagsOf(ramp)) << i;
        EXPECT_FALSE(updateFlagsOf(ramp)) << i;
    }
}

TEST_P(RampNode, KeepsItsArraysAsLongAsItsKeysThroughAThousandRandomEdits)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    StandinSession session;
    VOP_Node& ramp = newRamp(session, GetParam().type);
    OP_Node& source = newSource(ramp);
    SentRecords sent;
    for (int edit = 0; edit < 1000; ++edit)
    {
        PRM_Parm& keys = ramp.getParm("ramp");
        const int count = keys.getMultiParmNumItems();
        const int place = count ? static_cast<int>(random() % static_cast<unsigned>(count)) : 0;
        sent.clear();
        switch (random() % 4)
        {
        case 0:
            keys.insertMultiParmItem(place);
            break;
        case 1:
            keys.removeMultiParmItem(place);
            break;
        case 2:
            ramp.setFloat(("ramp" + std::to_string(place + 1) + "pos").c_str(), 0, 0,
                          (random() % 100) * 0.01);
            break;
        default:
            ramp.setInput(random() % ramp.getNumVisibleInputs(), random() % 2 ? &source : nullptr);
            break;
        }
        const std::size_t present = static_cast<std::size_t>(keys.getMultiParmNumItems());
        for (std::size_t i = 0; i < sent.count(); ++i)
        {
            const zelk::ipr::Delta& delta = sent.at(i);
            ASSERT_EQ(delta.size(), 3u);
            for (const auto& entry : delta)
                ASSERT_EQ(entry.second.value.array->nelements, present) << entry.first;
        }
        if (sent.count() == 0)
            continue;
        const std::vector<float> positions = floats(sent.at(sent.count() - 1).at("position"));
        for (std::size_t key = 0; key < present; ++key)
            ASSERT_EQ(positions[key], static_cast<float>(ramp.evalFloat(
                                          ("ramp" + std::to_string(key + 1) + "pos").c_str(), 0, 0)));
        ASSERT_LE(ramp.nInputs(), 3 * present + 1);
    }
}
