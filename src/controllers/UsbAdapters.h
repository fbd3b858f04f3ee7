#pragma once

#include "controllers/SerialArrival.h"

#include <QList>
#include <QString>

/// An adapter of the strips on USB that gives no serial port.
struct PortlessAdapter
{
    QString socket;       ///< what it is plugged into, as the system calls it
    QString location{};   ///< its device node, which who took it off has open
    bool isTaken = false; ///< a program has it instead of a driver
};

/// Whether this is the chip that the strips are connected by.
bool isStripAdapter(UsbIds ids);

/// Reads what the system knows of its USB devices, without a word to them. `root` is where Linux shows it.
QList<PortlessAdapter> portlessAdapters(const QString& root = QStringLiteral("/sys"));
