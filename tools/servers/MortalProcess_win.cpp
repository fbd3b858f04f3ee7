#include "MortalProcess.h"

// Wine's processes all end with their server; nothing else starts programs for tests here.
void MortalProcess::setupChildProcess() {}
