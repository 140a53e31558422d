#ifndef STANDIN_OP_NAMES_H
#define STANDIN_OP_NAMES_H

#include <standin/host.h>

#include <string>
#include <vector>

/// @file
/// The rules of node and operator names.

namespace standin
{

/// The name with every character that a node name cannot have replaced by '_'; "node" when nothing is left.
std::string validNodeName(const std::string& name);

/// A name taken apart into what stands before its last digits and the number that they make. Names without such
/// digits, and with more digits than a number here can have, give `number` -1 and the whole name as `base`.
struct NumberedName
{
    std::string base;
    int number;
};
NumberedName splitNumber(const std::string& name);

/// The pieces of a text between separators, empty pieces left out.
std::vector<std::string> splitWords(const std::string& text, const char* separators);

/// True when one of the glob patterns, separated by spaces, fits one of the words.
bool maskFits(const std::string& patterns, const std::string& words);

} // namespace standin

#endif
