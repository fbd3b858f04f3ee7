#pragma once

#include "controllers/CrashBlackOut.h"
#include "controllers/FramePacer.h"
#include "controllers/SerialLine.h"
#include "controllers/SerialPortSource.h"
#include "controllers/TalkGuard.h"
#include "support/SharedLibrary.h"
#include "support/log/LoopBrake.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QTimer>
#include <atomic>
#include <optional>

/// How a port tells another thread that it is closed for good.
struct PortRelease
{
    QSemaphore done;
    std::atomic<bool> blackWritten{false};
};

/// The serial line of one device. Lives on the thread that probes it and, once adopted by a controller, on a
/// thread of its own, where the line decides the pace: one frame waits at most, and a newer one replaces it.
/// An error that means a lost device is reported once and closes the port.
class LUMIVAR_DEVICES_EXPORT LVSerialPort : public QObject
{
    Q_OBJECT

public:
    explicit LVSerialPort(QObject* parent = nullptr);
    ~LVSerialPort() override;

    /// Opens the port with the line settings of the devices; false and a warning when that fails.
    bool init(const SerialPortRecord& record);
    SerialLine* line() { return &m_line; }
    QString portName() const { return m_name; }
    /// The port reported an error and is closed, or about to be; asked on the port's thread.
    bool isDead() const { return m_state == State::Dead; }

    /// From now on frames are paced by the line; called on the port's thread.
    void startPacing();
    /// On the port's thread: releases it when the line has carried what was written before, or is gone; not
    /// after the deadline.
    void tellWhenSent(std::shared_ptr<QSemaphore> sent, QDeadlineTimer deadline);
    /// Last act, on the port's thread: `black` replaces whatever waits, is drained within the deadline, and
    /// the port is closed. An empty frame closes at once.
    void release(const QByteArray& black, QDeadlineTimer deadline, std::shared_ptr<PortRelease> result);

    /// Frames replaced by newer ones before the line could take them. Any thread.
    quint64 droppedFrames() const { return m_dropped; }
    /// The controller status that an error stands for; nothing where it is to be ignored.
    static std::optional<quint32> statusOf(SerialLine::SerialPortError error);

signals:
    /// A frame came too early for the line, which is ready for another one in `ms`.
    void lineBusy(int ms);
    /// The button of the device was pressed.
    void deviceCommand1();
    void errorOccurred(SerialLine::SerialPortError error, QString description);

public slots:
    /// Sends the bytes when the line can take them, at once until pacing starts.
    void write(QByteArray bytes);
    /// How many LEDs have to go black should the process crash.
    void setCrashLedCount(int count) { m_crashBlackOut.setLedCount(count); }
    void onDevCmdArrival();

private:
    enum class State {
        Closed,    ///< not open yet, or closed for good
        Probing,   ///< bytes go out at once
        Paced,     ///< frames go out as the line can take them
        Releasing, ///< the black frame is on its way
        Dead       ///< has reported an error
    };

    void onPortError(SerialLine::SerialPortError error);
    /// The line may have become ready for more.
    void advance();
    void finishWhenDrained();
    /// How long the line is still busy with what was sent.
    qint64 busyMs() const { return (m_pacer.backlogUs(nowUs()) + 999) / 1000; }
    /// Closes the port for good and tells who waits for it.
    void close(bool blackWritten);
    void reportWrite();
    qint64 nowUs() const { return m_clock.nsecsElapsed() / 1000; }

    SerialLine m_line{this};
    QString m_name;
    State m_state = State::Closed;
    CrashBlackOut m_crashBlackOut;
    QElapsedTimer m_clock;

    FramePacer m_pacer;
    QTimer m_lineTimer{this}; ///< leads to advance()
    TalkGuard m_talk;
    QTimer m_talkTimer{this}; ///< runs while something said is unread
    bool m_toldOfTalk = false;

    std::shared_ptr<PortRelease> m_release; ///< who waits for it
    QDeadlineTimer m_releaseDeadline;

    QElapsedTimer m_writeTimer;
    double m_writeTimeSum = 0.0;
    int m_writeCount = 0;
    std::atomic<quint64> m_dropped{0};
    quint64 m_reportedDrops = 0;
    LoopBrake m_writeBrake;
    LoopBrake m_dropBrake;
};
