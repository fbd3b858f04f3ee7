#include "system/DisplayCheck.h"

// A Windows session always has a desktop to draw on.

bool choosePlatformWithoutDisplay()
{
    return false;
}

void forgetChosenPlatform() {}

bool isDisplayReachable()
{
    return true;
}

bool chooseNoOpenGl()
{
    return false; // loaded when it is first used
}

void forgetNoOpenGl() {}

void callWhenDisplayBreaks(void (*)()) {}
