#pragma once

#include <QJsonArray>
#include <QString>

/// The records of a group definition file; empty, after a log line that says why, when it yields none.
QJsonArray readEffectGroupFile(const QString& path);
