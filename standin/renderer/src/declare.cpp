// Declaring node entries: for plug-ins and for the built-in ones.
#include "universe.h"
#include "values.h"

#include <algorithm>
#include <string>

using zelk::renderer::Arena;
using zelk::renderer::MetaData;
using zelk::renderer::Universe;

namespace
{

const char* sourceName(const char* file) { return file ? file : "the renderer itself"; }

KtNodeEntry* entryOf(KtNodeDecl* node) { return static_cast<KtNodeEntry*>(node); }

// Null, after an error message, when the parameter cannot be added.
KtParamEntry* addParam(KtNodeDecl* node, const char* name, int type)
{
    KtNodeEntry* entry = entryOf(node);
    if (!entry) // its declaration was refused, and that was reported
        return nullptr;
    if (!name || !*name)
    {
        KrMsgError("[kr] %s: A parameter of \"%s\" has no name. Skipping it; give it one.",
                   sourceName(entry->file), entry->name);
        return nullptr;
    }
    if (entry->findParam(name))
    {
        KrMsgError(
            "[kr] %s: Parameter \"%s\" of \"%s\" is declared twice. Skipping the second; rename one of them.",
            sourceName(entry->file), name, entry->name);
        return nullptr;
    }
    KtParamEntry& param = entry->params.emplace_back();
    param.name = Universe::current()->arena().share(name);
    param.type = type;
    param.table = {nullptr, 0, 0};
    entry->paramNames.add(param.name);
    return &param;
}

const char** copyItems(Arena& arena, const char* const* items)
{
    std::size_t count = 0;
    while (items && items[count])
        ++count;
    const char** copy = static_cast<const char**>(arena.allocate((count + 1) * sizeof(const char*)));
    for (std::size_t i = 0; i < count; ++i)
        copy[i] = arena.share(items[i]);
    return copy;
}

// "a", "b", "c" and 4 more
std::string namesOf(const std::vector<const KtNodeEntry*>& entries)
{
    const std::size_t most_named = 3, named = std::min(entries.size(), most_named);
    std::string text;
    for (std::size_t i = 0; i < named; ++i)
        text += std::string(i ? ", \"" : "\"") + entries[i]->name + '"';
    return named == entries.size() ? text : text + " and " + std::to_string(entries.size() - named) + " more";
}

// Of one owner.
void reportTakenBy(const char* owner, const char* plugin, const std::vector<const KtNodeEntry*>& taken)
{
    if (taken.size() == 1)
        KrMsgError("[kr] %s: The node entry \"%s\" is declared already by %s. Skipping the second; rename "
                   "one of them.",
                   sourceName(plugin), taken[0]->name, owner);
    else
        KrMsgError("[kr] %s: %lu node entries are declared already by %s: %s. Skipping the second of each; "
                   "take one of the two away, or rename its entries.",
                   sourceName(plugin), static_cast<unsigned long>(taken.size()), owner,
                   namesOf(taken).c_str());
}

KtPlace placeOf(KtNodeDecl* node) { return {entryOf(node)->source, 0, 0}; }

// Null, after a message where there is a mistake, when there is nowhere to put the key.
MetaData* metaDataFor(KtNodeDecl* node, const char* param, const char* key)
{
    KtNodeEntry* entry = entryOf(node);
    if (!entry)
        return nullptr;
    MetaData* metaData = entry->metaDataOf(param);
    if (!metaData)
        KrMsgWarning(
            "[kr] %s: \"%s\" has no parameter \"%s\". Ignoring its metadata \"%s\"; declare the parameter "
            "first or correct the name.",
            sourceName(entry->file), entry->name, param, key);
    return metaData;
}

} // namespace

void zelk::renderer::reportTaken(const char* plugin, const std::vector<const KtNodeEntry*>& taken)
{
    std::vector<const KtNodeEntry*> left = taken;
    while (!left.empty())
    {
        const std::string owner = sourceName(left[0]->file);
        const auto others = std::stable_partition(left.begin(), left.end(),
                                                  [&owner](const KtNodeEntry* entry)
                                                  { return owner == sourceName(entry->file); });
        reportTakenBy(owner.c_str(), plugin, {left.begin(), others});
        left.erase(left.begin(), others);
    }
}

KtNodeDecl* KrDeclareNode(const char* name, int nodeType, int outputType)
{
    Universe* universe = Universe::require("KrDeclareNode");
    if (!universe)
        return nullptr;
    if (!name || !*name)
    {
        KrMsgError("[kr] %s: A node entry has no name. Skipping it; give it one.",
                   sourceName(universe->pluginBeingLoaded()));
        return nullptr;
    }
    if (const KtNodeEntry* taken = universe->find(name))
    {
        if (universe->pluginBeingLoaded())
            universe->noteTaken(*taken);
        else
            zelk::renderer::reportTaken(nullptr, {taken});
        return nullptr;
    }
    return &universe->add(name, nodeType, outputType);
}

void KrDeclareNodeFile(KtNodeDecl* node, const char* file)
{
    if (KtNodeEntry* entry = entryOf(node))
        entry->file = file ? Universe::current()->arena().share(file) : nullptr;
}

void KrDeclareNodeSource(KtNodeDecl* node, const char* file)
{
    if (KtNodeEntry* entry = entryOf(node))
        entry->source = file ? Universe::current()->arena().share(file) : nullptr;
}

bool KrDeclareParam(KtNodeDecl* node, const char* name, int type, const KtParamValue* defaultValue)
{
    KtParamEntry* param = addParam(node, name, type);
    if (!param)
        return false;
    Arena& arena = Universe::current()->arena();
    if (defaultValue)
        param->value = copyValue(arena, type, *defaultValue);
    param->hasDefault = defaultValue != nullptr;
    param->items = type == KR_TYPE_ENUM ? copyItems(arena, nullptr) : nullptr;
    return true;
}

bool KrDeclareEnum(KtNodeDecl* node, const char* name, const char* const* items, int defaultIndex)
{
    KtParamEntry* param = addParam(node, name, KR_TYPE_ENUM);
    if (!param)
        return false;
    param->value.int_ = defaultIndex;
    param->hasDefault = true;
    param->items = copyItems(Universe::current()->arena(), items);
    return true;
}

void KrDeclareItems(KtNodeDecl* node, const char* param, const char* const* items)
{
    KtNodeEntry* entry = entryOf(node);
    KtParamEntry* found = entry ? entry->findParam(param) : nullptr;
    if (found && found->type == KR_TYPE_ENUM)
        found->items = copyItems(Universe::current()->arena(), items);
    else if (entry)
        KrMsgError(
            "[kr] %s: \"%s\" has no enumeration \"%s\". Ignoring its items; declare the parameter first.",
            sourceName(entry->file), entry->name, param);
}

void KrDeclareMetaDataStr(KtNodeDecl* node, const char* param, const char* key, const char* value)
{
    if (MetaData* metaData = metaDataFor(node, param, key))
        metaData->setText(Universe::current()->arena(), key, value ? value : "", placeOf(node));
}

void KrDeclareMetaDataBool(KtNodeDecl* node, const char* param, const char* key, bool value)
{
    if (MetaData* metaData = metaDataFor(node, param, key))
        metaData->setBool(Universe::current()->arena(), key, value, placeOf(node));
}

void KrDeclareMetaDataFlt(KtNodeDecl* node, const char* param, const char* key, float value)
{
    if (MetaData* metaData = metaDataFor(node, param, key))
        metaData->setFloat(Universe::current()->arena(), key, value, placeOf(node));
}
