// The renderer plug-in of the benchmarks: declares as many shaders as the environment asks for.
#include "bench_library.h"

#include <kr_plugin.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace
{

void declareItem(KtNodeDecl* node, const char* parm, const bench::Item& item)
{
    switch (item.kind)
    {
    case bench::Item::text:
        KrDeclareMetaDataStr(node, parm, item.key.c_str(), item.textValue.c_str());
        break;
    case bench::Item::boolean:
        KrDeclareMetaDataBool(node, parm, item.key.c_str(), item.numberValue != 0);
        break;
    case bench::Item::number:
        KrDeclareMetaDataFlt(node, parm, item.key.c_str(), static_cast<float>(item.numberValue));
        break;
    }
}

void declareParm(KtNodeDecl* node, const bench::Parm& parm)
{
    const char* const modes[] = {"add", "multiply", "screen", nullptr};
    if (parm.type == KR_TYPE_ENUM)
    {
        KrDeclareEnum(node, parm.name.c_str(), modes, 1);
        return;
    }
    static const KtMatrix identity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    KtParamValue value = {};
    KtArray* array = nullptr;
    if (parm.type == KR_TYPE_ARRAY)
        value.array = array = KrArrayAllocate(4, 1, KR_TYPE_FLOAT);
    if (parm.type == KR_TYPE_MATRIX)
        value.mtx = &identity;
    KrDeclareParam(node, parm.name.c_str(), parm.type, &value);
    if (array)
        KrArrayDestroy(array);
}

void declareMetadata(KtNodeDecl* node)
{
    for (const bench::Item& item : bench::shaderItems())
        declareItem(node, nullptr, item);
    for (const bench::Parm& parm : bench::parms())
        for (const bench::Item& item : parm.items)
            declareItem(node, parm.name.c_str(), item);
}

bool wantsMetadata()
{
    const char* value = std::getenv(bench::metadata_variable);
    return value && std::strcmp(value, "declared") == 0;
}

} // namespace

void KrPluginDeclare(void)
{
    const char* count = std::getenv(bench::count_variable);
    for (int i = 0; i < (count ? std::atoi(count) : 0); ++i)
    {
        KtNodeDecl* node = KrDeclareNode(bench::shaderName(i).c_str(), KR_NODE_SHADER, KR_TYPE_RGBA);
        for (const bench::Parm& parm : bench::parms())
            declareParm(node, parm);
        if (wantsMetadata())
            declareMetadata(node);
    }
}
