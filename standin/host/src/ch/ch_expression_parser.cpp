// Recursive descent, one function for each level of binding, the loosest first:
//   or, and, equality, comparison, sum, product, unary, power, operand.
#include "ch/ch_tree.h"

#include <charconv>
#include <cstring>

namespace
{
/// Deeper nesting is refused, so that no text can exhaust the stack.
const int max_depth = 100;

struct OperatorRow
{
    const char* sign;
    CH_ExprOp op;
    int level;
};

// Longer signs first: "<=" is not "<".
const OperatorRow operator_rows[] = {
    {"||", CH_ExprOp::Or, 0},       {"&&", CH_ExprOp::And, 1},       {"==", CH_ExprOp::Equal, 2},
    {"!=", CH_ExprOp::NotEqual, 2}, {"<=", CH_ExprOp::LessEqual, 3}, {">=", CH_ExprOp::GreaterEqual, 3},
    {"<", CH_ExprOp::Less, 3},      {">", CH_ExprOp::Greater, 3},    {"+", CH_ExprOp::Add, 4},
    {"-", CH_ExprOp::Subtract, 4},  {"*", CH_ExprOp::Multiply, 5},   {"/", CH_ExprOp::Divide, 5},
    {"%", CH_ExprOp::Modulo, 5},
};
const int first_unary_level = 6;

struct SpecialRow
{
    const char* name;
    CH_ExprOp op;
    std::size_t arguments;
};

// Functions that do more than look at the values of their arguments.
const SpecialRow special_rows[] = {
    {"ch", CH_ExprOp::Channel, 1},
    {"chf", CH_ExprOp::Channel, 1},
    {"chs", CH_ExprOp::ChannelText, 1},
    {"if", CH_ExprOp::If, 3},
};

class Parser
{
public:
    Parser(const std::string& text, CH_Expression::Tree& tree) : m_text(text), m_tree(tree) {}

    void run()
    {
        CH_ExprNodePtr root = binary(0);
        skipBlanks();
        if (root && m_at != m_text.size())
            root = fail("'" + std::string(1, m_text[m_at]) + "' is not expected here");
        m_tree.root = std::move(root);
    }

private:
    CH_ExprNodePtr fail(const std::string& what) { return failAt(static_cast<int>(m_at) + 1, what); }
    CH_ExprNodePtr failAt(int column, const std::string& what)
    {
        if (m_tree.error.empty())
            m_tree.error = "column " + std::to_string(column) + ": " + what;
        return nullptr;
    }

    void skipBlanks()
    {
        while (m_at < m_text.size() && std::strchr(" \t\r\n", m_text[m_at]))
            ++m_at;
    }
    char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
    bool take(const char* sign)
    {
        skipBlanks();
        const std::size_t size = std::strlen(sign);
        if (m_text.compare(m_at, size, sign) != 0)
            return false;
        m_at += size;
        return true;
    }

    CH_ExprNodePtr make(CH_ExprOp op) const
    {
        CH_ExprNodePtr node(new CH_ExprNode);
        node->op = op;
        node->column = static_cast<int>(m_at) + 1;
        return node;
    }

    const OperatorRow* takeOperator(int level)
    {
        for (const OperatorRow& row : operator_rows)
            if (row.level == level && take(row.sign))
                return &row;
        return nullptr;
    }

    CH_ExprNodePtr binary(int level)
    {
        if (level == first_unary_level)
            return unary();
        CH_ExprNodePtr left = binary(level + 1);
        const OperatorRow* row = nullptr;
        while (left && (row = takeOperator(level)) != nullptr)
        {
            CH_ExprNodePtr node = make(row->op);
            node->operands.push_back(std::move(left));
            CH_ExprNodePtr right = binary(level + 1);
            if (!right)
                return nullptr;
            node->operands.push_back(std::move(right));
            // A long chain makes a deep tree, which is walked by recursion as well.
            if (++m_chain > 10 * max_depth)
                return fail("the expression is too long");
            left = std::move(node);
        }
        return left;
    }

    CH_ExprNodePtr unary()
    {
        if (++m_depth > max_depth)
            return fail("the expression is nested too deeply");
        CH_ExprNodePtr node;
        if (take("!"))
            node = withOperand(make(CH_ExprOp::Not), unary());
        else if (take("-"))
            node = withOperand(make(CH_ExprOp::Minus), unary());
        else if (take("+"))
            node = unary();
        else
            node = power();
        --m_depth;
        return node;
    }

    CH_ExprNodePtr power()
    {
        CH_ExprNodePtr base = operand();
        if (!base || !take("^"))
            return base;
        CH_ExprNodePtr node = withOperand(make(CH_ExprOp::Power), std::move(base));
        return withOperand(std::move(node), unary());
    }

    static CH_ExprNodePtr withOperand(CH_ExprNodePtr node, CH_ExprNodePtr operand)
    {
        if (!node || !operand)
            return nullptr;
        node->operands.push_back(std::move(operand));
        return node;
    }

    CH_ExprNodePtr operand()
    {
        skipBlanks();
        const char c = peek();
        if (m_at == m_text.size())
            return fail("a value is missing");
        if (CHisDigit(c) || c == '.')
            return number();
        if (c == '"' || c == '\'')
            return text(c);
        if (c == '$')
            return variable();
        if (c == '(')
            return parenthesised();
        if (CHisNameStart(c))
            return call();
        return fail("'" + std::string(1, c) + "' is not expected here");
    }

    CH_ExprNodePtr number()
    {
        CH_ExprNodePtr node = make(CH_ExprOp::Number);
        const char* begin = m_text.c_str() + m_at;
        const std::from_chars_result read =
            std::from_chars(begin, m_text.c_str() + m_text.size(), node->number);
        if (read.ec != std::errc())
            return fail("this is no number");
        m_at += static_cast<std::size_t>(read.ptr - begin);
        if (CHisNameCharacter(peek()))
            return fail("'" + std::string(1, peek()) + "' does not belong to a number");
        return node;
    }

    CH_ExprNodePtr text(char quote)
    {
        CH_ExprNodePtr node = make(quote == '"' ? CH_ExprOp::Expanded : CH_ExprOp::Text);
        std::size_t at = m_at + 1;
        for (; at < m_text.size() && m_text[at] != quote; ++at)
        {
            const bool escaped = m_text[at] == '\\' && at + 1 < m_text.size() &&
                                 (m_text[at + 1] == quote || m_text[at + 1] == '\\');
            at += escaped;
            node->text += m_text[at];
        }
        if (at >= m_text.size())
            return failAt(node->column, std::string("the text has no closing ") + quote);
        m_at = at + 1;
        m_tree.usesTime |= quote == '"' && CHstringUsesTime(node->text.c_str());
        return node;
    }

    CH_ExprNodePtr variable()
    {
        CH_ExprNodePtr node = make(CH_ExprOp::Variable);
        ++m_at;
        const bool braced = peek() == '{';
        m_at += braced;
        while (CHisNameCharacter(peek()))
            node->text += m_text[m_at++];
        if (node->text.empty())
            return fail("the name of a variable is missing after '$'");
        if (braced && peek() != '}')
            return fail("the name of the variable has no closing }");
        m_at += braced;
        m_tree.usesTime |= CHisTimeVariable(node->text);
        return node;
    }

    CH_ExprNodePtr parenthesised()
    {
        ++m_at;
        CH_ExprNodePtr node = binary(0);
        if (node && !take(")"))
            return fail("a closing ) is missing");
        return node;
    }

    CH_ExprNodePtr call()
    {
        CH_ExprNodePtr node = make(CH_ExprOp::Call);
        std::string name;
        while (CHisNameCharacter(peek()))
            name += m_text[m_at++];
        if (!take("("))
            return failAt(node->column,
                          "'" + name +
                              "' is not a value; a text stands in quotes, a variable begins with '$'");
        std::size_t fewest = 0;
        std::size_t most = 0;
        if (!chooseFunction(name, *node, fewest, most))
            return failAt(node->column, "there is no function " + name + "()");
        if (!arguments(*node))
            return nullptr;
        if (node->operands.size() < fewest || node->operands.size() > most)
            return failAt(node->column, name + "() takes " + std::to_string(fewest) +
                                            (most != fewest ? " to " + std::to_string(most) : "") +
                                            " arguments, not " + std::to_string(node->operands.size()));
        return node;
    }

    static bool chooseFunction(const std::string& name, CH_ExprNode& node, std::size_t& fewest,
                               std::size_t& most)
    {
        for (const SpecialRow& row : special_rows)
            if (name == row.name)
            {
                node.op = row.op;
                fewest = most = row.arguments;
                return true;
            }
        node.function = CHfindFunction(name);
        if (!node.function)
            return false;
        fewest = static_cast<std::size_t>(node.function->minArguments);
        most = static_cast<std::size_t>(node.function->maxArguments);
        return true;
    }

    bool arguments(CH_ExprNode& node)
    {
        if (take(")"))
            return true;
        do
        {
            node.operands.push_back(binary(0));
            if (!node.operands.back())
                return false;
        } while (take(","));
        if (take(")"))
            return true;
        fail("a closing ) is missing");
        return false;
    }

    const std::string& m_text;
    CH_Expression::Tree& m_tree;
    std::size_t m_at = 0;
    int m_depth = 0;
    int m_chain = 0;
};
} // namespace

void CHparse(const std::string& text, CH_Expression::Tree& tree) { Parser(text, tree).run(); }
