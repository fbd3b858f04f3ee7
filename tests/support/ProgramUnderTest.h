#pragma once

#include <QByteArray>
#include <QDir>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>
#include <memory>

/// The real program in folders of its own, so that neither the user's settings nor a running instance are
/// touched. Everything started through it is killed when this object or the returned one goes.
class ProgramUnderTest
{
public:
    /// `folder` holds the program and its data files; by default it is the working directory.
    explicit ProgramUnderTest(const QString& folder = QDir::currentPath());

    /// For the next start; without a display unless one is given.
    QProcessEnvironment environment;
    void setDisplay(const QByteArray& display);
    /// Starts a copy of the program's folder whose data files may be changed; returns that folder.
    QString useCopyOfProgramFolder();

    void start(const QStringList& arguments = {});
    /// Asks for the end as a session manager does. False unless it ends by itself with exit code 0.
    bool terminate();
    bool isRunning() const { return m_process && m_process->state() == QProcess::Running; }
    QProcess& process() { return *m_process; }

    /// One more process in the same folders: the program again, or another one of the given path.
    std::unique_ptr<QProcess> startAnother(const QStringList& arguments = {}, const QString& path = {});
    /// Whether the process ends by itself with exit code 0.
    static bool endsWell(QProcess& process);

    /// A file or folder below the home folder.
    QString path(const QString& relative) const { return m_home.filePath(relative); }
    /// The file of LUMIVAR_SERIAL_PORTS.
    QString portsFile() const { return path("ports.json"); }
    QString configFile(const QString& name) const;
    QJsonObject readConfig(const QString& name) const;
    void writeConfig(const QString& name, const QJsonObject& object) const;
    /// Also for what is no JSON; makes the folder where needed.
    static void writeFile(const QString& path, const QByteArray& content);
    /// Empty when there is none.
    static QByteArray readFile(const QString& path);
    /// All log files of the folder below the logs folder ("" or "devices"), one after the other.
    QString logText(const QString& folder = {}) const;
    /// Of all processes so far.
    QString standardError() const;

private:
    QTemporaryDir m_home;
    QString m_folder;
    std::unique_ptr<QProcess> m_process;
};
