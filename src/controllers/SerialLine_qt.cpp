#include "controllers/SerialLine.h"

#include <QSerialPort>

namespace {

constexpr qint64 kReadBufferBytes = 4096;

// Both count alike.
static_assert(int(SerialLine::PermissionError) == int(QSerialPort::PermissionError));
static_assert(int(SerialLine::ResourceError) == int(QSerialPort::ResourceError));
static_assert(int(SerialLine::NotOpenError) == int(QSerialPort::NotOpenError));

} // namespace

struct SerialLine::Private
{
    QSerialPort port;
};

SerialLine::SerialLine(QObject* parent)
    : QObject(parent)
    , d(new Private)
{
    d->port.setParent(this); // moves with it
    connect(&d->port, &QSerialPort::readyRead, this, &SerialLine::readyRead);
    connect(&d->port, &QSerialPort::bytesWritten, this, &SerialLine::bytesWritten);
    connect(&d->port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        emit errorOccurred(static_cast<SerialPortError>(error));
    });
}

SerialLine::~SerialLine() = default;

bool SerialLine::open(const QString& location)
{
    d->port.setPortName(location);
    d->port.setBaudRate(QSerialPort::Baud115200, QSerialPort::AllDirections);
    d->port.setDataBits(QSerialPort::Data8);
    d->port.setParity(QSerialPort::NoParity);
    d->port.setReadBufferSize(kReadBufferBytes);
    if (!d->port.open(QIODevice::ReadWrite))
        return false;
    clear();
    return true;
}

bool SerialLine::isOpen() const
{
    return d->port.isOpen();
}

void SerialLine::close()
{
    if (d->port.isOpen())
        d->port.close();
}

std::intptr_t SerialLine::handle() const
{
    return (std::intptr_t)(d->port.handle()); // a number or a pointer, as the system has it
}

void SerialLine::write(const QByteArray& bytes)
{
    d->port.write(bytes);
}

qint64 SerialLine::bytesToWrite() const
{
    return d->port.bytesToWrite();
}

QByteArray SerialLine::readAll()
{
    return d->port.readAll();
}

void SerialLine::clear()
{
    d->port.clear(QSerialPort::AllDirections);
}

SerialLine::SerialPortError SerialLine::error() const
{
    return static_cast<SerialPortError>(d->port.error());
}

QString SerialLine::errorString() const
{
    return d->port.errorString();
}
