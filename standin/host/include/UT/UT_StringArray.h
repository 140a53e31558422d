#pragma once
#include <UT/UT_Array.h>
#include <UT/UT_StringHolder.h>

/// A list of texts of its own. Entries convert to `const char *`.
class UT_StringArray : public UT_Array<UT_StringHolder>
{
public:
    UT_StringArray() {}
    /// Sorts by character codes.
    void sort() { std::sort(begin(), end()); }
    /// Index of the first entry with this text, -1 when there is none.
    exint find(const char* text) const { return UT_Array<UT_StringHolder>::find(UT_StringHolder(text)); }
};
