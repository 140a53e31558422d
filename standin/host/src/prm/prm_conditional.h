#pragma once
#include <PRM/PRM_Conditional.h>

#include <string>
#include <vector>

/// Reads a condition text. False, with a sentence in `error` and no terms, when it is malformed. A text without
/// anything is not.
bool PRMparseConditions(const std::string& text, std::vector<PRM_ConditionalTerm>& terms, std::string& error);

/// Shell-like match of a whole text: * ? [a-z] [^a-z]
bool PRMmatchPattern(const char* text, const char* pattern);
