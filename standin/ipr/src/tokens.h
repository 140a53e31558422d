/// MessagePack as a flat list of tokens: parsed once, with limits, and then walked.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelk::ipr
{

enum class TokenKind : std::uint8_t
{
    Flag,
    Integer,
    Float,
    Double,
    Text,
    List,
    Map,
    Other
};

/// One value; those inside a list or a map follow it, a map's keys and values in turn.
struct Token
{
    TokenKind kind;
    std::uint32_t size; ///< Text: bytes; List: values; Map: pairs
    union
    {
        bool flag;
        std::int64_t integer;
        std::uint32_t floatBits; ///< the bits, so that no conversion quiets a signalling NaN
        double real;
        const char* bytes; ///< into the text that was parsed; not terminated
    };

    std::string_view text() const { return {bytes, size}; }
};

/// Parses exactly one value. False, with a sentence without its full stop, when the text is malformed, nests
/// deeper than any record does or holds more values than any record has. The tokens point into `text`.
bool parseTokens(const std::string& text, std::vector<Token>& tokens, std::string& problem);

/// Walks tokens that parseTokens() has made: a list or a map is always complete.
class TokenCursor
{
public:
    explicit TokenCursor(const Token* at) : m_at(at) {}

    const Token& peek() const { return *m_at; }
    const Token& next() { return *m_at++; }

    /// Passes over one value with everything inside it.
    void skip();

private:
    const Token* m_at;
};

} // namespace zelk::ipr
