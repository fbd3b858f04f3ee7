#pragma once

#include "controllers/SerialLine.h"
#include "controllers/UsbAdapters.h"

/// What Windows says of serial ports and lines, told as values of the program. Plain functions that every
/// system can run.
namespace WindowsSerial {

/// Why a port could not be opened, from the system's error code.
SerialLine::SerialPortError openError(unsigned long code);
/// Why reading or writing on an open line failed: `otherwise`, unless the device is gone.
SerialLine::SerialPortError lineError(unsigned long code, SerialLine::SerialPortError otherwise);

/// From the instance id of a device, such as "USB\VID_1A86&PID_7523\5&2C4F1A7&0&3".
UsbIds usbIds(const QString& instanceId);
/// The port in a friendly name, such as "USB-SERIAL CH340 (COM3)"; empty where it names none.
QString portName(const QString& friendlyName);
/// That name without the port.
QString description(const QString& friendlyName);
/// What is opened, whatever the number of the port.
QString location(const QString& portName);

/// The settings of the devices in the driver's DCB, a type that only Windows has. What a modem wants is off;
/// how DTR and RTS stand is left to the driver, as long as no handshake decides it.
template <typename Dcb>
void applySettings(Dcb& dcb)
{
    constexpr int kDisable = 0;
    constexpr int kHandshake = 2;
    dcb.BaudRate = 115200;
    dcb.ByteSize = 8;
    dcb.Parity = 0;
    dcb.StopBits = 0; // means one
    dcb.fBinary = 1;
    dcb.fParity = 0;
    dcb.fOutxCtsFlow = 0;
    dcb.fOutxDsrFlow = 0;
    dcb.fDsrSensitivity = 0;
    dcb.fOutX = 0;
    dcb.fInX = 0;
    dcb.fErrorChar = 0;
    dcb.fNull = 0;
    dcb.fAbortOnError = 0; // or the first framing error would stop the line for good
    if (dcb.fDtrControl == kHandshake)
        dcb.fDtrControl = kDisable;
    if (dcb.fRtsControl >= kHandshake) // or toggled by what is sent
        dcb.fRtsControl = kDisable;
}

} // namespace WindowsSerial
