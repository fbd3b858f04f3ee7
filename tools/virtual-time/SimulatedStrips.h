#pragma once

#include "StripParser.h"
#include "controllers/LV_RGB.h"
#include "controllers/SerialPortSource.h"

#include <QByteArray>
#include <QString>
#include <QVector>
#include <deque>
#include <utility>

class QObject;

/// The program's end of a line, told on the line's thread.
class LineEnd
{
public:
    virtual void receive(const QByteArray& bytes) = 0;
    /// The strip has gone; told at once, and felt later.
    virtual void detach() = 0;
    virtual void fail() = 0;
    virtual void goOn() = 0;

protected:
    ~LineEnd() = default;
};

/// A strip on a simulated line, which takes its time for every byte: what the program's SerialLine leads to
/// in a program that links this source. One thread runs at a time there (VirtualTime).
class SimulatedStrip
{
public:
    /// How a strip that is asked who it is answers.
    enum Answer { Prompt, Late, Cut, Garbage, Never, Parting };

    explicit SimulatedStrip(int number);

    QString portName() const { return m_port; }
    QString id() const;
    bool isPlugged() const { return !m_port.isEmpty(); }
    /// Into a socket, whose port is called so, with the program told or not.
    void plugIn(const QString& portName);
    /// The line, if one is open, hears of it after a while. Without power it is dark.
    void unplug(int tellAfterMs);
    void pressButton() { say(QByteArray(1, '\0')); }
    /// Any bytes at any time.
    void say(const QByteArray& bytes);
    /// Of the questions to come. One that parts goes `partMs` after its answer, and the program is busy then.
    void answer(Answer how, int partMs = 0)
    {
        m_answer = how;
        m_partMs = partMs;
    }
    /// It has an answer that is whole in the end.
    bool isAnswering() const { return m_answer <= Cut; }
    /// The line takes nothing meanwhile.
    void jam(bool jammed);

    bool isOpen() const { return m_end != nullptr; }
    /// It gives an answer, and says nothing else meanwhile.
    bool isTalking() const;
    /// What it shows now.
    const QVector<LV_RGB>& colors();
    bool isBlack();

    // For the line.
    static SimulatedStrip* at(const QString& location);
    void open(QObject* line, LineEnd* end);
    /// What has not gone through the line yet is lost.
    void close();
    void take(const QByteArray& bytes);
    bool isJammed() const { return m_isJammed; }

    static QList<SerialPortRecord> ports();

private:
    void catchUp();
    void reply();
    void say(const QByteArray& bytes, int afterMs);

    const int m_number;
    QString m_port;
    QObject* m_line = nullptr; ///< on its thread the program's end is told
    LineEnd* m_end = nullptr;
    Answer m_answer = Prompt;
    int m_partMs = 0;
    bool m_isJammed = false;
    StripParser m_parser;
    QVector<LV_RGB> m_colors;
    std::deque<std::pair<qint64, char>> m_onTheWay; ///< with the time of their arrival, ns
    qint64 m_lastByteNs = 0;                        ///< the end of what is on the way
    qint64 m_answeredNs = 0;                        ///< the end of its last answer
    qint64 m_heardNs = 0;                           ///< the last byte that arrived
};

/// The computer's list of ports.
class SimulatedPorts : public ISerialPortSource
{
    Q_OBJECT

public:
    SimulatedPorts();
    ~SimulatedPorts() override;
    QList<SerialPortRecord> availablePorts() override { return SimulatedStrip::ports(); }
    static void tellArrival(const QString& portName);
};
