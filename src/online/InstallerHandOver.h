#pragma once

#include <QObject>
#include <QString>
#include <functional>

/// Hands a checked installer, an absolute path, over to the system and calls `done` once, later and while
/// `asker` lives: with true a second after it went well, with false, and a line in the log, as soon as it
/// shows that nobody takes it or that it is not of a kind that is handed over here. Linux: a .deb is opened
/// by the desktop's own installer, nothing is run. Windows: it is started. What was started outlives the
/// program.
void handOverInstaller(const QString& path, QObject* asker, std::function<void(bool isTaken)> done);
