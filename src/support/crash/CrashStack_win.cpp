#include "support/crash/CrashStack.h"

#include <windows.h>

void installCrashStackForThread()
{
    // The exception filter runs on the thread's own stack: keep enough of it in reserve after an overflow.
    ULONG bytes = 64 * 1024;
    SetThreadStackGuarantee(&bytes);
}
