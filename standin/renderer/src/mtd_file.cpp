// Metadata files (.mtd): TOML, a table per node entry, its parameters' tables under "parameters".
// What is left out of them is said, and noted for KrObserveGetLeftOut().
#include "kr_observe.h"
#include "read_file.h"
#include "toml.h"
#include "universe.h"
#include "work.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <exception>
#include <limits>
#include <new>
#include <string>

namespace zelk::renderer
{

namespace
{

// A number that is too large for a float is infinite, which is what a range without an end means.
float floatOf(double number)
{
    if (std::abs(number) <= std::numeric_limits<float>::max() || std::isnan(number))
        return static_cast<float>(number);
    return std::copysign(std::numeric_limits<float>::infinity(), number < 0 ? -1.0f : 1.0f);
}

const char* wordFor(toml::node_type type)
{
    switch (type)
    {
    case toml::node_type::array:
        return "an array";
    case toml::node_type::table:
        return "a table";
    case toml::node_type::date:
    case toml::node_type::time:
    case toml::node_type::date_time:
        return "a date or time";
    default:
        return "a value of an unknown kind";
    }
}

// Puts the contents of one parsed file into the universe.
class MtdLoader
{
public:
    /// `file` lives as long as the universe.
    MtdLoader(Universe& universe, const char* file) : m_universe(universe), m_file(file) {}

    void load(const toml::table& root);

private:
    // One key of a table with what stands under it; the key's text is kept by the document or the arena.
    struct Item
    {
        std::string_view key;
        const toml::node* node;
        toml::source_position position;
    };
    using Items = std::vector<Item>;

    void loadEntry(const Item& item);
    void loadParameters(KtNodeEntry& entry, const Item& item);
    void unknownParameter(const KtNodeEntry& entry, const Item& item);
    void loadMetaData(const toml::table& table, std::string_view leftOut);
    void loadValue(const Item& item);
    void loadText(const Item& item, const std::string& text);
    void collectValues(Items& values, const toml::table& table, std::string_view prefix,
                       std::string_view leftOut);
    void misplaced(const char* entry, const Item& item, const char* where);
    KtPlace placeOf(const Item& item) const;
    void leaveOut(int reason, const Item& item, const char* detail = "");

    static Items itemsOf(const toml::table& table);
    static void sortByPosition(Items& items);

    Universe& m_universe;
    const char* m_file;
    const char* m_entry = ""; // whose table is being loaded
    const char* m_param = "";
    MetaData* m_metaData = nullptr;
    Items m_values; // reused from table to table
};

void MtdLoader::load(const toml::table& root)
{
    for (const Item& item : itemsOf(root))
        if (item.node->is_table())
            loadEntry(item);
        else
            misplaced("", item, "[\"ENTRY\"]");
}

void MtdLoader::loadEntry(const Item& item)
{
    KtNodeEntry* entry = m_universe.find(item.key);
    m_param = "";
    if (!entry)
    {
        m_entry = m_universe.arena().share(item.key);
        leaveOut(KR_LEFT_OUT_ENTRY, item);
        KrMsgWarning(
            "[kr] %s:%u:%u: There is no node entry \"%.*s\". Ignoring its metadata; correct the name, or "
            "install the plug-in that declares it.",
            m_file, item.position.line, item.position.column, static_cast<int>(item.key.size()),
            item.key.data());
        return;
    }
    const toml::table& table = *item.node->as_table();
    m_entry = entry->name;
    m_metaData = &entry->metaData;
    entry->table = placeOf(item);
    loadMetaData(table, "parameters");
    const auto parameters = table.find("parameters");
    if (parameters == table.end())
        return;
    const Item under = {parameters->first.str(), &parameters->second, parameters->first.source().begin};
    loadParameters(*entry, under);
}

void MtdLoader::loadParameters(KtNodeEntry& entry, const Item& under)
{
    if (!under.node->is_table())
        return misplaced(entry.name, under, "[\"ENTRY\".parameters.NAME]");
    for (const Item& item : itemsOf(*under.node->as_table()))
    {
        KtParamEntry* param = entry.findParam(item.key);
        m_param = param ? param->name : m_universe.arena().share(item.key);
        if (!item.node->is_table())
            misplaced(entry.name, item, "[\"ENTRY\".parameters.NAME]");
        else if (!param)
            unknownParameter(entry, item);
        else
        {
            param->table = placeOf(item);
            m_metaData = &param->metaData;
            loadMetaData(*item.node->as_table(), {});
        }
    }
}

void MtdLoader::unknownParameter(const KtNodeEntry& entry, const Item& item)
{
    KrMsgWarning("[kr] %s:%u:%u: \"%s\" has no parameter \"%.*s\". Ignoring its metadata; correct the name.",
                 m_file, item.position.line, item.position.column, entry.name,
                 static_cast<int>(item.key.size()), item.key.data());
    leaveOut(KR_LEFT_OUT_PARAMETER, item);
}

void MtdLoader::loadMetaData(const toml::table& table, std::string_view leftOut)
{
    m_values.clear();
    collectValues(m_values, table, {}, leftOut);
    sortByPosition(m_values);
    for (const Item& item : m_values)
        loadValue(item);
}

// A dotted key makes nested tables; put together again it is the key that was written.
void MtdLoader::collectValues(Items& values, const toml::table& table, std::string_view prefix,
                              std::string_view leftOut)
{
    for (const auto& [name, node] : table)
    {
        std::string_view key = name.str();
        if (!leftOut.empty() && key == leftOut)
            continue;
        if (!prefix.empty())
        {
            const std::string dotted = std::string(prefix) + '.' + std::string(key);
            key = {m_universe.arena().share(dotted), dotted.size()};
        }
        if (const toml::table* nested = node.as_table(); nested && !nested->empty() && !nested->is_inline())
            collectValues(values, *nested, key, {});
        else
            values.push_back({key, &node, name.source().begin});
    }
}

void MtdLoader::loadValue(const Item& item)
{
    Arena& arena = m_universe.arena();
    if (const auto text = item.node->as_string())
        loadText(item, text->get());
    else if (const auto truth = item.node->as_boolean())
        m_metaData->setBool(arena, item.key, truth->get(), placeOf(item));
    else if (const auto number = item.node->as_floating_point())
        m_metaData->setFloat(arena, item.key, floatOf(number->get()), placeOf(item));
    else if (const auto whole = item.node->as_integer())
        m_metaData->setFloat(arena, item.key, static_cast<float>(whole->get()), placeOf(item));
    else
    {
        leaveOut(KR_LEFT_OUT_VALUE, item, wordFor(item.node->type()));
        KrMsgError(
            "[kr] %s:%u:%u: The value of \"%.*s\" is %s. Skipping it; write a string, a boolean or a number.",
            m_file, item.position.line, item.position.column, static_cast<int>(item.key.size()),
            item.key.data(), wordFor(item.node->type()));
    }
}

void MtdLoader::loadText(const Item& item, const std::string& text)
{
    if (text.find('\0') == std::string::npos)
        return m_metaData->setText(m_universe.arena(), item.key, text, placeOf(item));
    KrMsgError(
        "[kr] %s:%u:%u: The text of \"%.*s\" holds a zero character. Skipping it; take the \\u0000 out.",
        m_file, item.position.line, item.position.column, static_cast<int>(item.key.size()), item.key.data());
    leaveOut(KR_LEFT_OUT_VALUE, item, "a text that holds a zero character");
}

void MtdLoader::misplaced(const char* entry, const Item& item, const char* where)
{
    m_entry = entry;
    m_param = "";
    KrMsgError(
        "[kr] %s:%u:%u: \"%.*s\" stands where no metadata can stand. Skipping it; write it below a line %s.",
        m_file, item.position.line, item.position.column, static_cast<int>(item.key.size()), item.key.data(),
        where);
    leaveOut(KR_LEFT_OUT_MISPLACED, item, where);
}

KtPlace MtdLoader::placeOf(const Item& item) const
{
    return {m_file, item.position.line, item.position.column};
}

void MtdLoader::leaveOut(int reason, const Item& item, const char* detail)
{
    m_universe.leaveOut(
        {reason, placeOf(item), m_entry, m_param, m_universe.arena().share(item.key), detail});
}

MtdLoader::Items MtdLoader::itemsOf(const toml::table& table)
{
    Items items;
    items.reserve(table.size());
    for (const auto& [key, node] : table)
        items.push_back({key.str(), &node, key.source().begin});
    sortByPosition(items);
    return items;
}

// The document is sorted by key; the order in the file is the order of iteration.
void MtdLoader::sortByPosition(Items& items)
{
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.position < b.position; });
}

bool isKeyCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::strchr("_-\"' \t", c);
}

// The line of the first dotted key with more parts than anybody writes, or 0. The parser makes a table in a
// table for each part and takes them down by recursion, so that a malicious key would exhaust the stack.
unsigned lineOfEndlessKey(const std::string& text)
{
    constexpr unsigned most_parts = 1000;
    unsigned line = 1, parts = 0;
    char before = '\0';
    for (const char c : text)
    {
        line += before == '\n';
        if (c == '.' && before != '.')
            ++parts;
        else if (c == '\0' || !isKeyCharacter(c))
            parts = 0;
        if (parts > most_parts)
            return line;
        before = c;
    }
    return 0;
}

// The parser words this so that it cannot be understood, garbled at times.
bool standsTwice(const toml::parse_error& error)
{
    return error.description().find("cannot redefine") != std::string_view::npos;
}

std::string sentenceFor(const toml::parse_error& error)
{
    if (standsTwice(error))
        return "This key or table is there already, further up. Skipping the whole file; take one of the two "
               "away.";
    return std::string(error.description()) + ". Skipping the whole file; correct this line.";
}

void leaveOutFile(Universe& universe, int reason, const KtPlace& place, std::string_view detail)
{
    universe.leaveOut({reason, place, "", "", "", universe.arena().keep(detail)});
}

void leaveOutFile(Universe& universe, const char* file, const toml::parse_error& error)
{
    const toml::source_position at = error.source().begin;
    const bool twice = standsTwice(error);
    KrMsgError("[kr] %s:%u:%u: %s", file, at.line, at.column, sentenceFor(error).c_str());
    leaveOutFile(universe, twice ? KR_LEFT_OUT_TWICE : KR_LEFT_OUT_SYNTAX, {file, at.line, at.column},
                 twice ? std::string_view() : error.description());
}

bool loadFile(Universe& universe, const char* file)
{
    std::string reason;
    const std::optional<std::string> text = readFile(file, reason);
    if (!text)
    {
        KrMsgError(
            "[kr] Cannot read the metadata file %s: %s. Skipping it; make it readable or take it away.", file,
            reason.c_str());
        leaveOutFile(universe, KR_LEFT_OUT_UNREADABLE, {file, 0, 0}, reason);
        return false;
    }
    if (const unsigned line = lineOfEndlessKey(*text))
    {
        KrMsgError(
            "[kr] %s:%u:1: A dotted key has too many parts. Skipping the whole file; correct this line.",
            file, line);
        leaveOutFile(universe, KR_LEFT_OUT_SYNTAX, {file, line, 1}, "A dotted key has too many parts");
        return false;
    }
    const toml::parse_result result = toml::parse(std::string_view(*text), std::string_view(file));
    if (result)
        MtdLoader(universe, file).load(result.table());
    else
        leaveOutFile(universe, file, result.error());
    return static_cast<bool>(result);
}

/// What a file's size can lead to, above all too little memory. Metadata that was taken in before stays.
void stopLoading(Universe& universe, const char* file, const std::exception& problem)
{
    const bool memory = dynamic_cast<const std::bad_alloc*>(&problem);
    const std::string reason = memory ? "there is not enough memory for it" : problem.what();
    KrMsgError("[kr] Cannot load the metadata file %s: %s. Skipping the rest of it; make it smaller.", file,
               reason.c_str());
    leaveOutFile(universe, KR_LEFT_OUT_UNREADABLE, {file, 0, 0}, reason);
}

} // namespace

} // namespace zelk::renderer

bool KrMetaDataLoadFile(const char* file)
{
    zelk::renderer::Universe* universe = zelk::renderer::Universe::require("KrMetaDataLoadFile");
    if (!universe)
        return false;
    const zelk::renderer::Work work(KR_WORK_METADATA, file);
    const char* const name = universe->arena().share(file);
    try
    {
        return zelk::renderer::loadFile(*universe, name);
    }
    catch (const std::exception& problem)
    {
        zelk::renderer::stopLoading(*universe, name, problem);
        return false;
    }
}
