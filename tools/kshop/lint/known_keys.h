#ifndef KSHOP_LINT_KNOWN_KEYS_H
#define KSHOP_LINT_KNOWN_KEYS_H

#include <string>
#include <vector>

namespace kshop
{

/// Whose metadata a key belongs to.
enum class KeyOwner
{
    Shader,
    Parameter,
    Extra ///< the last word of houdini.parm.KIND.NAME.WORD
};

/// A key that the plug-in reads. docs/metadata.md describes each; a check holds both together.
struct KnownKey
{
    KeyOwner owner;
    const char* name;
    int type;           ///< KR_TYPE_STRING, KR_TYPE_BOOLEAN or KR_TYPE_FLOAT
    const char* absent; ///< what an artist gets without it: the rest of a sentence
};

/// The row of a key; null when the plug-in reads no such key there.
const KnownKey* findKnownKey(KeyOwner owner, const std::string& name);

/// All names of one owner's keys.
std::vector<std::string> knownKeyNames(KeyOwner owner);

/// All of one owner's keys.
std::vector<const KnownKey*> knownKeysOf(KeyOwner owner);

/// "a text", "a boolean", "a number".
const char* kindWord(int type);

/// "desc12" is the base "desc" and the number 12. False when no digits end the name.
bool splitContinuation(const std::string& name, std::string& base, std::string& digits);

} // namespace kshop

#endif
