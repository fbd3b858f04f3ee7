#pragma once

#include "StripFrame.h"
#include "StripParser.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>

class LinePacer;

/// A fake LED strip on a pseudo terminal that speaks the whole dialogue: it answers the probe, takes frames
/// and has a button. While it is plugged in, a thread of its own reads the line, so bytes are consumed even
/// while the thread that made the strip is blocked. Every public function may be called from any thread;
/// signals are emitted on the thread the object lives on.
class StripSimulator : public QObject
{
    Q_OBJECT

public:
    /// What the strip does when it is probed.
    enum class ReplyMode {
        Normal,
        Silent,
        Garbage,       ///< bytes that begin with no model
        TwoChunks,     ///< the reply is cut in the middle
        HangUpInReply, ///< the line goes dead behind the first half
        ByteByByte,
        Endless ///< begins as a reply does and goes on for ever
    };

    struct Options
    {
        QByteArray model = QByteArrayLiteral("LV0127");
        /// Empty: the reply has neither comma nor serial, only the model and the tail.
        QByteArray serial = QByteArray("\x01\x02\x03\x04", 4);
        QString portName = QStringLiteral("ttySIM0");
        QString description = QStringLiteral("USB-SERIAL CH340");
        QString portsFile; ///< empty: the environment variable LUMIVAR_SERIAL_PORTS
        ReplyMode replyMode = ReplyMode::Normal;
        int replyDelayMs = 0;
        int chunkGapMs = 5;          ///< between the pieces of a reply that comes in pieces
        int bytesPerSecond = 0;      ///< 0: as fast as the bytes come; 11520 is a real line
        qint64 hangUpAfterBytes = 0; ///< since plugging in, the probe included; 0: never
        int ledCount = 0;            ///< LEDs that are really there, others are ignored; 0: any number
        int keptFrames = 20000;      ///< frames() forgets older ones
    };

    explicit StripSimulator(const Options& options, QObject* parent = nullptr);
    /// Unplugs.
    ~StripSimulator() override;

    Options options() const;
    /// Counts from the next probe on.
    void setReplyMode(ReplyMode mode);
    /// Counts from the next plugIn() on.
    void setHangUpAfterBytes(qint64 bytes);

    /// Makes the pty and adds the port to the list of ports. True when both worked or it was plugged in.
    bool plugIn();
    /// The host sees a hang-up; the port leaves the list.
    void unplug();
    bool isPlugged() const;
    /// The path that the host opens, empty while unplugged.
    QString location() const;

    /// Sends the byte of a button press. False when unplugged.
    bool pressButton();
    /// Sends any bytes to the host.
    bool send(const QByteArray& bytes);

    QVector<StripFrame> frames() const;
    /// An empty frame when none has come yet.
    StripFrame lastFrame() const;
    /// What the LEDs show: those that a short frame does not reach keep their colour.
    QVector<LV_RGB> shownColors() const;
    /// Whether it has so many LEDs, 0 for any number but none, and all show this colour.
    bool shows(LV_RGB color, int leds = 0) const;
    /// Whether any LED has light.
    bool isLit() const;
    StripCounters counters() const;
    /// Forgets frames and counters, not what the LEDs show.
    void clear();

    /// CLOCK_MONOTONIC in milliseconds, the clock of a frame's times.
    static double nowMs();

signals:
    void plugged(QString location);
    /// Also when the strip hung up by itself.
    void unplugged();
    void probed();
    void frameReceived(StripFrame frame);

private:
    /// Something the strip will send.
    struct Reply
    {
        double dueMs;
        QByteArray bytes;
        bool thenHangUp;
    };

    int openPty();
    void serve(int master, qint64 hangUpAfter, LinePacer pacer);
    bool waitForBytes(int master, LinePacer& pacer);
    void consume(const QByteArray& bytes);
    void takeFrame(const StripFrame& frame);
    void queueReply(double nowMs);
    void queuePieces(const QByteArray& reply, int pieceSize, double dueMs);
    bool sendDueReplies();
    int msUntilReply() const;
    void sleepMs(int ms) const;
    void forgetHost();
    void closeLine();

    mutable std::mutex m_mutex; ///< guards everything below but the thread, which plugging guards
    std::mutex m_plugging;      ///< held while the strip is plugged in or out
    Options m_options;
    std::thread m_thread;
    std::atomic<bool> m_stopping{false};
    int m_wake = -1; ///< eventfd that ends a wait of the thread
    int m_master = -1;
    QString m_location;
    int m_pluggings = 0;
    StripParser m_parser;
    std::deque<Reply> m_replies;
    std::deque<StripFrame> m_frames;
    QVector<LV_RGB> m_shown;
    StripCounters m_counters;
};
