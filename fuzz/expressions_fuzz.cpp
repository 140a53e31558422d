// Text as an expression, a text with expressions in it, a condition, or a command line; the first byte chooses.
#include "fuzzing.h"
#include "host_world.h"

#include <CH/CH_Expression.h>
#include <OP/OP_CommandManager.h>
#include <PRM/PRM_Conditional.h>
#include <UT/UT_String.h>
#include <UT/UT_UndoManager.h>

#include <sstream>

namespace
{
void evaluate(const std::string& text)
{
    const CH_Expression expression(text);
    expression.usesTime();
    CH_ExprContext context(0.5, 0);
    CH_ExprValue value;
    std::string error;
    const bool has_value = expression.evaluate(context, value, error);
    require(has_value || !error.empty(), "an expression has a value or a sentence");
    require(expression.parseError().empty() || !has_value, "what cannot be parsed has no value");
    if (!has_value)
        return;
    value.asText();
    CH_ExprValue again;
    require(expression.evaluate(context, again, error) && again.isText == value.isText,
            "evaluating does not change it");
}

void expand(const std::string& text)
{
    CH_ExprContext context(0, 0);
    std::string result, error;
    const bool good = CHexpandString(text.c_str(), context, result, error);
    require(good || !error.empty(), "a text expands or has a sentence");
    CHstringUsesTime(text.c_str());
}

void readCondition(const std::string& text)
{
    PRM_Conditional condition;
    UT_String error;
    const bool good = condition.setListFromString(text.c_str(), error);
    require(good || condition.entries() == 0, "a malformed condition has no terms");
    require(good || error.isstring(), "a malformed condition has a sentence");
    UT_String kept;
    condition.getStringFromList(kept);
    require(kept.toStdString() == text.c_str(), "the text is kept as given");
}

void runCommands(const std::string& text)
{
    static OP_Network& network = newNetwork("shop", "korvan_vopnet"); // something for opcf and opparm
    static OP_Node* const node = network.createNode("korvan::fetch", "fetch1");
    require(node != nullptr, "there is a node to set");
    std::ostringstream out, error;
    OPgetDirector()->getCommandManager()->execute(text.c_str(), false, &out, &error);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool started = (startQuietHost(), true);
    (void)started;
    Input input(data, size);
    const unsigned choice = input.byte();
    const std::string text = input.rest();
    void (*const readers[])(const std::string&) = {evaluate, expand, readCondition, runCommands};
    readers[choice % 4](text);
    forgetMessages();
    return 0;
}
