#pragma once

#include <QString>

/// Hands a checked installer, an absolute path, over to the system. False, with a line in the log, when
/// nobody takes it or it is not of a kind that is handed over here. Linux: a .deb is opened by the desktop's
/// own installer, nothing is run. Windows: it is started.
bool handOverInstaller(const QString& path);
