#include "prm/prm_conditional.h"

#include <cstring>

namespace
{
struct OperatorRow
{
    const char* sign;
    PRM_ConditionalOperator op;
};

const OperatorRow operator_rows[] = {
    {"==", PRM_CONDOP_EQ}, {"!=", PRM_CONDOP_NE}, {">=", PRM_CONDOP_GE},       {"<=", PRM_CONDOP_LE},
    {">", PRM_CONDOP_GT},  {"<", PRM_CONDOP_LT},  {"=~", PRM_CONDOP_REGEX_EQ}, {"!~", PRM_CONDOP_REGEX_NE},
};

struct Word
{
    enum Kind
    {
        PLAIN,
        QUOTED,
        OPEN,
        CLOSE,
        END,
        BROKEN ///< quotes that do not end
    };
    Kind kind;
    std::string text;
};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// Takes the text apart: braces, texts in quotes, and what blanks separate. Parentheses keep their contents together.
class Words
{
public:
    explicit Words(const std::string& text) : m_at(text.c_str()) {}

    Word next()
    {
        while (isBlank(*m_at))
            ++m_at;
        switch (*m_at)
        {
        case '\0':
            return Word{Word::END, ""};
        case '{':
            return brace(Word::OPEN);
        case '}':
            return brace(Word::CLOSE);
        case '"':
            return quoted();
        default:
            return plain();
        }
    }

private:
    Word brace(Word::Kind kind) { return Word{kind, std::string(1, *m_at++)}; }

    Word quoted()
    {
        Word word = {Word::QUOTED, ""};
        for (++m_at; *m_at && *m_at != '"'; ++m_at)
        {
            m_at += *m_at == '\\' && (m_at[1] == '"' || m_at[1] == '\\');
            word.text += *m_at;
        }
        if (!*m_at)
            word.kind = Word::BROKEN;
        else
            ++m_at;
        return word;
    }

    Word plain()
    {
        Word word = {Word::PLAIN, ""};
        int open = 0;
        for (; *m_at && *m_at != '{' && *m_at != '}' && *m_at != '"'; ++m_at)
        {
            if (isBlank(*m_at) && open == 0)
                break;
            open += (*m_at == '(') - (*m_at == ')');
            if (!isBlank(*m_at))
                word.text += *m_at;
        }
        return word;
    }

    const char* m_at;
};

class Parser
{
public:
    Parser(const std::string& text, std::vector<PRM_ConditionalTerm>& terms) : m_words(text), m_terms(terms)
    {
    }

    std::string run()
    {
        m_word = m_words.next();
        const bool braces = m_word.kind == Word::OPEN;
        while (m_error.empty() && m_word.kind != Word::END)
            braces ? group() : term();
        return m_error;
    }

private:
    void fail(const std::string& what)
    {
        if (m_error.empty())
            m_error = what;
    }
    void advance() { m_word = m_words.next(); }

    void group()
    {
        if (m_word.kind != Word::OPEN)
            return fail("'" + m_word.text + "' stands outside of the braces");
        advance();
        const std::size_t before = m_terms.size();
        while (m_error.empty() && m_word.kind != Word::CLOSE && m_word.kind != Word::END)
            term();
        if (m_word.kind != Word::CLOSE)
            return fail("a closing } is missing");
        if (m_terms.size() == before)
            return fail("there is nothing between { and }");
        advance();
        ++m_group;
    }

    void term()
    {
        if (m_word.kind != Word::PLAIN)
            return fail("the name of a parameter is expected, not '" + m_word.text + "'");
        PRM_ConditionalTerm term;
        term.subject = m_word.text;
        term.group = m_group;
        advance();
        if (!takeOperator(term.op))
            return fail("after '" + term.subject + "' an operator is expected, with blanks around it, not '" +
                        m_word.text + "'");
        if (m_word.kind == Word::BROKEN)
            return fail("the text after '" + term.subject + "' has no closing \"");
        PRM_ConditionalOperator unwanted;
        const bool value = m_word.kind == Word::QUOTED ||
                           (m_word.kind == Word::PLAIN && !findOperator(m_word.text, unwanted));
        if (!value)
            return fail("a value is missing after the operator behind '" + term.subject + "'");
        term.value = m_word.text;
        term.quoted = m_word.kind == Word::QUOTED;
        advance();
        m_terms.push_back(term);
    }

    static bool findOperator(const std::string& sign, PRM_ConditionalOperator& op)
    {
        for (const OperatorRow& row : operator_rows)
            if (sign == row.sign)
            {
                op = row.op;
                return true;
            }
        return false;
    }

    bool takeOperator(PRM_ConditionalOperator& op)
    {
        if (m_word.kind != Word::PLAIN || !findOperator(m_word.text, op))
            return false;
        advance();
        return true;
    }

    Words m_words;
    std::vector<PRM_ConditionalTerm>& m_terms;
    Word m_word = {Word::END, ""};
    std::string m_error;
    int m_group = 0;
};

/// Whether `c` is in the set whose text begins behind '['; `set` moves behind the closing ']'.
bool inSet(char c, const char*& set)
{
    const bool inverted = *set == '^' || *set == '!';
    set += inverted;
    bool found = false;
    for (const char* first = set; *set && (*set != ']' || set == first); ++set)
    {
        const bool range = set[1] == '-' && set[2] && set[2] != ']';
        found |= range ? c >= set[0] && c <= set[2] : c == *set;
        set += range ? 2 : 0;
    }
    set += *set == ']';
    return found != inverted;
}
} // namespace

bool PRMparseConditions(const std::string& text, std::vector<PRM_ConditionalTerm>& terms, std::string& error)
{
    terms.clear();
    error = Parser(text, terms).run();
    if (!error.empty())
        terms.clear();
    return error.empty();
}

bool PRMmatchPattern(const char* text, const char* pattern)
{
    const char* retryText = nullptr;
    const char* retryPattern = nullptr;
    while (*text || *pattern)
    {
        if (*pattern == '*')
        {
            retryPattern = ++pattern;
            retryText = text;
            continue;
        }
        const char* rest = pattern + 1;
        const bool matches = *text && *pattern &&
                             (*pattern == '[' ? inSet(*text, rest) : *pattern == '?' || *pattern == *text);
        if (matches)
        {
            pattern = rest;
            ++text;
            continue;
        }
        // The last star takes one character more.
        if (!retryText || !*retryText)
            return false;
        text = ++retryText;
        pattern = retryPattern;
    }
    return true;
}
