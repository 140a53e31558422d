#include "utils.h"

#include "utils_rows.h"

#include <algorithm>
#include <cstring>

namespace zelk
{
namespace shop
{

namespace
{

/// First and last number of a continuation key: "key2" to "key99".
const int first_continuation = 2;
const int last_continuation = 99;

/// The renderer's name for "the entry itself" is a null parameter name.
const char* parmOrNull(const std::string& parmName) { return parmName.empty() ? nullptr : parmName.c_str(); }

/// Appends the text of one key; false when there is no such key.
bool appendMetaDataStr(const KtNodeEntry* entry, const char* parm, const char* key, std::string& text)
{
    const char* value = nullptr;
    if (!KrMetaDataGetStr(entry, parm, key, &value))
        return false;
    if (value)
        text += value;
    return true;
}

bool isLower(char c) { return c >= 'a' && c <= 'z'; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
char toUpper(char c) { return isLower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

struct TypeRow
{
    int code;           // renderer type code
    const char* name;   // output token, and the word used in messages
    VOP_Type connector; // host connector for one value
    int components;     // floats per value; 1 for anything that is not a float tuple
};

// A code without a row is not an error: a newer renderer may know types that this build does not, and such a
// parameter is shown as a read-only label.
const TypeRow type_rows[] = {
    {KR_TYPE_BYTE, "byte", VOP_TYPE_INTEGER, 1},
    {KR_TYPE_INT, "int", VOP_TYPE_INTEGER, 1},
    {KR_TYPE_UINT, "uint", VOP_TYPE_INTEGER, 1},
    {KR_TYPE_BOOLEAN, "boolean", VOP_TYPE_INTEGER, 1},
    {KR_TYPE_FLOAT, "float", VOP_TYPE_FLOAT, 1},
    // Deliberate: colours are plain vectors for the host, so that colours and vectors can be wired together.
    {KR_TYPE_RGB, "rgb", VOP_TYPE_VECTOR, 3},
    {KR_TYPE_RGBA, "rgba", VOP_TYPE_VECTOR4, 4},
    {KR_TYPE_VECTOR, "vector", VOP_TYPE_VECTOR, 3},
    {KR_TYPE_POINT, "point", VOP_TYPE_VECTOR, 3},
    {KR_TYPE_POINT2, "point2", VOP_TYPE_VECTOR2, 2},
    {KR_TYPE_STRING, "string", VOP_TYPE_STRING, 1},
    {KR_TYPE_POINTER, "pointer", VOP_TYPE_VOID, 1},
    {KR_TYPE_NODE, "node", VOP_TYPE_VOID, 1},
    {KR_TYPE_ARRAY, "array", VOP_TYPE_UNDEF, 1},
    {KR_TYPE_MATRIX, "matrix", VOP_TYPE_MATRIX4, 16},
    {KR_TYPE_ENUM, "enum", VOP_TYPE_INTEGER, 1},
    {KR_TYPE_UNDEFINED, "undefined", VOP_TYPE_UNDEF, 1},
};

const TypeRow* findType(int code) { return findRow(type_rows, &TypeRow::code, code); }

} // namespace

std::string getParmMetaDataStr(const KtNodeEntry* entry, const std::string& parmName, const char* key,
                               const std::string& defaultValue)
{
    const char* parm = parmOrNull(parmName);
    std::string text;
    bool found = appendMetaDataStr(entry, parm, key, text);
    for (int n = first_continuation; found && n <= last_continuation; ++n)
        found = appendMetaDataStr(entry, parm, (key + std::to_string(n)).c_str(), text);
    return text.empty() ? defaultValue : text;
}

std::string getNodeMetaDataStr(const KtNodeEntry* entry, const char* key, const std::string& defaultValue)
{
    return getParmMetaDataStr(entry, std::string(), key, defaultValue);
}

bool getParmMetaDataBool(const KtNodeEntry* entry, const std::string& parmName, const char* key,
                         bool defaultValue)
{
    bool value = defaultValue;
    return KrMetaDataGetBool(entry, parmOrNull(parmName), key, &value) ? value : defaultValue;
}

bool getNodeMetaDataBool(const KtNodeEntry* entry, const char* key, bool defaultValue)
{
    return getParmMetaDataBool(entry, std::string(), key, defaultValue);
}

float getParmMetaDataFlt(const KtNodeEntry* entry, const std::string& parmName, const char* key,
                         float defaultValue)
{
    float value = defaultValue;
    return KrMetaDataGetFlt(entry, parmOrNull(parmName), key, &value) ? value : defaultValue;
}

float getNodeMetaDataFlt(const KtNodeEntry* entry, const char* key, float defaultValue)
{
    // Deliberate: the entry's key is asked for as a boolean, and the default is narrowed to one. See
    // NodeMetaDataFlt.ReadsABoolean.
    return getNodeMetaDataBool(entry, key, defaultValue != 0.0f) ? 1.0f : 0.0f;
}

std::string prettyUnderscores(const std::string& text, bool capitalize)
{
    std::string label = text;
    bool capitalizeNext = capitalize;
    for (char& c : label)
    {
        if (c == '_')
        {
            c = ' ';
            capitalizeNext = capitalize;
        }
        else if (capitalizeNext)
        {
            c = toUpper(c);
            capitalizeNext = false;
        }
    }
    return label;
}

std::string prettyCamelCase(const std::string& text, bool capitalize)
{
    std::string label;
    label.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (i > 0 && isLower(text[i - 1]) && isUpper(text[i]))
            label += ' ';
        label += i == 0 && capitalize ? toUpper(text[i]) : text[i];
    }
    return label;
}

std::string prettyLabel(const std::string& text, bool capitalize)
{
    return text.find('_') != std::string::npos ? prettyUnderscores(text, capitalize)
                                               : prettyCamelCase(text, capitalize);
}

VOP_Type vopType(int rendererType)
{
    const TypeRow* row = findType(rendererType);
    return row ? row->connector : VOP_TYPE_UNDEF;
}

int vectorSize(int rendererType)
{
    const TypeRow* row = findType(rendererType);
    return row ? row->components : 1;
}

const char* typeName(int rendererType)
{
    const TypeRow* row = findType(rendererType);
    return row ? row->name : "<error>";
}

std::vector<std::string> split(const char* text, char separator, bool keepEmpty)
{
    std::vector<std::string> tokens;
    if (!text || !*text)
        return tokens;

    const char* const end = text + std::strlen(text);
    for (const char* begin = text; begin <= end;)
    {
        const char* stop = std::find(begin, end, separator);
        if (keepEmpty || stop != begin)
            tokens.push_back(std::string(begin, stop));
        begin = stop + 1;
    }
    return tokens;
}

} // namespace shop
} // namespace zelk
