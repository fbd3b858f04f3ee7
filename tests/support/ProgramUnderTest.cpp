#include "ProgramUnderTest.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace {

constexpr int kEndMs = 30000;

} // namespace

// A short path, because sockets stand below it.
ProgramUnderTest::ProgramUnderTest(const QString& folder)
    : environment(QProcessEnvironment::systemEnvironment())
    , m_home("/tmp/lumivar-test-XXXXXX")
    , m_folder(folder)
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
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LUMIVAR_DEFAULTS"})
        environment.remove(name);
}

void ProgramUnderTest::setDisplay(const QByteArray& display)
{
    environment.insert("DISPLAY", QString::fromLatin1(display));
}

QString ProgramUnderTest::useCopyOfProgramFolder()
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
    m_folder = to.path();
    return m_folder;
}

void ProgramUnderTest::start(const QStringList& arguments)
{
    m_process = startAnother(arguments);
}

bool ProgramUnderTest::terminate()
{
    m_process->terminate();
    return endsWell(*m_process);
}

std::unique_ptr<QProcess> ProgramUnderTest::startAnother(const QStringList& arguments, const QString& path)
{
    const QString program = path.isEmpty() ? m_folder + "/lumivar" : path;
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(m_home.path());
    process->setStandardErrorFile(m_home.filePath("stderr"), QIODevice::Append);
    process->start(program, arguments);
    if (!process->waitForStarted())
        qFatal("cannot start %s", qPrintable(program));
    return process;
}

bool ProgramUnderTest::endsWell(QProcess& process)
{
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(kEndMs))
        return false;
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString ProgramUnderTest::configFile(const QString& name) const
{
    return path("config/Lumivar/" + name);
}

QJsonObject ProgramUnderTest::readConfig(const QString& name) const
{
    return QJsonDocument::fromJson(readFile(configFile(name))).object();
}

void ProgramUnderTest::writeConfig(const QString& name, const QJsonObject& object) const
{
    writeFile(configFile(name), QJsonDocument(object).toJson());
}

void ProgramUnderTest::writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray ProgramUnderTest::readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString ProgramUnderTest::logText(const QString& folder) const
{
    QString text;
    const QDir logs(configFile("logs/" + folder));
    for (const QString& name : logs.entryList({"*.log"}, QDir::Files))
        text += QString::fromUtf8(readFile(logs.filePath(name)));
    return text;
}

QString ProgramUnderTest::standardError() const
{
    return QString::fromUtf8(readFile(path("stderr")));
}
