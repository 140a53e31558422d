#pragma once

/// A variable that nodes of one type offer to expressions. A list ends with a null name.
struct CH_LocalVariable
{
    const char* name;
    int id;
    unsigned flags;
};
