/// Keys for endpoints that other machines can reach.
#ifndef ZELK_IPR_KEYS_H
#define ZELK_IPR_KEYS_H

#include <zelk/ipr/export.h>

#include <string>

namespace zelk
{
namespace ipr
{

/// Makes a new file of keys, which hosts and renders name by ZELK_IPR_KEYS: a pair for the render and a pair
/// for the hosts. Only its owner may read it (mode 0600); whoever has it can read edits and send them.
///
/// False, with a sentence in `error`, when the file exists already (it is left as it is) or cannot be
/// written.
ZELK_IPR_EXPORT bool makeKeys(const std::string& path, std::string& error);

/// Whether `path` is a file of keys that an endpoint would take. False, with a sentence in `error`, if not.
ZELK_IPR_EXPORT bool checkKeys(const std::string& path, std::string& error);

} // namespace ipr
} // namespace zelk

#endif
