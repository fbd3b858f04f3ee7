#pragma once

/// What the system tells the program, in place of what is asked for it elsewhere.
namespace Seams {

void sleep();
void resume();
void setScreenOff(bool off);
/// The desktop can be captured.
void setDisplay(bool isThere);
/// Pictures that were taken of it.
int grabs();

} // namespace Seams
