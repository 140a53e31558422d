#include "tokens.h"

#include <msgpack.hpp>

#include <cstring>
#include <limits>

namespace zelk::ipr
{
namespace
{
constexpr std::size_t max_depth = 8; // a record has six levels
constexpr std::size_t max_tokens =
    8'000'000; // of 16 bytes each; a colour ramp of a million keys has six million

class Tokenizer : public msgpack::null_visitor
{
public:
    explicit Tokenizer(std::vector<Token>& tokens) : m_tokens(tokens) {}

    const std::string& problem() const { return m_problem; }

    bool visit_nil() { return add(TokenKind::Other) != nullptr; }
    bool visit_boolean(bool value) { return set(TokenKind::Flag, &Token::flag, value); }
    bool visit_negative_integer(std::int64_t value)
    {
        return set(TokenKind::Integer, &Token::integer, value);
    }
    bool visit_float64(double value) { return set(TokenKind::Double, &Token::real, value); }
    bool visit_bin(const char* bytes, std::uint32_t size) { return visit_str(bytes, size); }
    bool visit_ext(const char*, std::uint32_t) { return add(TokenKind::Other) != nullptr; }
    bool end_array() { return leave(); }
    bool end_map() { return leave(); }

    bool visit_positive_integer(std::uint64_t value)
    {
        if (value > std::uint64_t(std::numeric_limits<std::int64_t>::max()))
            return add(TokenKind::Other) != nullptr; // no type of a record is as wide
        return set(TokenKind::Integer, &Token::integer, std::int64_t(value));
    }

    bool visit_float32(float value)
    {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return set(TokenKind::Float, &Token::floatBits, bits);
    }

    bool visit_str(const char* bytes, std::uint32_t size)
    {
        Token* token = add(TokenKind::Text, size);
        if (token)
            token->bytes = bytes;
        return token != nullptr;
    }

    bool start_array(std::uint32_t count) { return enter(TokenKind::List, count); }
    bool start_map(std::uint32_t pairs) { return enter(TokenKind::Map, pairs); }

    void parse_error(std::size_t, std::size_t offset)
    {
        m_problem = "byte " + std::to_string(offset) + " begins no value";
    }
    void insufficient_bytes(std::size_t, std::size_t offset)
    {
        m_problem = "the text ends at byte " + std::to_string(offset) + " within a value";
    }

private:
    Token* add(TokenKind kind, std::uint32_t size = 0)
    {
        if (m_tokens.size() == max_tokens)
        {
            m_problem = "the text holds more than " + std::to_string(max_tokens) + " values";
            return nullptr;
        }
        Token token;
        std::memset(&token, 0, sizeof token);
        token.kind = kind;
        token.size = size;
        m_tokens.push_back(token);
        return &m_tokens.back();
    }

    template <typename T>
    bool set(TokenKind kind, T Token::*member, T value)
    {
        Token* token = add(kind);
        if (token)
            token->*member = value;
        return token != nullptr;
    }

    bool enter(TokenKind kind, std::uint32_t size)
    {
        if (++m_depth > max_depth)
            m_problem = "values are nested more than " + std::to_string(max_depth) + " levels deep";
        return m_depth <= max_depth && add(kind, size);
    }

    bool leave()
    {
        --m_depth;
        return true;
    }

    std::vector<Token>& m_tokens;
    std::string m_problem;
    std::size_t m_depth = 0;
};
} // namespace

bool parseTokens(const std::string& text, std::vector<Token>& tokens, std::string& problem)
{
    tokens.clear();
    Tokenizer tokenizer(tokens);
    std::size_t end = 0;
    if (text.empty())
        problem = "the text is empty";
    else if (!msgpack::parse(text.data(), text.size(), end, tokenizer))
        problem = tokenizer.problem().empty() ? "the text is malformed" : tokenizer.problem();
    else if (end != text.size())
        problem = "something follows the record at byte " + std::to_string(end);
    else
        return true;
    return false;
}

void TokenCursor::skip()
{
    for (std::uint64_t pending = 1; pending > 0; --pending)
    {
        const Token& token = next();
        if (token.kind == TokenKind::List)
            pending += token.size;
        else if (token.kind == TokenKind::Map)
            pending += std::uint64_t(2) * token.size;
    }
}

} // namespace zelk::ipr
