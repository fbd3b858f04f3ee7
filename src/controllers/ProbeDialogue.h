#pragma once

#include "controllers/SerialPortSource.h"

#include <QSerialPort>
#include <QTimer>

class LVSerialPort;

/// Asks one port whether a device is behind it. Main thread. Ends with exactly one signal; the dialogues of
/// several ports run side by side.
class ProbeDialogue : public QObject
{
    Q_OBJECT

public:
    ProbeDialogue(const SerialPortRecord& record, QObject* parent);
    ~ProbeDialogue() override;

    /// Opens the port and asks; false when it cannot be opened, and no signal follows.
    bool start(int replyMs);
    QString portName() const { return m_record.name; }
    /// Hands the open port over, still on this thread; the dialogue knows it no longer.
    LVSerialPort* takePort();
    /// Closes the port at once; the dialogue itself may live on until the event loop gets round to it.
    void dropPort();

signals:
    /// What came first; may be anything.
    void answered(QByteArray reply);
    void timedOut();
    /// The port failed in the middle of it.
    void lost();

private:
    void onReadyRead();
    void onPortError();
    bool finish();

    SerialPortRecord m_record;
    LVSerialPort* m_serial;
    QTimer m_replyTimer;
    bool m_finished = false;
};
