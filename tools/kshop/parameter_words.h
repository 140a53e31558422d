#ifndef KSHOP_PARAMETER_WORDS_H
#define KSHOP_PARAMETER_WORDS_H

#include "template_facts.h"

#include <string>

/// @file
/// The facts of a parameter in words for people, as a terminal may get them.

namespace kshop
{

/// "colour", "3 x float", "list".
std::string kindText(const TemplateFacts& facts);

/// "0.8", "on", "3 points", "= 1+1 (python)"; empty for what has no default.
std::string defaultText(const TemplateFacts& facts);

/// "0 to 1", "at least 0, slider to 4"; empty without a range.
std::string rangeText(const TemplateFacts& facts);

/// What choosing an item of a menu of that PRM_ChoiceListType does.
std::string menuTypeText(int type);

} // namespace kshop

#endif
