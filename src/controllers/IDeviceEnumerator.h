#pragma once

#include "controllers/AbsRGBController.h"
#include "controllers/PortFinding.h"
#include "support/SharedLibrary.h"

#include <QObject>
#include <QtPlugin>

/// Finds devices and hands over finished controllers. Also the interface of enumerator plug-ins, which may
/// emit from any thread.
class LUMIVAR_DEVICES_EXPORT IDeviceEnumerator : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The machine goes to sleep: let go of ports that are not driven yet. Or it is back: look for devices at
    /// once, those that were plugged in or changed their place meanwhile.
    virtual void setAsleep(bool) {}

signals:
    void deviceEnabled(AbsRGBControllerPtr controller);
    /// All that keeps it from giving devices, in place of what it said before.
    void findingsChanged(PortFindings findings);
};

#define IDeviceEnumerator_iid "id.interface.DeviceManagerInterface"
Q_DECLARE_INTERFACE(IDeviceEnumerator, IDeviceEnumerator_iid)
