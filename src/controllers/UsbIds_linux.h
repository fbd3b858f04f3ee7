#pragma once

#include "controllers/SerialArrival.h"

#include <QString>

/// What stands in a USB device's folder of the system's tree; zeros where it is none.
UsbIds usbIdsIn(const QString& folder);
