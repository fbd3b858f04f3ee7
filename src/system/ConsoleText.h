#pragma once

#include <QString>

/// Writes to where the program's output goes, or to the terminal that it was started in; nowhere without one.
void printText(const QString& text);
