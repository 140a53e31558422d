#pragma once

/// Small number of the calling thread, given out in order of first use and never reused. The first thread
/// that asks, normally the main one, has FIRST_INDEX.
class SYS_SequentialThreadIndex
{
public:
    enum
    {
        FIRST_INDEX = 1
    };
    static int get();
};

/// The same number.
inline int SYSgetSTID() { return SYS_SequentialThreadIndex::get(); }
