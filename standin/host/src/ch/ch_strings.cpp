#include "ch/ch_tree.h"

#include <cstring>

namespace
{
/// One piece of a text: plain, a variable, or a backquoted expression.
struct Piece
{
    enum Kind
    {
        PLAIN,
        VARIABLE,
        EXPRESSION
    };
    Kind kind;
    std::string text;   ///< plain text, the variable's name, or the expression's source
    std::string source; ///< as typed
};

bool isEscape(const char* at) { return *at == '\\' && (at[1] == '$' || at[1] == '`'); }

/// Length of the name at `name`; the frame variables with digits end after the digit.
std::size_t nameLength(const char* name)
{
    if (!CHisNameStart(*name))
        return 0;
    if (name[0] == 'F' && name[1] >= '1' && name[1] <= '9')
        return 2;
    std::size_t length = 1;
    while (CHisNameCharacter(name[length]))
        ++length;
    return length;
}

/// The variable that begins at `at` with a '$'; false when none does.
bool readVariable(const char* at, Piece& piece)
{
    const bool braced = at[1] == '{';
    const char* name = at + 1 + braced;
    std::size_t length = nameLength(name);
    if (braced)
        for (length = 0; CHisNameCharacter(name[length]);)
            ++length;
    if (length == 0 || (braced && name[length] != '}'))
        return false;
    piece.kind = Piece::VARIABLE;
    piece.text.assign(name, length);
    piece.source.assign(at, static_cast<std::size_t>(name - at) + length + braced);
    return true;
}

/// The expression that begins at `at` with a backquote; false when it does not end.
bool readExpression(const char* at, Piece& piece)
{
    piece.kind = Piece::EXPRESSION;
    piece.text.clear();
    const char* end = at + 1;
    for (; *end && *end != '`'; ++end)
    {
        end += *end == '\\' && end[1] == '`';
        piece.text += *end;
    }
    if (!*end)
        return false;
    piece.source.assign(at, static_cast<std::size_t>(end + 1 - at));
    return true;
}

/// Calls `visit` with each piece of the text in order.
template <typename Visit>
void forEachPiece(const char* text, Visit visit)
{
    Piece plain = {Piece::PLAIN, "", ""};
    while (*text)
    {
        Piece special = {Piece::PLAIN, "", ""};
        const bool found =
            (*text == '$' && readVariable(text, special)) || (*text == '`' && readExpression(text, special));
        if (!found)
        {
            text += isEscape(text);
            plain.text += *text++;
            continue;
        }
        visit(plain);
        plain.text.clear();
        visit(special);
        text += special.source.size();
    }
    visit(plain);
}

bool expandPiece(const Piece& piece, CH_ExprContext& context, std::string& result, std::string& error)
{
    CH_ExprValue value;
    if (piece.kind == Piece::PLAIN)
        result += piece.text;
    else if (piece.kind == Piece::VARIABLE)
        result += CHfindVariable(piece.text, context, value) ? value.asText() : piece.source;
    else if (CH_Expression(piece.text).evaluate(context, value, error))
        result += value.asText();
    else
        return false;
    return true;
}
} // namespace

bool CHexpandString(const char* text, CH_ExprContext& context, std::string& result, std::string& error)
{
    result.clear();
    if (!text)
        return true;
    if (!std::strpbrk(text, "$`"))
    {
        result = text;
        return true;
    }
    bool whole = true;
    forEachPiece(text,
                 [&](const Piece& piece)
                 {
                     std::string wrong;
                     if (expandPiece(piece, context, result, wrong))
                         return;
                     if (whole)
                         error = "in `" + piece.text + "`: " + wrong;
                     whole = false;
                 });
    return whole;
}

bool CHstringUsesTime(const char* text)
{
    if (!text || !std::strpbrk(text, "$`"))
        return false;
    bool uses = false;
    forEachPiece(text,
                 [&](const Piece& piece)
                 {
                     uses |= piece.kind == Piece::VARIABLE && CHisTimeVariable(piece.text);
                     uses |= piece.kind == Piece::EXPRESSION && CH_Expression(piece.text).usesTime();
                 });
    return uses;
}
