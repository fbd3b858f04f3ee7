#pragma once

#include "controllers/AbsRGBController.h"

#include <QObject>
#include <QtPlugin>

/// Finds devices and hands over finished controllers. Also the interface of enumerator plug-ins, which may
/// emit from any thread.
class IDeviceEnumerator : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    void deviceEnabled(AbsRGBControllerPtr controller);
    /// An adapter is there but may not be opened. `group` is the user group that may; empty: the rights are
    /// not what is missing, so another program has it.
    void portRefused(QString portName, QString group);
    /// A refused port opened or is gone.
    void portFreed(QString portName);
};

#define IDeviceEnumerator_iid "id.interface.DeviceManagerInterface"
Q_DECLARE_INTERFACE(IDeviceEnumerator, IDeviceEnumerator_iid)
