#include "description_file.h"

#include "../text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace kshop
{

namespace
{

/// Nobody nests lists in lists in lists this deep; a file that does is damaged, or meant to exhaust the stack.
const int deepest_children = 50;

bool isText(const Json& value) { return value.is_string(); }
bool isTextOrNull(const Json& value) { return value.is_string() || value.is_null(); }
bool isFlag(const Json& value) { return value.is_boolean(); }
bool isWhole(const Json& value) { return value.is_number_integer(); }
// What is no number for JSON, such as the infinities, is written as null.
bool isNumber(const Json& value) { return value.is_number() || value.is_null(); }
bool isList(const Json& value) { return value.is_array(); }
bool isListOrNull(const Json& value) { return value.is_array() || value.is_null(); }
bool isObject(const Json& value) { return value.is_object(); }
bool isObjectOrNull(const Json& value) { return value.is_object() || value.is_null(); }

struct FieldRow
{
    const char* name;
    bool (*fits)(const Json& value);
    const char* wanted;
};

const FieldRow document_fields[] = {{"tables", isObject, "an object"}};

const FieldRow operator_fields[] = {
    {"name", isText, "a text"},
    {"label", isText, "a text"},
    {"icon", isText, "a text"},
    {"class", isText, "a text"},
    {"tab_menu", isTextOrNull, "a text or null"},
    {"help_url", isTextOrNull, "a text or null"},
    {"min_inputs", isWhole, "a whole number"},
    {"max_inputs", isWhole, "a whole number"},
    {"num_outputs", isWhole, "a whole number"},
    {"vopnet_mask", isTextOrNull, "a text or null"},
    {"flags", isWhole, "a whole number"},
    {"inputs", isList, "a list"},
    {"outputs", isList, "a list"},
    {"templates", isList, "a list"},
};

const FieldRow connector_fields[] = {
    {"name", isText, "a text"},
    {"label", isText, "a text"},
    {"type", isWhole, "a whole number"},
};

const FieldRow template_fields[] = {
    {"type", isTextOrNull, "a text or null"},
    {"extended", isWhole, "a whole number"},
    {"size", isWhole, "a whole number"},
    {"token", isText, "a text"},
    {"label", isText, "a text"},
    {"defaults", isList, "a list"},
    {"menu", isObjectOrNull, "an object or null"},
    {"range", isObjectOrNull, "an object or null"},
    {"callback", isFlag, "true or false"},
    {"spare", isObjectOrNull, "an object or null"},
    {"callback_language", isTextOrNull, "a text or null"},
    {"parm_group", isWhole, "a whole number"},
    {"export_level", isWhole, "a whole number"},
    {"help", isTextOrNull, "a text or null"},
    {"disable_when", isTextOrNull, "a text or null"},
    {"hide_when", isTextOrNull, "a text or null"},
    {"invisible", isFlag, "true or false"},
    {"join_next", isFlag, "true or false"},
    {"children", isListOrNull, "a list or null"},
};

const FieldRow default_fields[] = {
    {"value", isNumber, "a number"},
    {"string", isTextOrNull, "a text or null"},
    {"meaning", isWhole, "a whole number"},
};

const FieldRow menu_fields[] = {{"type", isWhole, "a whole number"}};

/// What is wrong, and where.
struct Mistake
{
    std::string text;
};

template <std::size_t count>
void checkFields(const Json& value, const FieldRow (&rows)[count], const std::string& place)
{
    if (!value.is_object())
        throw Mistake{place + " is no object"};
    for (const FieldRow& row : rows)
    {
        const auto field = value.find(row.name);
        if (field == value.end())
            throw Mistake{fmt::format("{} has no \"{}\"", place, row.name)};
        if (!row.fits(*field))
            throw Mistake{fmt::format("{}.{} must be {}", place, row.name, row.wanted)};
    }
}

/// Calls `check` with each element and its place.
template <typename Check>
void checkEach(const Json& list, const std::string& place, Check check)
{
    for (std::size_t i = 0; i < list.size(); ++i)
        check(list[i], fmt::format("{}[{}]", place, i));
}

bool isMenuItem(const Json& item)
{
    return item.is_array() && item.size() == 2 && item[0].is_string() && item[1].is_string();
}

void checkMenu(const Json& menu, const std::string& place)
{
    if (menu.is_null())
        return;
    checkFields(menu, menu_fields, place);
    const auto items = menu.find("items");
    if (items == menu.end())
        return;
    if (!items->is_array())
        throw Mistake{place + ".items must be a list"};
    checkEach(*items, place + ".items",
              [](const Json& item, const std::string& itemPlace)
              {
                  if (!isMenuItem(item))
                      throw Mistake{itemPlace + " must be a token and a label"};
              });
}

void checkTemplate(const Json& value, const std::string& place, int depth)
{
    if (depth > deepest_children)
        throw Mistake{place + " is nested too deep"};
    checkFields(value, template_fields, place);
    checkEach(value["defaults"], place + ".defaults",
              [](const Json& one, const std::string& onePlace)
              { checkFields(one, default_fields, onePlace); });
    checkMenu(value["menu"], place + ".menu");
    checkEach(value["children"], place + ".children",
              [depth](const Json& child, const std::string& childPlace)
              { checkTemplate(child, childPlace, depth + 1); });
}

void checkConnector(const Json& value, const std::string& place)
{
    checkFields(value, connector_fields, place);
}

void checkOperator(const Json& value, const std::string& place)
{
    checkFields(value, operator_fields, place);
    checkEach(value["inputs"], place + ".inputs", checkConnector);
    checkEach(value["outputs"], place + ".outputs", checkConnector);
    checkEach(value["templates"], place + ".templates",
              [](const Json& one, const std::string& onePlace) { checkTemplate(one, onePlace, 0); });
}

void checkDescription(const Json& value)
{
    checkFields(value, document_fields, "the document");
    for (const auto& [name, operators] : value["tables"].items())
    {
        const std::string place = "tables." + name;
        if (!operators.is_array())
            throw Mistake{place + " must be a list"};
        checkEach(operators, place, checkOperator);
    }
}

/// The whole file. False, and errno, when it cannot be read.
bool readFile(const std::string& path, std::string& text)
{
    const bool isInput = path == "-";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(
        isInput ? nullptr : std::fopen(path.c_str(), "rb"),
        [](std::FILE* file) { return std::fclose(file); });
    std::FILE* file = isInput ? stdin : opened.get();
    if (!file)
        return false;
    char buffer[1 << 16];
    errno = 0;
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file))
        text.append(buffer, count);
    return std::ferror(file) == 0;
}

/// Line and column, both from 1, of the byte that a parser stopped at.
std::string positionOf(const std::string& text, std::size_t byte)
{
    const std::string before = text.substr(0, byte > 0 ? byte - 1 : 0);
    const std::size_t lineStart = before.rfind('\n');
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t column = before.size() - (lineStart == std::string::npos ? 0 : lineStart + 1) + 1;
    return fmt::format("{}:{}", line, column);
}

const char* const remedy = "Make it with 'kshop describe --json'.";

} // namespace

bool readDescription(const std::string& path, Json& value, std::string& why)
{
    const std::string name = path == "-" ? "standard input" : path;
    std::string text;
    if (!readFile(path, text))
    {
        why = fmt::format("{} cannot be read: {}. Check the path and its permissions.", name,
                          std::strerror(errno));
        return false;
    }
    try
    {
        value = Json::parse(text);
        checkDescription(value);
        return true;
    }
    catch (const Json::parse_error& error)
    {
        why = fmt::format("{}:{}: this is no JSON. {}", name, positionOf(text, error.byte), remedy);
    }
    catch (const Json::exception& error)
    {
        // A number beyond all bounds, for which the parser knows no place. Its words begin with a heading in brackets.
        const std::string text = error.what();
        const std::size_t heading = text.find("] ");
        why = fmt::format("{}: {}. {}", name, text.substr(heading == std::string::npos ? 0 : heading + 2),
                          remedy);
    }
    catch (const Mistake& mistake)
    {
        why = fmt::format("{}: {}. {}", name, mistake.text, remedy);
    }
    return false;
}

} // namespace kshop
