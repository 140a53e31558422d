#include "callback_node.h"

#include <gmock/gmock.h>

#include <stdexcept>

using namespace zelk::shop;
using ::testing::HasSubstr;
using ::testing::Not;

namespace
{

/// Runs a function when the node's parameters change, that is in the middle of a script that changes them.
class OnChange
{
public:
    OnChange(OP_Node& node, std::function<void()> run) : m_id(node.getUniqueId()), m_run(std::move(run))
    {
        node.addOpInterest(this, &OnChange::event);
    }
    ~OnChange()
    {
        if (OP_Node* node = OP_Node::lookupNode(m_id))
            node->removeOpInterest(this, &OnChange::event);
    }
    OnChange(const OnChange&) = delete;
    OnChange& operator=(const OnChange&) = delete;

private:
    static void event(OP_Node*, void* self, OP_EventType type, void*)
    {
        if (type == OP_PARM_CHANGED)
            static_cast<OnChange*>(self)->m_run();
    }

    int m_id;
    std::function<void()> m_run;
};

} // namespace

// --- Arguments ------------------------------------------------------------------------------------------------

typedef CallbackTest CallbackArguments;

TEST_F(CallbackArguments, OfANumberAreItsNamesItsNestingAndItsValue)
{
    node->setFloat("amount", 0, 0, 0.25);
    EXPECT_EQ(argsOf("amount"), (Texts{{"script_parm", "amount"},
                                       {"parm_name", "amount"},
                                       {"script_multiparm_nesting", "0"},
                                       {"script_multiparm_index", "-1"},
                                       {"script_value", "0.25"},
                                       {"script_value0", "0.25"}}));
}

TEST_F(CallbackArguments, OfAColourHoldEachComponent)
{
    for (int c = 0; c < 3; ++c)
        node->setFloat("color", c, 0, 0.25 * c);
    const Texts args = argsOf("color", 2);
    EXPECT_EQ(args.at("script_parm"), "color");
    EXPECT_EQ(args.at("parm_name"), "colorr") << "the channel of the first component";
    EXPECT_EQ(args.at("script_value"), "0");
    EXPECT_EQ(args.at("script_value0"), "0");
    EXPECT_EQ(args.at("script_value1"), "0.25");
    EXPECT_EQ(args.at("script_value2"), "0.5");
    EXPECT_EQ(args.count("script_value3"), 0u);
}

TEST_F(CallbackArguments, OfATextAreExpanded)
{
    setText("file", "wood.$F.tx");
    EXPECT_EQ(argsOf("file").at("script_value"), "wood.1.tx");
}

TEST_F(CallbackArguments, AreEvaluatedAtTheCurrentTimeWhateverTimeIsPassed)
{
    node->setString("$T", CH_OLD_EXPRESSION, "amount", 0, 0);
    CHgetManager()->setEvalTime(2);
    python("hou.parm('/obj/node/note').set(kwargs['script_value'])");
    parmCallback(node, 0, 99, node->getParm("amount").getTemplatePtr());
    EXPECT_EQ(textOf("note"), "2");
}

TEST_F(CallbackArguments, OfAButtonHoldItsValueOnce)
{
    const Texts args = argsOf("press");
    EXPECT_EQ(args.at("script_value"), "0");
    EXPECT_EQ(args.at("script_value0"), "0");
    EXPECT_EQ(args.count("script_value1"), 0u);
}

TEST_F(CallbackArguments, OfAButtonWithAMenuHoldTheChosenToken)
{
    EXPECT_EQ(argsOf("choose", 2).at("script_value"), "third");
    EXPECT_EQ(argsOf("choose", 2).at("script_value0"), "third");
    EXPECT_EQ(argsOf("choose", 0).at("script_value"), "first");
}

TEST_F(CallbackArguments, OfAButtonWhoseMenuHasNoSuchItemHoldItsOwnValue)
{
    const std::string own = textOf("choose");
    EXPECT_EQ(argsOf("choose", -1).at("script_value"), own);
    EXPECT_EQ(argsOf("choose", 3).at("script_value"), own);
    EXPECT_EQ(argsOf("choose", 1000000).at("script_value"), own);
}

TEST_F(CallbackArguments, OfAButtonWhoseMenuIsGeneratedHoldTheNodesItem)
{
    const PRM_ChoiceGenFunc nodesName =
        [](void* data, PRM_Name* items, int, const PRM_SpareData*, const PRM_Parm*)
    {
        items[0] = PRM_Name(data ? static_cast<OP_Node*>(data)->getName().buffer() : "nobody");
        items[1] = PRM_Name();
    };
    PRM_ChoiceList menu(PRM_CHOICELIST_SINGLE, nodesName);
    EXPECT_EQ(
        argsOf(PRM_Template(PRM_CALLBACK, 1, &callback_type::choose, nullptr, &menu)).at("script_value"),
        "node");
}

// The flags are part of the type, so that such a button is no PRM_CALLBACK: it is read as any other parameter.
TEST_F(CallbackArguments, OfAJoinedOrInvisibleButtonHoldItsValue)
{
    EXPECT_EQ(argsOf("joined", 2).at("script_value"), textOf("joined"));
    EXPECT_EQ(argsOf("hidden", 2).at("script_value"), textOf("hidden"));
    EXPECT_NE(argsOf("joined", 2).at("script_value"), "third");
}

TEST_F(CallbackArguments, ThreeLevelsDeepNumberTheInstancesFromTheInnermost)
{
    node->setInt("outer", 0, 0, 2);
    node->setInt("middle2", 0, 0, 3);
    node->setInt("inner2_3", 0, 0, 4);
    node->setFloat("leaf2_3_4", 0, 0, 0.5);
    EXPECT_EQ(kwargsOf("leaf2_3_4"), (Texts{{"script_parm", "leaf2_3_4"},
                                            {"parm_name", "leaf2_3_4"},
                                            {"script_multiparm_nesting", "3"},
                                            {"script_multiparm_index3", "2"},
                                            {"script_multiparm_index2", "3"},
                                            {"script_multiparm_index", "4"},
                                            {"script_value", "0.5"},
                                            {"script_value0", "0.5"}}));
    EXPECT_EQ(kwargsOf("tint2_3_4").at("parm_name"), "tint2_3_4r");
}

TEST_F(CallbackArguments, OneOrTwoLevelsDeepHaveAsManyKeys)
{
    node->setInt("outer", 0, 0, 2);
    node->setInt("middle2", 0, 0, 1);
    const Texts one = kwargsOf("middle2"), two = kwargsOf("inner2_1");
    EXPECT_EQ(one.at("script_multiparm_nesting"), "1");
    EXPECT_EQ(one.at("script_multiparm_index"), "2");
    EXPECT_EQ(one.count("script_multiparm_index1") + one.count("script_multiparm_index2"), 0u);
    EXPECT_EQ(two.at("script_multiparm_nesting"), "2");
    EXPECT_EQ(two.at("script_multiparm_index2"), "2");
    EXPECT_EQ(two.at("script_multiparm_index"), "1");
}

TEST_F(CallbackArguments, OfATemplateThatTheNodeLacksAreItsNameAlone)
{
    PRM_Name absent("absent", "Absent");
    const PRM_Template tmpl(PRM_FLT, 1, &absent);
    EXPECT_EQ(argsOf(tmpl), (Texts{{"script_parm", "absent"}}));
}

// --- Whether a script runs --------------------------------------------------------------------------------------

typedef CallbackTest ParmCallback;

TEST_F(ParmCallback, IsNothingWithoutNodeTemplateSpareDataOrScript)
{
    hscript("opparm /obj/node note ran");
    const PRM_Template* tmpl = node->getParm("amount").getTemplatePtr();
    EXPECT_EQ(parmCallback(nullptr, 0, 0, tmpl), 0);
    EXPECT_EQ(parmCallback(node, 0, 0, nullptr), 0);
    EXPECT_EQ(press("bare"), 0);
    EXPECT_EQ(press("empty"), 0);
    hscript("");
    EXPECT_EQ(press("amount"), 0);
    EXPECT_EQ(textOf("note"), "");
    EXPECT_TRUE(UTgetUndoManager()->getUndoLabels().empty());
}

TEST_F(ParmCallback, RunsForATemplateThatTheNodeLacks)
{
    PRM_Name absent("absent", "Absent");
    const PRM_Template tmpl(PRM_FLT, 1, &absent, nullptr, nullptr, nullptr, 0, &callback_type::script);
    python("kwargs['node'].parm('note').set(' '.join(sorted(kwargs)))");
    EXPECT_EQ(parmCallback(node, 0, 0, &tmpl), 1);
    EXPECT_EQ(textOf("note"), "node script_parm");
}

TEST_F(ParmCallback, RunsInTheLanguageThatTheTemplateNames)
{
    hscript("opparm /obj/node note hscript");
    EXPECT_EQ(press("press"), 1);
    EXPECT_EQ(textOf("note"), "hscript");
    python("hou.parm('/obj/node/note').set('python')");
    EXPECT_EQ(press("press"), 1);
    EXPECT_EQ(textOf("note"), "python");
}

TEST_F(ParmCallback, GivesPythonTheNodeTheParameterAndTheArguments)
{
    python("kwargs['node'].parm('note').set('%s %s %s' % (kwargs['node'].path(), kwargs['parm'].path(), "
           "kwargs['parm_name']))");
    EXPECT_EQ(press("color"), 1);
    EXPECT_EQ(textOf("note"), "/obj/node /obj/node/colorr colorr");
}

TEST_F(ParmCallback, GivesHscriptTheArgumentsAsVariablesAndTakesThemAway)
{
    node->setFloat("amount", 0, 0, 0.5);
    hscript("opparm . note \"$script_parm=$script_value $script_multiparm_index\"");
    EXPECT_EQ(press("amount"), 1);
    EXPECT_EQ(textOf("note"), "amount=0.5 -1");
    for (const char* name : {"script_parm", "parm_name", "script_value", "script_value0",
                             "script_multiparm_nesting", "script_multiparm_index"})
        EXPECT_FALSE(hasVariable(name)) << name;
    EXPECT_EQ(std::getenv("script_value"), nullptr) << "they are local";
}

// --- What surrounds a script ------------------------------------------------------------------------------------

TEST_F(ParmCallback, HoldsOneBlockOpenAndMakesTheNodeTheWorkingOne)
{
    std::string label, working;
    bool echo = true, local = false;
    const OnChange probe(*node,
                         [&]
                         {
                             label = UTgetUndoManager()->getLabel(1);
                             working = workingNode();
                             echo = commands().getEcho();
                             local = hasVariable("script_value") && !std::getenv("script_value");
                         });
    commands().setEcho(true);
    hscript("opparm . note done");
    press("press");
    EXPECT_EQ(label, "Parameter Callback");
    EXPECT_EQ(working, "/obj/node");
    EXPECT_FALSE(echo);
    EXPECT_TRUE(local);
    EXPECT_TRUE(commands().getEcho()) << "restored";
}

TEST_F(ParmCallback, LeavesTheEchoOffThatWasOff)
{
    hscript("opparm . note done");
    press("press");
    EXPECT_FALSE(commands().getEcho());
}

// What a listener throws passes through an hscript callback.
TEST_F(ParmCallback, ClosesEverythingWhenAnExceptionPasses)
{
    const OnChange listener(*node, [] { throw std::runtime_error("listener"); });
    commands().setEcho(true);
    hscript("opparm . note done");
    EXPECT_THROW(parmCallback(node, 0, 0, node->getParm("amount").getTemplatePtr()), std::runtime_error);
    EXPECT_EQ(UTgetUndoManager()->getLevel(), 0);
    EXPECT_EQ(workingNode(), "/");
    EXPECT_TRUE(commands().getEcho());
    EXPECT_FALSE(hasVariable("script_value"));
}

TEST_F(ParmCallback, TurnsAListenersExceptionIntoPythons)
{
    const OnChange listener(*node, [] { throw std::runtime_error("listener"); });
    python("kwargs['parm'].set(1)");
    EXPECT_EQ(press("amount"), 1);
    EXPECT_THAT(said(), HasSubstr("Error running callback:"));
}

TEST_F(ParmCallback, ReportsAPythonErrorUnderItsHeading)
{
    python("kwargs['node'].parm('note').set('before')\nraise ValueError('no such rib')");
    EXPECT_EQ(press("press"), 1);
    const std::string text = said();
    EXPECT_THAT(text, HasSubstr("Error running callback:\n"));
    EXPECT_THAT(text, HasSubstr("ValueError: no such rib"));
    EXPECT_EQ(textOf("note"), "before") << "what it did stays";
}

TEST_F(ParmCallback, ReportsAScriptThatIsNoPython)
{
    python("if True\n");
    EXPECT_EQ(press("press"), 1);
    EXPECT_THAT(said(), HasSubstr("SyntaxError"));
}

TEST_F(ParmCallback, SurvivesAScriptThatExits)
{
    python("raise SystemExit(3)");
    EXPECT_EQ(press("press"), 1);
    EXPECT_THAT(said(), HasSubstr("Error running callback:"));
}

TEST_F(ParmCallback, LeavesHscriptErrorsToTheCommandManager)
{
    hscript("nonsense; opparm . note after");
    EXPECT_EQ(press("press"), 1);
    EXPECT_THAT(said(), HasSubstr("nonsense"));
    EXPECT_EQ(textOf("note"), "after");
}

TEST_F(ParmCallback, GivesEachScriptItsOwnNames)
{
    python("leftover = 1");
    press("press");
    python("kwargs['node'].parm('note').set(str('leftover' in globals()))");
    press("press");
    EXPECT_EQ(textOf("note"), "False");
    EXPECT_EQ(PYrunPythonExpression("'kwargs' in globals()", PY_Result::INT).myIntValue, 0);
}

// --- Texts that need quoting ------------------------------------------------------------------------------------

class CallbackText : public CallbackTest, public ::testing::WithParamInterface<const char*>
{
};

TEST_P(CallbackText, ReachesPythonUnchanged)
{
    setText("file", GetParam());
    EXPECT_EQ(kwargsOf("file").at("script_value"), GetParam());
    EXPECT_EQ(said(), "");
}

TEST_P(CallbackText, ReachesHscriptUnchanged)
{
    setText("file", GetParam());
    hscript("opparm . note \"$script_value\"");
    EXPECT_EQ(press("file"), 1);
    EXPECT_EQ(said(), "");
    EXPECT_EQ(textOf("note"), GetParam());
}

TEST_P(CallbackText, MayStandInAPythonScript)
{
    const std::string quoted = UT_String(GetParam()).makeSmartQuotedString('\'').toStdString();
    python("# " + std::string("gr\xc3\xbcn \"x\" 'y'") + "\ntext = " + quoted +
           "\nkwargs['node'].parm('note').set(text)");
    EXPECT_EQ(press("press"), 1);
    EXPECT_EQ(said(), "");
    EXPECT_EQ(textOf("note"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Texts, CallbackText,
                         ::testing::Values("it's", "say \"x\"", "both ' and \"", "two\nlines", "tab\there",
                                           "gr\xc3\xbcn \xe2\x98\x83", "'); raise SystemExit(", "''' \"\"\"",
                                           "", "a; echo b", "# remark", "percent %s %d"),
                         [](const auto& info) { return "text" + std::to_string(info.index); });

TEST_F(ParmCallback, TakesABackslashAtTheEndOfAValue)
{
    // Typed twice, since the host's texts take the next character as it is.
    setText("file", "C:\\\\new\\\\");
    const std::string value = textOf("file");
    EXPECT_EQ(kwargsOf("file").at("script_value"), value);
}

// --- Scripts that reach for their own ground --------------------------------------------------------------------

TEST_F(ParmCallback, LetsAScriptLoopOverItsArgumentsAndChangeThem)
{
    python("for key in list(kwargs):\n"
           "    if isinstance(kwargs[key], str):\n"
           "        kwargs[key] = key\n"
           "kwargs['node'].parm('note').set(kwargs['script_value'])\n"
           "kwargs.clear()");
    EXPECT_EQ(press("amount"), 1);
    EXPECT_EQ(textOf("note"), "script_value");
    EXPECT_EQ(said(), "");
}

TEST_F(ParmCallback, LetsAScriptEditItsOwnParameterOnce)
{
    python("kwargs['parm'].set(kwargs['parm'].eval() + 1)");
    EXPECT_EQ(press("amount"), 1);
    EXPECT_EQ(textOf("amount"), "1");
}

TEST_F(ParmCallback, LetsAScriptPressAnotherButton)
{
    python("if kwargs['parm_name'] == 'press':\n"
           "    kwargs['node'].parm('choose').pressButton(menu_index=1)\n"
           "else:\n"
           "    kwargs['node'].parm('note').set(kwargs['script_value'])");
    EXPECT_EQ(press("press"), 1);
    EXPECT_EQ(textOf("note"), "second");
}

TEST_F(ParmCallback, LetsAScriptDeleteItsNode)
{
    for (const bool inPython : {true, false})
    {
        if (inPython)
            python("kwargs['node'].destroy()\nimport builtins\nbuiltins.after = 1");
        else
            hscript("opparm . amount 7");
        OP_Node* doomed = OPgetDirector()->getManager("obj")->createNode("scripted", "doomed");
        const int id = doomed->getUniqueId();
        const OnChange listener(*doomed, [doomed] { doomed->getParent()->destroyNode(doomed); });
        EXPECT_EQ(parmCallback(doomed, 0, 0, doomed->getParm("amount").getTemplatePtr()), 1);
        EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    }
    EXPECT_EQ(PYrunPythonExpressionAndExpectNoErrors("after", PY_Result::INT).myIntValue, 1);
    EXPECT_EQ(said(), "");
}

TEST_F(ParmCallback, EndsWithANodeThatAnExpressionDeletesWhileItsArgumentsAreCollected)
{
    node->getParm("color").setExpression(0, "hou.pwd().destroy() or 1", CH_PYTHON, true, 0);
    const int id = node->getUniqueId();
    python("import builtins\nbuiltins.late = 1");
    EXPECT_EQ(press("color"), 1);
    EXPECT_EQ(OP_Node::lookupNode(id), nullptr);
    const PY_Result late =
        PYrunPythonExpressionAndExpectNoErrors("hasattr(__import__('builtins'), 'late')", PY_Result::INT);
    EXPECT_EQ(late.myIntValue, 0) << "there is no node for the script to be about";
}

TEST_F(ParmCallback, LetsAScriptRemoveTheInstanceThatItBelongsTo)
{
    node->setInt("outer", 0, 0, 1);
    python("kwargs['node'].parm('outer').set(0)");
    EXPECT_EQ(press("middle1"), 1);
    EXPECT_EQ(node->getParmPtr("middle1"), nullptr);
    EXPECT_EQ(said(), "");
}

TEST_F(ParmCallback, LetsAScriptRenameItsNode)
{
    python("kwargs['node'].setName('renamed')\nkwargs['parm'].set(5)");
    EXPECT_EQ(press("amount"), 1);
    EXPECT_EQ(node->getFullPath().toStdString(), "/obj/renamed");
    EXPECT_EQ(textOf("amount"), "5");
}

// --- Undo -------------------------------------------------------------------------------------------------------

typedef CallbackTest CallbackUndo;

TEST_F(CallbackUndo, RestoresEverythingThatAScriptChangedInOneStep)
{
    python("n = kwargs['node']\nn.parm('amount').set(3)\nn.parm('note').set('x')\nn.parm('outer').set(2)");
    press("press");
    EXPECT_EQ(UTgetUndoManager()->getUndoLabels(), (std::vector<std::string>{"Parameter Callback"}));
    EXPECT_TRUE(UTgetUndoManager()->performUndo());
    EXPECT_EQ(textOf("amount"), "0");
    EXPECT_EQ(textOf("note"), "");
    EXPECT_EQ(node->getParmPtr("middle1"), nullptr);
    EXPECT_TRUE(UTgetUndoManager()->performRedo());
    EXPECT_EQ(textOf("amount"), "3");
}

TEST_F(CallbackUndo, RestoresWhatAScriptChangedBeforeItFailed)
{
    python("kwargs['node'].parm('amount').set(3)\nraise ValueError('late')");
    press("press");
    EXPECT_THAT(said(), HasSubstr("late"));
    EXPECT_TRUE(UTgetUndoManager()->performUndo());
    EXPECT_EQ(textOf("amount"), "0");
}

TEST_F(CallbackUndo, RestoresTheEditAndWhatItsScriptChangedTogether)
{
    hscript("opparm . note \"was $script_value\"");
    EXPECT_TRUE(node->enterParm(node->getParm("amount"), 0, "4", 0));
    EXPECT_EQ(textOf("note"), "was 4");
    EXPECT_EQ(UTgetUndoManager()->getUndoLabels().size(), 1u);
    EXPECT_TRUE(UTgetUndoManager()->performUndo());
    EXPECT_EQ(textOf("amount"), "0");
    EXPECT_EQ(textOf("note"), "");
}

// --- From the metadata ------------------------------------------------------------------------------------------

TEST(MetadataCallback, RunsWhenAPersonEditsTheShadersParameter)
{
    StandinSession session;
    session.renderer.shader("s")
        .floats({"a", "b"})
        .parmMetaData("a", "houdini.callback",
                      "python:kwargs['node'].parm('b').set(2 * kwargs['parm'].eval())");
    session.registerAll();
    OP_Node& node = *session.container().createNode("korvan::s");
    EXPECT_TRUE(node.enterParm(node.getParm("a"), 0, "0.5", 0));
    EXPECT_EQ(node.evalFloat("b", 0, 0), 1);
    node.setFloat("a", 0, 0, 3);
    EXPECT_EQ(node.evalFloat("b", 0, 0), 1) << "only a person's edit calls it";
}

TEST(MetadataCallback, OfAnExtraButtonRunsWhenItIsPressed)
{
    StandinSession session;
    session.renderer.shader("s")
        .floats({"a"})
        .metaData("houdini.parm.button.reset", "hscript:opparm . a 7")
        .metaData("houdini.parm.button.named", "opparm . a 8");
    session.registerAll();
    OP_Node& node = *session.container().createNode("korvan::s");
    EXPECT_EQ(node.pressParm(node.getParm("reset"), 0, 0), 1);
    EXPECT_EQ(node.evalFloat("a", 0, 0), 7);
    EXPECT_EQ(node.pressParm(node.getParm("named"), 0, 0), 1);
    EXPECT_EQ(node.evalFloat("a", 0, 0), 8);
}

// The arguments' own text is not quoted but for the values.
TEST(MetadataCallback, OfAParameterWithAQuoteInItsNameIsReported)
{
    StandinSession session;
    session.renderer.shader("s").floats({"it's"}).parmMetaData("it's", "houdini.callback", "python:pass");
    session.registerAll();
    OP_Node& node = *session.container().createNode("korvan::s");
    EXPECT_EQ(node.pressParm(node.getParm("it's"), 0, 0), 1);
    std::string said;
    for (const standin::Message& message : standin::takeMessages())
        said += message.text + "\n";
    EXPECT_THAT(said, HasSubstr("Error setting kwargs:\n"));
    EXPECT_EQ(UTgetUndoManager()->getLevel(), 0);
}
