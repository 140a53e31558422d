#include "edited_nodes.h"

#include <CH/CH_Manager.h>
#include <UT/UT_String.h>
#include <UT/UT_UndoManager.h>

#include <ostream>

namespace
{

/// The one entry of the only record that was sent.
zelk::ipr::DeltaParm onlyEntry(SentRecords& sent, const char* parm)
{
    EXPECT_EQ(sent.count(), 1u);
    const zelk::ipr::Delta& delta = sent.at(0);
    EXPECT_EQ(delta.size(), 1u);
    EXPECT_EQ(delta.count(parm), 1u);
    return delta.count(parm) ? delta.at(parm) : zelk::ipr::DeltaParm();
}

/// A shader "s" with one parameter "p" of a type.
OP_Node& nodeWithParm(StandinSession& session, int type)
{
    const KtParamValue zero = KtParamValue();
    session.renderer.shader("zelk__s").parm("p", type, zero);
    session.registerAll();
    return newNode(session.container(), "korvan::s");
}

} // namespace

TEST(EditRecord, NamesTheNodeAndTheRenderersEntry)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    SentRecords sent;
    node.setFloat("p", 0, 0, 0.1);

    ASSERT_EQ(sent.count(), 1u);
    UT_String path;
    node.getFullPath(path);
    EXPECT_EQ(sent.at(0).nodePath, path.buffer());
    EXPECT_EQ(sent.at(0).entryName, "zelk__s");
    EXPECT_EQ(onlyEntry(sent, "p").type, KR_TYPE_FLOAT);
    EXPECT_EQ(onlyEntry(sent, "p").value.flt, 0.1f) << "narrowed to single precision";
}

class IntegerRecord : public ::testing::TestWithParam<int>
{
};

TEST_P(IntegerRecord, HoldsASignedNumber)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, GetParam());
    SentRecords sent;
    node.setInt("p", 0, 0, -3);

    EXPECT_EQ(onlyEntry(sent, "p").type, GetParam());
    EXPECT_EQ(onlyEntry(sent, "p").value.int_, -3);
}
INSTANTIATE_TEST_SUITE_P(Types, IntegerRecord, ::testing::Values(KR_TYPE_BYTE, KR_TYPE_INT, KR_TYPE_UINT));

TEST(BooleanRecord, HoldsOneByte)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_BOOLEAN);
    SentRecords sent;
    node.setInt("p", 0, 0, 1);
    EXPECT_EQ(onlyEntry(sent, "p").type, 3);
    EXPECT_EQ(onlyEntry(sent, "p").value.byte_, 1);
    sent.clear();
    node.setInt("p", 0, 0, 0);
    EXPECT_EQ(onlyEntry(sent, "p").value.byte_, 0);
}

TEST(BooleanRecord, IsOneForAnyNumberButZero)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_BOOLEAN);
    SentRecords sent;
    node.setString("256", CH_OLD_EXPRESSION, "p", 0, 0);
    EXPECT_EQ(onlyEntry(sent, "p").value.byte_, 1);
}

struct TupleCase
{
    int type;
    int size;
};

void PrintTo(const TupleCase& c, std::ostream* out) { *out << "code " << c.type; }

class TupleRecord : public ::testing::TestWithParam<TupleCase>
{
};

TEST_P(TupleRecord, HoldsAllComponentsWhicheverChanged)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, GetParam().type);
    for (int c = 0; c < GetParam().size; ++c)
        node.setFloat("p", c, 0, 0.25 * (c + 1));
    SentRecords sent;
    node.setFloat("p", 0, 0, 0.125);

    const zelk::ipr::DeltaParm entry = onlyEntry(sent, "p");
    EXPECT_EQ(entry.type, GetParam().type);
    for (int c = 0; c < GetParam().size; ++c)
        EXPECT_EQ((&entry.value.flt)[c], c == 0 ? 0.125f : 0.25f * (c + 1)) << c;
}

const TupleCase tuple_cases[] = {
    {KR_TYPE_RGB, 3}, {KR_TYPE_RGBA, 4}, {KR_TYPE_VECTOR, 3}, {KR_TYPE_POINT, 3}, {KR_TYPE_POINT2, 2}};
INSTANTIATE_TEST_SUITE_P(Types, TupleRecord, ::testing::ValuesIn(tuple_cases));

TEST(MatrixRecord, IsTransposed)
{
    StandinSession session;
    const KtMatrix zero = {};
    KtParamValue value = KtParamValue();
    value.mtx = &zero;
    session.renderer.shader("s").parm("p", KR_TYPE_MATRIX, value);
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::s");
    for (int i = 0; i < 16; ++i)
        node.setFloat("p", i, 0, i);
    SentRecords sent;
    node.setFloat("p", 15, 0, 20);

    const KtMatrix sentMatrix = onlyEntry(sent, "p").matrix;
    const float firstRow[] = {0, 4, 8, 12};
    for (int c = 0; c < 4; ++c)
        EXPECT_EQ(sentMatrix.m[0][c], firstRow[c]);
    EXPECT_EQ(sentMatrix.m[3][0], 3);
    EXPECT_EQ(sentMatrix.m[3][3], 20);
}

TEST(TextRecord, HoldsTheExpandedText)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_STRING);
    SentRecords sent;
    node.setString("wood.$F.tx", CH_STRING_LITERAL, "p", 0, 0);

    EXPECT_EQ(onlyEntry(sent, "p").type, KR_TYPE_STRING);
    EXPECT_EQ(onlyEntry(sent, "p").str, "wood.1.tx");
}

TEST(EnumRecord, HoldsTheToken)
{
    StandinSession session;
    session.renderer.shader("s").enumeration("p", {"one", "two"}, 0);
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::s");
    SentRecords sent;
    node.setString("two", CH_STRING_LITERAL, "p", 0, 0);

    EXPECT_EQ(onlyEntry(sent, "p").type, KR_TYPE_ENUM);
    EXPECT_EQ(onlyEntry(sent, "p").str, "two");
}

struct CountCase
{
    int type;
    const char* name;
    std::string (*shown)(const zelk::ipr::DeltaParm& entry);
};

std::string shownInt(const zelk::ipr::DeltaParm& entry) { return std::to_string(entry.value.int_); }
std::string shownByte(const zelk::ipr::DeltaParm& entry) { return std::to_string(entry.value.byte_); }
std::string shownFloat(const zelk::ipr::DeltaParm& entry) { return std::to_string(entry.value.flt); }
std::string shownMatrix(const zelk::ipr::DeltaParm& entry) { return std::to_string(entry.matrix.m[0][0]); }
std::string shownText(const zelk::ipr::DeltaParm& entry) { return entry.str; }

const CountCase count_cases[] = {
    {KR_TYPE_BYTE, "byte", shownInt},        {KR_TYPE_INT, "int", shownInt},
    {KR_TYPE_UINT, "uint", shownInt},        {KR_TYPE_BOOLEAN, "boolean", shownByte},
    {KR_TYPE_FLOAT, "float", shownFloat},    {KR_TYPE_RGB, "rgb", shownFloat},
    {KR_TYPE_RGBA, "rgba", shownFloat},      {KR_TYPE_VECTOR, "vector", shownFloat},
    {KR_TYPE_POINT, "point", shownFloat},    {KR_TYPE_POINT2, "point2", shownFloat},
    {KR_TYPE_STRING, "string", shownText},   {KR_TYPE_NODE, "node", shownText},
    {KR_TYPE_MATRIX, "matrix", shownMatrix}, {KR_TYPE_ENUM, "enum", shownText},
    {KR_TYPE_POINTER, "pointer", shownText}, {KR_TYPE_ARRAY, "array", shownText},
};

class ArrayCountRecord : public ::testing::TestWithParam<CountCase>
{
};

TEST_P(ArrayCountRecord, HasTheEncodingOfTheElements)
{
    StandinSession session;
    session.renderer.shader("s").emptyArray("p", GetParam().type);
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::s");
    SentRecords sent;
    node.setInt("p", 0, 0, 3);

    const zelk::ipr::DeltaParm entry = onlyEntry(sent, "p");
    EXPECT_EQ(entry.type, GetParam().type);
    const std::string expected = GetParam().shown == shownText   ? "3"
                                 : GetParam().shown == shownByte ? "1"
                                 : GetParam().shown == shownInt  ? "3"
                                                                 : "3.000000";
    const bool unhandled = GetParam().type == KR_TYPE_POINTER || GetParam().type == KR_TYPE_ARRAY;
    EXPECT_EQ(GetParam().shown(entry), unhandled ? "<unhandled>" : expected);
}
INSTANTIATE_TEST_SUITE_P(Elements, ArrayCountRecord, ::testing::ValuesIn(count_cases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ArrayElementEdit, IsSilent)
{
    StandinSession session;
    session.renderer.shader("s").floatArray("p", {1, 2});
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::s");
    SentRecords sent;
    node.setFloat("p_1", 0, 0, 0.5);
    EXPECT_EQ(node.evalFloat("p_1", 0, 0), 0.5);
    EXPECT_EQ(sent.count(), 0u) << "an element is no parameter of the renderer's";
}

class UnhandledRecord : public ::testing::TestWithParam<int>
{
};

TEST_P(UnhandledRecord, HoldsAMarkerAndNoValue)
{
    StandinSession session;
    session.renderer.shader("s").parmWithoutDefault("p", GetParam());
    session.registerAll();
    session.renderer.takeWarnings();
    session.renderer.takeErrors();
    OP_Node& node = newNode(session.container(), "korvan::s");
    SentRecords sent;
    const int index = node.getParmIndex("p");
    ASSERT_GE(index, 0);
    node.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(static_cast<intptr_t>(index)));
    EXPECT_EQ(onlyEntry(sent, "p").type, GetParam());
    EXPECT_EQ(onlyEntry(sent, "p").str, "<unhandled>");
}
INSTANTIATE_TEST_SUITE_P(Types, UnhandledRecord, ::testing::Values(KR_TYPE_POINTER, 77, 254));

TEST(SilentEdit, IsOneOfAnExtraParameterOrOfTheImagesFile)
{
    StandinSession session;
    session.renderer.shader("zelk__image")
        .parm("filename", KR_TYPE_STRING, stringValue(""))
        .parm("layer", KR_TYPE_STRING, stringValue(""))
        .metaData("houdini.parm.toggle.extra", "on");
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::image");
    SentRecords sent;
    node.setInt("extra", 0, 0, 0);
    node.setString("a.tx", CH_STRING_LITERAL, "filename", 0, 0);
    EXPECT_EQ(sent.count(), 0u);
    node.setString("albedo", CH_STRING_LITERAL, "layer", 0, 0);
    EXPECT_EQ(onlyEntry(sent, "layer").str, "albedo");
}

TEST(SilentEdit, OfTheImagesFileIsSentWhenItIsNoText)
{
    StandinSession session;
    session.renderer.shader("zelk__image").floats({"filename"});
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::image");
    SentRecords sent;
    node.setFloat("filename", 0, 0, 2);
    EXPECT_EQ(onlyEntry(sent, "filename").value.flt, 2);
}

namespace
{

/// How many records an edit of the text "filename" of an entry's node sends.
std::size_t recordsOfFileEdit(const char* entry, const char* type)
{
    StandinSession session;
    session.renderer.shader(entry).parm("filename", KR_TYPE_STRING, stringValue(""));
    session.registerAll();
    OP_Node& node = newNode(session.container(), type);
    const SentRecords sent;
    node.setString("a.tx", CH_STRING_LITERAL, "filename", 0, 0);
    return sent.count();
}

} // namespace

TEST(SilentEdit, IsOneOfTheImagesFileWithoutThePrefixToo)
{
    EXPECT_EQ(recordsOfFileEdit("image", "korvan::image"), 0u) << "it goes by the operator's name";
}

TEST(SilentEdit, OfAnotherShadersFileNameIsSent)
{
    EXPECT_EQ(recordsOfFileEdit("zelk__photo", "korvan::photo"), 1u);
}

TEST(SilentEdit, OfUnknownParametersOnlyRedrawsTheTile)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    SentRecords sent;
    const int before = standin::redrawCount(node);
    node.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(static_cast<intptr_t>(-1)));
    node.opChanged(OP_PARM_CHANGED, reinterpret_cast<void*>(static_cast<intptr_t>(99)));

    EXPECT_EQ(standin::redrawCount(node), before + 2);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(SilentEdit, IsOneOfAParameterThatTheNodeHasForItself)
{
    static PRM_Name name("own", "Own");
    static PRM_Template templates[] = {PRM_Template(PRM_FLT, 1, &name), PRM_Template()};
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    node.addSpareParms(templates);
    SentRecords sent;
    const int before = standin::redrawCount(node);
    node.setFloat("own", 0, 0, 0.5);
    EXPECT_EQ(node.evalFloat("own", 0, 0), 0.5);
    EXPECT_EQ(standin::redrawCount(node), before + 1);
    EXPECT_EQ(sent.count(), 0u) << "the description knows nothing of it";
}

TEST(SilentEdit, IsOneOfARampThatTheMetadataDeclares)
{
    StandinSession session;
    session.renderer.shader("s").floats({"p", "v", "i"}).metaData("houdini.parm.ramp_float.r", "p v i");
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::s");
    SentRecords sent;
    node.setInt("r", 0, 0, 3);
    node.setFloat("r1pos", 0, 0, 0.5);
    EXPECT_EQ(sent.count(), 0u);
}

class SilentChange : public ::testing::Test
{
protected:
    SilentChange()
    {
        session.renderer.shader("s", KR_TYPE_FLOAT).floats({"a"});
        session.registerAll();
        net = &session.container();
        node = &newNode(*net, "korvan::s");
        source = &newNode(*net, "korvan::s");
        node->setFloat("a", 0, 0, 0.5);
        sent.clear();
    }
    ~SilentChange() override { EXPECT_EQ(sent.count(), 0u); }

    StandinSession session;
    SentRecords sent;
    OP_Network* net;
    OP_Node *node, *source;
};

TEST_F(SilentChange, IsCreating) { EXPECT_NE(net->createNode("korvan::s"), nullptr); }

TEST_F(SilentChange, IsWiringAndUnwiring)
{
    node->setInput(0, source);
    EXPECT_EQ(node->getInput(0), source);
    node->setInput(0, nullptr);
}

TEST_F(SilentChange, IsRenaming)
{
    EXPECT_TRUE(net->renameNode(node, "renamed"));
    EXPECT_STREQ(node->getName(), "renamed");
}

TEST_F(SilentChange, IsDeleting) { EXPECT_TRUE(net->destroyNode(node)); }

TEST_F(SilentChange, IsBypassing)
{
    node->flags().setBypass(true);
    node->opChanged(OP_FLAG_CHANGED);
    EXPECT_TRUE(node->flags().getBypass());
}

TEST_F(SilentChange, IsMovingAndUserData)
{
    node->setXYWithBoundsChecks(3, 4);
    node->setUserData("key", "value", false);
}

// How a scene loads: values are set without their events.
TEST_F(SilentChange, IsLoading)
{
    node->setParmEvents(false);
    node->setFloat("a", 0, 0, 0.75);
    node->setParmEvents(true);
    EXPECT_EQ(node->evalFloat("a", 0, 0), 0.75);
}

TEST_F(SilentChange, IsATimeThatPasses)
{
    node->setString("$T", CH_OLD_EXPRESSION, "a", 0, 0);
    EXPECT_EQ(sent.count(), 1u);
    sent.clear();
    CHgetManager()->setEvalTime(2);
    EXPECT_EQ(node->evalFloat("a", 0, CHgetEvalTime()), 2);
}

TEST_F(SilentChange, IsAnEditUpstream)
{
    node->setInput(0, source);
    source->setFloat("a", 0, 0, 0.25);
    EXPECT_EQ(sent.targets(), (std::vector<std::string>{source->getFullPath().toStdString()}));
    sent.clear();
}

TEST(EditRecord, IsSentAgainWhenTheEditIsUndoneAndRedone)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    node.setFloat("p", 0, 0, 0.5);
    SentRecords sent;
    ASSERT_TRUE(UTgetUndoManager()->performUndo());
    EXPECT_EQ(onlyEntry(sent, "p").value.flt, 0);
    sent.clear();
    ASSERT_TRUE(UTgetUndoManager()->performRedo());
    EXPECT_EQ(onlyEntry(sent, "p").value.flt, 0.5f);
}

TEST(EditRecord, HasThePathThatTheNodeHasNow)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    node.getParent()->renameNode(&node, "renamed");
    SentRecords sent;
    node.setFloat("p", 0, 0, 0.5);
    EXPECT_EQ(sent.targets(),
              (std::vector<std::string>{node.getParent()->getFullPath().toStdString() + "/renamed"}));
}

TEST(EditRecord, IsSentForEachOfAThousandChangesInOrder)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    SentRecords sent;
    for (int i = 0; i < 1000; ++i)
        node.setFloat("p", 0, 0, i);
    ASSERT_EQ(sent.count(), 1000u);
    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_EQ(sent.at(i).at("p").value.flt, static_cast<float>(i));
}

TEST(SilentEdit, IsOneWhoseRedrawDeletesTheNode)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    const int id = node.getUniqueId();
    node.addOpInterest(&session,
                       [](OP_Node* caller, void*, OP_EventType type, void*)
                       {
                           if (type == OP_UI_CHANGED)
                               caller->getParent()->destroyNode(caller);
                       });
    SentRecords sent;
    node.setFloat("p", 0, 0, 0.5);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    EXPECT_EQ(sent.count(), 0u) << "the node has no place any more";
}

TEST(SilentEdit, IsOneWhoseExpressionDeletesTheNode)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_RGB);
    const int id = node.getUniqueId();
    SentRecords sent;
    node.setString("hou.pwd().destroy() or 1", CH_PYTHON_EXPRESSION, "p", 1, 0);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(EditRecord, IsSentForAValueThatWasThereAlready)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    SentRecords sent;
    node.setFloat("p", 0, 0, 0.5);
    node.setFloat("p", 0, 0, 0.5);
    EXPECT_EQ(sent.count(), 2u) << "nothing is left out as a repetition";
}

TEST(EditRecord, HasTheValueOfTheCurrentTime)
{
    StandinSession session;
    OP_Node& node = nodeWithParm(session, KR_TYPE_FLOAT);
    CHgetManager()->setEvalTime(1);
    SentRecords sent;
    node.setString("$T", CH_OLD_EXPRESSION, "p", 0, 0);

    EXPECT_EQ(onlyEntry(sent, "p").value.flt, 1);
}

// --- Cameras ----------------------------------------------------------------------------------------------

namespace
{

/// A camera shader node that is wired to something, in /shop/korvan_vopnet1.
OP_Node& wiredCamera(StandinSession& session)
{
    session.renderer.camera("lens").floats({"squeeze"});
    session.renderer.shader("sink").parmWithoutDefault("in", KR_TYPE_NODE);
    session.registerAll();
    OP_Network& net = session.container();
    OP_Node& lens = newNode(net, "korvan::lens");
    newNode(net, "korvan::sink").setInput(0, &lens);
    return lens;
}

} // namespace

TEST(CameraEdit, IsSentOnceForEachCameraThatLooksThroughIt)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    UT_String path;
    lens.getFullPath(path);
    cameraObject(path);
    cameraObject("/shop/other");
    cameraObject(path);
    newNode(objects(), "cam"); // one without the parameter
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);

    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam1", "/obj/cam3"}));
    EXPECT_EQ(sent.at(0).entryName, "lens");
    EXPECT_EQ(sent.at(1).at("squeeze").value.flt, 2);
}

TEST(CameraEdit, ReachesEveryCameraWhosePathIsAPrefix)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    cameraObject("");
    cameraObject("/shop/korvan_v");
    cameraObject("/SHOP/korvan_v");
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);

    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam1", "/obj/cam2"}));
}

TEST(CameraEdit, GoesByTheShaderThatTheCameraNamesAtTheCurrentTime)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    for (const char* text :
         {"'/shop' if hou.time() == 1 else '/none'", "'/none' if hou.time() == 1 else '/shop'"})
        cameraObject("").setString(text, CH_PYTHON_EXPRESSION, "kv_camera_shader", 0, 0);
    CHgetManager()->setEvalTime(1);
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam1"}));
}

TEST(CameraEdit, IsSilentWithoutACamera)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(CameraEdit, EvaluatesNothingWithoutACamera)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    newNode(objects(), "null");
    lens.setString("hou.node('/obj/null1').destroy() or 1", CH_PYTHON_EXPRESSION, "squeeze", 0, 0);
    EXPECT_TRUE(objects().getChild("null1"));
    lens.evalFloat("squeeze", 0, 0);
    EXPECT_FALSE(objects().getChild("null1"));
}

TEST(CameraEdit, IsSilentWhenTheShaderIsNotWired)
{
    StandinSession session;
    session.renderer.camera("lens").floats({"squeeze"});
    session.registerAll();
    OP_Node& lens = newNode(session.container(), "korvan::lens");
    cameraObject("/shop");
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(CameraEdit, GoesToTheCamerasWhateverConnectorTheShaderHas)
{
    StandinSession session;
    session.renderer.camera("lens").floats({"squeeze"}).metaData("houdini.shader_type", "light_filter");
    session.registerAll();
    OP_Network& net = session.container();
    OP_Node& lens = newNode(net, "korvan::lens");
    newNode(net, "korvan_light").setInput(1, &lens);
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 1);
    EXPECT_EQ(sent.count(), 0u) << "there is no camera";
    cameraObject("/shop");
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam1"}));
}

TEST(CameraEdit, IsSentWhicheverOutputOfTheShaderIsWired)
{
    StandinSession session;
    EntryBuilder(KrDeclareNode("lens", KR_NODE_CAMERA, KR_TYPE_RGB)).file("cameras.so").floats({"squeeze"});
    session.registerAll();
    OP_Network& net = session.container();
    OP_Node& lens = newNode(net, "korvan::lens");
    cameraObject("/shop");
    ASSERT_EQ(newNode(net, "korvan::ramp_float").setInput(0, &lens, 1), UT_ERROR_NONE);
    ASSERT_EQ(lens.nOutputs(0), 0u);
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam1"}));
}

TEST(CameraEdit, ReachesAThousandCamerasInTheirOrder)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    UT_String path;
    lens.getFullPath(path);
    std::vector<std::string> cameras;
    for (int i = 0; i < 1000; ++i)
        cameras.push_back(cameraObject(path).getFullPath().toStdString());
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.targets(), cameras);
}

TEST(CameraEdit, IsToldToTheShaderWhoseNameBeginsWithAnothers)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    OP_Network& net = *lens.getParent();
    net.renameNode(&lens, "c10");
    cameraObject((net.getFullPath().toStdString() + "/c1").c_str());
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam1"}));
}

TEST(CameraEdit, IsSilentForACameraOfAnotherNetwork)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    cameraObject("/shop/other_net/lens1");
    cameraObject((lens.getFullPath().toStdString() + "0").c_str());
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.count(), 0u);
}

TEST(CameraEdit, IsSilentOnceTheShaderIsDisconnected)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    cameraObject("/shop");
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.count(), 1u);
    lens.getOutput(0)->setInput(0, nullptr);
    lens.setFloat("squeeze", 0, 0, 3);
    EXPECT_EQ(sent.count(), 1u);
}

TEST(CameraEdit, SkipsCamerasThatWereDeleted)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    OP_Node& first = cameraObject("/shop");
    cameraObject("/shop");
    objects().destroyNode(&first);
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam2"}));
}

TEST(CameraEdit, SkipsCamerasThatAnothersExpressionDeletes)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    cameraObject("/shop");
    OP_Node& deleting = cameraObject("");
    cameraObject("/shop");
    deleting.setString("[hou.node(p).destroy() for p in ('/obj/cam1', '/obj/cam2', '/obj/cam3')] and '/shop'",
                       CH_PYTHON_EXPRESSION, "kv_camera_shader", 0, 0);
    cameraObject("/shop");
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.targets(), (std::vector<std::string>{"/obj/cam1", "/obj/cam4"}))
        << "the first was found before it went";
}

TEST(CameraEdit, IsSilentWhenACamerasExpressionDeletesTheShader)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    const std::string path = lens.getFullPath().toStdString();
    const int id = lens.getUniqueId();
    cameraObject("").setString(("hou.node('" + path + "').destroy() or '/shop'").c_str(),
                               CH_PYTHON_EXPRESSION, "kv_camera_shader", 0, 0);
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    EXPECT_EQ(sent.count(), 0u);
}
