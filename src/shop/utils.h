#ifndef ZELK_SHOP_UTILS_H
#define ZELK_SHOP_UTILS_H

#include <VOP/VOP_Types.h>

#include <kr.h>

#include <string>
#include <vector>

namespace zelk
{
namespace shop
{

// --- Metadata ---------------------------------------------------------------------------------------------
//
// All of these take a renderer entry that is not null, while the renderer runs. `parmName` names the
// parameter that a key belongs to; empty stands for the entry itself. Absent metadata is the normal case:
// nothing is reported, the caller's default comes back. A key that holds a value of another type counts as
// absent.

/// Returns the text stored under `key`.
///
/// A long text may be spread over continuation keys ("help", "help2", ... "help99"). The pieces are joined
/// with nothing between them, and the first gap ends the text. An empty text counts as absent. Costs one
/// renderer query per piece and one for the gap.
std::string getParmMetaDataStr(const KtNodeEntry* entry, const std::string& parmName, const char* key,
                               const std::string& defaultValue);

/// The same for the entry itself.
std::string getNodeMetaDataStr(const KtNodeEntry* entry, const char* key, const std::string& defaultValue);

/// Returns the boolean stored under `key`. There are no continuation keys.
bool getParmMetaDataBool(const KtNodeEntry* entry, const std::string& parmName, const char* key,
                         bool defaultValue);

/// The same for the entry itself.
bool getNodeMetaDataBool(const KtNodeEntry* entry, const char* key, bool defaultValue);

/// Returns the number stored under `key`. There are no continuation keys.
float getParmMetaDataFlt(const KtNodeEntry* entry, const std::string& parmName, const char* key,
                         float defaultValue);

/// Returns 1 or 0: the *boolean* stored under `key` of the entry, or whether `defaultValue` differs from 0
/// (NaN does). A number stored there is not seen.
float getNodeMetaDataFlt(const KtNodeEntry* entry, const char* key, float defaultValue);

// --- Labels -----------------------------------------------------------------------------------------------
//
// Only the ASCII letters have a case here, so that labels are the same under every locale.

/// Returns `text` with each `_` replaced by a blank. With `capitalize` the first letter and each one behind a
/// `_` become upper-case: "base_color" gives "Base Color". Nothing is collapsed, trimmed or lower-cased.
std::string prettyUnderscores(const std::string& text, bool capitalize);

/// Returns `text` with a blank between a lower-case letter and the upper-case letter behind it. With
/// `capitalize` the first character becomes upper-case: "baseColor" gives "Base Color", "HDRMap" stays.
std::string prettyCamelCase(const std::string& text, bool capitalize);

/// Returns the shown form of a renderer name: by underscores when it has any, else by camel case.
std::string prettyLabel(const std::string& text, bool capitalize);

// --- Types ------------------------------------------------------------------------------------------------

/// Returns the connector type for a value of a renderer type; `VOP_TYPE_UNDEF` for arrays and unknown codes.
VOP_Type vopType(int rendererType);

/// Returns the number of float components of a renderer type; 1 for anything that is not a float tuple.
int vectorSize(int rendererType);

/// Returns the word for a renderer type ("rgb"); "<error>" for an unknown code. Static text.
const char* typeName(int rendererType);

// --- Texts ------------------------------------------------------------------------------------------------

/// Returns the stretches of `text` between separators, as they stand: no quoting, no escapes, no trimming.
/// Empty ones are left out unless `keepEmpty` is set. An empty or null text gives none.
std::vector<std::string> split(const char* text, char separator, bool keepEmpty);

} // namespace shop
} // namespace zelk

#endif
