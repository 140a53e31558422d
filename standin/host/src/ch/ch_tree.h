#pragma once
// The parsed form of an expression, shared by parser and evaluation.
#include <CH/CH_Expression.h>

#include <memory>
#include <string>
#include <vector>

struct CH_ExprFunction;

/// What a node of the tree does.
enum class CH_ExprOp
{
    Number,
    Text,     ///< 'as it stands'
    Expanded, ///< "variables and `expressions` inside are expanded"
    Variable,
    Channel,     ///< ch() and chf(): the channel's number
    ChannelText, ///< chs(): the channel's text
    If,
    Call,
    Not,
    Minus,
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Power
};

struct CH_ExprNode
{
    CH_ExprOp op = CH_ExprOp::Number;
    int column = 1; ///< where it stands in the text, from 1
    fpreal number = 0;
    std::string text; ///< of a text or the name of a variable
    const CH_ExprFunction* function = nullptr;
    std::vector<std::unique_ptr<CH_ExprNode>> operands;
};

typedef std::unique_ptr<CH_ExprNode> CH_ExprNodePtr;

/// A function that only looks at the values of its arguments.
struct CH_ExprFunction
{
    const char* name;
    int minArguments;
    int maxArguments;
    CH_ExprValue (*call)(const std::vector<CH_ExprValue>& arguments);
};

/// Null when there is no function of that name.
const CH_ExprFunction* CHfindFunction(const std::string& name);

struct CH_Expression::Tree
{
    CH_ExprNodePtr root; ///< null when the text has an error
    std::string error;
    bool usesTime = false;
};

/// Parses the text into the tree. A text of blanks is an error.
void CHparse(const std::string& text, CH_Expression::Tree& tree);

/// Whether a variable is answered by the language because it depends on time.
bool CHisTimeVariable(const std::string& name);
/// The variables that the language answers itself (F, FF, T, FPS, and F1 to F9: the frame with leading zeros).
bool CHfindTimeVariable(const std::string& name, fpreal time, CH_ExprValue& value);
/// The language's own variables, then the context's.
bool CHfindVariable(const std::string& name, CH_ExprContext& context, CH_ExprValue& value);

inline bool CHisNameStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
inline bool CHisDigit(char c) { return c >= '0' && c <= '9'; }
inline bool CHisNameCharacter(char c) { return CHisNameStart(c) || CHisDigit(c); }
