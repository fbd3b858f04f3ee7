#include "MortalProcess.h"

#include <csignal>

#include <sys/prctl.h>

void MortalProcess::setupChildProcess()
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}
