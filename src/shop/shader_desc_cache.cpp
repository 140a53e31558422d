#include "shader_desc_cache.h"

namespace
{
// Filled while descriptions are built at start-up, read by parameter scripts afterwards. Not locked.
std::map<std::string, zelk::shop::ParmOverrides> metadata_cache;
} // namespace

namespace zelk
{
namespace shop
{

void cacheMetaData(const std::string& shaderName, const ParmOverrides& overrides)
{
    metadata_cache[shaderName] = overrides;
}

} // namespace shop
} // namespace zelk

const char* getMetaDataCacheStr(const char* shaderName, const char* parmName, const char* key)
{
    if (!shaderName || !parmName || !key)
        return "";
    // A look-up never inserts.
    const auto shader = metadata_cache.find(shaderName);
    if (shader == metadata_cache.end())
        return "";
    const auto parm = shader->second.find(parmName);
    if (parm == shader->second.end())
        return "";
    const auto value = parm->second.find(key);
    return value == parm->second.end() ? "" : value->second.c_str();
}
