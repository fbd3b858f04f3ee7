#pragma once

#include <QByteArray>
#include <QDir>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// The real program in folders of its own, so that neither the user's settings nor a running instance are
/// touched. Killed when this object goes.
class ProgramUnderTest
{
public:
    /// `folder` holds the program and its data files; by default it is the working directory.
    explicit ProgramUnderTest(const QString& folder = QDir::currentPath());
    ~ProgramUnderTest();

    /// Environment variables for the next start; the display is none unless given.
    void setDisplay(const QByteArray& display);
    /// Starts a copy of the program's folder whose data files may be changed; returns that folder.
    QString useCopyOfProgramFolder();

    void start(const QStringList& arguments = {});
    /// Asks for the end as a session manager does. False unless it ends by itself with exit code 0.
    bool terminate();
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    QProcess& process() { return m_process; }

    /// The file of LUMIVAR_SERIAL_PORTS.
    QString portsFile() const;
    QString configFile(const QString& name) const;
    QJsonObject readConfig(const QString& name) const;
    void writeConfig(const QString& name, const QJsonObject& object) const;
    /// All log files of the folder below the logs folder ("" or "devices"), one after the other.
    QString logText(const QString& folder = {}) const;
    QString standardError();

private:
    QTemporaryDir m_home;
    QString m_folder;
    QProcessEnvironment m_environment;
    QProcess m_process;
    QString m_standardError;
};
