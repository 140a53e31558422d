#include "test_types.h"

#include <CH/CH_Manager.h>

#include <sstream>

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace
{

/// What a script prints; its complaints follow on a line of their own, after "!".
std::string run(const char* script)
{
    std::ostringstream out, err;
    OPgetDirector()->getCommandManager()->execute(script, false, &out, &err);
    return out.str() + (err.str().empty() ? "" : "!" + err.str());
}

struct Script
{
    const char* name; ///< what the row shows
    const char* text;
    const char* output;
};

/// A test's name has to be the same in every run.
void PrintTo(const Script& script, std::ostream* out) { *out << script.name; }

class Scripts : public ::testing::TestWithParam<Script>
{
};

} // namespace

TEST_P(Scripts, PrintWhatTheySay) { EXPECT_EQ(run(GetParam().text), GetParam().output); }

const Script scripts[] = {
    {"Nothing", "", ""},
    {"EmptyEcho", "echo", "\n"},
    {"Words", "echo a  b", "a b\n"},
    {"EchoWithoutLineEnd", "echo -n a; echo b", "ab\n"},
    {"SingleQuotes", "echo 'a  b;c'", "a  b;c\n"},
    {"EscapedQuotes", "echo \"a \\\"b\\\"\"", "a \"b\"\n"},
    {"EscapedBlank", "echo a\\ b", "a b\n"},
    {"Remarks", "# a remark; echo no\necho yes # not this", "yes\n"},
    {"NoRemarkInsideAWord", "echo a#b", "a#b\n"},
    {"Variables", "set v = 7; echo $v ${v}x \"$v\" '$v'; set -u v; echo $v", "7 7x 7 $v\n$v\n"},
    {"VariableOfTwoWords", "set v = a b; echo $v; set -u v", "a b\n"},
    {"UnknownVariables", "echo $no_such_thing ${no_such_thing} $ $5 ${",
     "$no_such_thing ${no_such_thing} $ $5 ${\n"},
    {"VariablesOfExpressions", "echo $F ${F}x", "1 1x\n"},
    {"UnknownCommand", "frobnicate 1; echo on",
     "on\n!hscript: unknown command \"frobnicate\". Known commands: echo, opcf, opparm, set.\n"},
    {"UnclosedSingleQuote", "echo 'open", "!hscript: a ' is not closed; the command is not run.\n"},
    {"UnclosedDoubleQuote", "echo \"open", "!hscript: a \" is not closed; the command is not run.\n"},
    {"SetWithoutValue", "set v", "!hscript: set is used as \"set NAME = VALUE\" or \"set -u NAME\".\n"},
    {"SetOfANumber", "set 5 = 6",
     "!hscript: \"5\" is no variable name: use letters, digits and '_', no digit first.\n"},
    // Backquotes
    {"Backquotes", "echo `1 + 2` a`2 * 2`b", "3 a4b\n"},
    {"BackquotesInDoubleQuotes", "echo \"<`1 + 2`>\"", "<3>\n"},
    {"NoBackquotesInSingleQuotes", "echo '`1 + 2`'", "`1 + 2`\n"},
    {"EscapedBackquotes", "echo \\`1\\` \"\\`2\\`\"", "`1` `2`\n"},
    {"BackquotedValueStaysOneWord", "set v = a b; set w = `strcat($v, \"  c\")`; echo $w; set -u v w",
     "a b  c\n"},
    {"SeparatorsInBackquotes", "echo `strcat(\"a;\", \"b\")`", "a;b\n"},
    {"VariablesInBackquotes", "set v = 20; echo `$v + 1`; set -u v", "21\n"},
    {"UnclosedBackquote", "echo `1 + 2", "!hscript: a ` is not closed; the command is not run.\n"},
    {"UnclosedBackquoteInQuotes", "echo \"`1 + 2\"",
     "!hscript: a ` is not closed; the command is not run.\n"},
};

INSTANTIATE_TEST_SUITE_P(Commands, Scripts, ::testing::ValuesIn(scripts));

TEST(Commands, ThatHoldAFaultyExpressionAreNotRunAndTheNextOneIs)
{
    const std::string said = run("echo no `1 +` no\necho yes");
    EXPECT_THAT(said, StartsWith("yes\n!hscript: in `1 +`: "));
    EXPECT_THAT(said, EndsWith("; the command is not run.\n"));
    EXPECT_THAT(run("echo ``"), HasSubstr("!hscript: in ``: "));
}

TEST(Commands, AreEchoedAsTypedWhileTheFlagIsOn)
{
    OP_CommandManager* commands = OPgetDirector()->getCommandManager();
    EXPECT_FALSE(commands->getEcho());
    commands->setEcho(true);
    EXPECT_EQ(run("set v = 7;  echo  $v # remark\n\n# remark\nset -u v"),
              "set v = 7\necho  $v\n7\nset -u v\n");
    EXPECT_THAT(run("echo 'a"), StartsWith("echo 'a\n!"));
    commands->setEcho(false);
    EXPECT_EQ(run("echo on"), "on\n");
}

TEST(Commands, SeeTheVariablesThatCodeSets)
{
    OP_CommandManager* commands = OPgetDirector()->getCommandManager();
    commands->setVariable("script_value", "it's $x", false);
    EXPECT_EQ(run("echo $script_value"), "it's $x\n");
    EXPECT_EQ(commands->expandVariables("<$script_value>"), "<it's $x>");
    commands->unsetVariable("script_value");
    UT_String value;
    EXPECT_FALSE(commands->getVariable("script_value", value));
}

TEST(Commands, ShareTheirVariablesWithExpressions)
{
    run("set shared = 12");
    std::string value;
    EXPECT_TRUE(CHgetManager()->getVariable("shared", value));
    EXPECT_EQ(value, "12");
    run("set -u shared");
}

TEST(Commands, ComplainToTheHostWithoutAStream)
{
    OPgetDirector()->getCommandManager()->sendInput("frobnicate");
    const std::vector<standin::Message> messages = standin::takeMessages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0].text, HasSubstr("\"frobnicate\""));
}

TEST(Commands, TakeNoTextForAnEmptyOne)
{
    OPgetDirector()->getCommandManager()->sendInput(nullptr);
    EXPECT_TRUE(standin::takeMessages().empty());
}
