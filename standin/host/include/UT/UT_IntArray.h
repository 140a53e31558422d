#pragma once
#include <UT/UT_ValArray.h>

/// A list of integers.
class UT_IntArray : public UT_ValArray<int>
{
public:
    UT_IntArray() {}
    explicit UT_IntArray(exint capacity) : UT_ValArray<int>(capacity) {}
};
