#pragma once

#include "default_value.h"
#include "place.h"

#include <optional>
#include <string>
#include <vector>

namespace zelk::catalogue
{

/// One parameter as a document lists it. Texts stay in the document.
struct Parameter
{
    std::string name;
    int type;
    std::vector<const char*> items;           ///< KR_TYPE_ENUM: names, ended by null
    std::optional<DefaultValue> defaultValue; ///< nothing: a null record
};

/// One node entry as a document lists it, without its metadata (which is at least a list).
struct Node
{
    std::string name;
    int kind;   ///< KR_NODE_...
    int output; ///< KR_TYPE_..., or any raw code
    bool builtin;
    std::vector<Parameter> parameters;
};

/// Reads one element of "nodes"; throws Mistake for the first thing that is wrong with it.
Node readNode(const Place& place);

} // namespace zelk::catalogue
