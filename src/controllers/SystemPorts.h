#pragma once

#include "controllers/SerialArrival.h"

#include <QList>
#include <QString>

/// A serial port as the operating system lists it.
struct SystemPort
{
    QString name;        ///< "ttyUSB0", "COM5"
    QString location;    ///< what is opened
    QString description; ///< of the hardware, may be empty
    UsbIds ids;
};

/// Asking may disturb what is connected. One source for each library below it.
QList<SystemPort> systemPorts();
