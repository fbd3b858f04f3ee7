#include "controllers/WindowsSerial.h"

#include <QRegularExpression>

namespace {

/// The system's error codes, by their names there.
enum Code : unsigned long {
    FileNotFound = 2,
    PathNotFound = 3,
    AccessDenied = 5,
    InvalidHandle = 6,
    BadCommand = 22,
    GenFailure = 31,
    SharingViolation = 32,
    HandleEof = 38,
    DeviceNotExist = 55,
    InvalidParameter = 87,
    BrokenPipe = 109,
    InvalidName = 123,
    NoSuchDevice = 433,
    OperationAborted = 995,
    IoDevice = 1117,
    DeviceNotConnected = 1167,
    DeviceRemoved = 1617
};

const QRegularExpression& portInName()
{
    static const QRegularExpression expression(QStringLiteral("\\s*\\((COM\\d+)\\)\\s*$"));
    return expression;
}

} // namespace

SerialLine::SerialPortError WindowsSerial::openError(unsigned long code)
{
    switch (code) {
    case FileNotFound:
    case PathNotFound:
    case InvalidName:
    case DeviceNotExist:
    case NoSuchDevice:
        return SerialLine::DeviceNotFoundError;
    case AccessDenied: // what a driver says of a port that another program has
    case SharingViolation:
        return SerialLine::PermissionError;
    case InvalidHandle: // it is no serial port
    case InvalidParameter:
        return SerialLine::UnsupportedOperationError;
    default:
        return SerialLine::OpenError;
    }
}

SerialLine::SerialPortError WindowsSerial::lineError(unsigned long code,
                                                     SerialLine::SerialPortError otherwise)
{
    switch (code) {
    case FileNotFound:
    case AccessDenied: // the line was ours: its driver refuses what is gone
    case InvalidHandle:
    case BadCommand:
    case GenFailure:
    case HandleEof:
    case DeviceNotExist:
    case BrokenPipe:
    case NoSuchDevice:
    case OperationAborted:
    case IoDevice:
    case DeviceNotConnected:
    case DeviceRemoved:
        return SerialLine::ResourceError;
    default:
        return otherwise;
    }
}

UsbIds WindowsSerial::usbIds(const QString& instanceId)
{
    static const QRegularExpression expression(
        QStringLiteral("VID_([0-9A-F]{4})[&+]PID_([0-9A-F]{4})(?![0-9A-F])"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = expression.match(instanceId);
    return {match.captured(1).toUShort(nullptr, 16), match.captured(2).toUShort(nullptr, 16)};
}

QString WindowsSerial::portName(const QString& friendlyName)
{
    return portInName().match(friendlyName).captured(1);
}

QString WindowsSerial::description(const QString& friendlyName)
{
    return QString(friendlyName).remove(portInName());
}

QString WindowsSerial::location(const QString& portName)
{
    return QStringLiteral("\\\\.\\") + portName;
}
