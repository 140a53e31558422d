#include "registration_floor.h"

#include <kr.h>

#include <cstdio>
#include <cstring>

namespace bench
{

namespace
{

const char* const parm_texts[] = {
    "houdini.label",      "desc",
    "houdini.type",       "houdini.disable_when",
    "houdini.hide_when",  "houdini.menu_script",
    "houdini.expression", "houdini.callback",
    "houdini.menu",
};
const char* const parm_flags[] = {
    "houdini.skip",     "houdini.invisible", "houdini.no_menu_caps", "houdini.join_next",
    "houdini.no_label", "linkable",          "houdini.no_input",
};
const char* const parm_numbers[] = {"min", "max", "softmin", "softmax"};

const char* const node_texts[] = {
    "houdini.label",    "houdini.icon",     "houdini.lod",   "houdini.shader_type",
    "houdini.help_url", "houdini.category", "houdini.order",
};
const char* const extra_texts[] = {"label", "icon", "desc", "callback"};
const char* const extra_flags[] = {"join_next", "no_label"};

long askText(const KtNodeEntry* entry, const char* parm, const char* key)
{
    const char* value = nullptr;
    return KrMetaDataGetStr(entry, parm, key, &value) && value ? 1 : 0;
}

long askFlag(const KtNodeEntry* entry, const char* parm, const char* key)
{
    bool value = false;
    return KrMetaDataGetBool(entry, parm, key, &value) ? 1 : 0;
}

long askNumber(const KtNodeEntry* entry, const char* parm, const char* key)
{
    float value = 0;
    return KrMetaDataGetFlt(entry, parm, key, &value) ? 1 : 0;
}

long askParm(const KtNodeEntry* entry, const KtParamEntry* param)
{
    const char* name = KrParamGetName(param);
    long answers = KrParamGetDefault(param) ? 1 : 0;
    answers += KrParamGetType(param) == KR_TYPE_ENUM && KrParamGetEnum(param) ? 1 : 0;
    for (const char* key : parm_texts)
        answers += askText(entry, name, key);
    for (const char* key : parm_flags)
        answers += askFlag(entry, name, key);
    for (const char* key : parm_numbers)
        answers += askNumber(entry, name, key);
    return answers;
}

long askExtra(const KtNodeEntry* entry, const char* item)
{
    char key[256];
    long answers = 0;
    for (const char* word : extra_texts)
    {
        std::snprintf(key, sizeof key, "%s.%s", item, word);
        answers += askText(entry, nullptr, key);
    }
    for (const char* word : extra_flags)
    {
        std::snprintf(key, sizeof key, "%s.%s", item, word);
        answers += askFlag(entry, nullptr, key);
    }
    return answers;
}

long askExtras(const KtNodeEntry* entry)
{
    const char prefix[] = "houdini.parm.";
    long answers = 0;
    KtMetaDataIterator* items = KrNodeEntryGetMetaDataIterator(entry, nullptr);
    while (!KrMetaDataIteratorFinished(items))
    {
        const KtMetaDataEntry* item = KrMetaDataIteratorGetNext(items);
        if (std::strncmp(item->name, prefix, sizeof prefix - 1) == 0)
            answers += askExtra(entry, item->name);
    }
    KrMetaDataIteratorDestroy(items);
    return answers;
}

long askEntry(const KtNodeEntry* entry)
{
    long answers = askFlag(entry, nullptr, "houdini.skip");
    for (const char* key : node_texts)
        answers += askText(entry, nullptr, key);
    for (int i = 0; i < KrNodeEntryGetNumParams(entry); ++i)
        answers += askParm(entry, KrNodeEntryGetParameter(entry, i));
    return answers + askExtras(entry);
}

} // namespace

long askEveryQuestionOnce()
{
    long answers = 0;
    KtNodeEntryIterator* entries = KrUniverseGetNodeEntryIterator(KR_NODE_CAMERA | KR_NODE_SHADER);
    while (!KrNodeEntryIteratorFinished(entries))
        answers += askEntry(KrNodeEntryIteratorGetNext(entries));
    KrNodeEntryIteratorDestroy(entries);
    return answers;
}

} // namespace bench
