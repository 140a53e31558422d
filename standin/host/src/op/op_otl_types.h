#ifndef STANDIN_OP_OTL_TYPES_H
#define STANDIN_OP_OTL_TYPES_H

#include "op_dialog_script.h"

#include <OP/OP_OTLLibrary.h>

#include <memory>
#include <string>

/// @file
/// Operators that come from asset files.

class OP_Operator;

namespace standin
{

/// True when types of this table can be made; of others the definitions can only be listed.
bool canMakeAssets(const std::string& table);

/// A new operator for a definition whose table can be made; for that table to take over.
OP_Operator* makeAssetOperator(const std::shared_ptr<OP_OTLLibrary>& library, int definition);

/// Connectors and parameters of a type that comes from an asset file, read on the first call; null for other types.
const DialogScript* assetScriptOf(const OP_Operator* op);

} // namespace standin

#endif
