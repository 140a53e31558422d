#ifndef KSHOP_INTERFACE_TEXT_H
#define KSHOP_INTERFACE_TEXT_H

#include "operator_facts.h"
#include "text.h"

#include <string>

namespace kshop
{

/// An operator's whole interface as a person reads it: facts, parameters in their folders, connectors.
std::string interfaceText(const OperatorFacts& facts, const Style& style);

} // namespace kshop

#endif
