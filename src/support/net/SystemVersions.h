#pragma once

#include <QJsonObject>

/// What the program runs as and on: its version, system, desktop, screens, libraries. Main thread.
QJsonObject systemVersions();
