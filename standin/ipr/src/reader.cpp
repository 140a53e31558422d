#include <zelk/ipr/reader.h>

#include "tokens.h"
#include "wire.h"

#include <array>
#include <deque>
#include <exception>
#include <stdexcept>

namespace zelk::ipr
{
namespace
{
// Ends the reading; caught in readDelta().
struct Malformed : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// A name from outside, fit for a message: short and printable.
std::string forMessage(std::string_view name)
{
    constexpr std::size_t shown = 60;
    std::string text = "\"";
    for (const char c : name.substr(0, shown))
        text += static_cast<unsigned char>(c) < 0x20 || c == 0x7f ? '?' : c;
    return text + (name.size() > shown ? "...\"" : "\"");
}

[[noreturn]] void fail(const std::string& place, const std::string& what)
{
    throw Malformed(place + ": " + what);
}

const Token& expect(TokenCursor& cursor, TokenKind kind, const std::string& place, const char* what)
{
    const Token& token = cursor.next();
    if (token.kind != kind)
        fail(place, std::string(what) + " was expected");
    return token;
}

// Where the values of some keys of a map are; null for those that it does not have. The cursor is left behind
// the map.
template <std::size_t count>
std::array<const Token*, count> fields(TokenCursor& cursor, const std::array<const char*, count>& keys,
                                       const std::string& place)
{
    std::array<const Token*, count> found = {};
    const Token& map = expect(cursor, TokenKind::Map, place, "a map");
    for (std::uint32_t i = 0; i < map.size; ++i)
    {
        const Token& key = expect(cursor, TokenKind::Text, place, "a text as key");
        for (std::size_t k = 0; k < count; ++k)
        {
            if (key.text() != keys[k])
                continue;
            if (found[k])
                fail(place, "the key " + forMessage(keys[k]) + " appears twice");
            found[k] = &cursor.peek();
        }
        cursor.skip();
    }
    return found;
}

TokenCursor required(const Token* value, const char* key, const std::string& place)
{
    if (!value)
        fail(place, "the key " + forMessage(key) + " is missing");
    return TokenCursor(value);
}

std::string readText(TokenCursor cursor, const std::string& place)
{
    return std::string(expect(cursor, TokenKind::Text, place, "a text").text());
}

std::uint8_t readCode(TokenCursor cursor, const std::string& place)
{
    const Token& token = expect(cursor, TokenKind::Integer, place, "an integer");
    if (token.integer < 0 || token.integer > 255)
        fail(place, "an integer from 0 to 255 was expected, " + std::to_string(token.integer) + " was found");
    return static_cast<std::uint8_t>(token.integer);
}

void readCell(TokenCursor& cursor, const Codec& codec, void* cell, ReceivedDelta& owner,
              const std::string& place)
{
    if (!codec.unpack(cursor, cell, owner))
        fail(place, std::string(codec.expected) + " was expected");
}

KtArray* readArray(TokenCursor cursor, ReceivedDelta& owner, const std::string& place)
{
    static const std::array<const char*, 3> keys = {"element_type", "values", "key_count"};
    const auto [typeAt, valuesAt, keyCountAt] = fields(cursor, keys, place);
    const std::uint8_t code = readCode(required(typeAt, keys[0], place), place + ".element_type");
    const WireType* type = findWireType(code);
    if (!type || !type->element)
        fail(place, "there are no arrays of type " + std::to_string(code));

    TokenCursor values = required(valuesAt, keys[1], place);
    const std::uint32_t count = expect(values, TokenKind::List, place + ".values", "a list").size;
    const std::uint8_t keyCount = keyCountAt ? readCode(TokenCursor(keyCountAt), place + ".key_count") : 1;
    if (keyCount == 0 ? count != 0 : count % keyCount != 0)
        fail(place,
             std::to_string(count) + " values do not fill " + std::to_string(keyCount) + " motion keys");

    KtArray* array = owner.makeArray(keyCount ? count / keyCount : 0, keyCount, code);
    if (!array)
        fail(place, "there is no memory for " + std::to_string(count) + " elements");
    for (std::uint32_t i = 0; i < count; ++i)
        readCell(values, *type->element, static_cast<char*>(array->data) + i * type->element->bytes, owner,
                 place);
    return array;
}

void readValue(TokenCursor cursor, DeltaParm& parm, ReceivedDelta& owner, const std::string& place)
{
    const WireType* type = findWireType(parm.type);
    if (parm.type == KR_TYPE_ARRAY && cursor.peek().kind == TokenKind::Map)
        parm.value.array = readArray(cursor, owner, place);
    else if (type && type->place == Place::Value)
        readCell(cursor, *type->single, &parm.value, owner, place);
    else if (type && type->place == Place::Matrix)
        readCell(cursor, *type->single, &parm.matrix, owner, place);
    else
        parm.str = readText(cursor, place);
}

void readParm(TokenCursor& cursor, const std::string& name, ReceivedDelta& delta)
{
    static const std::array<const char*, 2> keys = {"type", "value"};
    const std::string place = "parameter " + forMessage(name);
    const auto [typeAt, valueAt] = fields(cursor, keys, place);
    const auto [entry, isNew] = delta.emplace(name, DeltaParm());
    if (!isNew)
        fail(place, "it appears twice");
    entry->second.type = readCode(required(typeAt, keys[0], place), place + ", type");
    readValue(required(valueAt, keys[1], place), entry->second, delta, place);
}

void readRecord(TokenCursor cursor, ReceivedDelta& delta)
{
    static const std::array<const char*, 3> keys = {"node_path", "entry_name", "parms"};
    const std::string place = "record";
    const auto [pathAt, entryAt, parmsAt] = fields(cursor, keys, place);
    delta.nodePath = readText(required(pathAt, keys[0], place), keys[0]);
    delta.entryName = readText(required(entryAt, keys[1], place), keys[1]);
    TokenCursor parms = required(parmsAt, keys[2], place);
    const std::uint32_t count = expect(parms, TokenKind::Map, keys[2], "a map").size;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        const std::string name(expect(parms, TokenKind::Text, keys[2], "a text as key").text());
        readParm(parms, name, delta);
    }
}

void readText(const std::string& text, ReceivedDelta& delta)
{
    if (text.size() > max_record_bytes)
        throw Malformed("the text has " + std::to_string(text.size()) + " bytes, more than any record");
    std::vector<Token> tokens;
    std::string problem;
    if (!parseTokens(text, tokens, problem))
        throw Malformed(problem);
    readRecord(TokenCursor(tokens.data()), delta);
}
} // namespace

struct ReceivedDelta::Belongings
{
    struct Destroy
    {
        void operator()(KtArray* array) const { KrArrayDestroy(array); }
    };
    std::vector<std::unique_ptr<KtArray, Destroy>> arrays;
    std::deque<std::string> texts; // a deque, so that texts stay where they are
};

ReceivedDelta::ReceivedDelta() : m_belongings(new Belongings) {}

ReceivedDelta::~ReceivedDelta() = default;

void ReceivedDelta::reset()
{
    clear();
    nodePath.clear();
    entryName.clear();
    m_belongings->arrays.clear();
    m_belongings->texts.clear();
}

KtArray* ReceivedDelta::makeArray(std::uint32_t elementCount, std::uint8_t keyCount, std::uint8_t type)
{
    m_belongings->arrays.emplace_back(KrArrayAllocate(elementCount, keyCount, type));
    return m_belongings->arrays.back().get();
}

const char* ReceivedDelta::keepText(const std::string& text)
{
    m_belongings->texts.push_back(text);
    return m_belongings->texts.back().c_str();
}

bool readDelta(const std::string& text, ReceivedDelta& delta, std::string& error) noexcept
{
    try
    {
        delta.reset();
        readText(text, delta);
        return true;
    }
    catch (const std::exception& exception)
    {
        delta.reset();
        error = std::string("This is no change record: ") + exception.what() +
                ". Send what Delta::serialize() returned, with a library of the same release.";
    }
    return false;
}

} // namespace zelk::ipr
