#include "test_types.h"

#include <CH/CH_Manager.h>

#include <sstream>

using ::testing::HasSubstr;

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
    const char* text;
    const char* output;
};

class Scripts : public ::testing::TestWithParam<Script>
{
};

} // namespace

TEST_P(Scripts, PrintWhatTheySay) { EXPECT_EQ(run(GetParam().text), GetParam().output); }

INSTANTIATE_TEST_SUITE_P(
    Commands, Scripts,
    ::testing::Values(
        Script{"", ""}, Script{"echo", "\n"}, Script{"echo a  b", "a b\n"},
        Script{"echo -n a; echo b", "ab\n"}, Script{"echo 'a  b;c'", "a  b;c\n"},
        Script{"echo \"a \\\"b\\\"\"", "a \"b\"\n"}, Script{"echo a\\ b", "a b\n"},
        Script{"# a remark; echo no\necho yes # not this", "yes\n"}, Script{"echo a#b", "a#b\n"},
        Script{"set v = 7; echo $v ${v}x \"$v\" '$v'; set -u v; echo $v", "7 7x 7 $v\n$v\n"},
        Script{"set v = a b; echo $v; set -u v", "a b\n"},
        Script{"echo $no_such_thing ${no_such_thing} $ $5 ${", "$no_such_thing ${no_such_thing} $ $5 ${\n"},
        Script{"frobnicate 1; echo on",
               "on\n!hscript: unknown command \"frobnicate\". Known commands: echo, set.\n"},
        Script{"echo 'open", "!hscript: a ' is not closed; the command is not run.\n"},
        Script{"set v", "!hscript: set is used as \"set NAME = VALUE\" or \"set -u NAME\".\n"},
        Script{"set 5 = 6",
               "!hscript: \"5\" is no variable name: use letters, digits and '_', no digit first.\n"}));

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
