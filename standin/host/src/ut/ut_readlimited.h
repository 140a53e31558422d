#pragma once
#include <UT/UT_IStream.h>

#include <string>

/// Appends the rest of a stream. False when it broke off, and when there is more than `most` bytes, of which `bytes` then
/// has more than that.
bool UTreadLimited(UT_IStream& stream, std::string& bytes, exint most);
