#include "standin_session.h"

#include <CH/CH_Manager.h>
#include <UT/UT_String.h>
#include <VOP/VOP_Node.h>
#include <zelk/ipr/observe.h>
#include <zelk/ipr/reader.h>

#include <memory>
#include <ostream>

namespace
{

/// The records that the publisher is handed.
class SentRecords
{
public:
    SentRecords()
    {
        ::setenv("ZELK_IPR_ENDPOINT", ("ipc://" + (m_folder.path() / "render").string()).c_str(), 1);
        zelk::ipr::setSendObserver([this](const std::string& text) { m_texts.push_back(text); });
    }
    ~SentRecords() { zelk::ipr::setSendObserver({}); }

    std::size_t count() const { return m_texts.size(); }
    void clear() { m_texts.clear(); }

    /// The i-th record. A text that is none fails the test and reads as an empty record.
    const zelk::ipr::Delta& at(std::size_t i)
    {
        m_read = std::make_unique<zelk::ipr::ReceivedDelta>();
        std::string error;
        EXPECT_LT(i, m_texts.size());
        EXPECT_TRUE(i < m_texts.size() && zelk::ipr::readDelta(m_texts[i], *m_read, error)) << error;
        return *m_read;
    }

    std::vector<std::string> targets()
    {
        std::vector<std::string> paths;
        for (std::size_t i = 0; i < m_texts.size(); ++i)
            paths.push_back(at(i).nodePath);
        return paths;
    }

private:
    TemporaryFolder m_folder;
    std::vector<std::string> m_texts;
    std::unique_ptr<zelk::ipr::ReceivedDelta> m_read;
};

OP_Node& newNode(OP_Network& net, const char* type) { return *net.createNode(type); }

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

OP_Network& objects() { return *OPgetDirector()->getManager("obj"); }

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

TEST(ArrayCountRecord, HasTheEncodingOfTheElements)
{
    StandinSession session;
    session.renderer.shader("s").floatArray("p", {1, 2});
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::s");
    SentRecords sent;
    node.setFloat("p_1", 0, 0, 0.5);
    EXPECT_EQ(sent.count(), 0u) << "an element is no parameter of the renderer's";
    node.setInt("p", 0, 0, 1);

    EXPECT_EQ(onlyEntry(sent, "p").type, KR_TYPE_FLOAT);
    EXPECT_EQ(onlyEntry(sent, "p").value.flt, 1);
}

TEST(ArrayOfArraysRecord, IsOnlyMarked)
{
    StandinSession session;
    session.renderer.shader("s").emptyArray("p", KR_TYPE_ARRAY);
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::s");
    SentRecords sent;
    node.setInt("p", 0, 0, 1);

    EXPECT_EQ(onlyEntry(sent, "p").str, "<unhandled>");
}

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

TEST(SilentEdit, OfAnotherShadersFileNameIsSent)
{
    StandinSession session;
    session.renderer.shader("zelk__photo").parm("filename", KR_TYPE_STRING, stringValue(""));
    session.registerAll();
    OP_Node& node = newNode(session.container(), "korvan::photo");
    SentRecords sent;
    node.setString("a.tx", CH_STRING_LITERAL, "filename", 0, 0);
    EXPECT_EQ(sent.count(), 1u);
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

TEST(SilentEdit, IsWiringRenamingAndDeleting)
{
    StandinSession session;
    session.renderer.shader("s", KR_TYPE_FLOAT).floats({"a"});
    session.registerAll();
    OP_Network& net = session.container();
    OP_Node &node = newNode(net, "korvan::s"), &source = newNode(net, "korvan::s");
    SentRecords sent;
    node.setInput(0, &source);
    net.renameNode(&node, "renamed");
    net.destroyNode(&source);
    EXPECT_EQ(sent.count(), 0u);
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

/// A camera object that looks through the shader at a path.
OP_Node& cameraObject(const char* shaderPath)
{
    static PRM_Name name("kv_camera_shader", "Camera Shader");
    static PRM_Template templates[] = {PRM_Template(PRM_STRING, 1, &name), PRM_Template()};
    OP_Node& camera = newNode(objects(), "cam");
    camera.addSpareParms(templates);
    camera.setString(shaderPath, CH_STRING_LITERAL, "kv_camera_shader", 0, 0);
    return camera;
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

TEST(CameraEdit, IsSilentWithoutACamera)
{
    StandinSession session;
    OP_Node& lens = wiredCamera(session);
    SentRecords sent;
    lens.setFloat("squeeze", 0, 0, 2);
    EXPECT_EQ(sent.count(), 0u);
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
