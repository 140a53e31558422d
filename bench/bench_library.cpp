#include "bench_library.h"

#include <kr.h>

namespace bench
{

namespace
{

Item textItem(const std::string& key, const std::string& value) { return {key, Item::text, value, 0}; }
Item boolItem(const std::string& key, bool value) { return {key, Item::boolean, "", value ? 1.0 : 0.0}; }
Item numberItem(const std::string& key, double value) { return {key, Item::number, "", value}; }

/// A type and how many of the forty parameters have it.
struct TypeRow
{
    int type;
    const char* stem;
    int count;
};

const TypeRow type_rows[] = {
    {KR_TYPE_FLOAT, "amount", 13}, {KR_TYPE_RGB, "color", 7}, {KR_TYPE_INT, "samples", 4},
    {KR_TYPE_BOOLEAN, "use", 5},   {KR_TYPE_ENUM, "mode", 3}, {KR_TYPE_STRING, "file", 3},
    {KR_TYPE_VECTOR, "offset", 2}, {KR_TYPE_POINT2, "uv", 1}, {KR_TYPE_MATRIX, "xform", 1},
    {KR_TYPE_ARRAY, "weights", 1},
};

void addRange(std::vector<Item>& items, int type)
{
    if (type != KR_TYPE_FLOAT && type != KR_TYPE_INT)
        return;
    items.push_back(numberItem("min", 0));
    items.push_back(numberItem("softmax", type == KR_TYPE_INT ? 16 : 2));
}

void addField(std::vector<Item>& items, int type)
{
    if (type == KR_TYPE_STRING)
    {
        items.push_back(textItem("houdini.type", "file:image"));
        items.push_back(boolItem("linkable", false));
    }
    if (type == KR_TYPE_ENUM)
    {
        items.push_back(textItem("houdini.menu", "add;Add;multiply;Multiply;screen;Screen"));
        items.push_back(boolItem("linkable", false));
    }
    if (type == KR_TYPE_BOOLEAN)
        items.push_back(boolItem("linkable", false));
}

/// Label and help on all, a condition on every fourth, as artists' shaders have them.
std::vector<Item> itemsOf(int type, const std::string& name, int index)
{
    std::vector<Item> items = {
        textItem("houdini.label", "Label of " + name),
        textItem("desc",
                 "What " + name + " does to the picture, in a sentence or two that an artist can read."),
    };
    addRange(items, type);
    addField(items, type);
    if (index % 4 == 3)
        items.push_back(textItem("houdini.disable_when", "{ use_0 == 0 }"));
    return items;
}

std::vector<Parm> makeParms()
{
    std::vector<Parm> result;
    for (const TypeRow& row : type_rows)
        for (int i = 0; i < row.count; ++i)
        {
            const std::string name = row.stem + ("_" + std::to_string(i));
            result.push_back({name, row.type, itemsOf(row.type, name, static_cast<int>(result.size()))});
        }
    return result;
}

std::string tomlText(const Item& item)
{
    if (item.kind == Item::text)
        return '"' + item.textValue + '"';
    if (item.kind == Item::boolean)
        return item.numberValue != 0 ? "true" : "false";
    return std::to_string(static_cast<int>(item.numberValue));
}

void appendItems(std::string& text, const std::vector<Item>& items)
{
    for (const Item& item : items)
        text += '"' + item.key + "\" = " + tomlText(item) + "\n";
}

} // namespace

std::string shaderName(int index) { return "zelk__bench_" + std::to_string(index); }

const std::vector<Parm>& parms()
{
    static const std::vector<Parm> all = makeParms();
    return all;
}

const std::vector<Item>& shaderItems()
{
    static const std::vector<Item> items = {
        textItem("houdini.label", "Bench Shader"),
        textItem("houdini.icon", "SHELF_bench"),
        textItem("houdini.category", "Bench"),
        textItem("houdini.help_url", "https://korvan.example/bench"),
        textItem("houdini.order", "main use_0 amount_0 amount_1 color_0 color_1 mode_0 file_0"),
        textItem("houdini.parm.folder.main", "Main;7"),
    };
    return items;
}

std::string metadataFileText(int first, int count)
{
    std::string text;
    for (int i = first; i < first + count; ++i)
    {
        const std::string table = '"' + shaderName(i) + '"';
        text += "[" + table + "]\n";
        appendItems(text, shaderItems());
        for (const Parm& parm : parms())
        {
            text += "[" + table + ".parameters." + parm.name + "]\n";
            appendItems(text, parm.items);
        }
    }
    return text;
}

} // namespace bench
