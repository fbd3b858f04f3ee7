#pragma once

#include <QtGlobal>

/// Process id of this user's running program, found without taking its lock or waking it; 0 where none runs.
qint64 runningProgram();

/// Asks it to end in its usual order, devices dark and settings written, and waits for that, ten seconds at
/// most. True when none runs any more. Needs an application object, but no display.
bool quitRunningProgram();
