#pragma once

#include <QProcess>
#include <QTimer>

/// The program that drives the strips, started and ended by the simulator. It is a process group of its
/// own, so that a Ctrl-C in the terminal reaches it only as the simulator's polite request to end.
class GuestProgram : public QProcess
{
    Q_OBJECT

public:
    explicit GuestProgram(QObject* parent = nullptr);

    /// Starts it in its process environment; its output goes to the log file, or is dropped. False when it
    /// can't be started.
    bool launch(const QStringList& command, const QString& logFile);
    /// Once more, when it has ended.
    bool launchAgain();
    /// Asks it to end, and kills it when it does not within five seconds.
    void end();

protected:
    void setupChildProcess() override;

private:
    QString m_logFile;
    QTimer m_patience;
};
