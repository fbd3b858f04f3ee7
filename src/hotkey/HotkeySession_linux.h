#pragma once

#include <QProcessEnvironment>
#include <QString>

/// Whether the desktop is a Wayland one, be it that the program's own windows come by X.
bool isWaylandSession(const QProcessEnvironment& environment);

/// Why keys cannot be taken through an X server, for the log; empty where they can. An X server that serves a
/// Wayland session hands keys out, but sees those for its own windows only.
/// `platform` is the toolkit's, such as "xcb" or "offscreen".
QString obstacleToKeyGrabs(const QString& platform, const QProcessEnvironment& environment);
