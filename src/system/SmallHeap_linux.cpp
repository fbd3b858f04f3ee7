#include "system/SmallHeap.h"

#include <malloc.h>

void keepHeapSmall()
{
#ifdef M_MMAP_THRESHOLD
    // By itself the limit rises to the largest block that was ever freed. From then on pictures of the window
    // lie between small things that stay, and the holes they leave are never given back.
    constexpr int kLargeBytes = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLargeBytes);
#endif
}
