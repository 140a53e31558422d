#include <CH/CH_Expression.h>
#include <CH/CH_Manager.h>

#include "ch/ch_tree.h"

#include <cmath>

CH_ExprContext::~CH_ExprContext() {}

bool CH_ExprContext::getVariable(const char*, CH_ExprValue&) { return false; }

bool CH_ExprContext::getChannel(const char* path, bool, CH_ExprValue&, std::string& error)
{
    error = std::string("there is no channel \"") + path + "\"";
    return false;
}

bool CHisTimeVariable(const std::string& name)
{
    return name == "F" || name == "FF" || name == "T" ||
           (name.size() == 2 && name[0] == 'F' && name[1] >= '1' && name[1] <= '9');
}

bool CHfindTimeVariable(const std::string& name, fpreal time, CH_ExprValue& value)
{
    const CH_Manager& manager = *CHgetManager();
    const fpreal frame = std::floor(manager.getSample(time) + 0.5);
    if (name == "F")
        value = CH_ExprValue(frame);
    else if (name == "FF")
        value = CH_ExprValue(manager.getSample(time));
    else if (name == "T")
        value = CH_ExprValue(time);
    else if (name == "FPS")
        value = CH_ExprValue(manager.getSamplesPerSec());
    else if (CHisTimeVariable(name))
    {
        const std::string digits = CHprintNumber(std::fabs(frame), 15);
        const auto width = static_cast<std::size_t>(name[1] - '0');
        const std::string zeros(width > digits.size() ? width - digits.size() : 0, '0');
        value = CH_ExprValue((frame < 0 ? "-" : "") + zeros + digits);
    }
    else
        return false;
    return true;
}

bool CHfindVariable(const std::string& name, CH_ExprContext& context, CH_ExprValue& value)
{
    return CHfindTimeVariable(name, context.time, value) || context.getVariable(name.c_str(), value);
}

namespace
{
/// Ends an evaluation that has no value; never leaves CH_Expression::evaluate().
struct NoValue
{
    std::string sentence;
};

[[noreturn]] void fail(const CH_ExprNode& node, const std::string& what)
{
    throw NoValue{"column " + std::to_string(node.column) + ": " + what};
}

bool readsAsNumber(const CH_ExprValue& value, fpreal& number)
{
    if (value.isText)
        return CHreadNumber(value.text.c_str(), number);
    number = value.number;
    return true;
}

/// Negative, zero or positive, by number when both sides are numbers, else by text.
int compare(const CH_ExprValue& left, const CH_ExprValue& right)
{
    fpreal a = 0;
    fpreal b = 0;
    const bool byText = left.isText && right.isText;
    if (!byText && readsAsNumber(left, a) && readsAsNumber(right, b))
        return (a > b) - (a < b);
    return left.asText().compare(right.asText());
}

class Evaluator
{
public:
    explicit Evaluator(CH_ExprContext& context) : m_context(context) {}

    CH_ExprValue value(const CH_ExprNode& node)
    {
        switch (node.op)
        {
        case CH_ExprOp::Number:
            return CH_ExprValue(node.number);
        case CH_ExprOp::Text:
            return CH_ExprValue(node.text);
        case CH_ExprOp::Expanded:
            return expanded(node);
        case CH_ExprOp::Variable:
            return variable(node);
        case CH_ExprOp::Channel:
            return channel(node, false);
        case CH_ExprOp::ChannelText:
            return channel(node, true);
        case CH_ExprOp::If:
            return value(*node.operands[isTrue(*node.operands[0]) ? 1 : 2]);
        case CH_ExprOp::Call:
            return call(node);
        case CH_ExprOp::Not:
            return CH_ExprValue(isTrue(*node.operands[0]) ? 0.0 : 1.0);
        case CH_ExprOp::Minus:
            return CH_ExprValue(-value(*node.operands[0]).asNumber());
        case CH_ExprOp::Or:
            return CH_ExprValue(isTrue(*node.operands[0]) || isTrue(*node.operands[1]) ? 1.0 : 0.0);
        case CH_ExprOp::And:
            return CH_ExprValue(isTrue(*node.operands[0]) && isTrue(*node.operands[1]) ? 1.0 : 0.0);
        default:
            return binary(node, value(*node.operands[0]), value(*node.operands[1]));
        }
    }

private:
    bool isTrue(const CH_ExprNode& node) { return value(node).asNumber() != 0; }

    CH_ExprValue expanded(const CH_ExprNode& node)
    {
        std::string text;
        std::string error;
        if (!CHexpandString(node.text.c_str(), m_context, text, error))
            fail(node, error);
        return CH_ExprValue(text);
    }

    CH_ExprValue variable(const CH_ExprNode& node)
    {
        CH_ExprValue result;
        if (!CHfindVariable(node.text, m_context, result))
            fail(node, "there is no variable $" + node.text);
        // What scripts and the environment hold is text; in an expression a text of digits is a number.
        fpreal number = 0;
        if (result.isText && CHreadNumber(result.text.c_str(), number))
            return CH_ExprValue(number);
        return result;
    }

    CH_ExprValue channel(const CH_ExprNode& node, bool asText)
    {
        CH_ExprValue result;
        std::string error;
        if (!m_context.getChannel(value(*node.operands[0]).asText().c_str(), asText, result, error))
            fail(node, error);
        return result;
    }

    CH_ExprValue call(const CH_ExprNode& node)
    {
        std::vector<CH_ExprValue> arguments;
        for (const CH_ExprNodePtr& operand : node.operands)
            arguments.push_back(value(*operand));
        return finite(node, node.function->call(arguments));
    }

    static CH_ExprValue finite(const CH_ExprNode& node, const CH_ExprValue& result)
    {
        if (!result.isText && !std::isfinite(result.number))
            fail(node, "the result is no finite number");
        return result;
    }

    static CH_ExprValue binary(const CH_ExprNode& node, const CH_ExprValue& left, const CH_ExprValue& right)
    {
        const fpreal a = left.asNumber();
        const fpreal b = right.asNumber();
        switch (node.op)
        {
        case CH_ExprOp::Equal:
            return CH_ExprValue(compare(left, right) == 0 ? 1.0 : 0.0);
        case CH_ExprOp::NotEqual:
            return CH_ExprValue(compare(left, right) != 0 ? 1.0 : 0.0);
        case CH_ExprOp::Less:
            return CH_ExprValue(compare(left, right) < 0 ? 1.0 : 0.0);
        case CH_ExprOp::LessEqual:
            return CH_ExprValue(compare(left, right) <= 0 ? 1.0 : 0.0);
        case CH_ExprOp::Greater:
            return CH_ExprValue(compare(left, right) > 0 ? 1.0 : 0.0);
        case CH_ExprOp::GreaterEqual:
            return CH_ExprValue(compare(left, right) >= 0 ? 1.0 : 0.0);
        case CH_ExprOp::Add:
            return left.isText || right.isText ? CH_ExprValue(left.asText() + right.asText())
                                               : finite(node, CH_ExprValue(a + b));
        case CH_ExprOp::Subtract:
            return finite(node, CH_ExprValue(a - b));
        case CH_ExprOp::Multiply:
            return finite(node, CH_ExprValue(a * b));
        case CH_ExprOp::Power:
            return finite(node, CH_ExprValue(std::pow(a, b)));
        default:
            break;
        }
        if (b == 0)
            fail(node, "division by zero");
        return finite(node, CH_ExprValue(node.op == CH_ExprOp::Divide ? a / b : std::fmod(a, b)));
    }

    CH_ExprContext& m_context;
};
} // namespace

CH_Expression::CH_Expression(const std::string& text) : m_tree(new Tree) { CHparse(text, *m_tree); }

CH_Expression::~CH_Expression() {}

const std::string& CH_Expression::parseError() const { return m_tree->error; }

bool CH_Expression::usesTime() const { return m_tree->usesTime; }

bool CH_Expression::evaluate(CH_ExprContext& context, CH_ExprValue& value, std::string& error) const
{
    value = CH_ExprValue();
    if (!m_tree->root)
    {
        error = m_tree->error;
        return false;
    }
    try
    {
        value = Evaluator(context).value(*m_tree->root);
        return true;
    }
    catch (const NoValue& reason)
    {
        error = reason.sentence;
        return false;
    }
}
