#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace standin
{

/// How many bytes a shared object should have, and has.
struct CutOff
{
    std::uint64_t promised;
    std::uint64_t size;
};

/// What is missing of a shared object that ends before its loaded segments, or its tables of headers, do: the system
/// would map it without complaint, and the first touch of what is missing would end the process. Nothing for whole
/// files, and for those that the system refuses by itself because they are unreadable or something else.
std::optional<CutOff> findCutOff(const std::string& file);

} // namespace standin
