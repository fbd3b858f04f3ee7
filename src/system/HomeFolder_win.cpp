#include "system/HomeFolder.h"

// The system is asked anyway.
void provideHomeFolder() {}
