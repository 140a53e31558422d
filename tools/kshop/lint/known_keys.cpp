#include "known_keys.h"

#include <kr.h>

#include <algorithm>
#include <iterator>

namespace kshop
{

namespace
{

const KnownKey known_keys[] = {
    {KeyOwner::Shader, "houdini.skip", KR_TYPE_BOOLEAN, "the shader has its node type"},
    {KeyOwner::Shader, "houdini.label", KR_TYPE_STRING, "the node type's label is made from its name"},
    {KeyOwner::Shader, "houdini.icon", KR_TYPE_STRING, "the node type has the general icon"},
    {KeyOwner::Shader, "houdini.category", KR_TYPE_STRING,
     "the node type stands in no sub-menu of the tab menu"},
    {KeyOwner::Shader, "houdini.help_url", KR_TYPE_STRING, "help opens the page of all shaders"},
    {KeyOwner::Shader, "houdini.shader_type", KR_TYPE_STRING,
     "the main output is a plain one of the shader's own type"},
    {KeyOwner::Shader, "houdini.lod", KR_TYPE_STRING,
     "the tile of a new node is as detailed as its number of inputs suggests"},
    {KeyOwner::Shader, "houdini.order", KR_TYPE_STRING,
     "parameters stand in the order in which they are declared"},

    {KeyOwner::Parameter, "houdini.skip", KR_TYPE_BOOLEAN, "the parameter is shown"},
    {KeyOwner::Parameter, "houdini.label", KR_TYPE_STRING, "the label is made from the parameter's name"},
    {KeyOwner::Parameter, "desc", KR_TYPE_STRING, "the parameter has no help"},
    {KeyOwner::Parameter, "houdini.type", KR_TYPE_STRING,
     "the field is the usual one of the parameter's type"},
    {KeyOwner::Parameter, "linkable", KR_TYPE_BOOLEAN, "the parameter has an input connector"},
    {KeyOwner::Parameter, "houdini.no_input", KR_TYPE_BOOLEAN, "a linkable parameter has an input connector"},
    {KeyOwner::Parameter, "min", KR_TYPE_FLOAT, "there is no lower bound"},
    {KeyOwner::Parameter, "max", KR_TYPE_FLOAT, "there is no upper bound"},
    {KeyOwner::Parameter, "softmin", KR_TYPE_FLOAT, "the slider begins at 0"},
    {KeyOwner::Parameter, "softmax", KR_TYPE_FLOAT, "the slider ends at 1"},
    {KeyOwner::Parameter, "houdini.menu", KR_TYPE_STRING,
     "an enumeration shows its own names, any other menu is empty"},
    {KeyOwner::Parameter, "houdini.no_menu_caps", KR_TYPE_BOOLEAN, "an enumeration's names are capitalised"},
    {KeyOwner::Parameter, "houdini.menu_script", KR_TYPE_STRING, "a script menu has no items"},
    {KeyOwner::Parameter, "houdini.disable_when", KR_TYPE_STRING, "the field is never greyed"},
    {KeyOwner::Parameter, "houdini.hide_when", KR_TYPE_STRING, "the field is never hidden"},
    {KeyOwner::Parameter, "houdini.expression", KR_TYPE_STRING, "the default is the renderer's value"},
    {KeyOwner::Parameter, "houdini.callback", KR_TYPE_STRING, "an edit runs no script"},
    {KeyOwner::Parameter, "houdini.invisible", KR_TYPE_BOOLEAN, "the field is shown"},
    {KeyOwner::Parameter, "houdini.join_next", KR_TYPE_BOOLEAN, "the next field is on a row of its own"},
    {KeyOwner::Parameter, "houdini.no_label", KR_TYPE_BOOLEAN, "the field has its label"},

    {KeyOwner::Extra, "label", KR_TYPE_STRING, "the label is made from the parameter's name"},
    {KeyOwner::Extra, "icon", KR_TYPE_STRING, "a button has no icon"},
    {KeyOwner::Extra, "desc", KR_TYPE_STRING, "the parameter has no help"},
    {KeyOwner::Extra, "callback", KR_TYPE_STRING, "an edit runs no script"},
    {KeyOwner::Extra, "join_next", KR_TYPE_BOOLEAN, "the next field is on a row of its own"},
    {KeyOwner::Extra, "no_label", KR_TYPE_BOOLEAN, "the field has its label"},
};

} // namespace

const KnownKey* findKnownKey(KeyOwner owner, const std::string& name)
{
    const KnownKey* row = std::find_if(std::begin(known_keys), std::end(known_keys),
                                       [&](const KnownKey& r) { return r.owner == owner && name == r.name; });
    return row == std::end(known_keys) ? nullptr : row;
}

std::vector<const KnownKey*> knownKeysOf(KeyOwner owner)
{
    std::vector<const KnownKey*> rows;
    for (const KnownKey& row : known_keys)
        if (row.owner == owner)
            rows.push_back(&row);
    return rows;
}

std::vector<std::string> knownKeyNames(KeyOwner owner)
{
    std::vector<std::string> names;
    for (const KnownKey* row : knownKeysOf(owner))
        names.emplace_back(row->name);
    return names;
}

const char* kindWord(int type)
{
    return type == KR_TYPE_STRING ? "a text" : type == KR_TYPE_BOOLEAN ? "a boolean" : "a number";
}

bool splitContinuation(const std::string& name, std::string& base, std::string& digits)
{
    const std::size_t end = name.find_last_not_of("0123456789");
    if (end == std::string::npos || end + 1 == name.size())
        return false;
    base = name.substr(0, end + 1);
    digits = name.substr(end + 1);
    return true;
}

} // namespace kshop
