#include "test_types.h"

using ::testing::ElementsAre;

namespace
{

struct NameCase
{
    const char* full;
    standin::OperatorName parts;
};

/// A test's name has to be the same in every run.
void PrintTo(const NameCase& row, std::ostream* out) { *out << ::testing::PrintToString(row.full); }

class OperatorNames : public ::testing::TestWithParam<NameCase>
{
};

} // namespace

TEST_P(OperatorNames, FallIntoTheirParts)
{
    const standin::OperatorName parts = standin::splitOperatorName(GetParam().full);
    EXPECT_EQ(parts.scope, GetParam().parts.scope);
    EXPECT_EQ(parts.nameSpace, GetParam().parts.nameSpace);
    EXPECT_EQ(parts.name, GetParam().parts.name);
    EXPECT_EQ(parts.version, GetParam().parts.version);
}

INSTANTIATE_TEST_SUITE_P(
    Names, OperatorNames,
    ::testing::Values(NameCase{"noise", {"", "", "noise", ""}},
                      NameCase{"korvan::noise", {"", "korvan", "noise", ""}},
                      NameCase{"qLib::optransform_ql::1", {"", "qLib", "optransform_ql", "1"}},
                      NameCase{"noise::2.0", {"", "", "noise", "2.0"}},
                      NameCase{"Sop/net::korvan::noise::3", {"Sop/net", "korvan", "noise", "3"}},
                      NameCase{"a::b::c::d", {"a::b", "c", "d", ""}}, NameCase{"", {"", "", "", ""}},
                      NameCase{"korvan::", {"", "korvan", "", ""}}));

TEST(NodeNames, AreLettersDigitsAndThreeMarks)
{
    for (const char* valid : {"noise1", "OUT_material", "a.b-c", "7"})
        EXPECT_TRUE(standin::isValidNodeName(valid)) << valid;
    for (const char* invalid : {"", ".", "..", "a b", "a/b", "a:b", "gr\xc3\xbcn"})
        EXPECT_FALSE(standin::isValidNodeName(invalid)) << invalid;
}

using Names = NetworkTest;

TEST_F(Names, AreTheTypesWithoutNamespaceAndNumbered)
{
    EXPECT_EQ(nameOf(node("source")), "source1");
    EXPECT_EQ(nameOf(node("source")), "source2");
    EXPECT_EQ(nameOf(net->createNode("null")), "null1");
}

TEST_F(Names, UseTheFirstFreeNumber)
{
    OP_Node* first = node("source");
    node("source");
    net->destroyNode(first);
    EXPECT_EQ(nameOf(node("source")), "source1");
    EXPECT_EQ(nameOf(node("source")), "source3");
}

TEST_F(Names, GetAnotherNumberWhenTaken)
{
    EXPECT_EQ(nameOf(node("source", "x")), "x");
    EXPECT_EQ(nameOf(node("source", "x")), "x1");
    EXPECT_EQ(nameOf(node("source", "y7")), "y7");
    EXPECT_EQ(nameOf(node("source", "y7")), "y8");
}

TEST_F(Names, LoseCharactersThatNoNameCanHave) { EXPECT_EQ(nameOf(node("source", "a b/c")), "a_b_c"); }

TEST_F(Names, MayEndInMoreDigitsThanANumberHas)
{
    EXPECT_EQ(nameOf(node("source", "n99999999999999999999")), "n99999999999999999999");
    EXPECT_EQ(nameOf(node("source", "n99999999999999999999")), "n999999999999999999991");
}

TEST_F(Names, ChangeByRenaming)
{
    OP_Node* renamed = node("source");
    EventRecorder seen(renamed);
    EXPECT_TRUE(net->renameNode(renamed, "other"));
    EXPECT_EQ(nameOf(renamed), "other");
    EXPECT_EQ(net->getChild("other"), renamed);
    EXPECT_EQ(net->getChild("source1"), nullptr);
    EXPECT_EQ(seen.count(OP_NAME_CHANGED), 1);
}

TEST_F(Names, StayUniqueWhenRenamedToATakenOne)
{
    node("source", "OUT");
    OP_Node* renamed = node("source");
    EXPECT_TRUE(renamed->setName("OUT"));
    EXPECT_EQ(nameOf(renamed), "OUT1");
}

TEST_F(Names, StayWhenTheNewOneIsNotValid)
{
    OP_Node* renamed = node("source");
    EXPECT_FALSE(net->renameNode(renamed, "not valid"));
    EXPECT_FALSE(net->renameNode(renamed, nullptr));
    EXPECT_EQ(nameOf(renamed), "source1");
}

TEST_F(Names, ChangeSilentlyOnRequest)
{
    OP_Node* renamed = node("source");
    EventRecorder seen(renamed);
    net->renameNode(renamed, "other", OP_RENAME_NO_EVENTS);
    EXPECT_EQ(seen.count(OP_NAME_CHANGED), 0);
}

TEST_F(Names, OfManagersStay)
{
    OP_Network* obj = OPgetDirector()->getManager("obj");
    EXPECT_FALSE(OPgetDirector()->renameNode(obj, "other"));
    EXPECT_EQ(nameOf(obj), "obj");
}

using Paths = NetworkTest;

TEST_F(Paths, BeginAtTheRoot)
{
    EXPECT_EQ(pathOf(OPgetDirector()), "/");
    EXPECT_EQ(pathOf(OPgetDirector()->getManager("vex")), "/vex");
    EXPECT_EQ(pathOf(node("source")), pathOf(net) + "/source1");
}

TEST_F(Paths, AreFollowedFromTheRootAndFromTheNode)
{
    OP_Node* source = node("source");
    OP_Node* sink = node("sink");
    EXPECT_EQ(sink->findNode("../source1"), source);
    EXPECT_EQ(sink->findNode(pathOf(source).c_str()), source);
    EXPECT_EQ(net->findNode("source1"), source);
    EXPECT_EQ(net->findNode("./source1/"), source);
    EXPECT_EQ(sink->findNode("."), sink);
    EXPECT_EQ(sink->findNode("/"), OPgetDirector());
    EXPECT_EQ(sink->findVOPNode("../source1"), source);
}

TEST_F(Paths, ThatLeadNowhereGiveNothing)
{
    OP_Node* source = node("source");
    for (const char* path : {"", "nobody", "../nobody", "../../../../..", "/nobody/x", "../source1/x"})
        EXPECT_EQ(source->findNode(path), nullptr) << path;
    EXPECT_EQ(source->findNode(nullptr), nullptr);
    EXPECT_EQ(source->findVOPNode("/obj"), nullptr);
}

TEST_F(Paths, AreFoundByTheDirector)
{
    EXPECT_EQ(OPgetDirector()->findNode("shop"), OPgetDirector()->getManager("shop"));
}

TEST_F(Paths, LeadParametersOfOneNodeToAnother)
{
    OP_Node* a = node("sink", "one");
    OP_Node* b = node("sink", "two");
    a->setFloat("a", 0, 0, 2.5);
    b->setString("ch(\"../one/a\")", CH_OLD_EXPRESSION, "a", 0, 0);
    EXPECT_EQ(b->evalFloat("a", 0, 0), 2.5);
}

TEST(Director, HasFourManagers)
{
    OP_Director* director = OPgetDirector();
    ASSERT_EQ(director->getNchildren(), 4);
    for (const char* name : {"obj", "shop", "out", "vex"})
        EXPECT_NE(director->getManager(name), nullptr) << name;
    EXPECT_EQ(director->getManager("nobody"), nullptr);
    EXPECT_EQ(director->isLoading(), 0);
}

TEST(Director, KeepsAStackOfWorkingNodesForEachThread)
{
    OP_Director* director = OPgetDirector();
    OP_Network* obj = director->getManager("obj");
    EXPECT_EQ(director->getCwd(1), director);
    director->pushCwd(1, obj);
    EXPECT_EQ(director->getCwd(1), obj);
    EXPECT_EQ(director->getCwd(2), director);
    OP_Node* gone = obj->createNode("null");
    director->pushCwd(1, gone);
    obj->destroyNode(gone);
    EXPECT_EQ(director->getCwd(1), director);
    director->popCwd(1);
    EXPECT_EQ(director->getCwd(1), obj);
    director->popCwd(1);
    director->popCwd(1);
    EXPECT_EQ(director->getCwd(1), director);
}

TEST(Objects, OfOneTypeAreFoundByName)
{
    OP_Network* obj = OPgetDirector()->getManager("obj");
    OP_Node* camera = obj->createNode("cam");
    OP_Node* null = obj->createNode("null");
    OP_NodeList cameras;
    EXPECT_EQ(obj->getOpsByName("cam", cameras), 1);
    EXPECT_EQ(cameras(0), camera);
    EXPECT_EQ(camera->evalInt("resx", 0, 0), 1280);
    EXPECT_EQ(camera->evalFloat("focal", 0, 0), 50);
    obj->destroyNode(camera);
    obj->destroyNode(null);
}
