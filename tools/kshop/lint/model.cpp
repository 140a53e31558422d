#include "model.h"

#include "../operator_facts.h"
#include "../renderer_walk.h"
#include "../text.h"

#include <OP/OP_Operator.h>
#include <kr.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <string_view>

namespace kshop
{

namespace
{

const int most_pieces = 99; // the plug-in reads KEY to KEY99

Key readKey(const KtNodeEntry* entry, const char* param, const KtMetaDataEntry& item)
{
    Key key = {item.name, item.type, "", false, 0, {nullptr, 0, 0}};
    if (item.type == KR_TYPE_STRING)
        key.text = item.value.str ? item.value.str : "";
    else if (item.type == KR_TYPE_BOOLEAN)
        key.truth = item.value.bool_;
    else
        key.number = item.value.flt;
    KrObserveMetaDataPlace(entry, param, item.name, &key.place);
    return key;
}

KtPlace tablePlace(const KtNodeEntry* entry, const char* param)
{
    KtPlace place = {nullptr, 0, 0};
    KrObserveTablePlace(entry, param, &place);
    return place;
}

/// The names that a camera does not show: those of the renderer's own camera.
const std::set<std::string>& cameraNames()
{
    static const std::set<std::string> names = []
    {
        std::set<std::string> found = {"fov"};
        const KtNodeEntry* camera = KrNodeEntryLookUp("ortho_camera");
        for (int i = 0; camera && i < KrNodeEntryGetNumParams(camera); ++i)
            found.insert(KrParamGetName(KrNodeEntryGetParameter(camera, i)));
        return found;
    }();
    return names;
}

std::string whyUnseen(const Parameter& parameter, bool ofCamera)
{
    if (parameter.name == "name")
        return "the parameter called \"name\" is never shown";
    if (parameter.keys.isSet("houdini.skip"))
        return "\"houdini.skip\" is true for it";
    if (ofCamera && cameraNames().count(parameter.name) != 0)
        return "every camera of the renderer has it";
    return "";
}

Parameter readParameter(const KtNodeEntry* entry, const KtParamEntry* param, bool ofCamera)
{
    const char* name = KrParamGetName(param);
    Parameter read = {
        name, KrParamGetType(param), false, {}, {}, Keys(entry, name), tablePlace(entry, name), "", nullptr};
    if (const KtParamValue* value = KrParamGetDefault(param))
        read.value = *value;
    read.isArray = read.type == KR_TYPE_ARRAY;
    if (read.isArray)
        read.type =
            read.value && read.value->array ? read.value->array->type : static_cast<int>(KR_TYPE_UNDEFINED);
    const char** items = KrParamGetEnum(param);
    for (; items && *items; ++items)
        read.items.emplace_back(*items);
    read.unseen = whyUnseen(read, ofCamera);
    return read;
}

std::vector<Extra> readExtras(const Keys& keys)
{
    std::vector<Extra> extras;
    for (const Key& key : keys)
    {
        if (key.name.compare(0, 13, "houdini.parm.") != 0)
            continue;
        const std::vector<std::string> words = splitText(key.name, '.', false);
        if (words.size() == 4)
            extras.push_back({&key, words[2], words[3], nullptr});
    }
    return extras;
}

void addFile(std::set<std::string>& files, const KtPlace& place)
{
    if (place.file && place.line > 0)
        files.insert(place.file);
}

std::set<std::string> filesOf(const Shader& shader)
{
    std::set<std::string> files;
    addFile(files, shader.place);
    for (const Key& key : shader.keys)
        addFile(files, key.place);
    for (const Parameter& parameter : shader.parameters)
    {
        addFile(files, parameter.place);
        for (const Key& key : parameter.keys)
            addFile(files, key.place);
    }
    return files;
}

/// What the plug-in made of one parameter: of an array the one field that its list repeats.
const TemplateFacts* fieldOf(const std::vector<TemplateFacts>& templates, const std::string& token,
                             bool isArray)
{
    for (const TemplateFacts& facts : templates)
        if (facts.token == token && facts.children.has_value() == isArray)
            return isArray ? (facts.children->empty() ? nullptr : &facts.children->front()) : &facts;
    return nullptr;
}

std::vector<LeftOut> readLeftOut()
{
    std::vector<LeftOut> all;
    for (int i = 0; const KtLeftOut* item = KrObserveGetLeftOut(i); ++i)
        all.push_back({item->reason, item->place, item->entry, item->param, item->key, item->detail});
    return all;
}

} // namespace

Keys::Keys(const KtNodeEntry* entry, const char* param)
{
    KtMetaDataIterator* items = KrNodeEntryGetMetaDataIterator(entry, param);
    while (!KrMetaDataIteratorFinished(items))
        m_keys.push_back(readKey(entry, param, *KrMetaDataIteratorGetNext(items)));
    KrMetaDataIteratorDestroy(items);
}

const Key* Keys::find(const std::string& name) const
{
    const auto found =
        std::find_if(m_keys.begin(), m_keys.end(), [&name](const Key& key) { return key.name == name; });
    return found == m_keys.end() ? nullptr : &*found;
}

const Key* Keys::findText(const std::string& name) const
{
    const Key* key = find(name);
    return key && key->type == KR_TYPE_STRING ? key : nullptr;
}

std::string Keys::joined(const std::string& name) const
{
    std::string text;
    for (int piece = 1; piece <= most_pieces; ++piece)
    {
        const Key* key = findText(piece == 1 ? name : name + std::to_string(piece));
        if (!key)
            break;
        text += key->text;
    }
    return text;
}

bool Keys::isSet(const std::string& name) const
{
    const Key* key = find(name);
    return key && key->type == KR_TYPE_BOOLEAN && key->truth;
}

Shader::Shader(const KtNodeEntry* rendererEntry)
    : name(KrNodeEntryGetName(rendererEntry)),
      type(operatorName(name)),
      isCamera(KrNodeEntryGetType(rendererEntry) == KR_NODE_CAMERA),
      keys(rendererEntry, nullptr),
      place(tablePlace(rendererEntry, nullptr))
{
    isWanted = whyNotWanted(rendererEntry).empty();
    const int count = KrNodeEntryGetNumParams(rendererEntry);
    parameters.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        parameters.push_back(
            readParameter(rendererEntry, KrNodeEntryGetParameter(rendererEntry, i), isCamera));
    for (Parameter& parameter : parameters)
        if (parameter.place.line == 0)
            parameter.place = place;
    extras = readExtras(keys);
    files = filesOf(*this);
}

const Parameter* Shader::findParameter(const std::string& wanted) const
{
    const auto found =
        std::find_if(parameters.begin(), parameters.end(),
                     [&wanted](const Parameter& parameter) { return parameter.name == wanted; });
    return found == parameters.end() ? nullptr : &*found;
}

const Extra* Shader::findExtra(const std::string& wanted) const
{
    const auto found = std::find_if(extras.begin(), extras.end(),
                                    [&wanted](const Extra& extra) { return extra.name == wanted; });
    return found == extras.end() ? nullptr : &*found;
}

bool Shader::isPartOfRamp(const std::string& parameter) const
{
    for (const Extra& extra : extras)
    {
        if (extra.kind != "ramp_float" && extra.kind != "ramp_rgb")
            continue;
        const std::vector<std::string> parts = splitText(extra.key->text, ' ', false);
        if (parts.size() == 3 && std::find(parts.begin(), parts.end(), parameter) != parts.end())
            return true;
    }
    return false;
}

void Shader::take(std::vector<TemplateFacts>&& made)
{
    templates = std::move(made);
    for (Parameter& parameter : parameters)
        if (parameter.unseen.empty() && !isPartOfRamp(parameter.name))
            parameter.field = fieldOf(*templates, parameter.name, parameter.isArray);
    for (Extra& extra : extras)
        extra.field = fieldOf(*templates, extra.name, false);
}

Library::Library(const std::vector<OP_Operator*>& operators) : leftOut(readLeftOut())
{
    std::map<std::string, OP_Operator*> made;
    for (OP_Operator* op : operators)
    {
        const std::string type = op->getName().toStdString();
        if (classNameOf(*op) == "VOP_KorvanOperator")
            made.emplace(type, op);
        else
            handWritten.insert(type);
    }
    KtNodeEntryIterator* entries = KrUniverseGetNodeEntryIterator(KR_NODE_SHADER | KR_NODE_CAMERA);
    while (!KrNodeEntryIteratorFinished(entries))
    {
        shaders.emplace_back(KrNodeEntryIteratorGetNext(entries));
        Shader& shader = shaders.back();
        const auto found = shader.isWanted ? made.find(shader.type) : made.end();
        if (found == made.end())
            continue;
        shader.take(readOperator(*found->second).templates);
        made.erase(found); // a second entry of that type name has none of its own
    }
    KrNodeEntryIteratorDestroy(entries);
}

std::vector<std::string> splitText(const std::string& text, char separator, bool keepEmpty)
{
    std::vector<std::string> pieces;
    for (std::size_t begin = 0; !text.empty() && begin <= text.size();)
    {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        if (keepEmpty || end > begin)
            pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

} // namespace kshop
