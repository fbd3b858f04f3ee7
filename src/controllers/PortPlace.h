#pragma once

#include <QString>

/// The USB socket behind a serial port: the same at every start, whatever the port's name is then. Empty
/// where the port's name is as good as that, or the system does not tell. `root` is where Linux shows its
/// devices.
QString portPlace(const QString& portName, const QString& root = QStringLiteral("/sys"));
