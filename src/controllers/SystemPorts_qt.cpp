#include "controllers/SystemPorts.h"

#include <QSerialPortInfo>

QList<SystemPort> systemPorts()
{
    QList<SystemPort> all;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports)
        all.append({port.portName(),
                    port.systemLocation(),
                    port.description(),
                    {port.vendorIdentifier(), port.productIdentifier()}});
    return all;
}
