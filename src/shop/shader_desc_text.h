#ifndef ZELK_SHOP_SHADER_DESC_TEXT_H
#define ZELK_SHOP_SHADER_DESC_TEXT_H

#include <cstring>
#include <string>

// Small text helpers of the shader_desc unit. No text is null.

namespace zelk
{
namespace shop
{

/// What a script begins with to say its language.
const char* const prefix_hscript = "hscript:";
const char* const prefix_python = "python:";

/// True when `text` begins with `prefix`; an empty prefix always matches.
inline bool startsWith(const char* text, const char* prefix)
{
    return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

/// Replaces the first occurrence of `from` in place. Returns whether there was one.
inline bool replace(std::string& text, const std::string& from, const std::string& to)
{
    const std::string::size_type at = text.find(from);
    if (at == std::string::npos)
        return false;
    text.replace(at, from.size(), to);
    return true;
}

/// Takes a prefix off in place. Returns whether it was there.
inline bool stripPrefix(std::string& text, const char* prefix)
{
    return startsWith(text.c_str(), prefix) && replace(text, prefix, "");
}

} // namespace shop
} // namespace zelk

#endif
