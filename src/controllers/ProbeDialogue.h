#pragma once

#include "controllers/ReplyCollector.h"
#include "controllers/SerialLine.h"
#include "controllers/SerialPortSource.h"
#include "support/SharedLibrary.h"

#include <QTimer>

class LVSerialPort;

/// Asks one port whether a device is behind it. Main thread. Ends with exactly one signal; the dialogues of
/// several ports run side by side.
class LUMIVAR_DEVICES_EXPORT ProbeDialogue : public QObject
{
    Q_OBJECT

public:
    static constexpr char kQuestion[] = "Moni-A";

    ProbeDialogue(const SerialPortRecord& record, QObject* parent);
    ~ProbeDialogue() override;

    /// Opens the port and asks; false when it cannot be opened, and no signal follows. The device is asked
    /// `questions` times and given `replyMs` after each; its answer is over after `silenceMs` without a byte.
    bool start(int replyMs, int questions, int silenceMs);
    /// Why it could not be opened.
    SerialLine::SerialPortError openError() const;
    QString openErrorString() const;
    const SerialPortRecord& record() const { return m_record; }
    QString portName() const { return m_record.name; }
    /// Hands the open port over, still on this thread; the dialogue knows it no longer.
    LVSerialPort* takePort();
    /// Closes the port at once, and no signal follows; the dialogue itself may live on until the event loop
    /// gets round to it.
    void dropPort();

signals:
    /// What came until the line went silent; may be anything.
    void answered(QByteArray reply);
    void timedOut();
    /// The port failed in the middle of it.
    void lost();

private:
    void ask();
    void onSilence();
    /// Takes what came, until the answer is whole.
    void onReadyRead();
    void onPortError();
    bool finish();

    SerialPortRecord m_record;
    LVSerialPort* m_serial;
    int m_questions = 1; ///< that are left
    QTimer m_replyTimer; ///< until the answer begins
    QTimer m_tickTimer;  ///< from there until it is over
    ReplyCollector m_collector;
    bool m_finished = false;
};
