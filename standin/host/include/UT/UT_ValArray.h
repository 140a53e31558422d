#pragma once
#include <UT/UT_Array.h>

/// A list of plain values: numbers, pointers.
template <typename T>
class UT_ValArray : public UT_Array<T>
{
public:
    UT_ValArray() {}
    explicit UT_ValArray(exint capacity) : UT_Array<T>(capacity) {}
};
