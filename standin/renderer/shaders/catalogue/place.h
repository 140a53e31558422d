#pragma once

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

namespace zelk::catalogue
{

using Json = nlohmann::json;

/// A part of a document together with the place where it stands.
struct Place
{
    const Json& json;
    std::string pointer; ///< JSON pointer, for example "/nodes/3/parameters/0"

    /// The member of that name; a null value when there is none. For objects only.
    Place member(const char* name) const
    {
        static const Json nothing;
        const auto found = json.find(name);
        return {found == json.end() ? nothing : *found, pointer + "/" + name};
    }

    /// An element of a list, counted from 0.
    Place element(std::size_t index) const { return {json[index], pointer + "/" + std::to_string(index)}; }
};

/// A mistake in a document: its place, what is wrong, and what to write instead. One sentence each, without the
/// full stop; the remedy begins with a small letter.
struct Mistake : std::runtime_error
{
    Mistake(const Place& where, const std::string& what, const std::string& remedy)
        : std::runtime_error(what), pointer(where.pointer), remedy(remedy)
    {
    }

    std::string pointer;
    std::string remedy;
};

/// The JSON text of a value, cut where it would fill a screen.
inline std::string quoted(const Json& json)
{
    constexpr std::size_t longest = 80;
    const std::string text = json.dump(-1, ' ', true);
    return text.size() <= longest ? text : text.substr(0, longest) + "...";
}

/// The text at that place; throws Mistake when there is none or it holds a zero character.
inline const std::string& textAt(const Place& place)
{
    if (!place.json.is_string())
        throw Mistake(place, "Expected a text, found " + quoted(place.json), "write a text in double quotes");
    const std::string& text = place.json.get_ref<const std::string&>();
    if (text.find('\0') != std::string::npos)
        throw Mistake(place, "The text holds a zero character", "take the \\u0000 out");
    return text;
}

} // namespace zelk::catalogue
