#include "node_reader.h"

#include <limits>
#include <set>

namespace zelk::catalogue
{

namespace
{

struct KindRow
{
    const char* word;
    int kind;
};

const KindRow kind_rows[] = {
    {"shader", KR_NODE_SHADER},
    {"camera", KR_NODE_CAMERA},
    {"light", KR_NODE_LIGHT},
    {"shape", KR_NODE_SHAPE},
};

int readKind(const Place& place)
{
    const std::string& word = textAt(place);
    for (const KindRow& row : kind_rows)
        if (word == row.word)
            return row.kind;
    throw Mistake(place, "There is no node kind " + quoted(place.json), "write \"shader\" or \"camera\"");
}

const std::string& readName(const Place& place)
{
    const std::string& name = textAt(place);
    if (name.empty())
        throw Mistake(place, "The name is empty", "give it a name");
    return name;
}

// A raw code under `codeKey`, which any number of a newer renderer may be, or else a type word under `wordKey`.
int readType(const Place& owner, const char* wordKey, const char* codeKey, int least, int most)
{
    const Place code = owner.member(codeKey);
    if (!code.json.is_null())
        return static_cast<int>(wholeNumber(code, least, most));
    return typeOfWord(owner.member(wordKey));
}

int readType(const Place& owner, const char* wordKey, const char* codeKey)
{
    return readType(owner, wordKey, codeKey, std::numeric_limits<int>::min(),
                    std::numeric_limits<int>::max());
}

// A missing list is an empty one.
void expectList(const Place& list, const std::string& what)
{
    if (!list.json.is_array() && !list.json.is_null())
        throw Mistake(list, "Expected " + what + ", found " + quoted(list.json),
                      "write it in square brackets");
}

std::vector<const char*> readItems(const Place& list)
{
    expectList(list, "a list of texts");
    std::vector<const char*> items;
    for (std::size_t i = 0; i < list.json.size(); ++i)
        items.push_back(textAt(list.element(i)).c_str());
    items.push_back(nullptr);
    return items;
}

std::optional<DefaultValue> readDefault(const Place& place, int type)
{
    const Place value = place.member("default");
    // Even without elements an array says what it would hold.
    if (type == KR_TYPE_ARRAY)
        return DefaultValue::readArray(
            static_cast<std::uint8_t>(readType(place, "element", "element_code", 0, 255)), value);
    if (value.json.is_null())
        return std::nullopt;
    return DefaultValue::read(type, value);
}

void expectObject(const Place& place)
{
    if (!place.json.is_object())
        throw Mistake(place, "Expected an object, found " + quoted(place.json), "write it in braces");
}

Parameter readParameter(const Place& place)
{
    expectObject(place);
    Parameter parameter;
    parameter.name = readName(place.member("name"));
    parameter.type = readType(place, "type", "type_code");
    if (parameter.type == KR_TYPE_ENUM)
        parameter.items = readItems(place.member("enum"));
    parameter.defaultValue = readDefault(place, parameter.type);
    return parameter;
}

std::vector<Parameter> readParameters(const Place& list)
{
    expectList(list, "a list of objects");
    std::vector<Parameter> parameters;
    std::set<std::string> names;
    for (std::size_t i = 0; i < list.json.size(); ++i)
    {
        parameters.push_back(readParameter(list.element(i)));
        if (!names.insert(parameters.back().name).second)
            throw Mistake(list.element(i), "The parameter \"" + parameters.back().name + "\" is there twice",
                          "rename one of them");
    }
    return parameters;
}

bool readBuiltin(const Place& place)
{
    if (!place.json.is_boolean() && !place.json.is_null())
        throw Mistake(place, "Expected true or false, found " + quoted(place.json), "write true or false");
    return place.json.is_boolean() && place.json.get<bool>();
}

} // namespace

Node readNode(const Place& place)
{
    expectObject(place);
    Node node;
    node.name = readName(place.member("name"));
    node.kind = readKind(place.member("kind"));
    node.output = readType(place, "output", "output_code");
    node.builtin = readBuiltin(place.member("builtin"));
    node.parameters = readParameters(place.member("parameters"));
    expectList(place.member("metadata"), "a list of objects");
    return node;
}

} // namespace zelk::catalogue
