#ifndef ZELK_SHOP_SHADER_DESC_CACHE_H
#define ZELK_SHOP_SHADER_DESC_CACHE_H

#include <SYS/SYS_Visibility.h>

#include <map>
#include <string>

namespace zelk
{
namespace shop
{

/// Values made up for the parameters of one shader: parameter name, then metadata key, then text.
typedef std::map<std::string, std::map<std::string, std::string>> ParmOverrides;

/// Replaces everything that the cache holds for one shader, named as the renderer names it.
void cacheMetaData(const std::string& shaderName, const ParmOverrides& overrides);

} // namespace shop
} // namespace zelk

/// Returns the text cached for one parameter of a shader and a metadata key; "" when there is none or an argument is
/// null. The text stays valid until the shader's entry is replaced. Exported for parameter scripts, which reach it
/// by its plain name.
extern "C" SYS_VISIBILITY_EXPORT const char* getMetaDataCacheStr(const char* shaderName, const char* parmName,
                                                                 const char* key);

#endif
