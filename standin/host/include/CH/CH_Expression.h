#pragma once
// The hscript expression language, as far as the stand-in goes. The class is the stand-in's own; the toolkit
// keeps its parser to itself.
//
//   numbers      1  2.5  1e-3          texts        "with \"escapes\", $VAR and `backquotes`"  'literal'
//   variables    $F $FF $T $FPS $OS $HIP $NAME ${NAME}
//   channels     ch("path")  chf("path")  chs("path")
//   operators    || && == != < <= > >= + - * / % ^ unary - + !   and parentheses; + joins texts
//   functions    the table `functions` in ch_expression_functions.cpp; if(condition, then, else)
//
// A comparison gives 1 or 0. Numbers are read and printed the same under every locale.
#include <SYS/SYS_Types.h>

#include <memory>
#include <string>

/// A number or a text.
struct CH_ExprValue
{
    CH_ExprValue() : isText(false), number(0) {}
    explicit CH_ExprValue(fpreal value) : isText(false), number(value) {}
    explicit CH_ExprValue(const std::string& value) : isText(true), number(0), text(value) {}

    /// The number; of a text its leading number, 0 when it has none.
    fpreal asNumber() const;
    /// The text; of a number its shortest form of up to six digits ("0.5", "3").
    std::string asText() const;

    bool isText;
    fpreal number;
    std::string text;
};

/// What an expression asks its surroundings for.
class CH_ExprContext
{
public:
    CH_ExprContext(fpreal evalTime, int evalThread) : time(evalTime), thread(evalThread) {}
    virtual ~CH_ExprContext();

    /// A variable without its '$'. False when there is none. The time variables (F, FF, T, FPS) are answered
    /// by the language itself.
    virtual bool getVariable(const char* name, CH_ExprValue& value);
    /// Value of the channel at `path` ("tx", "../node/tx"). False with a sentence in `error` when it cannot
    /// be had.
    virtual bool getChannel(const char* path, bool asText, CH_ExprValue& value, std::string& error);

    const fpreal time; ///< seconds
    const int thread;
};

/// A parsed expression. Evaluating does not change it, so threads may share it.
class CH_Expression
{
public:
    /// Parses `text`. Never throws; a faulty text gives an expression that only has an error.
    explicit CH_Expression(const std::string& text);
    ~CH_Expression();

    /// A sentence with the column, from 1, of what could not be read; empty when all is well.
    const std::string& parseError() const;
    /// True when the value can change with time by itself.
    bool usesTime() const;

    /// False with a sentence in `error`, and `value` 0, when the expression has no value.
    bool evaluate(CH_ExprContext& context, CH_ExprValue& value, std::string& error) const;

    struct Tree; // the parser's business

private:
    CH_Expression(const CH_Expression&);
    CH_Expression& operator=(const CH_Expression&);

    std::unique_ptr<Tree> m_tree;
};

/// Expands $VAR, ${VAR} and `expression` in a text; a backslash before '$' or '`' makes that an ordinary character.
/// Unknown variables stay as typed. False, with a sentence in `error`, when a backquoted expression has no value; the
/// rest of the text is expanded all the same.
bool CHexpandString(const char* text, CH_ExprContext& context, std::string& result, std::string& error);

/// Whether expanding the text asks for the time.
bool CHstringUsesTime(const char* text);

/// Reads a whole text as a number, blanks around it allowed. False when it is anything else.
bool CHreadNumber(const char* text, fpreal& value);
/// Shortest form of up to `digits` significant digits, as %g prints it in the C locale.
std::string CHprintNumber(fpreal value, int digits = 6);
