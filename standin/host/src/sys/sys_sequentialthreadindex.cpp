#include <SYS/SYS_SequentialThreadIndex.h>

#include <atomic>

int SYS_SequentialThreadIndex::get()
{
    static std::atomic<int> next(FIRST_INDEX);
    thread_local const int index = next++;
    return index;
}
