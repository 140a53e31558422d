#ifndef STANDIN_OP_USER_DATA_H
#define STANDIN_OP_USER_DATA_H

#include <string>
#include <vector>

/// @file
/// The ".userdata" entry of a node: big-endian, a 32-bit count, then per item a 16-bit length and the name, a 32-bit
/// type and the value. Type 3 is a text with a 16-bit length, 1 a 32-bit whole number, 13 a list of them with 64 bits.
/// Texts of more than 65535 bytes, which that cannot hold, have type 1003 here: a 32-bit length.

class OP_Node;

namespace standin
{

/// Empty when the node has no user data. Names of more than 65535 bytes are left out with a sentence in `problems`.
std::string writeUserData(const OP_Node& node, std::vector<std::string>& problems);

/// Stores the items on the node; numbers as decimal texts. Where the bytes are cut off or hold an unknown type, the
/// rest is left out with a sentence in `problems`.
void readUserData(OP_Node& node, const std::string& bytes, std::vector<std::string>& problems);

} // namespace standin

#endif
