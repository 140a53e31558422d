#ifndef STANDIN_OP_OTL_CREATE_H
#define STANDIN_OP_OTL_CREATE_H

#include <string>

/// @file
/// Making asset files from nodes.

class OP_Node;

namespace standin
{

struct AssetRequest
{
    std::string name;        ///< of the new type, "[scope::][namespace::]name[::version]"
    std::string file;        ///< made, or given one more definition
    std::string description; ///< label of the type; empty means the name without namespace and version
    int minInputs;
    int maxInputs; ///< an input that is connected counts even beyond this
};

/// True for subnets.
bool canCreateDigitalAsset(const OP_Node& node);

/// Makes a type of a subnet: writes its definition into an asset file, installs that, and puts a node of the new type into
/// the place of the subnet, with its name, wires, parameters and user data. Its spare parameters become those of the type.
///
/// A definition of that name in the file is replaced. Nothing of this can be undone.
/// Null, with a sentence in `why` and everything as before, when that cannot be.
OP_Node* createDigitalAsset(OP_Node& subnet, const AssetRequest& request, std::string& why);

} // namespace standin

#endif
