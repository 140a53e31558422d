// The commands of hscript that work on nodes.
#include "test_types.h"

#include <SYS/SYS_SequentialThreadIndex.h>
#include <UT/UT_UndoManager.h>

#include <sstream>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace
{

/// Scripts run with the test's network as the working node.
class NodeCommands : public NetworkTest
{
protected:
    NodeCommands() : director(*OPgetDirector()), thread(SYSgetSTID())
    {
        sink = node("sink", "sink1");
        director.pushCwd(thread, net);
        UTgetUndoManager()->clear();
    }
    ~NodeCommands() override
    {
        director.popCwd(thread);
        EXPECT_EQ(director.getCwd(thread), &director);
        UTgetUndoManager()->clear();
    }

    /// What a script prints, and its complaints.
    std::string run(const std::string& script)
    {
        std::ostringstream out, err;
        director.getCommandManager()->execute(script.c_str(), false, &out, &err);
        return out.str() + err.str();
    }
    double valueOf(const char* parm, int component = 0) const { return sink->evalFloat(parm, component, 0); }

    OP_Director& director;
    int thread;
    VOP_Node* sink;
};

const char* const opparm_usage = "hscript: opparm is used as \"opparm NODE PARM VALUE\" or \"opparm NODE "
                                 "PARM ( VALUE ... )\"; more of PARM and "
                                 "values may follow.\n";

} // namespace

TEST_F(NodeCommands, OpparmSetsOneValue)
{
    EXPECT_EQ(run("opparm sink1 a 2.5"), "");
    EXPECT_EQ(valueOf("a"), 2.5);
    EXPECT_EQ(run("opparm " + pathOf(sink) + " b2 7"), "");
    EXPECT_EQ(valueOf("b", 0), 0);
    EXPECT_EQ(valueOf("b", 1), 7);
}

TEST_F(NodeCommands, OpparmSetsTheComponentsFromANamedOneOn)
{
    EXPECT_EQ(run("opparm sink1 b ( 1 2 3 )"), "");
    EXPECT_EQ(valueOf("b", 2), 3);
    EXPECT_EQ(run("opparm sink1 b2 ( 8 9 )"), "");
    EXPECT_THAT((std::vector<double>{valueOf("b", 0), valueOf("b", 1), valueOf("b", 2)}),
                ElementsAre(1, 8, 9));
}

TEST_F(NodeCommands, OpparmTakesSeveralParametersAndExpressions)
{
    EXPECT_EQ(run("set v = 3; opparm sink1 a $v b ( `1 + 1` 5 ) mode 1; set -u v"), "");
    EXPECT_EQ(valueOf("a"), 3);
    EXPECT_EQ(valueOf("b", 0), 2);
    EXPECT_EQ(valueOf("b", 1), 5);
    EXPECT_EQ(sink->evalInt("mode", 0, 0), 1);
}

TEST_F(NodeCommands, OpparmIsOneStepOfUndoWithAllThatTheScriptDoes)
{
    run("opparm sink1 a 1\nopparm sink1 b ( 1 2 3 )");
    EXPECT_THAT(UTgetUndoManager()->getUndoLabels(), ElementsAre("hscript"));
    UTgetUndoManager()->performUndo();
    EXPECT_EQ(valueOf("a"), 0);
    EXPECT_EQ(valueOf("b", 2), 0);
    UTgetUndoManager()->performRedo();
    EXPECT_EQ(valueOf("b", 2), 3);
}

TEST_F(NodeCommands, AreStepsOfTheirOwnWithoutABlock)
{
    director.getCommandManager()->sendInput("opparm sink1 a 1; opparm sink1 a 2", false);
    EXPECT_THAT(UTgetUndoManager()->getUndoLabels(), ElementsAre("Parameter Change", "Parameter Change"));
}

TEST_F(NodeCommands, OpparmSendsTheEventsOfAnEdit)
{
    const EventRecorder recorder(sink);
    run("opparm sink1 b ( 1 2 )");
    EXPECT_THAT(recorder.events, ElementsAre(SeenEvent{OP_PARM_CHANGED, 1}, SeenEvent{OP_PARM_CHANGED, 1}));
}

TEST_F(NodeCommands, OpparmNamesWhatIsNotThere)
{
    const std::string path = pathOf(sink);
    EXPECT_EQ(run("opparm nobody a 1"),
              "hscript: there is no node \"nobody\", seen from " + pathOf(net) + ".\n");
    EXPECT_EQ(run("opparm sink1 nothing 1"), "hscript: " + path + " has no parameter \"nothing\".\n");
    EXPECT_EQ(run("opparm sink1 a ( 1 2 )"),
              "hscript: " + path + "/a does not take the value \"2\" as number 2.\n");
    EXPECT_EQ(valueOf("a"), 1) << "what came before the fault stays";
}

TEST_F(NodeCommands, OpparmExplainsItselfWhenItIsWrittenWrongly)
{
    for (const char* script : {"opparm", "opparm sink1", "opparm sink1 a", "opparm sink1 a (",
                               "opparm sink1 b ( 1 2", "opparm sink1 a 1 b"})
        EXPECT_EQ(run(script), opparm_usage) << script;
    EXPECT_EQ(valueOf("a"), 0);
}

TEST_F(NodeCommands, OpparmTakesABracketForAValueInsideBrackets)
{
    EXPECT_THAT(run("opparm sink1 nothing ( '(' )"), HasSubstr("has no parameter \"nothing\""));
}

TEST_F(NodeCommands, OpparmStopsWhenTheNodeIsDeletedByAListener)
{
    struct Deleter
    {
        static void receive(OP_Node* caller, void*, OP_EventType type, void*)
        {
            if (type == OP_PARM_CHANGED)
                caller->getParent()->destroyNode(caller);
        }
    };
    sink->addOpInterest(&sink, Deleter::receive);
    EXPECT_EQ(run("opparm sink1 b ( 1 2 3 ) a 5; echo on"), "on\n");
    EXPECT_EQ(net->getNchildren(), 0);
}

TEST_F(NodeCommands, OpcfMovesTheWorkingNodeOfTheThread)
{
    EXPECT_EQ(run("opcf sink1; opparm . a 4"), "");
    EXPECT_EQ(director.getCwd(thread), sink);
    EXPECT_EQ(valueOf("a"), 4);
    EXPECT_EQ(run("opcf .."), "");
    EXPECT_EQ(director.getCwd(thread), net);
    EXPECT_EQ(run("opcf /; echo $OS"), director.getName().toStdString() + "\n");
}

TEST_F(NodeCommands, OpcfLeavesTheWorkingNodeWhenItCannotGoThere)
{
    EXPECT_EQ(run("opcf nobody"), "hscript: there is no node \"nobody\", seen from " + pathOf(net) + ".\n");
    EXPECT_EQ(run("opcf"), "hscript: opcf is used as \"opcf PATH\".\n");
    EXPECT_EQ(run("opcf a b"), "hscript: opcf is used as \"opcf PATH\".\n");
    EXPECT_EQ(director.getCwd(thread), net);
}

TEST_F(NodeCommands, OpcfIsTakenBackByWhoPushedAWorkingNode)
{
    director.pushCwd(thread, sink);
    run("opcf ..; opcf sink1; opcf /obj");
    director.popCwd(thread);
    EXPECT_EQ(director.getCwd(thread), net);
}

TEST_F(NodeCommands, ExpressionsAreSeenFromTheWorkingNode)
{
    sink->setFloat("a", 0, 0, 6);
    EXPECT_EQ(run("echo `ch(\"sink1/a\")`; opcf sink1; echo `ch(\"a\") + 1` $OS"), "6\n7 sink1\n");
}

TEST_F(NodeCommands, VariablesAreSeenByTheExpressionsOfParameters)
{
    sink->getParm("a").setExpression(0, "$gain * 2", CH_OLD_EXPR_LANGUAGE);
    run("set gain = 4");
    EXPECT_EQ(valueOf("a"), 8);
    run("set -u gain");
}
