#pragma once

#include <QProcess>

/// The program that drives the strips, started and ended by the simulator. It is a process group of its
/// own, so that a Ctrl-C in the terminal reaches it only as the simulator's polite request to end.
class GuestProgram : public QProcess
{
    Q_OBJECT

public:
    explicit GuestProgram(QObject* parent = nullptr);

    /// Starts it with the list of ports in its environment; its output goes to the log file, or is
    /// dropped. False, with an error message, when it can't be started.
    bool launch(const QStringList& command, const QString& portsFile, const QString& logFile);
    /// Asks it to end, and kills it when it does not within five seconds.
    void end();

protected:
    void setupChildProcess() override;
};
