#pragma once

#include "MortalProcess.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <memory>

/// The real program in folders of its own, so that neither the user's settings nor a running instance are
/// touched. Everything started through it is killed when this object or the returned one goes.
class ProgramUnderTest
{
public:
    /// `folder` holds the program and its data files; by default it is the working directory.
    explicit ProgramUnderTest(const QString& folder = QDir::currentPath())
        : m_folder(folder)
    {
        for (const char* name : {"config", "data", "run", "tmp"}) {
            QDir().mkpath(path(name));
            QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        environment.insert("HOME", m_home.path());
        environment.insert("XDG_CONFIG_HOME", path("config"));
        environment.insert("XDG_DATA_HOME", path("data"));
        environment.insert("XDG_RUNTIME_DIR", path("run"));
        environment.insert("TMPDIR", path("tmp"));
        environment.insert("LUMIVAR_SERIAL_PORTS", portsFile());
        environment.insert("LUMIVAR_LOG_TO_CONSOLE", "1");
        // It is the whole product, with what it ships.
        for (const char* name :
             {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "QT_QPA_PLATFORM", "LUMIVAR_DEFAULTS"})
            environment.remove(name);
    }

    /// For the next start; without a display unless one is given.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    void setDisplay(const QByteArray& display)
    {
        environment.insert("DISPLAY", QString::fromLatin1(display));
    }
    /// Starts a copy of the program's folder whose data files may be changed; returns that folder.
    QString useCopyOfProgramFolder()
    {
        const QDir from(m_folder);
        const QDir to(path("program/bin"));
        QDirIterator files(from.path(), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString target = to.filePath(from.relativeFilePath(files.next()));
            QDir().mkpath(QFileInfo(target).path());
            QFile::copy(files.filePath(), target);
        }
        // The program looks for its libraries beside its own folder.
        QFile::link(QDir::cleanPath(from.filePath("../lib")), path("program/lib"));
        return m_folder = to.path();
    }

    void start(const QStringList& arguments = {}) { m_process = startAnother(arguments); }
    /// Asks for the end as a session manager does. False unless it ends by itself with exit code 0.
    bool terminate()
    {
        m_process->terminate();
        return endsWell(*m_process);
    }
    bool isRunning() const { return m_process && m_process->state() == QProcess::Running; }
    QProcess& process() { return *m_process; }

    /// One more process in the same folders: the program again, or another one of the given path.
    std::unique_ptr<QProcess> startAnother(const QStringList& arguments = {}, const QString& path = {})
    {
        const QString program = path.isEmpty() ? m_folder + "/lumivar" : path;
        auto process = std::make_unique<MortalProcess>();
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(m_home.path());
        process->setStandardErrorFile(m_home.filePath("stderr"), QIODevice::Append);
        process->start(program, arguments);
        if (!process->waitForStarted())
            qFatal("cannot start %s", qPrintable(program));
        return process;
    }
    /// Whether the process ends by itself with exit code 0.
    static bool endsWell(QProcess& process)
    {
        constexpr int kEndMs = 30000;
        return (process.state() == QProcess::NotRunning || process.waitForFinished(kEndMs)) &&
               process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    /// A file or folder below the home folder.
    QString path(const QString& relative) const { return m_home.filePath(relative); }
    /// The file of LUMIVAR_SERIAL_PORTS.
    QString portsFile() const { return path("ports.json"); }
    QString configFile(const QString& name) const { return path("config/Lumivar/" + name); }
    QJsonObject readConfig(const QString& name) const { return readObject(configFile(name)); }
    void writeConfig(const QString& name, const QJsonObject& object) const
    {
        writeFile(configFile(name), QJsonDocument(object).toJson());
    }
    /// Also for what is no JSON; makes the folder where needed.
    static void writeFile(const QString& path, const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
    }
    /// Empty when there is none.
    static QByteArray readFile(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QJsonObject readObject(const QString& path)
    {
        return QJsonDocument::fromJson(readFile(path)).object();
    }
    /// All log files of the folder below the logs folder ("" or "devices"), one after the other.
    QString logText(const QString& folder = {}) const
    {
        QString text;
        const QDir logs(configFile("logs/" + folder));
        for (const QString& name : logs.entryList({"*.log"}, QDir::Files))
            text += QString::fromUtf8(readFile(logs.filePath(name)));
        return text;
    }
    /// Of all processes so far.
    QString standardError() const { return QString::fromUtf8(readFile(path("stderr"))); }

private:
    QTemporaryDir m_home{"/tmp/lumivar-test-XXXXXX"}; // a short path, because sockets stand below it
    QString m_folder;
    std::unique_ptr<QProcess> m_process;
};
