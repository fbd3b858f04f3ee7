#include "system/SmallHeap.h"

void keepHeapSmall() {} // the system's heap does so by itself
