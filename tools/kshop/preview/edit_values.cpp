#include "edit_values.h"

#include "../text.h"
#include "parm_facts.h"
#include "request_error.h"

#include <OP/OP_Node.h>
#include <PRM/PRM_Parm.h>
#include <PRM/PRM_Shared.h>

#include <fmt/format.h>

#include <cmath>
#include <cstring>
#include <iterator>

namespace kshop
{

namespace
{

/// The host's texts end at a zero.
bool hasNull(const std::string& text) { return text.find('\0') != std::string::npos; }

/// The shortest text that is read back as the same number.
bool numberText(const Json& value, std::string& text)
{
    if (value.is_boolean())
        text = value.get<bool>() ? "1" : "0";
    else if (value.is_number_integer())
        text = value.dump();
    else if (value.is_number_float() && std::isfinite(value.get<double>()))
        text = fmt::format("{}", value.get<double>());
    else
        return false;
    return true;
}

bool refuse(const PRM_Parm& parm, const char* what, std::string& why)
{
    why = fmt::format("The parameter {} takes {}.", kshop::quoted(parm.getToken()), what);
    return false;
}

bool itemText(OP_Node& node, const PRM_Parm& parm, const Json& value, std::string& text, std::string& why)
{
    const MenuItems items = menuItemsOf(node, parm);
    const bool isPlace = value.is_number_integer() && value.get<double>() >= 0;
    if (!isPlace || value.get<double>() >= static_cast<double>(items.size()))
        return refuse(parm, "an item of its menu: its token or its place, from 0", why);
    text = items[value.get<std::size_t>()].first;
    return true;
}

double finite(const Json& key, const char* name)
{
    const Json& value = member(key, name);
    if (!value.is_number() || !std::isfinite(value.get<double>()))
        throw RequestError(400, fmt::format("\"{}\" of a key is a number.", name));
    return value.get<double>();
}

int interpolationOf(const Json& value)
{
    const PRM_Name* names = PRMgetRampInterpMenu()->choiceNamesPtr();
    for (int i = 0; i < PRM_RAMP_INTERP_ITEMS; ++i)
        if (value == names[i].getToken() || (value.is_number_integer() && value == i))
            return i;
    throw RequestError(
        400, "\"interpolation\" of a key is an item of the interpolation menu: its token or its place.");
}

std::vector<double> keyValue(const Json& key, std::size_t parts)
{
    if (parts == 1)
        return {finite(key, "value")};
    const Json& value = member(key, "value");
    std::vector<double> result;
    if (value.is_array() && value.size() == parts)
        for (const Json& part : value)
            if (part.is_number() && std::isfinite(part.get<double>()))
                result.push_back(part.get<double>());
    if (result.size() != parts)
        throw RequestError(400, "\"value\" of a colour ramp's key is a list of three numbers.");
    return result;
}

} // namespace

const Json& member(const Json& object, const char* name)
{
    if (!object.is_object() || !object.contains(name))
        throw RequestError(400, fmt::format("The request has no \"{}\".", name));
    return object.at(name);
}

std::string textMember(const Json& object, const char* name)
{
    const Json& value = member(object, name);
    if (!value.is_string() || hasNull(value.get_ref<const std::string&>()))
        throw RequestError(400, fmt::format("\"{}\" is to be a text.", name));
    return value.get<std::string>();
}

std::int64_t wholeMember(const Json& object, const char* name)
{
    const Json& value = member(object, name);
    const double most = 9e15; // whole numbers up to here are exact
    if (!value.is_number_integer() || std::abs(value.get<double>()) > most)
        throw RequestError(400, fmt::format("\"{}\" is to be a whole number.", name));
    return value.get<std::int64_t>();
}

bool valueText(OP_Node& node, const PRM_Parm& parm, const Json& value, std::string& text, std::string& why)
{
    if (value.is_string())
    {
        text = value.get<std::string>();
        return !hasNull(text) || refuse(parm, "a text without a zero character in it", why);
    }
    if (parm.getType().isStringType())
        return kindOf(parm) == ParmKind::menu ? itemText(node, parm, value, text, why)
                                              : refuse(parm, "a text", why);
    return numberText(value, text) || refuse(parm, "a number or one of its menu's items", why);
}

std::vector<RampKey> rampKeys(const Json& keys, std::size_t parts)
{
    if (!keys.is_array())
        throw RequestError(400, "\"keys\" is to be a list.");
    std::vector<RampKey> result;
    for (const Json& key : keys)
        result.push_back(
            {finite(key, "position"), keyValue(key, parts), interpolationOf(member(key, "interpolation"))});
    return result;
}

} // namespace kshop
