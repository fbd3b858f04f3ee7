#pragma once

#include "support/SharedLibrary.h"

#include <QByteArray>
#include <QObject>
#include <cstdint>
#include <memory>

/// An open serial line with the settings of the devices: 115200 baud, 8 data bits, no parity, one stop bit,
/// no flow control. Used on one thread, and moves with its parent. One source for each library below it.
class LUMIVAR_DEVICES_EXPORT SerialLine : public QObject
{
    Q_OBJECT

public:
    /// Numbers as they stand in the log.
    enum SerialPortError {
        NoError,
        DeviceNotFoundError,
        PermissionError,
        OpenError,
        ParityError,
        FramingError,
        BreakConditionError,
        WriteError,
        ReadError,
        ResourceError,
        UnsupportedOperationError,
        UnknownError,
        TimeoutError,
        NotOpenError
    };
    Q_ENUM(SerialPortError)

    explicit SerialLine(QObject* parent = nullptr);
    ~SerialLine() override;

    /// Opens what a list of ports calls the location, for this process alone, with empty buffers. When that
    /// fails error() says why.
    bool open(const QString& location);
    bool isOpen() const;
    /// Gives up at once what is not written yet, where the system can.
    void close();
    /// The system's, for a crash handler.
    std::intptr_t handle() const;

    /// Sends the bytes behind what waits; a failure is told by errorOccurred().
    void write(const QByteArray& bytes);
    /// Of what was given to write(), what the system has not taken yet.
    qint64 bytesToWrite() const;
    /// What has come; at most 4 KiB are kept, and the rest waits on the other side until they are read.
    QByteArray readAll();
    /// Forgets what waits in both directions. What is written at the moment is lost.
    void clear();

    SerialPortError error() const;
    QString errorString() const;

signals:
    void readyRead();
    void bytesWritten();
    /// Also with NoError, when an error is over.
    void errorOccurred(SerialLine::SerialPortError error);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
