#pragma once

#include "app/FindingTexts.h"

#include <QCoreApplication>
#include <QObject>
#include <QStringList>
#include <memory>

class ISerialPortSource;
class ProbeDialogue;
struct SerialPortRecord;

/// Tells in the terminal what stands in the way of light: ports, permissions, screen, sound. Asks the ports
/// that nobody has open, all side by side, and is done within seven seconds. Needs no display, stores
/// nothing, and leaves a running program and its devices alone. Main thread.
class Doctor : public QObject
{
    Q_OBJECT

public:
    static bool isAsked(int argc, char** argv);
    /// In place of the program. 0: a device is ready, or the running program drives one; else 1.
    static int run(int& argc, char** argv);

private:
    explicit Doctor(QObject* parent = nullptr);
    ~Doctor() override;

    void examinePorts();
    void ask(const SerialPortRecord& record);
    void onAnswer(const ProbeDialogue* dialogue, const QByteArray& raw);
    void examineSound();
    void examineScreen();
    /// Ends when nothing is waited for any more.
    void finishOne();
    QString report() const;
    QString permissions() const;

    std::unique_ptr<ISerialPortSource> m_source;
    const qint64 m_runningPid; ///< of the program; 0 where it does not run
    int m_waits = 0;
    QStringList m_devices; ///< that work
    PortFindings m_findings;
    QString m_screen;
    QString m_sound;
};
